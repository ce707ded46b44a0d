// record header: what the statement loop and the evaluator want of calls of script functions.
#pragma once

#include "decl/typeInfo.h"
#include "expr/value.h"

namespace zy {

// Runs one call node: makes the callee's context current, whose return pushes the result on the
// caller's stack. 0, or -1 after a message with a zero Value in its place.
int callFunction(ExprNode *node);
// The arm of `return` in the current context.
void returnFromFunction();
// Leaves the current function without a value.
void leaveFunction(bool withDestructors);
void runDestructors(TypeInfo *symbols);

}  // namespace zy
