// Casts that make an array: of another array, of a scalar, or of an address.
#pragma once

#include "expr/value.h"

namespace zy {

// Whether the target has an element type that a value can be cast to.
bool hasCastElements(const ExprNode *target);

// The operand, whose record and contents it takes, as the array type that the target names. What
// gives the target its shape at run time lies on the stack. NULL if memory is exhausted.
Value *castToArray(const ExprNode *target, int type, Value *operand);

// A computational array where a number is wanted stands for its first element: it ends here, and
// the record holds that element. False, with the array released, if there is none.
bool takeFirstElement(Value *array);

}  // namespace zy
