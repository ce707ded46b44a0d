// The arguments of calls and the formals that take them.
#pragma once

#include "decl/funcInfo.h"
#include "expr/scope.h"
#include "expr/value.h"

namespace zy {

// A parameter list of `void` alone is no parameter.
bool hasParameters(const FuncInfo *function);
bool isByReference(const TypeInfo *formal);
// Whether the cell of a formal takes a plain number by value.
inline bool isNumberFormal(const TypeInfo *formal) {
    return formal->kind == KIND_SIMPLE && isReal(formal->dataType);
}

// Fills the frame of a function with the list of arguments. Gives those that no formal took.
ExprNode *passArguments(ScopeFrame *frame, TypeInfo *callee, ExprNode *actual);
// What goes to `...`: a list for the callee's context.
ExprNode *collectVarArgs(ExprNode *actual);
// The end of arguments that nothing takes.
void dropActuals(ExprNode *actual);

}  // namespace zy
