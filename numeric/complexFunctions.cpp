#include "numeric/complexFunctions.h"

#include <numbers>

namespace zy {

namespace {

constexpr double PI = std::numbers::pi;
constexpr double LN10 = std::numbers::ln10;

double canonical(double part) { return std::isnan(part) ? wideNaN : part; }
template <class Pair>
Pair canonicalParts(Pair z) {
    return {canonical(z.first), canonical(z.second)};
}

// Complex numbers have one infinity.
WideComplex oneInfinity(WideComplex z) {
    return std::isinf(z.first) || std::isinf(z.second) ? infPair<WideComplex> : z;
}

double logOf(double modulus) { return std::log(modulus); }
// NaN keeps its clear sign.
double negated(double x) { return std::isnan(x) ? x : -0.0 - x; }

}  // namespace

// The sign of a zero is no side of the cut: a number on the negative axis has the angle pi.
double complexArg(WideComplex z) { return std::atan2(z.second + 0.0, z.first + 0.0); }

// ---- Roots, logarithms, powers ------------------------------------------------------------------

WideComplex complexSqrt(WideComplex z, int branch) {
    if (isNaNPair(z))
        return nanPair<WideComplex>;
    if (isInfPair(z))
        return infPair<WideComplex>;
    double modulus = complexAbs(z), sign = branch % 2 == 0 ? 1 : -1;
    double real = sign * std::sqrt((modulus + z.first) * 0.5);
    double imaginary = sign * std::sqrt((modulus - z.first) * 0.5);
    if (z.second < 0)
        imaginary = -imaginary;
    return canonicalParts(WideComplex{real + 0.0, imaginary + 0.0});
}

WideComplex complexLog(WideComplex z, int branch) {
    if (isInfPair(z) || isZeroPair(z))
        return infPair<WideComplex>;
    return canonicalParts(WideComplex{logOf(complexAbs(z)), complexArg(z) + 2.0 * branch * PI});
}

WideComplex complexLog10(WideComplex z, int branch) {
    WideComplex natural = complexLog(z, branch);
    return {natural.first / LN10, natural.second / LN10};
}

namespace {

bool specialPower(WideComplex z, WideComplex w, WideComplex &result) {
    double u = w.first;
    bool zero = isZeroPair(z), infinite = isInfPair(z);
    if (isNaNPair(z) || isNaNPair(w) || isInfPair(w))
        result = nanPair<WideComplex>;
    else if ((zero && u > 0) || (infinite && u < 0))
        result = zeroPair<WideComplex>;
    else if ((zero && u < 0) || (infinite && u > 0))
        result = infPair<WideComplex>;
    else
        return false;
    return true;
}

}  // namespace

WideComplex complexPow(WideComplex z, WideComplex w, int branch) {
    if (WideComplex result; specialPower(z, w, result))
        return result;
    double modulus = std::sqrt(z.first * z.first + z.second * z.second);
    double log = logOf(modulus), angle = complexArg(z) + 2.0 * branch * PI;
    double p = w.first * log - w.second * angle, q = w.second * log + w.first * angle;
    return canonicalParts(WideComplex{std::exp(p) * std::cos(q), std::exp(p) * std::sin(q)});
}

// ---- Functions of one branch --------------------------------------------------------------------

WideComplex complexExp(WideComplex z) {
    if (isInfPair(z))
        return nanPair<WideComplex>;
    double modulus = std::exp(z.first);
    return oneInfinity(
        canonicalParts(WideComplex{modulus * std::cos(z.second), modulus * std::sin(z.second)}));
}

namespace {

WideComplex sinOf(WideComplex z) {
    return {std::cosh(z.second) * std::sin(z.first), std::sinh(z.second) * std::cos(z.first)};
}
WideComplex cosOf(WideComplex z) {
    return {std::cosh(z.second) * std::cos(z.first),
            negated(canonical(std::sinh(z.second) * std::sin(z.first)))};
}
WideComplex sinhOf(WideComplex z) {
    return {std::cos(z.second) * std::sinh(z.first), std::sin(z.second) * std::cosh(z.first)};
}
WideComplex coshOf(WideComplex z) {
    return {std::cos(z.second) * std::cosh(z.first), std::sin(z.second) * std::sinh(z.first)};
}

// The quotient by the formula alone.
WideComplex plainQuotient(WideComplex x, WideComplex y) {
    double square = y.second * y.second + y.first * y.first;
    return canonicalParts(WideComplex{(x.second * y.second + y.first * x.first) / square,
                                      (x.second * y.first - y.second * x.first) / square});
}

}  // namespace

WideComplex complexSin(WideComplex z) { return oneInfinity(canonicalParts(sinOf(z))); }
WideComplex complexCos(WideComplex z) { return oneInfinity(canonicalParts(cosOf(z))); }
WideComplex complexSinh(WideComplex z) { return oneInfinity(canonicalParts(sinhOf(z))); }
WideComplex complexCosh(WideComplex z) { return oneInfinity(canonicalParts(coshOf(z))); }
WideComplex complexTan(WideComplex z) { return plainQuotient(sinOf(z), cosOf(z)); }
WideComplex complexTanh(WideComplex z) { return oneInfinity(plainQuotient(sinhOf(z), coshOf(z))); }

// ---- Inverse functions --------------------------------------------------------------------------

namespace {

// A square root in polar form, so that a branch is a turn of it.
WideComplex polarRoot(WideComplex z, int branch) {
    double modulus = std::sqrt(std::sqrt(z.first * z.first + z.second * z.second));
    if (modulus == 0)
        return zeroPair<WideComplex>;
    double angle = complexArg(z) * 0.5 + branch * PI;
    return {modulus * std::cos(angle), modulus * std::sin(angle)};
}

WideComplex square(WideComplex z) {
    return {z.first * z.first - z.second * z.second, 2 * z.first * z.second};
}

// The root of 1 - z * z.
WideComplex rootOfOneMinus(WideComplex z, int branch) {
    WideComplex squared = square(z);
    return polarRoot({1 - squared.first, -squared.second}, branch);
}

WideComplex arcResult(WideComplex t, int branch) {
    return oneInfinity(
        canonicalParts(WideComplex{complexArg(t) + 2.0 * branch * PI, -logOf(complexAbs(t))}));
}

// By the root of z * z + shift.
WideComplex areaResult(WideComplex z, double shift, int rootBranch, int branch) {
    if (isInfPair(z))
        return infPair<WideComplex>;
    WideComplex squared = square(z);
    WideComplex root = polarRoot({squared.first + shift, squared.second}, rootBranch);
    WideComplex t{z.first + root.first, z.second + root.second};
    return oneInfinity(
        canonicalParts(WideComplex{logOf(complexAbs(t)), complexArg(t) + 2.0 * branch * PI}));
}

}  // namespace

WideComplex complexAsin(WideComplex z, int rootBranch, int branch) {
    if (isInfPair(z))
        return infPair<WideComplex>;
    WideComplex root = rootOfOneMinus(z, rootBranch);
    return arcResult({root.first - z.second, root.second + z.first}, branch);
}

WideComplex complexAcos(WideComplex z, int rootBranch, int branch) {
    if (isInfPair(z))
        return infPair<WideComplex>;
    WideComplex root = rootOfOneMinus(z, rootBranch);
    return arcResult({z.first - root.second, z.second + root.first}, branch);
}

WideComplex complexAsinh(WideComplex z, int rootBranch, int branch) {
    return areaResult(z, 1, rootBranch, branch);
}
WideComplex complexAcosh(WideComplex z, int rootBranch, int branch) {
    return areaResult(z, -1, rootBranch, branch);
}

WideComplex complexAtan(WideComplex z, int branch) {
    if (isInfPair(z))
        return {branch * PI + PI / 2, 0};
    WideComplex q =
        complexDiv(WideComplex{1 - z.second, z.first}, WideComplex{1 + z.second, -z.first});
    if (isInfPair(q))
        return infPair<WideComplex>;
    return canonicalParts(
        WideComplex{complexArg(q) * 0.5 + branch * PI, logOf(complexAbs(q)) * -0.5});
}

WideComplex complexAtan2(WideComplex y, WideComplex x, int branch) {
    bool bothZero = isZeroPair(y) && isZeroPair(x);
    return complexAtan(bothZero ? zeroPair<WideComplex> : complexDiv(y, x), branch);
}

WideComplex complexAtanh(WideComplex z, int branch) {
    if (isInfPair(z))
        return {0, branch * PI + PI / 2};
    WideComplex q =
        complexDiv(WideComplex{1 + z.first, z.second}, WideComplex{1 - z.first, -z.second});
    if (isInfPair(q))
        return infPair<WideComplex>;
    return oneInfinity(
        canonicalParts(WideComplex{logOf(complexAbs(q)) * 0.5, complexArg(q) * 0.5 + branch * PI}));
}

// ---- Dual numbers -------------------------------------------------------------------------------

WideDual dualSqrt(WideDual z) {
    if (isNaNPair(z) || isInfPair(z) || (z.first < 0 && z.second != 0))
        return nanPair<WideDual>;
    if (z.first == 0)
        return z.second == 0 ? zeroPair<WideDual> : infPair<WideDual>;
    double root = guardedSqrt(z.first);
    return {root, canonical(z.second * 0.5 / root)};
}

WideDual dualPow(WideDual z, WideDual w) {
    double power = realPow(z.first, w.first);
    double slope = realPow(z.first, w.first - 1) * (z.second * w.first);
    if (w.second != 0)
        slope += std::log(z.first) * (w.second * power);
    return {power, canonical(slope)};
}

WideDual dualAtan2(WideDual y, WideDual x) {
    double ratio = y.first / x.first;
    double slope = (y.second * x.first - x.second * y.first) / (x.first * x.first);
    return {realAtan2(y.first, x.first), canonical(slope / (ratio * ratio + 1))};
}

// ---- Real numbers -------------------------------------------------------------------------------

double realPow(double x, double y) {
    if (std::isnan(x) || std::isnan(y))
        return wideNaN;
    return y == 0 ? 1.0 : canonical(std::pow(x, y));
}

bool isNegativeZero(double x) { return x == 0 && std::signbit(x); }

// Two zeros have the angle of the quadrant that their signs name.
double realAtan2(double y, double x) {
    if (y != 0 || x != 0 || std::isnan(y) || std::isnan(x))
        return std::atan2(y, x);
    if (isNegativeZero(x))
        return isNegativeZero(y) ? -0.75 * PI : PI;
    return isNegativeZero(y) ? -0.5 * PI : 0;
}

}  // namespace zy
