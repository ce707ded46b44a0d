// real() and imag() as targets of an assignment: one part of a number is stored, the other stays.
#pragma once

#include "expr/value.h"

namespace zy {

// The targets are nodes of real() or imag(): of a number, and of an array.
void assignPart(ExprNode *target, ExprNode *valueNode);
void assignPartOfArray(ExprNode *target, ExprNode *valueNode);

}  // namespace zy
