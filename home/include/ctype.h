#ifndef _CTYPE_H
#define _CTYPE_H

#define isalnum(c) _isalnum(c)
#define isalpha(c) _isalpha(c)
#define iscntrl(c) _iscntrl(c)
#define isdigit(c) _isdigit(c)
#define isgraph(c) _isgraph(c)
#define islower(c) _islower(c)
#define isprint(c) _isprint(c)
#define ispunct(c) _ispunct(c)
#define isspace(c) _isspace(c)
#define isupper(c) _isupper(c)
#define isxdigit(c) _isxdigit(c)
#define isascii(c) _isascii(c)
#define toascii(c) _toascii(c)
#define tolower(c) _tolower(c)
#define toupper(c) _toupper(c)

int isblank(int c);

#endif
