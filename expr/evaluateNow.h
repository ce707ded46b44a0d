// open header: Constant expressions that a declaration needs the number of while it is parsed.
#pragma once

#include "expr/value.h"

namespace zy {

// The value of an integral expression as an int. False, without a message, if it gave none.
bool evaluateNow(ExprNode *tree, int &number);

}  // namespace zy
