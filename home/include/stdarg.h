/* Arguments behind `...`. The list is the one of the running call, and ends with it. */
#ifndef _STDARG_H
#define _STDARG_H

typedef void *va_list;

#define va_start(list, last) ((list) = __va_start())
#define va_arg(list, type) (*(type *)__va_arg(&(list)))
#define va_copy(target, source) ((target) = (source))
#define va_end(list) ((list) = NULL)

/* How many arguments are left; the extent of a dimension, from 0, of the next one, which is 0 for
 * what is no array and behind the last dimension. */
#define va_count(list) __va_count(list)
#define va_array(list, dimension) __va_array(list, dimension)

#endif
