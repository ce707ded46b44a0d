/* Linear algebra on computational arrays. */
#ifndef _NUMERIC_H
#define _NUMERIC_H

#include <array.h>

#define inverse(a) _inverse(a)
#define linsolve(a, b) _linearsolver(a, b)

#endif
