// record header: the mathematical functions of one number, each a record with an overload for real,
// complex and dual numbers, from which scalar operators and array kernels are made. Single numbers
// are computed in double. The dual part of a result follows from the derivative.
#pragma once

#include "numeric/complexFunctions.h"

namespace zy {

// The dual number of a value and the derivative's contribution, whose NaN has a clear sign.
inline WideDual dualOf(double value, double slope) {
    return {value, std::isnan(slope) ? wideNaN : slope};
}

struct Sin {
    static double of(double x) { return std::sin(x); }
    static WideComplex of(WideComplex z) { return complexSin(z); }
    static WideDual of(WideDual z) {
        return dualOf(std::sin(z.first), std::cos(z.first) * z.second);
    }
};
struct Cos {
    static double of(double x) { return std::cos(x); }
    static WideComplex of(WideComplex z) { return complexCos(z); }
    static WideDual of(WideDual z) {
        return dualOf(std::cos(z.first), -std::sin(z.first) * z.second);
    }
};
struct Tan {
    static double of(double x) { return std::tan(x); }
    static WideComplex of(WideComplex z) { return complexTan(z); }
    static WideDual of(WideDual z) {
        double cosine = std::cos(z.first);
        return dualOf(std::tan(z.first), z.second / (cosine * cosine));
    }
};
struct Asin {
    static double of(double x) { return std::asin(x); }
    static WideComplex of(WideComplex z) { return complexAsin(z); }
    static WideDual of(WideDual z) {
        return dualOf(std::asin(z.first), z.second / std::sqrt(1 - z.first * z.first));
    }
};
struct Acos {
    static double of(double x) { return std::acos(x); }
    static WideComplex of(WideComplex z) { return complexAcos(z); }
    static WideDual of(WideDual z) {
        return dualOf(std::acos(z.first), -0.0 - z.second / std::sqrt(1 - z.first * z.first));
    }
};
struct Atan {
    static double of(double x) { return std::atan(x); }
    static WideComplex of(WideComplex z) { return complexAtan(z); }
    static WideDual of(WideDual z) {
        return dualOf(std::atan(z.first), z.second / (z.first * z.first + 1));
    }
};
struct Sinh {
    static double of(double x) { return std::sinh(x); }
    static WideComplex of(WideComplex z) { return complexSinh(z); }
    static WideDual of(WideDual z) {
        return dualOf(std::sinh(z.first), std::cosh(z.first) * z.second);
    }
};
struct Cosh {
    static double of(double x) { return std::cosh(x); }
    static WideComplex of(WideComplex z) { return complexCosh(z); }
    static WideDual of(WideDual z) {
        return dualOf(std::cosh(z.first), std::sinh(z.first) * z.second);
    }
};
struct Tanh {
    static double of(double x) { return std::tanh(x); }
    static WideComplex of(WideComplex z) { return complexTanh(z); }
    static WideDual of(WideDual z) {
        double cosine = std::cosh(z.first);
        return dualOf(std::tanh(z.first), z.second / (cosine * cosine));
    }
};
struct Asinh {
    static double of(double x) { return std::log(x + std::sqrt(x * x + 1)); }
    static WideComplex of(WideComplex z) { return complexAsinh(z); }
    static WideDual of(WideDual z) {
        return dualOf(of(z.first), z.second / std::sqrt(z.first * z.first + 1));
    }
};
struct Acosh {
    static double of(double x) { return std::log(x + std::sqrt(x * x - 1)); }
    static WideComplex of(WideComplex z) { return complexAcosh(z); }
    static WideDual of(WideDual z) {
        return dualOf(of(z.first), z.second / std::sqrt(z.first * z.first - 1));
    }
};
struct Atanh {
    static double of(double x) { return 0.5 * std::log((1 + x) / (1 - x)); }
    static WideComplex of(WideComplex z) { return complexAtanh(z); }
    static WideDual of(WideDual z) {
        return dualOf(of(z.first), z.second / (1 - z.first * z.first));
    }
};
// Rounding takes the parts of a pair for themselves.
struct Ceil {
    static double of(double x) { return std::ceil(x); }
    template <class Pair>
    static Pair of(Pair z) {
        return {std::ceil(z.first), std::ceil(z.second)};
    }
};
struct Floor {
    static double of(double x) { return std::floor(x); }
    template <class Pair>
    static Pair of(Pair z) {
        return {std::floor(z.first), std::floor(z.second)};
    }
};
struct SquareRoot {
    static double of(double x) { return guardedSqrt(x); }
    static WideComplex of(WideComplex z) { return complexSqrt(z); }
    static WideDual of(WideDual z) { return dualSqrt(z); }
};
struct Log {
    static double of(double x) { return std::log(x); }
    static WideComplex of(WideComplex z) { return complexLog(z); }
    static WideDual of(WideDual z) { return dualOf(std::log(z.first), z.second / z.first); }
};
struct Log10 {
    static double of(double x) { return std::log10(x); }
    static WideComplex of(WideComplex z) { return complexLog10(z); }
    static WideDual of(WideDual z) {
        double ten = std::log(10.0);
        return dualOf(std::log(z.first) / ten, z.second / (ten * z.first));
    }
};
struct Exp {
    static double of(double x) { return std::exp(x); }
    static WideComplex of(WideComplex z) { return complexExp(z); }
    static WideDual of(WideDual z) {
        double power = std::exp(z.first);
        return dualOf(power, power * z.second);
    }
};

// ---- Of two numbers -----------------------------------------------------------------------------

struct Power {
    static double of(double x, double y) { return realPow(x, y); }
    static WideComplex of(WideComplex z, WideComplex w) { return complexPow(z, w); }
    static WideDual of(WideDual z, WideDual w) { return dualPow(z, w); }
};
struct Atan2 {
    static double of(double y, double x) { return realAtan2(y, x); }
    static WideComplex of(WideComplex y, WideComplex x) { return complexAtan2(y, x); }
    static WideDual of(WideDual y, WideDual x) { return dualAtan2(y, x); }
};

// ---- In the width of the operands ---------------------------------------------------------------

// A real number, or a pair of the same kind, in double.
inline double widened(double x) { return x; }
template <class T>
WideComplex widened(Complex<T> z) {
    return convertPair<WideComplex>(z);
}
template <class T>
WideDual widened(Dual<T> z) {
    return convertPair<WideDual>(z);
}

template <class T, class Wide>
T narrowed(Wide x) {
    if constexpr (isPairType<T>)
        return convertPair<T>(x);
    else
        return static_cast<T>(x);
}

// The function as an operation on numbers of a width.
template <class Function>
struct InWidth {
    template <class T>
    static T of(T x) {
        return narrowed<T>(Function::of(widened(x)));
    }
    template <class T>
    static T of(T x, T y) {
        return narrowed<T>(Function::of(widened(x), widened(y)));
    }
};

}  // namespace zy
