/* time and clock are words of the language. */
#ifndef _TIME_H
#define _TIME_H

#include <stddef.h>

#define CLOCKS_PER_SEC 1000000

typedef int time_t;
typedef int clock_t;

struct tm {
    int tm_sec;
    int tm_min;
    int tm_hour;
    int tm_mday;
    int tm_mon;
    int tm_year;
    int tm_wday;
    int tm_yday;
    int tm_isdst;
};

#define mktime(broken) _mktime(broken)
#define asctime(broken) _asctime(broken)
#define ctime(seconds) _ctime(seconds)
#define gmtime(seconds) _gmtime(seconds)
#define localtime(seconds) _localtime(seconds)
#define strftime(s, size, format, broken) _strftime(s, size, format, broken)
#define difftime(later, earlier) ((double)(later) - (double)(earlier))

#endif
