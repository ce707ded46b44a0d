/* The functions of the library that are written in the language, against the compiler's. */
#include <ctype.h>
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

int signOf(int n) { return (n > 0) - (n < 0); }

void testTexts(void) {
    const char *words[] = {"", "a", "abc", "abd", "ABC", "abcdef", "b"};
    const char *text = "the quick brown fox";
    int i, j;
    for (i = 0; i < 7; i++) {
        for (j = 0; j < 7; j++)
            printf("%d%d%d%d ", signOf(strncmp(words[i], words[j], 3)),
                   signOf(strcasecmp(words[i], words[j])),
                   signOf(strncasecmp(words[i], words[j], 2)),
                   signOf(memcmp(words[i], words[j], 1)));
        printf("\n");
    }
    printf("%d %d %d\n", strchr(text, 'z') == NULL, (int)(strchr(text, 'q') - text),
           (int)(strchr(text, '\0') - text));
    printf("%d %d %d\n", strrchr(text, 'Z') == NULL, (int)(strrchr(text, 'o') - text),
           (int)(strrchr(text, '\0') - text));
    printf("%d %d %d\n", (int)(strstr(text, "brown") - text), (int)(strstr(text, "") - text),
           strstr(text, "foxes") == NULL);
    printf("%d %d %d\n", (int)strspn(text, "eht "), (int)strcspn(text, "xyz"),
           (int)strcspn(text, "?"));
    printf("%s|%d\n", strpbrk(text, "kc"), strpbrk(text, "?!") == NULL);
    printf("%d %d\n", (int)((char *)memchr(text, 'b', 19) - text), memchr(text, 'b', 4) == NULL);
    printf("%d%d%d\n", isblank(' ') != 0, isblank('\t') != 0, isblank('\n') != 0);
}

void testNumbers(void) {
    const char *texts[] = {"0", "42", "-17", "  +8x", "99999", "x1", "", "-0"};
    double values[] = {0.0, 0.5, 1.5, 2.5, -0.5, -1.5, 2.4, -2.6, 1e10, 1234.5678, -1e-3};
    int i;
    for (i = 0; i < 8; i++)
        printf("%d %lld %.3f; ", atoi(texts[i]), atoll(texts[i]), atof(texts[i]));
    printf("%lld %lld\n", llabs(-5000000000LL), atoll("-9000000000"));
    for (i = 0; i < 11; i++) {
        double x = values[i];
        printf("%g: %g %g %g %.12g %.12g %.12g %g %g\n", x, round(x), trunc(x), rint(x), cbrt(x),
               hypot(x, 3.0), expm1(x > 100 ? 1.0 : x), fmax(x, 1.0), fmin(x, 1.0));
        printf("%d %g %g %.10g %g %g\n", (int)(lround(x > 1e9 ? 1.0 : x)), fdim(x, 1.0),
               copysign(3.0, x), x > 0 ? log2(x) : log1p(x > -1 ? x : 0.25), remainder(x, 3.0),
               exp2(x > 100 ? 2.0 : x));
    }
}

int compareNumbers(const void *a, const void *b) {
    return signOf(*(const int *)a - *(const int *)b);
}

int compareReals(const void *a, const void *b) {
    double x = *(const double *)a, y = *(const double *)b;
    return x < y ? -1 : x > y;
}

void testSorting(void) {
    int numbers[50], i, key, *found;
    double reals[7] = {2.5, -1.0, 3.75, 0.0, 1e3, -1e3, 2.25};
    for (i = 0; i < 50; i++)
        numbers[i] = (i * 37 + 11) % 61;
    qsort(numbers, 50, sizeof(int), compareNumbers);
    qsort(reals, 7, sizeof(double), compareReals);
    for (i = 0; i < 50; i++)
        printf("%d ", numbers[i]);
    for (i = 0; i < 7; i++)
        printf("%g ", reals[i]);
    for (key = 0; key < 12; key++) {
        found = (int *)bsearch(&key, numbers, 50, sizeof(int), compareNumbers);
        printf(found ? "+" : "-");
    }
    printf("\n");
}

int main(void) {
    char *copy = strdup("copied");
    testTexts();
    testNumbers();
    testSorting();
    printf("%s\n", copy);
    free(copy);
    return 0;
}
