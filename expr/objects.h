// open header: Objects of structs, classes and unions as bytes: what an object owns besides them
// are the texts of its string members, of which each object has its own.
#pragma once

#include "decl/structInfo.h"
#include "expr/value.h"

namespace zy {

// Makes one object the copy of another of the same class.
void copyObject(void *target, const void *source, const StructInfo *info);
// Its texts stay, from now on, for as long as the program is there.
void keepTextsOf(void *object, const StructInfo *info);
// A copy on the heap; NULL after a message if memory is exhausted.
void *newObjectCopy(const void *source, const StructInfo *info);
// Makes a Value that views an object own a copy of it.
void ownObject(Value *value);
// The same of a part of something that ends with the operator that reads it.
void ownPart(Value *value);
// Releases what the object owns, not its bytes.
void releaseObject(void *object, const StructInfo *info);

// ---- Life (stmt/objectLife.cpp) -----------------------------------------------------------------

// Whether objects of the class are constructed or destroyed by functions, their own or those of
// members.
inline bool hasLife(const StructInfo *info) {
    return info && (info->constructor || info->destructor || info->ownsObjects);
}
// Whether a member lives and dies with the object that it is in.
bool livesAsMember(const TypeInfo *member);
// Whether a constructor has formals besides the object.
bool takesArguments(const TypeInfo *constructor);
// The members of an object that is being constructed, from that one on: all of them before its own
// constructor runs, or those that a list has not named.
void constructMembers(void *object, const StructInfo *info, const TypeInfo *first);
// Runs a member function without arguments on an object, to its end.
void callOnObject(TypeInfo *function, void *object, bool noFree);
// Default construction and destruction of the elements of a block of memory, in order.
void constructObjects(void *objects, uint32_t count, const StructInfo *info);
void destroyObjects(void *objects, uint32_t count, const StructInfo *info);
// The same for an array that `new` makes. Destruction is of `count` elements, 0 for all of them.
void constructHeapObjects(void *objects, uint32_t count, const StructInfo *info);
void destroyHeapObjects(void *objects, uint32_t count, const StructInfo *info);
// From now on the variable lives, and is destroyed in its time.
void beginLife(TypeInfo *symbol);
// The object, or objects, of a variable; it lives after the first and not after the second, which
// does nothing for one that doesn't live.
void constructVariable(TypeInfo *symbol);
void destroyVariable(TypeInfo *symbol);
// The end of a temporary object that nothing has taken over.
void endTemporaryObject(void *object, const StructInfo *info);
// In Value::owned, and as the ownership of a ClassContext: a copy of a part of a temporary object.
// The part was destroyed with the object; the copy is released only.
constexpr uint8_t OWNED_PART = 4;

}  // namespace zy
