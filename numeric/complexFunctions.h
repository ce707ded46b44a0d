// record header: functions of a complex variable, computed in double; single complex numbers are
// widened and the result narrowed. A multi-branch function takes the number of its branch, 0 for
// the principal one. Domain errors are NaN and infinity values.
#pragma once

#include "numeric/pairs.h"

namespace zy {

using WideComplex = Complex<double>;
using WideDual = Dual<double>;

double complexArg(WideComplex z);
WideComplex complexSqrt(WideComplex z, int branch = 0);
WideComplex complexLog(WideComplex z, int branch = 0);
WideComplex complexLog10(WideComplex z, int branch = 0);
WideComplex complexPow(WideComplex z, WideComplex w, int branch = 0);
WideComplex complexExp(WideComplex z);
WideComplex complexSin(WideComplex z);
WideComplex complexCos(WideComplex z);
WideComplex complexTan(WideComplex z);
WideComplex complexSinh(WideComplex z);
WideComplex complexCosh(WideComplex z);
WideComplex complexTanh(WideComplex z);
// The first branch is that of the square root in the formula, the second that of the logarithm.
WideComplex complexAsin(WideComplex z, int rootBranch = 0, int branch = 0);
WideComplex complexAcos(WideComplex z, int rootBranch = 0, int branch = 0);
WideComplex complexAsinh(WideComplex z, int rootBranch = 0, int branch = 0);
WideComplex complexAcosh(WideComplex z, int rootBranch = 0, int branch = 0);
WideComplex complexAtan(WideComplex z, int branch = 0);
WideComplex complexAtan2(WideComplex y, WideComplex x, int branch = 0);
WideComplex complexAtanh(WideComplex z, int branch = 0);

WideDual dualSqrt(WideDual z);
WideDual dualPow(WideDual z, WideDual w);
WideDual dualAtan2(WideDual y, WideDual x);

// Real functions with rules of their own for special values.
double realPow(double x, double y);
double realAtan2(double y, double x);
bool isNegativeZero(double x);
// Without the minus sign that the processor's NaN has.
inline double guardedSqrt(double x) { return x < 0 ? wideNaN : std::sqrt(x); }

}  // namespace zy
