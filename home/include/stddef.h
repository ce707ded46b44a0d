/* Common types. size_t has the width of an int: so have the results of the words that count. */
#ifndef _STDDEF_H
#define _STDDEF_H

typedef unsigned int size_t;
typedef int ptrdiff_t;
typedef unsigned short wchar_t;

/* The object lies at an address that is not taken for a null one. */
#define offsetof(type, member) ((size_t)((long long)&((type *)65536)->member - 65536))

#endif
