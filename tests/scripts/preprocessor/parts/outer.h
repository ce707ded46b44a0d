#include "inner.h"
static int outerOwn = 1;
#if defined(INNER)
