// record header: the store of a brace list into a variable. A value that the list's chain has
// computed lies on the stack, the first one on top; a constant is read from its leaf.
#pragma once

#include "expr/value.h"

namespace zy {

// What the list doesn't name becomes zero.
void assignInitList(const ExprNode *list, TypeInfo *symbol);

}  // namespace zy
