/* What the preprocessor is used for: tables, generated functions, configuration, assertions. */
#include <stdio.h>
#include <string.h>
#include <stdlib.h>

#ifndef LEVEL
#define LEVEL 2
#endif

#if LEVEL > 2
#define NAME "high"
#elif LEVEL == 2
#define NAME "middle"
#else
#define NAME "low"
#endif

#define STRING(x) #x
#define EXPANDED(x) STRING(x)
#define JOIN(a, b) a##b
#define JOINED(a, b) JOIN(a, b)
#define COUNT(array) (sizeof(array) / sizeof((array)[0]))
#define MIN(a, b) ((a) < (b) ? (a) : (b))
#define MAX(a, b) ((a) > (b) ? (a) : (b))
#define CLAMP(x, low, high) MAX(low, MIN(x, high))
#define SWAP(type, a, b) \
    do {                 \
        type kept = (a); \
        (a) = (b);       \
        (b) = kept;      \
    } while (0)
#define FOR_EACH(i, array) for ((i) = 0; (i) < (int)COUNT(array); (i)++)
#define CHECK(condition)                                                  \
    if (!(condition)) {                                                   \
        printf("line %d: (%s) doesn't hold\n", __LINE__, #condition);     \
        failures++;                                                       \
    } else                                                                \
        passed++
#define LOG(format, ...) printf("[" NAME "] " format "\n", ##__VA_ARGS__)
#define FIRST(first, ...) first
#define REST(first, ...) __VA_ARGS__

/* One table, three uses. */
#define COLOURS(X)     \
    X(RED, 0xff0000)   \
    X(GREEN, 0x00ff00) \
    X(BLUE, 0x0000ff)

#define AS_ENUM(name, value) name,
#define AS_NAME(name, value) #name,
#define AS_VALUE(name, value) value,

enum { COLOURS(AS_ENUM) COLOUR_COUNT };
const char *colourNames[] = {COLOURS(AS_NAME) "none"};
int colourValues[] = {COLOURS(AS_VALUE) 0};

#define DEFINE_POWER(n, expression) \
    int JOIN(power, n)(int x) { return expression; }

DEFINE_POWER(2, x *x)
DEFINE_POWER(3, x *x *x)
DEFINE_POWER(4, power2(power2(x)))

#undef DEFINE_POWER

/* Initial values that begin in a macro. */
#define POINT(a, b) {a, b}
#define ROW(n) {n, n + 1, n + 2}
#define LIST {1, 2, 3}
#define TITLE "a title"

struct point { int x, y; };
struct point points[] = {POINT(1, 2), POINT(3, 4)};
char title[] = TITLE;
int grid[2][3] = {ROW(1), ROW(4)};
int list[] = LIST;

#define list_length JOINED(list, JOINED(_, size))

int self = 3, one = 8, two = 9;
#define self self + 1
#define one two
#define two one

int failures = 0, passed = 0;
int list_size = 7;

int main(void) {
    int numbers[] = {5, 3, 9, 1}, i;
    const char *text = EXPANDED(LEVEL) "-" STRING(LEVEL) "-" EXPANDED(JOIN(1, 2));
    struct point p = POINT(5, 6);
    char local[] = TITLE " here";
    int mine[3] = LIST;
    LOG("started");
    printf("%d %d %d %d\n", points[1].x, p.y, grid[1][2], (int)COUNT(list));
    printf("%s %s %d %d\n", title, local, (int)sizeof(local), mine[2]);
    LOG("%d and %s", 5, EXPANDED(MIN(a, "b\n")));
    printf("%s %d\n", text, (int)COUNT(numbers));
    SWAP(int, numbers[0], numbers[3]);
    FOR_EACH(i, numbers)
        printf("%d%s", CLAMP(numbers[i], 2, MAX(MIN(7, 8), 4)), i == 3 ? "\n" : " ");
    for (i = 0; i < COLOUR_COUNT; i++)
        printf("%d %s %06x\n", i, colourNames[i], colourValues[i]);
    printf("%d %d %d\n", power2(5), power3(5), power4(5));
    printf("%d %d %d %d\n", list_length, self, one, two);
    printf("%d %d\n", FIRST(1, 2, 3), (REST(1, 2, 3)));
    CHECK(1 + 1 == 2);
    CHECK(strlen("abc") == 4);
    CHECK(MAX(1, 2) == 2 && "text");
#ifdef UNDEFINED
    printf("not compiled\n");
#else
#if defined(LEVEL) && LEVEL == 2 /* nested */
    printf("nested\n");
#endif
#endif
    printf("%d failed, %d passed\n", failures, passed);
    return failures;
}
