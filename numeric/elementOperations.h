// record header: arithmetic on numbers of one type, real ones and pairs, as the operators on
// scalars and those on arrays share it.
#pragma once

#include "expr/scalarFamilies.h"
#include "numeric/pairs.h"

namespace zy {

struct AddElements {
    template <class T>
    static T of(T a, T b) {
        if constexpr (isPairType<T>)
            return complexAdd(a, b);
        else
            return Add::of(a, b);
    }
};
struct SubtractElements {
    template <class T>
    static T of(T a, T b) {
        if constexpr (isPairType<T>)
            return complexSub(a, b);
        else
            return Subtract::of(a, b);
    }
};
struct MultiplyElements {
    template <class T>
    static T of(T a, T b) {
        if constexpr (isPairType<T>)
            return multiplyPairs(a, b);
        else
            return Multiply::of(a, b);
    }
};
// Of numbers with a point; a zero divisor is a number like others there.
struct DivideElements {
    template <class T>
    static T of(T a, T b) {
        if constexpr (isPairType<T>)
            return dividePairs(a, b);
        else
            return a / b;
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
