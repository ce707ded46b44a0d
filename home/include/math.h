/* The functions that the language has words for need no declaration: sqrt, pow, exp, log, log10,
   sin, cos, tan, their inverses and hyperbolic forms, ceil, floor, fmod, fabs, frexp, ldexp, modf. */
#ifndef _MATH_H
#define _MATH_H

#define M_LOG2E 1.4426950408889634074
#define M_LOG10E 0.43429448190325182765
#define M_LN2 0.69314718055994530942
#define M_LN10 2.30258509299404568402
#define M_PI_2 1.57079632679489661923
#define M_PI_4 0.78539816339744830962
#define M_1_PI 0.31830988618379067154
#define M_2_PI 0.63661977236758134308
#define M_2_SQRTPI 1.12837916709551257390
#define M_SQRT2 1.41421356237309504880
#define M_SQRT1_2 0.70710678118654752440

#define HUGE_VAL ((double)Inf)
#define HUGE_VALF Inf
#define INFINITY Inf
#define NAN NaN

#define isnan(x) ((x) != (x))
#define isinf(x) ((x) == Inf || (x) == -Inf)
#define isfinite(x) ((x) - (x) == 0)
#define signbit(x) ((x) < 0 || 1.0 / (x) == -Inf)

#define sqrtf(x) sqrt((float)(x))
#define powf(x, y) pow((float)(x), (float)(y))
#define expf(x) exp((float)(x))
#define logf(x) log((float)(x))
#define log10f(x) log10((float)(x))
#define sinf(x) sin((float)(x))
#define cosf(x) cos((float)(x))
#define tanf(x) tan((float)(x))
#define asinf(x) asin((float)(x))
#define acosf(x) acos((float)(x))
#define atanf(x) atan((float)(x))
#define atan2f(y, x) atan2((float)(y), (float)(x))
#define ceilf(x) ceil((float)(x))
#define floorf(x) floor((float)(x))
#define fmodf(x, y) fmod((float)(x), (float)(y))
#define fabsf(x) fabs((float)(x))

double round(double x);
double trunc(double x);
double rint(double x);
double cbrt(double x);
double hypot(double x, double y);
double log2(double x);
double log1p(double x);
double exp2(double x);
double expm1(double x);
double fmax(double x, double y);
double fmin(double x, double y);
double fdim(double x, double y);
double fma(double x, double y, double z);
double copysign(double x, double y);
double remainder(double x, double y);
int lround(double x);
int lrint(double x);

#endif
