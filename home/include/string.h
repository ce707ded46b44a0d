/* strlen, strcpy, strncpy, strcat, strncat, strcmp, strcoll, strxfrm, strtok, strerror, memcpy,
   memmove and memset are words of the language. */
#ifndef _STRING_H
#define _STRING_H

#include <stddef.h>

int strncmp(const char *s1, const char *s2, size_t n);
int strcasecmp(const char *s1, const char *s2);
int strncasecmp(const char *s1, const char *s2, size_t n);
char *strchr(const char *s, int c);
char *strrchr(const char *s, int c);
char *strstr(const char *s, const char *part);
char *strpbrk(const char *s, const char *set);
size_t strspn(const char *s, const char *set);
size_t strcspn(const char *s, const char *set);
char *strdup(const char *s);
int memcmp(const void *s1, const void *s2, size_t n);
void *memchr(const void *s, int c, size_t n);

#endif
