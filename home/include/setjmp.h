#ifndef _SETJMP_H
#define _SETJMP_H

/* Three words: the value, the function and the statement of the place to return to. The first
 * setjmp with a record gives what stands in the value: 0, as variables start with. */
typedef long long jmp_buf[3];

#define setjmp(place) _setjmp(place)
#define longjmp(place, value) _longjmp(place, value)

#endif
