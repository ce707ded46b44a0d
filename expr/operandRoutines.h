// The routines of operands in a chain: each pushes a Value for its node.
#pragma once

#include "expr/value.h"

namespace zy {

void pushVariable(ExprNode *leaf);
void pushFunctionName(ExprNode *leaf);
void pushConstant(ExprNode *leaf);
void pushNamedConstant(ExprNode *leaf);  // of a builtin symbol
void pushTag(ExprNode *leaf);
void passOver(ExprNode *cell);    // of a list, whose items stand in the chain themselves
void refuseNode(ExprNode *node);  // of a kind that no chain can hold

}  // namespace zy
