// record header: complex and dual numbers as pairs of parts, and their arithmetic. Both know one
// infinity and one NaN, told by the first part alone: (Inf, Inf) and (NaN, NaN). The rules are
// those of the language, not of the C library, and the same in both widths.
#pragma once

#include <cmath>

#include "numeric/specialValues.h"

namespace zy {

template <class T>
struct Complex {
    using Part = T;
    T first, second;
};
template <class T>
struct Dual {
    using Part = T;
    T first, second;
};

template <class T>
constexpr bool isPairType = false;
template <class T>
constexpr bool isPairType<Complex<T>> = true;
template <class T>
constexpr bool isPairType<Dual<T>> = true;
template <class T>
constexpr bool isDualType = false;
template <class T>
constexpr bool isDualType<Dual<T>> = true;

template <class Pair>
constexpr Pair pairOf(double both) {
    using Part = typename Pair::Part;
    return {static_cast<Part>(both), static_cast<Part>(both)};
}
template <class Pair>
constexpr Pair nanPair = pairOf<Pair>(wideNaN);
template <class Pair>
constexpr Pair infPair = pairOf<Pair>(wideInf);
template <class Pair>
constexpr Pair zeroPair = pairOf<Pair>(0);

template <class Pair>
bool isNaNPair(Pair z) {
    return std::isnan(z.first);
}
// The infinity of arithmetic: a first part of -Inf is an ordinary number here.
template <class Pair>
bool isInfPair(Pair z) {
    return std::isinf(z.first) && z.first > 0;
}
template <class Pair>
bool isZeroPair(Pair z) {
    return z.first == 0 && z.second == 0;
}

template <class Wide, class Pair>
Wide convertPair(Pair z) {
    using Part = typename Wide::Part;
    return {static_cast<Part>(z.first), static_cast<Part>(z.second)};
}

// ---- Sums, of complex and dual numbers alike ----------------------------------------------------

template <class Pair>
Pair complexAdd(Pair x, Pair y) {
    if (isInfPair(x) && isInfPair(y)) [[unlikely]]
        return nanPair<Pair>;
    return {x.first + y.first, x.second + y.second};
}

template <class Pair>
Pair complexSub(Pair x, Pair y) {
    if (isNaNPair(y)) [[unlikely]]
        return nanPair<Pair>;
    if (isInfPair(y) && !isInfPair(x)) [[unlikely]]
        return infPair<Pair>;
    return {x.first - y.first, x.second - y.second};
}

// ---- Products and quotients ---------------------------------------------------------------------

// What the special values make of a product. False: it is computed.
template <class Pair>
bool specialProduct(Pair x, Pair y, Pair &result) {
    if (isNaNPair(x) || isNaNPair(y)) {
        result = nanPair<Pair>;
        return true;
    }
    result = infPair<Pair>;
    return (isInfPair(x) && !isZeroPair(y)) || (isInfPair(y) && !isZeroPair(x));
}

// The same for a quotient. The divisor of a dual number is zero if its primary part is.
template <class Pair>
bool specialQuotient(Pair x, Pair y, Pair &result) {
    bool byZero = y.first == 0 && (isDualType<Pair> || y.second == 0);
    if (isNaNPair(x) || isNaNPair(y))
        result = nanPair<Pair>;
    else if (isInfPair(x) && !isInfPair(y))
        result = infPair<Pair>;
    else if (!isInfPair(x) && isInfPair(y))
        result = zeroPair<Pair>;
    else if (byZero && !isZeroPair(x))
        result = infPair<Pair>;
    else
        return false;
    return true;
}

template <class Pair>
Pair complexMul(Pair x, Pair y) {
    if (Pair result; specialProduct(x, y, result)) [[unlikely]]
        return result;
    return {x.first * y.first - x.second * y.second, x.second * y.first + y.second * x.first};
}

template <class Pair>
Pair complexDiv(Pair x, Pair y) {
    if (Pair result; specialQuotient(x, y, result)) [[unlikely]]
        return result;
    auto square = y.second * y.second + y.first * y.first;
    return {(x.second * y.second + y.first * x.first) / square,
            (x.second * y.first - y.second * x.first) / square};
}

template <class Pair>
Pair dualMul(Pair x, Pair y) {
    if (Pair result; specialProduct(x, y, result)) [[unlikely]]
        return result;
    return {x.first * y.first, x.second * y.first + y.second * x.first};
}

template <class Pair>
Pair dualDiv(Pair x, Pair y) {
    if (Pair result; specialQuotient(x, y, result)) [[unlikely]]
        return result;
    auto square = y.first * y.first;
    return {y.first * x.first / square, (x.second * y.first - y.second * x.first) / square};
}

// By the kind of the number.
template <class Pair>
Pair multiplyPairs(Pair x, Pair y) {
    if constexpr (isDualType<Pair>)
        return dualMul(x, y);
    else
        return complexMul(x, y);
}
template <class Pair>
Pair dividePairs(Pair x, Pair y) {
    if constexpr (isDualType<Pair>)
        return dualDiv(x, y);
    else
        return complexDiv(x, y);
}

// ---- Modulus ------------------------------------------------------------------------------------

// Scaled, so that no square overflows.
template <class Pair>
auto complexAbs(Pair z) {
    using Part = typename Pair::Part;
    Part x = std::fabs(z.first), y = std::fabs(z.second);
    if (isInfPair(z))
        return static_cast<Part>(wideInf);
    if (x == 0 || y == 0)
        return x == 0 ? y : x;
    Part ratio = x > y ? y / x : x / y;
    return std::sqrt(ratio * ratio + 1) * (x > y ? x : y);
}

}  // namespace zy
