/* Ranges of the integer types. A long has 32 bits. */
#ifndef _LIMITS_H
#define _LIMITS_H

#define CHAR_BIT 8
#define SCHAR_MIN _SCHAR_MIN
#define SCHAR_MAX _SCHAR_MAX
#define UCHAR_MAX _UCHAR_MAX
#define CHAR_MIN _SCHAR_MIN
#define CHAR_MAX _SCHAR_MAX
#define SHRT_MIN _SHRT_MIN
#define SHRT_MAX _SHRT_MAX
#define USHRT_MAX _USHRT_MAX
#define INT_MIN _INT_MIN
#define INT_MAX _INT_MAX
#define UINT_MAX _UINT_MAX
#define LONG_MIN _LONG_MIN
#define LONG_MAX _LONG_MAX
#define ULONG_MAX _ULONG_MAX
#define LLONG_MIN _LLONG_MIN
#define LLONG_MAX _LLONG_MAX
#define ULLONG_MAX _ULLONG_MAX
#define PATH_MAX 5120

#endif
