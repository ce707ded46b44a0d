/* abs, strtod, strtol, strtoul, getenv and atexit are words of the language. */
#ifndef _STDLIB_H
#define _STDLIB_H

#include <stddef.h>

#define EXIT_SUCCESS 0
#define EXIT_FAILURE 1
#define RAND_MAX _RAND_MAX
#define MB_CUR_MAX _MB_CUR_MAX

#define malloc(size) _malloc(size)
#define calloc(count, size) _calloc(count, size)
#define realloc(block, size) _realloc(block, size)
#define set_new_handler(function) _set_new_handler(function)
#define free(block) _free(block)
#define exit(status) _exit(status)
#define abort() _abort()
#define rand() _rand()
#define srand(seed) _srand(seed)
#define system(command) _system(command)
#define labs(n) abs(n)

typedef struct {
    int quot;
    int rem;
} div_t;

int atoi(const char *s);
int atol(const char *s);
long long atoll(const char *s);
double atof(const char *s);
long long llabs(long long n);
div_t div(int numerator, int denominator);
void qsort(void *base, size_t count, size_t size, int (*compare)(const void *a, const void *b));
void *bsearch(const void *key, const void *base, size_t count, size_t size, int (*compare)(const void *a, const void *b));

#endif
