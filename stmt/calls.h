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
// Destroys the objects of a list that live, in the order of their declarations.
void runDestructors(TypeInfo *symbols);
// A call node whose object stands in the record on top of classContext.
void callPrepared(ExprNode *node);

}  // namespace zy
