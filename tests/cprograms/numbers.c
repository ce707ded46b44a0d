/* Number theory and the ways of writing numbers. */
#include <stdio.h>
#include <limits.h>

#define MAX(a, b) ((a) > (b) ? (a) : (b))
#define SQUARE(x) ((x) * (x))
#define ARRAY_SIZE(a) (sizeof(a) / sizeof((a)[0]))

unsigned int gcd(unsigned int a, unsigned int b) { return b == 0 ? a : gcd(b, a % b); }

unsigned long long power(unsigned long long base, unsigned int exponent, unsigned long long modulus) {
    unsigned long long result = 1;
    while (exponent > 0) {
        if (exponent & 1)
            result = result * base % modulus;
        base = base * base % modulus;
        exponent >>= 1;
    }
    return result;
}

int bitCount(unsigned int n) {
    int count = 0;
    for (; n; n &= n - 1)
        count++;
    return count;
}

void printBinary(unsigned int n, int width) {
    int i;
    for (i = width - 1; i >= 0; i--)
        putchar(n >> i & 1 ? '1' : '0');
    putchar('\n');
}

void printRoman(int n) {
    const int values[] = {1000, 900, 500, 400, 100, 90, 50, 40, 10, 9, 5, 4, 1};
    const char *signs[] = {"M", "CM", "D", "CD", "C", "XC", "L", "XL", "X", "IX", "V", "IV", "I"};
    int i;
    printf("%d = ", n);
    for (i = 0; i < 13; i++) {
        while (n >= values[i]) {
            printf("%s", signs[i]);
            n -= values[i];
        }
    }
    printf("\n");
}

int collatz(unsigned long long n) {
    int steps = 0;
    while (n != 1) {
        n = n % 2 ? 3 * n + 1 : n / 2;
        steps++;
    }
    return steps;
}

void hanoi(int disks, int from, int to, int *moves) {
    if (disks == 0)
        return;
    hanoi(disks - 1, from, 6 - from - to, moves);
    ++*moves;
    if (disks == 4)
        printf("disk 4 from %d to %d\n", from, to);
    hanoi(disks - 1, 6 - from - to, to, moves);
}

int main(void) {
    int years[] = {1, 4, 9, 14, 40, 90, 400, 1987, 2024, 3999};
    unsigned int i, best = 1;
    int moves = 0;
    unsigned char byte = 250;
    signed char small = 127;
    short s = -32768;
    printf("%u %u %u\n", gcd(1071, 462), gcd(17, 5), gcd(0, 9));
    printf("%llu %llu\n", power(2, 62, 1000000007ULL), power(3, 200, 13));
    printf("%d %d %d\n", bitCount(0), bitCount(255), bitCount(0xF0F0F0F0u));
    printBinary(0xA5, 8);
    printBinary(1u << 10 | 3, 12);
    for (i = 0; i < ARRAY_SIZE(years); i++)
        printRoman(years[i]);
    for (i = 1; i < 1000; i++)
        if (collatz(i) > collatz(best))
            best = i;
    printf("%u takes %d steps\n", best, collatz(best));
    hanoi(6, 1, 3, &moves);
    printf("%d moves\n", moves);
    byte += 10;
    small++;
    s--;
    printf("%d %d %d\n", byte, small, s);
    printf("%d %d %d\n", -7 / 2, -7 % 2, 7 >> 1);
    printf("%d %u %d\n", INT_MAX, UINT_MAX, INT_MIN);
    printf("%o %X %#x %5.1f|%-8d|%08.3f\n", 8, 48879, 255, 2.25, 42, -3.14159);
    printf("%d %d\n", MAX(SQUARE(3 + 1), 15), MAX(SQUARE(2), 15));
    return (int)(moves + best) % 256;
}
