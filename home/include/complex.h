/* Complex numbers are part of the language; I is a constant of it. */
#ifndef _COMPLEX_H
#define _COMPLEX_H

#define creal(z) real(z)
#define cimag(z) imag(z)
#define cabs(z) abs(z)
#define carg(z) atan2(imag(z), real(z))
#define csqrt(z) sqrt(z)
#define cexp(z) exp(z)
#define clog(z) log(z)
#define csin(z) sin(z)
#define ccos(z) cos(z)
#define ctan(z) tan(z)
#define casin(z) asin(z)
#define cacos(z) acos(z)
#define catan(z) atan(z)
#define csinh(z) sinh(z)
#define ccosh(z) cosh(z)
#define ctanh(z) tanh(z)
#define casinh(z) asinh(z)
#define cacosh(z) acosh(z)
#define catanh(z) atanh(z)
#define cpow(z, w) pow(z, w)

#endif
