// open header: Objects of structs, classes and unions as bytes: what an object owns besides them
// are the texts of its string members, of which each object has its own.
#pragma once

#include "decl/structInfo.h"

namespace zy {

// Makes one object the copy of another of the same class.
void copyObject(void *target, const void *source, const StructInfo *info);
// A copy on the heap; NULL after a message if memory is exhausted.
void *newObjectCopy(const void *source, const StructInfo *info);
// Makes a Value that views an object own a copy of it.
void ownObject(Value *value);
// Releases what the object owns, not its bytes.
void releaseObject(void *object, const StructInfo *info);

}  // namespace zy
