// open header: expressions whose value is needed while they are parsed: labels of a switch, bounds
// of arrays, widths of bit-fields, constants of an enum.
#pragma once

#include "expr/value.h"

namespace zy {

// Whether a tree has constants alone for operands, and nothing that a run could change.
bool isConstantTree(const ExprNode *tree);
// The value of an integral expression as an int, higher bits dropped. False, without a message of
// its own, if it gave none.
bool evaluateNow(ExprNode *tree, int &number);
// The same of a tree of constants; 0 for one with an error.
int evaluateConstant(ExprNode *tree);

}  // namespace zy
