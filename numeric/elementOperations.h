// record header: arithmetic on numbers of one type, real ones and pairs, as the operators on
// scalars and those on arrays share it.
#pragma once

#include "expr/scalarFamilies.h"
#include "numeric/pairs.h"

namespace zy {

// An operation on plain numbers with what stands for it on pairs.
template <class Plain, auto ofPairs>
struct Elements {
    template <class T>
    static T of(T a, T b) {
        if constexpr (isPairType<T>)
            return ofPairs(a, b);
        else
            return Plain::of(a, b);
    }
};
// Of numbers with a point; a zero divisor is a number like others there.
struct PlainQuotient {
    template <class T>
    static T of(T a, T b) {
        return a / b;
    }
};

inline constexpr auto addPairs = [](auto x, auto y) { return complexAdd(x, y); };
inline constexpr auto subtractPairs = [](auto x, auto y) { return complexSub(x, y); };
inline constexpr auto productOfPairs = [](auto x, auto y) { return multiplyPairs(x, y); };
inline constexpr auto quotientOfPairs = [](auto x, auto y) { return dividePairs(x, y); };

using AddElements = Elements<Add, addPairs>;
using SubtractElements = Elements<Subtract, subtractPairs>;
using MultiplyElements = Elements<Multiply, productOfPairs>;
using DivideElements = Elements<PlainQuotient, quotientOfPairs>;

// Pairs are equal or not; under any other comparison the answer is no.
template <class Comparison>
struct OfPairs {
    template <class Pair>
    static bool of(Pair x, Pair y) {
        bool equal = x.first == y.first && x.second == y.second;
        if constexpr (std::is_same_v<Comparison, Equal>)
            return equal;
        else
            return std::is_same_v<Comparison, NotEqual> && !equal;
    }
};

// The difference to -0.0 turns the sign of a zero too.
struct NegateElement {
    template <class T>
    static T of(T x) {
        if constexpr (isPairType<T>)
            return {of(x.first), of(x.second)};
        else if constexpr (std::is_integral_v<T>)
            return Negate::of(x);
        else
            return T{-0.0} - x;
    }
};

template <class Pair>
Pair conjugatePair(Pair z) {
    if (isNaNPair(z))
        return nanPair<Pair>;
    if (isInfPair(z))
        return infPair<Pair>;
    return {z.first, NegateElement::of(z.second)};
}

}  // namespace zy
