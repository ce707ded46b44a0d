// Assignment to members, and of whole objects.
#pragma once

#include "expr/value.h"

namespace zy {

// The value, read by operandOf, into the member that the node names.
void assignMember(ExprNode *target, ExprNode *value);

// An object's bytes from those of a Value that holds one of that class. False for any other Value.
bool storeObject(void *object, const Value *value, const StructInfo *info);

// Whether the tree names a place within a union. What lies there may be no text, so no text in it
// is ever released: the stores give it one that lives as literals do.
bool liesInUnion(const ExprNode *tree);
void storeUnionText(void *place, const Value *value);
void storeUnionObject(void *place, const Value *value, const StructInfo *info);

}  // namespace zy
