// Arrays as arguments and results of script functions.
#pragma once

#include "decl/funcInfo.h"
#include "expr/scope.h"

namespace zy {

// Whether a formal is passed as an array or a pointer to one.
inline bool isArrayFormal(const TypeInfo *formal) {
    return formal->kind == KIND_ASSUMED_C_ARRAY || formal->kind == KIND_P_C_ARRAY ||
           formal->kind == KIND_ASSUMED_ARRAY || formal->kind == KIND_P_ARRAY;
}
// Whether the call takes the cell of a plain variable, which then isn't on the stack.
inline bool takesArrayCell(const TypeInfo *formal) {
    return formal->kind == KIND_ASSUMED_C_ARRAY || formal->kind == KIND_ASSUMED_ARRAY;
}

// The cell of such a formal. The actual is a variable's cell, for those that take it, or a Value,
// whose memory may pass to the cell. Elements of another type are passed as a converted copy.
VarCell *newArrayArgument(TypeInfo *formal, VarCell *actual);
VarCell *newArrayArgument(TypeInfo *formal, Value *actual);

// Whether a function's result is an array or a pointer to one.
inline bool returnsArray(const FuncInfo *function) {
    return function->returnKind == KIND_ARRAY || function->returnKind == KIND_ASSUMED_ARRAY ||
           function->returnKind == KIND_P_C_ARRAY || function->returnKind == KIND_P_ARRAY;
}
// Of a return of a local variable of its own, whose scope ends with the return: the variable's
// elements become those of the Value that was read from it, without a copy.
void takeLocalArray(const FuncInfo *function, TypeInfo *variable, Value *value);
// What the function gives for the value of its return statement, which is taken; NULL for none. It
// outlives the function's variables. NULL after a message for a shape that nothing tells.
Value *arrayReturnValue(const FuncInfo *function, Value *value);

}  // namespace zy
