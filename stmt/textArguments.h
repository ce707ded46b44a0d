// Strings that are passed to parameters of pointer types.
#pragma once

#include "expr/scope.h"

namespace zy {

// Gives the cell of a pointer a text of its own, which ends with the call. False, with nothing
// done, for other types and values.
bool passText(VarCell *cell, const Value *value);
// The same for the elements of an array that ends with the statement, such as a member of a
// function's result.
bool passElements(VarCell *cell, const Value *value);
// A result that points into such a text keeps it, as long as the program is there.
void keepReturnedText(const FuncInfo *function, const ScopeFrame *frame, const Value *result);

}  // namespace zy
