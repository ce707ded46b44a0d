// The families of mathematical functions and of complex and dual arithmetic, which rows of
// expr/operators.inc instantiate over the type they compute in. A complex or dual number is read
// from any scalar, as its type is from any real one.
#pragma once

#include "expr/scalarFamilies.h"
#include "numeric/convert.h"
#include "numeric/elementOperations.h"
#include "numeric/mathFunctions.h"

namespace zy {

// ---- Pairs as scalars ---------------------------------------------------------------------------

template <class Pair, DataType code>
struct NarrowScalar {
    static constexpr DataType type = code;
    static Pair read(const Value *value) {
        FloatPair pair = readComplex(value);
        return {pair.first, pair.second};
    }
    static bool readFast(const Value *value, Pair &number) {
        number = {value->payload.pair[0], value->payload.pair[1]};
        return value->type == type;
    }
};
template <class Pair, DataType code>
struct WideScalar {
    static constexpr DataType type = code;
    static Pair read(const Value *value) {
        DoublePair pair = readDoubleComplex(value);
        return {pair.first, pair.second};
    }
    static bool readFast(const Value *value, Pair &number) {
        number = {value->payload.d, value->payload2.d};
        return value->type == type;
    }
};
template <>
struct Scalar<Complex<float>> : NarrowScalar<Complex<float>, DT_COMPLEX> {};
template <>
struct Scalar<Dual<float>> : NarrowScalar<Dual<float>, DT_DUAL> {};
template <>
struct Scalar<Complex<double>> : WideScalar<Complex<double>, DT_DCOMPLEX> {};
template <>
struct Scalar<Dual<double>> : WideScalar<Dual<double>, DT_DDUAL> {};

template <class Pair>
void setPair(Value *value, Pair pair) {
    value->type = Scalar<Pair>::type;
    if constexpr (sizeof(pair.first) == sizeof(float)) {
        value->payload.pair[0] = pair.first;
        value->payload.pair[1] = pair.second;
    } else {
        value->payload.d = pair.first;
        value->payload2.d = pair.second;
    }
}
template <class T>
void setScalar(Value *value, Complex<T> pair) {
    setPair(value, pair);
}
template <class T>
void setScalar(Value *value, Dual<T> pair) {
    setPair(value, pair);
}

// ---- Operations ---------------------------------------------------------------------------------

// A scalar's negative keeps its special values.
struct NegatePair {
    template <class Pair>
    static Pair of(Pair z) {
        bool special =
            (isInfPair(z) && std::isinf(z.second)) || (std::isnan(z.first) && std::isnan(z.second));
        return special ? z : NegateElement::of(z);
    }
};

struct Modulus {
    template <class Pair>
    static auto of(Pair z) {
        return complexAbs(z);
    }
};
template <class Pair>
void modulus(ExprNode *node) {
    runUnary<UnaryFamily<Modulus, Pair, typename Pair::Part>>(node);
}

struct ConjugateNumber {
    template <class Pair>
    static Pair of(Pair z) {
        return conjugatePair(z);
    }
};

// Part by part: the remainder by the smaller of both quotients, and powers of 2.
struct PairRemainder {
    template <class Pair>
    static Pair of(Pair a, Pair b) {
        if (isNaNPair(a) || isNaNPair(b) || isInfPair(a) || isZeroPair(b))
            return nanPair<Pair>;
        if (isInfPair(b))
            return a;
        auto first = std::trunc(a.first / b.first), second = std::trunc(a.second / b.second);
        auto times = second < first || std::isnan(first) ? second : first;
        return {a.first - times * b.first, a.second - times * b.second};
    }
};
struct PairScale {
    template <class Pair>
    static Pair of(Pair z, Pair exponents) {
        return {std::ldexp(z.first, truncateToInt32(exponents.first)),
                std::ldexp(z.second, truncateToInt32(exponents.second))};
    }
};

// ---- Polar form ---------------------------------------------------------------------------------

// A complex number as modulus and angle; a real one has the angle 0 or pi.
template <class Pair>
struct PolarFamily {
    static void run(Value *result, const Value *operand) {
        WideComplex polar;
        if (operand->type == DT_COMPLEX || operand->type == DT_DCOMPLEX) {
            WideComplex z = widened(Scalar<Pair>::read(operand));
            polar = {complexAbs(z), complexArg(z)};
        } else {
            double x = readDouble(operand);
            bool isNegative = x < 0 || isNegativeZero(x);
            polar = isNegative ? WideComplex{-x, 3.1415927f} : WideComplex{x, 0};
        }
        setScalar(result, narrowed<Pair>(polar));
    }
};
template <class Pair>
void polarForm(ExprNode *node) {
    runUnary<PolarFamily<Pair>>(node);
}

template <class Pair>
struct FromPolar {
    static Pair of(double modulus, double angle) {
        if (std::isinf(modulus) && !std::isnan(angle))
            return infPair<Pair>;
        double imaginary = modulus * std::sin(angle);
        return narrowed<Pair>(
            WideComplex{modulus * std::cos(angle), std::isnan(imaginary) ? wideNaN : imaginary});
    }
};

// ---- Parts --------------------------------------------------------------------------------------

// A real number has itself as the first part and 0 as the second.
template <bool second, class T>
struct PartFamily {
    static void run(Value *result, const Value *operand) {
        bool isPair = operand->type >= DT_COMPLEX && operand->type <= DT_DDUAL;
        DoublePair pair{};
        if (isPair)
            pair = readDoubleComplex(operand);
        else
            pair.first = readDouble(operand);
        setScalar(result, static_cast<T>(second ? pair.second : pair.first));
    }
};
template <bool second, class T>
void part(ExprNode *node) {
    runUnary<PartFamily<second, T>>(node);
}

// complex(x, y) and dual(x, y): special values fill both parts.
template <class Pair>
struct PairFromParts {
    static Pair of(double x, double y) {
        if (std::isnan(x) || std::isnan(y))
            return nanPair<Pair>;
        if (std::isinf(x) || std::isinf(y))
            return infPair<Pair>;
        using Part = typename Pair::Part;
        return {static_cast<Part>(x), static_cast<Part>(y)};
    }
};
template <class Maker>
struct PairFamily {
    static void run(Value *result, const Value *left, const Value *right) {
        setScalar(result, Maker::of(readDouble(left), readDouble(right)));
    }
    static bool runFast(Value *, const Value *, const Value *) { return false; }
};
template <class Pair>
void pairOfParts(ExprNode *node) {
    runBinary<PairFamily<PairFromParts<Pair>>>(node);
}
template <class Pair>
void pairFromPolar(ExprNode *node) {
    runBinary<PairFamily<FromPolar<Pair>>>(node);
}

// ---- Branches -----------------------------------------------------------------------------------

// A function of a complex number and of the numbers of its branches.
inline int readBranch(ExprNode *argument) {
    if (!argument)
        return 0;
    Operand branch(argument);
    return branch ? truncateToInt32(readDouble(branch.get())) : 0;
}

template <class Pair>
bool takeComplex(ExprNode *argument, WideComplex &number) {
    Operand operand(argument);
    if (operand)
        number = widened(Scalar<Pair>::read(operand.get()));
    return static_cast<bool>(operand);
}

template <class Pair>
void pushComplex(WideComplex number) {
    if (Value *result = pushNewValue())
        setScalar(result, narrowed<Pair>(number));
}

template <auto branched, class Pair>
void branch(ExprNode *node) {
    WideComplex z;
    if (!takeComplex<Pair>(node->left, z))
        return;
    int first = readBranch(node->right);
    if constexpr (std::is_invocable_v<decltype(branched), WideComplex, int, int>)
        pushComplex<Pair>(branched(z, first, readBranch(node->third)));
    else
        pushComplex<Pair>(branched(z, first));
}
template <auto branched, class Pair>
void branchOfTwo(ExprNode *node) {
    WideComplex z, w;
    if (takeComplex<Pair>(node->left, z) && takeComplex<Pair>(node->right, w))
        pushComplex<Pair>(branched(z, w, readBranch(node->third)));
}

// ---- Extremes -----------------------------------------------------------------------------------

// The least or greatest number of arguments and of the elements of arrays among them; NaN if one
// of them is.
void extremeOperator(ExprNode *node);

}  // namespace zy
