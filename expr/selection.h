// The tables of typed selection: which code an operator gets for the types of its operands, as
// arrayElementTypeOf() gives them. The first row that fits a pair of types wins, and the order of
// the numeric rows is the order of promotion.
#pragma once

#include "expr/operators.h"

namespace zy {

// No row fits. The code belongs to a conversion function, which no operator selects.
constexpr int NO_OPERATOR = OP_TO_CHAR;

int selectBinary(int op, int left, int right);
int selectUnary(int op, int operand);

// The code with which a refused node goes on, and the message of the refusal.
int refuseOperands(int op);

}  // namespace zy
