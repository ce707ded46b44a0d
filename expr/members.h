// open header: members by their names, while text is parsed.
#pragma once

#include <string>

#include "expr/value.h"

namespace zy {

// The member of that name in a list, or in an anonymous member of it. NULL for none.
TypeInfo *memberNamed(TypeInfo *list, const NameEntry *name);
// The member of the aggregate that the tree gives; NULL after a message.
TypeInfo *findMember(const ExprNode *tree, NameEntry *name);
// The member of the aggregate itself: the given one, or the anonymous member that it lies in.
const TypeInfo *ownMember(const StructInfo *info, const TypeInfo *member);
// Its place in the list of members.
int memberIndex(const StructInfo *info, const TypeInfo *member);
// The access to a member of an object, or with OP_ARROW of a pointer to one: by way of the
// anonymous members that it lies in. The tree takes over that of the object.
ExprNode *newMemberAccess(int op, ExprNode *object, const StructInfo *info, const TypeInfo *member);
// Code of the class itself runs or is being parsed.
bool insideClass(const StructInfo *info);
// A private member where no code of its class is.
bool isHiddenMember(const StructInfo *info, const TypeInfo *member);
// The text of __class__ or __class_func__ in the member function that the parser stands in; empty for
// all other names and places.
std::string classText(const NameEntry *name);
// The name of a tag as it was written: without what sets it apart from an object of that name.
const char *plainTag(const char *name);

}  // namespace zy
