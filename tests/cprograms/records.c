/* Structs by value: as parameters, results, members, elements, and through pointers to functions. */
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>

typedef struct {
    double re, im;
} Pair;
typedef struct {
    Pair corner[2];
    char name[12];
    struct {
        int width, height;
    } size;
} Box;
union Word {
    int number;
    unsigned char bytes[4];
};

static Pair pair(double re, double im) {
    Pair p;
    p.re = re;
    p.im = im;
    return p;
}
static Pair add(Pair a, Pair b) {
    a.re += b.re;
    a.im += b.im;
    return a;
}
static Pair multiply(Pair a, Pair b) {
    return pair(a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re);
}
static Pair power(Pair base, int n) {
    return n == 0 ? pair(1, 0) : multiply(base, power(base, n - 1));
}
static Pair apply(Pair (*operation)(Pair, Pair), Pair a, Pair b) { return operation(a, b); }

static Box grow(Box box, int by) {
    box.size.width += by;
    box.size.height += by;
    box.corner[1] = add(box.corner[1], pair(by, by));
    box.name[0]++;
    return box;
}
static union Word word(int n) {
    union Word w;
    w.number = n;
    return w;
}

static int lengthOf(const char *s) {
    int n = 0;
    while (*s++)
        n++;
    return n;
}

int main(void) {
    Pair a = {1, 2}, list[3], *p = &list[1];
    Box box = {{{0, 0}, {4, 3}}, "box", {4, 3}}, other;
    div_t d = div(17, 5);
    int i;
    a = add(a, multiply(a, pair(0, 1)));
    printf("%g %g\n", a.re, a.im);
    printf("%g %g\n", power(pair(1, 1), 8).re, power(pair(1, 1), 3).im);
    for (i = 0; i < 3; i++)
        list[i] = apply(i % 2 ? add : multiply, pair(i, 1), pair(2, i));
    *p = add(*p, list[2]);
    printf("%g %g %g %g\n", list[0].re, list[0].im, p->re, p->im);
    other = grow(grow(box, 1), 2);
    printf("%s %d %d %g | %s %d %d %g\n", box.name, box.size.width, box.size.height,
           box.corner[1].re, other.name, other.size.width, other.size.height, other.corner[1].re);
    printf("%c %d\n", grow(box, 3).name[0], grow(box, 3).size.height);
    printf("%d %d %d %d\n", d.quot, d.rem, div(-17, 5).quot, div(-17, 5).rem);
    printf("%d %d\n", word(0x0403).bytes[0], word(0x0403).bytes[1]);
    printf("%d %s\n", lengthOf(grow(box, 3).name), grow(box, 3).name);
    printf("%d %d %d\n", (int)offsetof(Box, name), (int)offsetof(Box, size.height),
           (int)offsetof(Box, corner[1].im));
    return 0;
}
