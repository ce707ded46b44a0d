/* Computational arrays are part of the language. */
#ifndef _ARRAY_H
#define _ARRAY_H

#include <stddef.h>

#endif
