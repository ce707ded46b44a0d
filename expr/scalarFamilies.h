// The families of scalar operators: what to compute, in which type, and where the operands stand.
// Rows of expr/operators.inc instantiate them. A node starts with the family's general routine,
// which looks where the operands are and puts the routine for these places in the node.
#pragma once

#include <cmath>
#include <type_traits>

#include "expr/operands.h"
#include "expr/readers.h"
#include "instance/report.h"

namespace zy {

// ---- Types: how a type is read from any scalar, and from the common ones without a call, and how
// it is written as a result -------------------------

template <class T>
struct Scalar;
template <>
struct Scalar<signed char> {
    static constexpr DataType type = DT_CHAR;
    static signed char read(const Value *value) { return static_cast<int8_t>(readInt32(value)); }
    static bool readFast(const Value *value, signed char &number) {
        number = value->payload.sc;
        return value->type == DT_CHAR;
    }
    static void write(Payload &payload, signed char number) { payload.sc = number; }
};
template <>
struct Scalar<unsigned char> {
    static constexpr DataType type = DT_UCHAR;
    static unsigned char read(const Value *value) { return static_cast<uint8_t>(readInt32(value)); }
    static bool readFast(const Value *value, unsigned char &number) {
        number = value->payload.uc;
        return value->type == DT_UCHAR;
    }
    static void write(Payload &payload, unsigned char number) { payload.uc = number; }
};
template <>
struct Scalar<short> {
    static constexpr DataType type = DT_SHORT;
    static short read(const Value *value) { return static_cast<int16_t>(readInt32(value)); }
    static bool readFast(const Value *value, short &number) {
        number = value->payload.s;
        return value->type == DT_SHORT;
    }
    static void write(Payload &payload, short number) { payload.s = number; }
};
template <>
struct Scalar<unsigned short> {
    static constexpr DataType type = DT_USHORT;
    static unsigned short read(const Value *value) {
        return static_cast<uint16_t>(readInt32(value));
    }
    static bool readFast(const Value *value, unsigned short &number) {
        number = value->payload.us;
        return value->type == DT_USHORT;
    }
    static void write(Payload &payload, unsigned short number) { payload.us = number; }
};
template <>
struct Scalar<int> {
    static constexpr DataType type = DT_INT;
    static int read(const Value *value) { return readInt32(value); }
    static bool readFast(const Value *value, int &number) {
        number = value->payload.i;
        return value->type == DT_INT;
    }
    static void write(Payload &payload, int number) { payload.i = number; }
};
template <>
struct Scalar<unsigned> {
    static constexpr DataType type = DT_UINT;
    static unsigned read(const Value *value) { return readUint32(value); }
    static bool readFast(const Value *value, unsigned &number) {
        number = value->payload.u;
        return value->type == DT_UINT || value->type == DT_INT;
    }
    static void write(Payload &payload, unsigned number) { payload.u = number; }
};
template <>
struct Scalar<long long> {
    static constexpr DataType type = DT_LLONG;
    static long long read(const Value *value) { return readSigned64(value); }
    static bool readFast(const Value *value, long long &number) {
        bool isInt = value->type == DT_INT;
        number = isInt ? value->payload.i : value->payload.ll;
        return isInt || value->type == DT_LLONG;
    }
    static void write(Payload &payload, long long number) { payload.ll = number; }
};
template <>
struct Scalar<unsigned long long> {
    static constexpr DataType type = DT_ULLONG;
    static unsigned long long read(const Value *value) { return readUnsigned64(value); }
    static bool readFast(const Value *value, unsigned long long &number) {
        bool isInt = value->type == DT_INT;
        number = isInt ? value->payload.i : value->payload.ull;
        return isInt || value->type == DT_ULLONG;
    }
    static void write(Payload &payload, unsigned long long number) { payload.ull = number; }
};
template <>
struct Scalar<float> {
    static constexpr DataType type = DT_FLOAT;
    static float read(const Value *value) { return readFloat(value); }
    static bool readFast(const Value *value, float &number) {
        number = value->payload.f;
        return value->type == DT_FLOAT;
    }
    static void write(Payload &payload, float number) { payload.f = number; }
};
template <>
struct Scalar<double> {
    static constexpr DataType type = DT_DOUBLE;
    static double read(const Value *value) { return readDouble(value); }
    static bool readFast(const Value *value, double &number) {
        if (value->type == DT_DOUBLE)
            number = value->payload.d;
        else if (value->type == DT_INT)
            number = value->payload.i;
        else if (value->type == DT_FLOAT)
            number = value->payload.f;
        else
            return false;
        return true;
    }
    static void write(Payload &payload, double number) { payload.d = number; }
};

template <class T>
void setScalar(Value *value, T number) {
    value->type = Scalar<T>::type;
    Scalar<T>::write(value->payload, number);
}

template <class T>
void pushScalar(T number) {
    if (Value *result = pushNewValue())
        setScalar(result, number);
}

// ---- Operations: on two numbers of one type -----------------------------------------------------

// Integers wrap around: they are computed unsigned.
template <class T, bool isInteger = std::is_integral_v<T>>
struct WrappingType {
    using type = T;
};
template <class T>
struct WrappingType<T, true> {
    using type = std::make_unsigned_t<T>;
};
template <class T>
using Wrapping = typename WrappingType<T>::type;

struct Add {
    template <class T>
    static T of(T a, T b) {
        return static_cast<T>(static_cast<Wrapping<T>>(a) + static_cast<Wrapping<T>>(b));
    }
};
struct Subtract {
    template <class T>
    static T of(T a, T b) {
        return static_cast<T>(static_cast<Wrapping<T>>(a) - static_cast<Wrapping<T>>(b));
    }
};
struct Multiply {
    template <class T>
    static T of(T a, T b) {
        return static_cast<T>(static_cast<Wrapping<T>>(a) * static_cast<Wrapping<T>>(b));
    }
};

// The bits of the float infinity taken as an integer, in every width.
constexpr int INTEGER_BY_ZERO = 0x7F800000;

// The quotient by -1, which for the smallest number has no value and wraps around.
template <class T>
bool isMinusOne(T b) {
    return std::is_signed_v<T> && b == static_cast<T>(-1);
}

struct Divide {
    template <class T>
    static T of(T a, T b) {
        if constexpr (std::is_integral_v<T>) {
            if (b == 0) [[unlikely]] {
                runWarning("integer divide by zero ");
                return INTEGER_BY_ZERO;
            }
            if (isMinusOne(b)) [[unlikely]]
                return Subtract::of(T{0}, a);
        }
        return a / b;
    }
};
struct Modulo {
    template <class T>
    static T of(T a, T b) {
        if (b == 0) [[unlikely]] {
            runWarning("integer mod by zero ");
            return INTEGER_BY_ZERO;
        }
        return isMinusOne(b) ? T{0} : a % b;
    }
};

struct BitOr {
    template <class T>
    static T of(T a, T b) {
        return a | b;
    }
};
struct BitXor {
    template <class T>
    static T of(T a, T b) {
        return a ^ b;
    }
};
struct BitAnd {
    template <class T>
    static T of(T a, T b) {
        return a & b;
    }
};

struct Less {
    template <class T>
    static bool of(T a, T b) {
        return a < b;
    }
};
struct LessEqual {
    template <class T>
    static bool of(T a, T b) {
        return a <= b;
    }
};
struct Equal {
    template <class T>
    static bool of(T a, T b) {
        return a == b;
    }
};
struct GreaterEqual {
    template <class T>
    static bool of(T a, T b) {
        return a >= b;
    }
};
struct Greater {
    template <class T>
    static bool of(T a, T b) {
        return a > b;
    }
};
struct NotEqual {
    template <class T>
    static bool of(T a, T b) {
        return a != b;
    }
};

// Shifts by a count reduced to the operand's width; to the right with the sign of a signed one.
template <class T>
T shiftedLeft(T number, unsigned count) {
    return static_cast<T>(static_cast<Wrapping<T>>(number) << (count % (8 * sizeof(T))));
}
template <class T>
T shiftedRight(T number, unsigned count) {
    return number >> (count % (8 * sizeof(T)));
}
// A count below zero shifts the other way.
struct ShiftLeft {
    template <class T>
    static T of(T number, int count) {
        auto distance = static_cast<unsigned>(count);
        return count < 0 ? shiftedRight(number, 0u - distance) : shiftedLeft(number, distance);
    }
};
struct ShiftRight {
    template <class T>
    static T of(T number, int count) {
        auto distance = static_cast<unsigned>(count);
        return count < 0 ? shiftedLeft(number, 0u - distance) : shiftedRight(number, distance);
    }
};

// ---- Operations on one number -------------------------------------------------------------------

struct Same {
    template <class T>
    static T of(T a) {
        return a;
    }
};
struct Complement {
    template <class T>
    static T of(T a) {
        return static_cast<T>(~a);
    }
};
// A NaN keeps its sign.
struct Negate {
    template <class T>
    static T of(T a) {
        if constexpr (std::is_integral_v<T>)
            return Subtract::of(T{0}, a);
        else
            return std::isnan(a) ? a : -a;
    }
};
struct Absolute {
    template <class T>
    static T of(T a) {
        return a < 0 ? Negate::of(a) : a;
    }
};

// ---- Families -----------------------------------------------------------------------------------

// A family computes a result Value, which may be the record of one of its operands, from operands.
template <class Operation, class T, class Result>
struct BinaryFamily {
    static void run(Value *result, const Value *left, const Value *right) {
        T a = Scalar<T>::read(left), b = Scalar<T>::read(right);
        setScalar(result, static_cast<Result>(Operation::of(a, b)));
    }
    static bool runFast(Value *result, const Value *left, const Value *right) {
        T a, b;
        if (!Scalar<T>::readFast(left, a) || !Scalar<T>::readFast(right, b)) [[unlikely]]
            return false;
        setScalar(result, static_cast<Result>(Operation::of(a, b)));
        return true;
    }
};
template <class Operation, class T>
struct ShiftFamily {
    static void run(Value *result, const Value *left, const Value *right) {
        T number = Scalar<T>::read(left);
        setScalar(result, Operation::of(number, readInt32(right)));
    }
    static bool runFast(Value *result, const Value *left, const Value *right) {
        T number;
        if (!Scalar<T>::readFast(left, number) || right->type != DT_INT) [[unlikely]]
            return false;
        setScalar(result, Operation::of(number, right->payload.i));
        return true;
    }
};
template <class Operation, class T, class Result>
struct UnaryFamily {
    static void run(Value *result, const Value *operand) {
        setScalar(result, static_cast<Result>(Operation::of(Scalar<T>::read(operand))));
    }
};

// The two operands as addresses, or in the order of their texts (-1, 0 or 1). False if one is
// missing.
bool takeAddresses(ExprNode *node, uintptr_t &left, uintptr_t &right);
bool takeTextOrder(ExprNode *node, int &order);

// The routines that rows of expr/operators.inc name.
template <class Operation, class T, class Result = T>
void arithmetic(ExprNode *node) {
    runBinary<BinaryFamily<Operation, T, Result>>(node);
}
template <class Operation, class T>
void compare(ExprNode *node) {
    runBinary<BinaryFamily<Operation, T, int>>(node);
}
template <class Operation, class T>
void shift(ExprNode *node) {
    runBinary<ShiftFamily<Operation, T>>(node);
}
template <class Operation, class T, class Result = T>
void unary(ExprNode *node) {
    runUnary<UnaryFamily<Operation, T, Result>>(node);
}

template <class Comparison>
void comparePointers(ExprNode *node) {
    if (uintptr_t left, right; takeAddresses(node, left, right))
        pushScalar<int>(Comparison::of(left, right));
}
template <class Comparison>
void compareTexts(ExprNode *node) {
    if (int order; takeTextOrder(node, order))
        pushScalar<int>(Comparison::of(order, 0));
}

}  // namespace zy
