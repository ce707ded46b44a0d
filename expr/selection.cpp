// One table for each family of operators: rows are pairs of types, columns its operators.

#include "expr/selection.h"

#include <span>

#include "expr/nodeClasses.h"
#include "instance/report.h"

namespace zy {

namespace {

using TypeTest = bool (*)(int type);

struct PairRow {
    TypeTest left, right;
    int codes[5];  // by column of the family; NO_OPERATOR where that operator has no such row
};

struct UnaryRow {
    TypeTest operand;
    int code;
};

// ---- Tests of one operand ----------------------------------------------------------------------

template <int Limit>
bool below(int type) {
    return type < Limit;
}
template <int Type>
bool exactly(int type) {
    return type == Type;
}
// Single or wide complex and dual numbers, each with everything narrower.
bool isSingleNumber(int type) { return type < DT_DCOMPLEX || type == DT_DUAL; }

bool isString(int type) { return type == DT_STRING; }
bool isCharText(int type) { return type == DT_P_CHAR; }
bool isCharPointer(int type) { return type == DT_P_CHAR || type == DT_P_UCHAR; }
bool isDefined(int type) { return type != DT_UNDEFINED && type != DT_VOID; }
bool isAnyPointer(int type) { return isPointer(type); }
// A pointer with a step from one element to the next.
bool isSteppingPointer(int type) {
    return isPointer(type) && type != DT_P_VOID && type != DT_NULL && type != DT_FUNCTION &&
           type != DT_P_FUNCTION;
}
bool isRealNumber(int type) { return isReal(type); }
bool isInteger(int type) { return isIntegral(type); }
bool isComputationalArray(int type) { return isComputational(type); }
bool isTruthValue(int type) { return isReal(type) || isPointer(type) || type == DT_STRING; }

constexpr int REAL_END = DT_DOUBLE + 1;    // above the codes of real numbers
constexpr int NUMBERS_END = DT_DDUAL + 1;  // and of all numbers

// ---- The families ------------------------------------------------------------------------------

// Columns: + - * / %. The difference of unsigned numbers is signed.
constexpr PairRow arithmeticRows[] = {
    // clang-format off
    {below<DT_UINT>, below<DT_UINT>,
     {OP_ADD_INT, OP_SUBTRACT_INT, OP_MULTIPLY_INT, OP_DIVIDE_INT, OP_MODULO_INT}},
    {exactly<DT_UINT>, exactly<DT_UINT>,
     {OP_ADD_UINT, OP_SUBTRACT_UINT, OP_MULTIPLY_UINT, OP_DIVIDE_UINT, OP_MODULO_UINT}},
    {exactly<DT_UINT>, below<DT_UINT>,
     {OP_ADD_UINT, OP_SUBTRACT_UINT_INT, OP_MULTIPLY_UINT, OP_DIVIDE_UINT, OP_MODULO_UINT}},
    {below<DT_UINT>, exactly<DT_UINT>,
     {OP_ADD_UINT, OP_SUBTRACT_INT_UINT, OP_MULTIPLY_UINT, OP_DIVIDE_UINT, OP_MODULO_UINT}},
    {exactly<DT_LLONG>, exactly<DT_UINT>,
     {OP_ADD_ULLONG, OP_SUBTRACT_LLONG, OP_MULTIPLY_ULLONG, OP_DIVIDE_ULLONG, OP_MODULO_ULLONG}},
    {exactly<DT_UINT>, exactly<DT_LLONG>,
     {OP_ADD_ULLONG, OP_SUBTRACT_LLONG, OP_MULTIPLY_ULLONG, OP_DIVIDE_ULLONG, OP_MODULO_ULLONG}},
    {below<DT_ULLONG>, below<DT_ULLONG>,
     {OP_ADD_LLONG, OP_SUBTRACT_LLONG, OP_MULTIPLY_LLONG, OP_DIVIDE_LLONG, OP_MODULO_LLONG}},
    {exactly<DT_ULLONG>, exactly<DT_ULLONG>,
     {OP_ADD_ULLONG, OP_SUBTRACT_ULLONG, OP_MULTIPLY_ULLONG, OP_DIVIDE_ULLONG, OP_MODULO_ULLONG}},
    {exactly<DT_ULLONG>, below<DT_ULLONG>,
     {OP_ADD_ULLONG, OP_SUBTRACT_ULLONG_LLONG, OP_MULTIPLY_ULLONG, OP_DIVIDE_ULLONG,
      OP_MODULO_ULLONG}},
    {below<DT_ULLONG>, exactly<DT_ULLONG>,
     {OP_ADD_ULLONG, OP_SUBTRACT_LLONG_ULLONG, OP_MULTIPLY_ULLONG, OP_DIVIDE_ULLONG,
      OP_MODULO_ULLONG}},
    {below<DT_DOUBLE>, below<DT_DOUBLE>,
     {OP_ADD_FLOAT, OP_SUBTRACT_FLOAT, OP_MULTIPLY_FLOAT, OP_DIVIDE_FLOAT}},
    {below<REAL_END>, below<REAL_END>,
     {OP_ADD_DOUBLE, OP_SUBTRACT_DOUBLE, OP_MULTIPLY_DOUBLE, OP_DIVIDE_DOUBLE}},
    {below<DT_DCOMPLEX>, below<DT_DCOMPLEX>,
     {OP_ADD_COMPLEX, OP_SUBTRACT_COMPLEX, OP_MULTIPLY_COMPLEX, OP_DIVIDE_COMPLEX}},
    {below<DT_DUAL>, below<DT_DUAL>,
     {OP_ADD_DCOMPLEX, OP_SUBTRACT_DCOMPLEX, OP_MULTIPLY_DCOMPLEX, OP_DIVIDE_DCOMPLEX}},
    {below<DT_DDUAL>, below<DT_DDUAL>,
     {OP_ADD_DUAL, OP_SUBTRACT_DUAL, OP_MULTIPLY_DUAL, OP_DIVIDE_DUAL}},
    {below<NUMBERS_END>, below<NUMBERS_END>,
     {OP_ADD_DDUAL, OP_SUBTRACT_DDUAL, OP_MULTIPLY_DDUAL, OP_DIVIDE_DDUAL}},

    {isString, isString,
     {OP_ADD_STRING, OP_SUBTRACT_STRING, OP_MULTIPLY_STRING, OP_DIVIDE_STRING}},
    {isString, isCharText,
     {OP_ADD_STRING, OP_SUBTRACT_STRING, OP_MULTIPLY_STRING, OP_DIVIDE_STRING}},
    {isCharText, isString,
     {OP_ADD_STRING, OP_SUBTRACT_STRING, OP_MULTIPLY_STRING, OP_DIVIDE_STRING}},
    {isString, isDefined,
     {NO_OPERATOR, OP_SUBTRACT_STRING, OP_MULTIPLY_STRING, OP_DIVIDE_STRING}},
    {isDefined, isString,
     {NO_OPERATOR, OP_SUBTRACT_STRING, OP_MULTIPLY_STRING, OP_DIVIDE_STRING}},

    {isComputationalArray, below<DT_DDUAL>,
     {OP_ARRAY_ADD_SCALAR, OP_ARRAY_SUBTRACT_SCALAR, OP_ARRAY_MULTIPLY_SCALAR,
      OP_ARRAY_DIVIDE_SCALAR}},
    {isComputationalArray, exactly<DT_DDUAL>,
     {NO_OPERATOR, OP_ARRAY_SUBTRACT_SCALAR, OP_ARRAY_MULTIPLY_SCALAR, OP_ARRAY_DIVIDE_SCALAR}},
    {below<DT_DDUAL>, isComputationalArray,
     {OP_SCALAR_ADD_ARRAY, OP_SCALAR_SUBTRACT_ARRAY, OP_SCALAR_MULTIPLY_ARRAY}},
    {exactly<DT_DDUAL>, isComputationalArray,
     {NO_OPERATOR, OP_SCALAR_SUBTRACT_ARRAY, OP_SCALAR_MULTIPLY_ARRAY}},
    {isComputationalArray, isComputationalArray,
     {OP_ARRAYS_ADD, OP_ARRAYS_SUBTRACT, OP_MATRIX_PRODUCT}},

    {isSteppingPointer, isInteger, {OP_POINTER_ADD, OP_POINTER_SUBTRACT}},
    {isInteger, isSteppingPointer, {OP_POINTER_ADD, OP_POINTER_SUBTRACT}},
    {isSteppingPointer, isSteppingPointer, {NO_OPERATOR, OP_POINTER_DIFFERENCE}},
};

// Columns: | ^ &
constexpr PairRow bitRows[] = {
    {below<DT_UINT>, below<DT_UINT>, {OP_BIT_OR_INT, OP_BIT_XOR_INT, OP_BIT_AND_INT}},
    {below<DT_LLONG>, below<DT_LLONG>, {OP_BIT_OR_UINT, OP_BIT_XOR_UINT, OP_BIT_AND_UINT}},
    {exactly<DT_LLONG>, exactly<DT_UINT>,
     {OP_BIT_OR_ULLONG, OP_BIT_XOR_ULLONG, OP_BIT_AND_ULLONG}},
    {exactly<DT_UINT>, exactly<DT_LLONG>,
     {OP_BIT_OR_ULLONG, OP_BIT_XOR_ULLONG, OP_BIT_AND_ULLONG}},
    {below<DT_ULLONG>, below<DT_ULLONG>, {OP_BIT_OR_LLONG, OP_BIT_XOR_LLONG, OP_BIT_AND_LLONG}},
    {below<DT_FLOAT>, below<DT_FLOAT>, {OP_BIT_OR_ULLONG, OP_BIT_XOR_ULLONG, OP_BIT_AND_ULLONG}},
};

// Columns: << >>. The left operand alone decides.
constexpr PairRow shiftRows[] = {
    {below<DT_UINT>, isInteger, {OP_SHIFT_LEFT_INT, OP_SHIFT_RIGHT_INT}},
    {exactly<DT_UINT>, isInteger, {OP_SHIFT_LEFT_UINT, OP_SHIFT_RIGHT_UINT}},
    {exactly<DT_LLONG>, isInteger, {OP_SHIFT_LEFT_LLONG, OP_SHIFT_RIGHT_LLONG}},
    {exactly<DT_ULLONG>, isInteger, {OP_SHIFT_LEFT_ULLONG, OP_SHIFT_RIGHT_ULLONG}},
};

// Columns: < <= >= >. The code is that of the wider operand: a family compares in its width.
// Arrays come before pointers, so that pointers to computational arrays compare by elements.
constexpr PairRow orderRows[] = {
    {exactly<DT_UCHAR>, exactly<DT_UCHAR>,
     {OP_LESS_UCHAR, OP_LESS_EQUAL_UCHAR, OP_GREATER_EQUAL_UCHAR, OP_GREATER_UCHAR}},
    {exactly<DT_UCHAR>, exactly<DT_CHAR>,
     {OP_LESS_CHAR, OP_LESS_EQUAL_CHAR, OP_GREATER_EQUAL_CHAR, OP_GREATER_CHAR}},
    {exactly<DT_CHAR>, exactly<DT_UCHAR>,
     {OP_LESS_CHAR, OP_LESS_EQUAL_CHAR, OP_GREATER_EQUAL_CHAR, OP_GREATER_CHAR}},
    {below<DT_USHORT>, below<DT_USHORT>,
     {OP_LESS_SHORT, OP_LESS_EQUAL_SHORT, OP_GREATER_EQUAL_SHORT, OP_GREATER_SHORT}},
    {below<DT_INT>, below<DT_INT>,
     {OP_LESS_USHORT, OP_LESS_EQUAL_USHORT, OP_GREATER_EQUAL_USHORT, OP_GREATER_USHORT}},
    {below<DT_UINT>, below<DT_UINT>,
     {OP_LESS_INT, OP_LESS_EQUAL_INT, OP_GREATER_EQUAL_INT, OP_GREATER_INT}},
    {below<DT_LLONG>, below<DT_LLONG>,
     {OP_LESS_UINT, OP_LESS_EQUAL_UINT, OP_GREATER_EQUAL_UINT, OP_GREATER_UINT}},
    {below<DT_ULLONG>, below<DT_ULLONG>,
     {OP_LESS_LLONG, OP_LESS_EQUAL_LLONG, OP_GREATER_EQUAL_LLONG, OP_GREATER_LLONG}},
    {below<DT_FLOAT>, below<DT_FLOAT>,
     {OP_LESS_ULLONG, OP_LESS_EQUAL_ULLONG, OP_GREATER_EQUAL_ULLONG, OP_GREATER_ULLONG}},
    {isRealNumber, isRealNumber,
     {OP_LESS_REAL, OP_LESS_EQUAL_REAL, OP_GREATER_EQUAL_REAL, OP_GREATER_REAL}},
    {exactly<DT_NULL>, isRealNumber,
     {OP_LESS_REAL, OP_LESS_EQUAL_REAL, OP_GREATER_EQUAL_REAL, OP_GREATER_REAL}},
    {isRealNumber, exactly<DT_NULL>,
     {OP_LESS_REAL, OP_LESS_EQUAL_REAL, OP_GREATER_EQUAL_REAL, OP_GREATER_REAL}},
    {isComputationalArray, isComputationalArray,
     {OP_ARRAYS_LESS, OP_ARRAYS_LESS_EQUAL, OP_ARRAYS_GREATER_EQUAL, OP_ARRAYS_GREATER}},
    {isComputationalArray, below<DT_COMPLEX>,
     {OP_ARRAY_LESS_SCALAR, OP_ARRAY_LESS_EQUAL_SCALAR, OP_ARRAY_GREATER_EQUAL_SCALAR,
      OP_ARRAY_GREATER_SCALAR}},
    {below<DT_COMPLEX>, isComputationalArray,
     {OP_SCALAR_LESS_ARRAY, OP_SCALAR_LESS_EQUAL_ARRAY, OP_SCALAR_GREATER_EQUAL_ARRAY,
      OP_SCALAR_GREATER_ARRAY}},
    {isAnyPointer, isAnyPointer,
     {OP_LESS_POINTER, OP_LESS_EQUAL_POINTER, OP_GREATER_EQUAL_POINTER, OP_GREATER_POINTER}},
    {isString, isString, {OP_LESS_STRING, NO_OPERATOR, NO_OPERATOR, OP_GREATER_STRING}},
    {isString, isCharPointer, {OP_LESS_STRING, NO_OPERATOR, NO_OPERATOR, OP_GREATER_STRING}},
    {isCharPointer, isString, {OP_LESS_STRING, NO_OPERATOR, NO_OPERATOR, OP_GREATER_STRING}},
};

// Columns: == !=. A constant 0 beside a pointer counts as NULL.
constexpr PairRow equalityRows[] = {
    {isRealNumber, isRealNumber, {OP_EQUAL_REAL, OP_NOT_EQUAL_REAL}},
    {isSingleNumber, isSingleNumber, {OP_EQUAL_COMPLEX, OP_NOT_EQUAL_COMPLEX}},
    {below<NUMBERS_END>, below<NUMBERS_END>,
     {OP_EQUAL_DCOMPLEX, OP_NOT_EQUAL_DCOMPLEX}},
    {exactly<DT_NULL>, isRealNumber, {OP_EQUAL_REAL, OP_NOT_EQUAL_REAL}},
    {isRealNumber, exactly<DT_NULL>, {OP_EQUAL_REAL, OP_NOT_EQUAL_REAL}},
    {isComputationalArray, isComputationalArray, {OP_ARRAYS_EQUAL, OP_ARRAYS_NOT_EQUAL}},
    {isComputationalArray, below<NUMBERS_END>,
     {OP_ARRAY_EQUAL_SCALAR, OP_ARRAY_NOT_EQUAL_SCALAR}},
    {below<NUMBERS_END>, isComputationalArray,
     {OP_SCALAR_EQUAL_ARRAY, OP_SCALAR_NOT_EQUAL_ARRAY}},
    {isString, isString, {OP_EQUAL_STRING, OP_NOT_EQUAL_STRING}},
    {isString, isCharPointer, {OP_EQUAL_STRING, OP_NOT_EQUAL_STRING}},
    {isCharPointer, isString, {OP_EQUAL_STRING, OP_NOT_EQUAL_STRING}},
    {isAnyPointer, isAnyPointer, {OP_EQUAL_POINTER, OP_NOT_EQUAL_POINTER}},
    {isAnyPointer, isString, {OP_EQUAL_POINTER, OP_NOT_EQUAL_POINTER}},
    {isString, isAnyPointer, {OP_EQUAL_POINTER, OP_NOT_EQUAL_POINTER}},
};

// Columns: || ^^ &&
constexpr PairRow logicRows[] = {
    {isComputationalArray, isComputationalArray, {OP_ARRAYS_OR, OP_ARRAYS_XOR, OP_ARRAYS_AND}},
    {isComputationalArray, below<NUMBERS_END>,
     {OP_ARRAY_OR_SCALAR, OP_ARRAY_XOR_SCALAR, OP_ARRAY_AND_SCALAR}},
    {below<NUMBERS_END>, isComputationalArray,
     {OP_SCALAR_OR_ARRAY, OP_SCALAR_XOR_ARRAY, OP_SCALAR_AND_ARRAY}},
    {isTruthValue, isTruthValue, {OP_OR, OP_XOR, OP_AND}},
};

constexpr UnaryRow complementRows[] = {
    {exactly<DT_CHAR>, OP_ONES_COMPLEMENT_CHAR},     {exactly<DT_UCHAR>, OP_ONES_COMPLEMENT_UCHAR},
    {exactly<DT_SHORT>, OP_ONES_COMPLEMENT_SHORT},   {exactly<DT_USHORT>, OP_ONES_COMPLEMENT_USHORT},
    {exactly<DT_INT>, OP_ONES_COMPLEMENT_INT},       {exactly<DT_UINT>, OP_ONES_COMPLEMENT_UINT},
    {exactly<DT_LLONG>, OP_ONES_COMPLEMENT_LLONG},   {exactly<DT_ULLONG>, OP_ONES_COMPLEMENT_ULLONG},
};

constexpr UnaryRow negationRows[] = {
    {below<DT_UINT>, OP_NEGATE_INT},
    {exactly<DT_UINT>, OP_NEGATE_UINT},
    {exactly<DT_LLONG>, OP_NEGATE_LLONG},
    {exactly<DT_ULLONG>, OP_NEGATE_ULLONG},
    {exactly<DT_FLOAT>, OP_NEGATE_FLOAT},
    {exactly<DT_DOUBLE>, OP_NEGATE_DOUBLE},
    {exactly<DT_COMPLEX>, OP_NEGATE_COMPLEX},
    {exactly<DT_DCOMPLEX>, OP_NEGATE_DCOMPLEX},
    {exactly<DT_DUAL>, OP_NEGATE_DUAL},
    {exactly<DT_DDUAL>, OP_NEGATE_DDUAL},
    {isComputationalArray, OP_NEGATE_ARRAY},
};

constexpr UnaryRow notRows[] = {
    {isComputationalArray, OP_NOT_ARRAY},
    {below<NUMBERS_END>, OP_NOT},
    {isTruthValue, OP_NOT},
    // clang-format on
};

// ---- Operators ----------------------------------------------------------------------------------

struct BinaryOperator {
    int op;
    std::span<const PairRow> rows;
    int column;
};
constexpr BinaryOperator binaryOperators[] = {
    {OP_PLUS, arithmeticRows, 0},     {OP_MINUS, arithmeticRows, 1},
    {OP_STAR, arithmeticRows, 2},     {OP_SLASH, arithmeticRows, 3},
    {OP_PERCENT, arithmeticRows, 4},  {OP_BAR, bitRows, 0},
    {OP_CARET, bitRows, 1},           {OP_AMPERSAND, bitRows, 2},
    {OP_LEFT_SHIFT, shiftRows, 0},    {OP_RIGHT_SHIFT, shiftRows, 1},
    {OP_LESS, orderRows, 0},          {OP_LESS_EQUAL, orderRows, 1},
    {OP_GREATER_EQUAL, orderRows, 2}, {OP_GREATER, orderRows, 3},
    {OP_EQUAL, equalityRows, 0},      {OP_NOT_EQUAL, equalityRows, 1},
    {OP_LOGICAL_OR, logicRows, 0},    {OP_LOGICAL_XOR, logicRows, 1},
    {OP_LOGICAL_AND, logicRows, 2},
};

std::span<const UnaryRow> unaryRows(int op) {
    switch (op) {
        case OP_TILDE: return complementRows;
        case OP_UNARY_MINUS: return negationRows;
        default: return notRows;
    }
}

struct Refusal {
    int op;
    int code;
    void (*report)();
};
constexpr Refusal refusals[] = {
    // clang-format off
    {OP_PLUS, OP_ADD_FLOAT, [] { parseError("invalid operands for addition operator +"); }},
    {OP_MINUS, OP_SUBTRACT_FLOAT, [] { parseError("invalid operands for subtraction operator -"); }},
    {OP_STAR, OP_MULTIPLY_FLOAT, [] { parseError("invalid operands for multiplication operator *"); }},
    {OP_SLASH, OP_DIVIDE_FLOAT, [] { parseError("invalid operands for division operator  /"); }},
    {OP_PERCENT, OP_MODULO_INT, [] { parseError("mod operator %% is applied to nonintegral values"); }},
    {OP_BAR, OP_BIT_OR_INT, [] { parseError("bitwise or operator | is applied to nonintegral values"); }},
    {OP_CARET, OP_BIT_XOR_INT, [] { parseError("bitwise exclusive or operator ^ is applied to nonintegral values"); }},
    {OP_AMPERSAND, OP_BIT_AND_INT, [] { parseError("bitwise and operator & is applied to nonintegral values"); }},
    {OP_LEFT_SHIFT, OP_SHIFT_LEFT_INT, [] { parseError("operands are non-integral type for bitwise left shift operator << "); }},
    {OP_RIGHT_SHIFT, OP_SHIFT_RIGHT_INT, [] { parseError("operands are non-integral type for bitwise left shift operator >> "); }},
    {OP_LESS, OP_LESS_REAL, [] { parseError("invalid operands for less than operator <"); }},
    {OP_LESS_EQUAL, OP_LESS_EQUAL_REAL, [] { parseError("invalid operands for less than or equal operator <="); }},
    {OP_GREATER_EQUAL, OP_GREATER_EQUAL_REAL, [] { parseError("invalid operands for greater than or equal  operator >="); }},
    {OP_GREATER, OP_GREATER_REAL, [] { parseError("invalid operands for greater than  operator  >"); }},
    {OP_EQUAL, OP_EQUAL_REAL, [] { parseError("invalid operands for equal operator =="); }},
    {OP_NOT_EQUAL, OP_NOT_EQUAL_REAL, [] { parseError("invalid operands for not equal operator !="); }},
    {OP_LOGICAL_OR, OP_OR, [] { parseError("invalid operands for or operator ||"); }},
    {OP_LOGICAL_XOR, OP_XOR, [] { parseError("invalid operands for exclusive or operator ^^"); }},
    {OP_LOGICAL_AND, OP_AND, [] { parseError("invalid operands for and operator &&"); }},
    {OP_TILDE, OP_ONES_COMPLEMENT_INT, [] { parseError("the bitwise one's complement  operator ~ is applied to nonintegral values"); }},
    {OP_UNARY_MINUS, OP_NEGATE_FLOAT, [] { parseError("invalid operand for negation operator -"); }},
    {OP_EXCLAMATION, OP_NOT, [] { parseError("invalid operand for not operator !"); }},
    {OP_ASSIGN_ADD, OP_ASSIGN_ADD, [] { parseError("invalid operands for operator += "); }},
    {OP_ASSIGN_SUBTRACT, OP_ASSIGN_SUBTRACT, [] { parseError("invalid operands for operator -= "); }},
    {OP_ASSIGN_MULTIPLY, OP_ASSIGN_MULTIPLY, [] { parseError("invalid operands for operator *= "); }},
    {OP_ASSIGN_DIVIDE, OP_ASSIGN_DIVIDE, [] { parseError("invalid operands for operator /= "); }},
    {OP_ASSIGN_MODULO, OP_ASSIGN_MODULO, [] { parseError("operands are non-integral type for operator %%= "); }},
    {OP_ASSIGN_BIT_AND, OP_ASSIGN_BIT_AND, [] { parseError("operands are non-integral type for operator &= "); }},
    {OP_ASSIGN_BIT_XOR, OP_ASSIGN_BIT_XOR, [] { parseError("operands are non-integral type for operator ^= "); }},
    {OP_ASSIGN_BIT_OR, OP_ASSIGN_BIT_OR, [] { parseError("operands are non-integral type for operator |= "); }},
    {OP_ASSIGN_SHIFT_LEFT, OP_ASSIGN_SHIFT_LEFT, [] { parseError("operands are non-integral type for operator <<= "); }},
    {OP_ASSIGN_SHIFT_RIGHT, OP_ASSIGN_SHIFT_RIGHT, [] { parseError("operands are non-integral type for operator >>= "); }},
    // clang-format on
};

}  // namespace

int selectBinary(int op, int left, int right) {
    for (const BinaryOperator &row : binaryOperators) {
        if (row.op != op)
            continue;
        for (const PairRow &pair : row.rows)
            if (pair.left(left) && pair.right(right) && pair.codes[row.column] != NO_OPERATOR)
                return pair.codes[row.column];
    }
    return NO_OPERATOR;
}

int selectUnary(int op, int operand) {
    for (const UnaryRow &row : unaryRows(op))
        if (row.operand(operand))
            return row.code;
    return NO_OPERATOR;
}

int refuseOperands(int op) {
    for (const Refusal &refusal : refusals) {
        if (refusal.op != op)
            continue;
        refusal.report();
        return refusal.code;
    }
    return op;
}

}  // namespace zy
