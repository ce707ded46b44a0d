// The routines that rows of expr/operators.inc name: each runs one operator node of the chain.
#pragma once

#include "expr/value.h"

namespace zy {

void undefinedOperation(ExprNode *node);

}  // namespace zy
