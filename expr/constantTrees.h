// open header: expressions whose value is known while they are parsed: labels of a switch, bounds
// of arrays.
#pragma once

#include "expr/value.h"

namespace zy {

// Whether a tree has constants alone for operands, and nothing that a run could change.
bool isConstantTree(const ExprNode *tree);
// The value of such an expression, as an int; evaluated now, if it isn't a constant already.
int evaluateConstant(ExprNode *tree);

}  // namespace zy
