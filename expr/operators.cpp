#include "expr/operators.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "expr/arrayRoutines.h"
#include "expr/compoundFamilies.h"
#include "expr/mathFamilies.h"
#include "expr/mathRoutines.h"
#include "expr/routines.h"
#include "expr/scalarFamilies.h"
#include "instance/report.h"
#include "rtlib/cFunctions.h"
#include "rtlib/libraryCall.h"

namespace zy {

namespace {

constexpr auto argumentCounts = [] {
    std::array<int8_t, OPERATOR_COUNT> table{};
    table.fill(1);
#define ZY_OPERATOR(name, code, arguments, ...) table[code] = arguments;
#include "expr/operators.inc"
#undef ZY_OPERATOR
    return table;
}();

// The result types by code, as the first code of each range.
struct ResultRange {
    int first;
    DataType type;
};
constexpr ResultRange resultRanges[] = {
    {0, DT_CHAR},       {2, DT_UCHAR},      {3, DT_SHORT},     {5, DT_USHORT},
    {6, DT_INT},        {205, DT_UINT},     {223, DT_LLONG},   {239, DT_ULLONG},
    {251, DT_FLOAT},    {290, DT_DOUBLE},   {329, DT_COMPLEX}, {373, DT_DUAL},
    {404, DT_DCOMPLEX}, {448, DT_DDUAL},    {479, DT_VECT},    {514, DT_QUATERNION},
    {526, DT_TRANS},    {540, DT_IMAGE},    {553, DT_STRING},  {574, DT_P_CHAR},
    {581, DT_P_FILE},   {585, DT_P_STRUCT}, {587, DT_P_VOID},  {595, DT_VOID},
    {598, DT_JOINT},    {601, DT_ACTUATOR}, {604, DT_VOID},    {681, DT_CIRCLE},
    {682, DT_SPLINE},   {683, DT_VOID},
};
constexpr auto resultTypes = [] {
    std::array<DataType, OPERATOR_COUNT> types{};
    for (const ResultRange &range : resultRanges)
        for (int code = range.first; code < OPERATOR_COUNT; code++)
            types[code] = range.type;
    return types;
}();

// The source operators by how tight they bind. A `?` waits on the parser's stack with 0 instead.
struct Precedence {
    int first, last, precedence;
};
constexpr Precedence precedences[] = {
    {OP_COMMA, OP_COMMA, 1},
    {OP_ASSIGN, OP_ASSIGN_SHIFT_RIGHT, 2},
    {OP_CONDITIONAL, OP_CONDITIONAL, 3},
    {OP_LOGICAL_OR, OP_LOGICAL_OR, 4},
    {OP_LOGICAL_XOR, OP_LOGICAL_XOR, 5},
    {OP_LOGICAL_AND, OP_LOGICAL_AND, 6},
    {OP_BAR, OP_BAR, 7},
    {OP_CARET, OP_CARET, 8},
    {OP_AMPERSAND, OP_AMPERSAND, 9},
    {OP_EQUAL, OP_EQUAL, 10},
    {OP_NOT_EQUAL, OP_NOT_EQUAL, 10},
    {OP_LESS, OP_LESS_EQUAL, 11},
    {OP_GREATER_EQUAL, OP_GREATER, 11},
    {OP_LEFT_SHIFT, OP_RIGHT_SHIFT, 12},
    {OP_PLUS, OP_MINUS, 13},
    {OP_STAR, OP_SLASH, 14},
    {OP_PERCENT, OP_PERCENT, 14},
    {OP_ELEMENT_MULTIPLY, OP_ELEMENT_DIVIDE, 14},
    {OP_SCALAR_DIVIDE_ARRAY, OP_SCALAR_DIVIDE_ARRAY, 14},
    {OP_INDIRECTION, OP_INDIRECTION, 15},
    {OP_CAST, OP_NEW, 15},
    {OP_PREFIX_INCREMENT, OP_PREFIX_DECREMENT, 15},
    {OP_ADDRESS, OP_ADDRESS, 15},
    {OP_EXCLAMATION, OP_EXCLAMATION, 15},
    {OP_TILDE, OP_UNARY_MINUS, 15},
    {OP_COMMAND_SUBSTITUTION, OP_COMMAND_SUBSTITUTION, 15},
    {OP_POSTFIX_INCREMENT, OP_POSTFIX_DECREMENT, 16},
    {OP_MEMBER, OP_MEMBER, 17},
    {OP_ARROW, OP_ARROW, 17},
    {OP_SCOPE, OP_SCOPE, 18},
};

}  // namespace

int argumentCount(int code) {
    int count = argumentCounts[code];
    return count < 0 ? ANY_ARGUMENTS : count;
}

// No table of addresses: the loader would have to fill it in anew for each instance.
NodeRoutine operatorRoutine(int code) {
    if (code >= FIRST_SOURCE_OPERATOR)
        return undefinedOperation;
    switch (code) {
#define ZY_OPERATOR(name, code, arguments, ...) \
    case code:                                  \
        return __VA_ARGS__;
#include "expr/operators.inc"
#undef ZY_OPERATOR
        default: return undefinedOperation;
    }
}

DataType resultTypeOf(int code) {
    return code < 0 ? DT_VOID : resultTypes[std::min(code, OPERATOR_COUNT - 1)];
}

int operatorPrecedence(int code) {
    for (const Precedence &row : precedences)
        if (code >= row.first && code <= row.last)
            return row.precedence;
    return 0;
}

void undefinedOperation(ExprNode *) { runError("undefined operation"); }

}  // namespace zy
