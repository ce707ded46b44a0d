// Routines of operators on arrays: operands from the stack to the operator's entry and the result
// back. A record that isn't the result goes back; what it owned, the entry has released.
#pragma once

#include "expr/value.h"
#include "numeric/arrayOperators.h"

namespace zy {

void runArrayUnary(ExprNode *node, ArrayEntry entry);
void runArrayBinary(ExprNode *node, ArrayEntry entry);

// The topmost of nested element-wise operators, and an assignment of such an expression to a
// variable, which the chain runs with the leaves of the expression alone (expr/elementwise.cpp).
void elementwiseOperator(ExprNode *node);
void elementwiseAssignment(ExprNode *node);
bool isElementwiseAssignment(const ExprNode *node);

// `a op= b` and the increments, on arrays as wholes.
void arrayCompoundAssignment(ExprNode *node);
void arrayIncrement(ExprNode *node);

template <ArrayEntry entry>
void arrayUnary(ExprNode *node) {
    runArrayUnary(node, entry);
}
template <ArrayEntry entry>
void arrayBinary(ExprNode *node) {
    runArrayBinary(node, entry);
}

}  // namespace zy
