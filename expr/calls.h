// What operators call in rooms above theirs.
#pragma once

#include "expr/value.h"

namespace zy {

// The statement loop, stmt/execute.h; false for nested runs.
void runStatements(bool debug);

// Assignments, numeric/assign.h. `value` is read by operandOf. A popped value goes back on the
// stack if the node that runs is `=`; the record of one that wasn't popped stays the caller's.
void assignValue(ExprNode *target, ExprNode *value);
// By the pointed-to type of a pointer's data type.
void storeByPointerType(void *address, const Value *value, int pointerType);

// Parses and runs an expression's text; its value is on the stack, zero for a text that is none.
// 0, or -1. The embedding interface defines it.
enum TextCaller : int { TEXT_OF_HOST = 0, TEXT_OF_SCRIPT = 1 };
int evalText(const char *text, int caller);

}  // namespace zy
