/* Variable arguments: a printf of one's own, lists handed on, structs and function pointers in them. */
#include <stdarg.h>
#include <stdio.h>
#include <string.h>

typedef struct {
    int x, y;
    char name[8];
} Point;
typedef int (*Operation)(int, int);

static char out[200];
static int length;

static void put(char c) { out[length++] = c; }
static void putText(const char *s) {
    while (*s)
        put(*s++);
}
static void putNumber(long long n, int base) {
    char digits[40];
    int count = 0;
    if (n < 0) {
        put('-');
        n = -n;
    }
    do {
        digits[count++] = "0123456789abcdef"[n % base];
        n /= base;
    } while (n);
    while (count > 0)
        put(digits[--count]);
}

static int vformat(const char *format, va_list list) {
    length = 0;
    for (; *format; format++) {
        if (*format != '%') {
            put(*format);
            continue;
        }
        switch (*++format) {
            case 'd': putNumber(va_arg(list, int), 10); break;
            case 'x': putNumber(va_arg(list, unsigned), 16); break;
            case 'L': putNumber(va_arg(list, long long), 10); break;
            case 'c': put((char)va_arg(list, int)); break;
            case 's': putText(va_arg(list, char *)); break;
            case 'f': {
                double value = va_arg(list, double);
                putNumber((long long)value, 10);
                put('.');
                putNumber((long long)((value - (long long)value) * 100 + 0.5), 10);
                break;
            }
            case 'P': {
                Point p = va_arg(list, Point);
                putText(p.name);
                putNumber(p.x, 10);
                put(',');
                putNumber(p.y, 10);
                break;
            }
            case 'O': {
                Operation operation = va_arg(list, Operation);
                int a = va_arg(list, int);
                putNumber(operation(a, va_arg(list, int)), 10);
                break;
            }
            default: put(*format);
        }
    }
    put('\0');
    return length - 1;
}

static void format(const char *text, ...) {
    va_list list;
    int n;
    va_start(list, text);
    n = vformat(text, list);
    va_end(list);
    printf("%d [%s]\n", n, out);
}

static int add(int a, int b) { return a + b; }
static int multiply(int a, int b) { return a * b; }

static int largest(int count, ...) {
    va_list list, copy;
    int best, i, above = 0;
    va_start(list, count);
    va_copy(copy, list);
    best = va_arg(list, int);
    for (i = 1; i < count; i++) {
        int n = va_arg(list, int);
        if (n > best)
            best = n;
    }
    for (i = 0; i < count; i++)
        above += best - va_arg(copy, int);
    va_end(copy);
    va_end(list);
    return best * 100 + above;
}

static void logLine(const char *text, ...) {
    char line[64];
    va_list list;
    va_start(list, text);
    vsnprintf(line, sizeof line, text, list);
    va_end(list);
    va_start(list, text);
    printf("%s|", line);
    vprintf(text, list);
    printf("\n");
    va_end(list);
}

static void join(char *target, const char *first, ...) {
    va_list list;
    const char *text;
    va_start(list, first);
    strcpy(target, first);
    while ((text = va_arg(list, const char *)) != NULL)
        strcat(target, text);
    va_end(list);
}

int main(void) {
    Point p = {3, -4, "pt"};
    char c = 'z', text[40];
    short s = -7;
    float f = 2.25f;
    format("plain");
    format("%d %x %L %c %s %f%%", -12, 255, 1LL << 40, 'q', "text", 3.14);
    format("%c %d %f", c, s, f);
    format("%P %d", p, 9);
    format("%O %O", add, 3, 4, multiply, 5, 6);
    printf("%d %d\n", largest(5, 3, 9, -2, 9, 4), largest(2, largest(2, 1, 2), 7));
    logLine("%d-%s-%.2f", 5, "five", 5.5);
    join(text, "a", "bc", "def", (char *)NULL);
    printf("%s\n", text);
    return 0;
}
