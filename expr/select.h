// open header: Binding of operands to operators. A node leaves with a code that names the exact
// operation for the static types of its operands: `+` of two int and `+` of two double are
// different operators from then on, and nothing promotes at run time.
#pragma once

#include "expr/value.h"

namespace zy {

// Takes the top of operatorList with its operands from operandList, right operand first, and pushes
// the finished node on operandList. Both lists are linked by `next`, top first; depth counts the
// waiting operators. A `?` reads `:` and the expression behind it, which ends at a comma.
void reduceOperator(ExprNode *&operandList, ExprNode *&operatorList, int &depth);

// The same for a node whose operands stand in left, right and third: chooses the code, checks, and
// gives the node, or the one that wraps it. The result has all operands, whatever was refused.
ExprNode *bindOperator(ExprNode *node);
// The plain operator whose pairs of operands a compound assignment allows.
int plainOperator(int op);

// How many operands the operator takes from the operand list: 1 or 2.
int operandCount(int code);

}  // namespace zy
