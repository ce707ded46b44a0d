// open header: members by their names, while text is parsed.
#pragma once

#include "expr/value.h"

namespace zy {

// The member of the aggregate that the tree gives; NULL after a message.
TypeInfo *findMember(const ExprNode *tree, NameEntry *name);
// Its place in the list of members.
int memberIndex(const StructInfo *info, const TypeInfo *member);
// A private member where no code of its class is.
bool isHiddenMember(const StructInfo *info, const TypeInfo *member);
// The name of a tag as it was written: without what sets it apart from an object of that name.
const char *plainTag(const char *name);

}  // namespace zy
