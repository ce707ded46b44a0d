// record header: the operators, as the list expr/operators.inc gives them.
#pragma once

#include "expr/value.h"

namespace zy {

enum OpCode : int32_t {
#define ZY_OPERATOR(name, code, arguments, ...) OP_##name = code,
#include "expr/operators.inc"
#undef ZY_OPERATOR
};

constexpr int OPERATOR_COUNT = 785;         // codes lie below it
constexpr int FIRST_SOURCE_OPERATOR = 728;  // from here on a code must not be left to run
constexpr int ANY_ARGUMENTS = 9999;         // argumentCount of a function with a variable list

// How many arguments a built-in function takes at most.
int argumentCount(int code);

// The data type that an operator's result has by its code's range; DT_VOID where the operands
// decide.
DataType resultTypeOf(int code);

// How tight a source operator binds, 1 (comma) to 18 (::); 0 for a built-in with an argument list.
int operatorPrecedence(int code);

// The routine that runs nodes of that code.
NodeRoutine operatorRoutine(int code);

// The routine of operators that nothing runs: a message, no result.
void undefinedOperation(ExprNode *node);

}  // namespace zy
