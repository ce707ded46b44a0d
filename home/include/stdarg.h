/* Arguments behind `...`. The list is the one of the running call. */
#ifndef _STDARG_H
#define _STDARG_H

typedef void *va_list;

#define va_start(list, last) ((list) = __va_start())
#define va_arg(list, type) __va_arg(list, type)
#define va_count(list) __va_count(list)
#define va_array(list, type) __va_array(list, type)
#define va_copy(target, source) ((target) = (source))
#define va_end(list) ((list) = NULL)

#endif
