/* Prime numbers: a sieve, factors, twins, perfect numbers, Goldbach's pairs. */
#include <stdio.h>
#include <stdbool.h>

#define LIMIT 2000

char composite[LIMIT + 1];

void sieve(void) {
    int i, j;
    composite[0] = composite[1] = 1;
    for (i = 2; i * i <= LIMIT; i++) {
        if (composite[i])
            continue;
        for (j = i * i; j <= LIMIT; j += i)
            composite[j] = 1;
    }
}

bool isPrime(int n) { return n >= 0 && n <= LIMIT && !composite[n]; }

void printFactors(int n) {
    int p, first = 1;
    printf("%d =", n);
    for (p = 2; n > 1; p++) {
        int power = 0;
        while (n % p == 0) {
            n /= p;
            power++;
        }
        if (power == 0)
            continue;
        printf(first ? " %d" : " * %d", p);
        if (power > 1)
            printf("^%d", power);
        first = 0;
    }
    putchar('\n');
}

int sumOfDivisors(int n) {
    int sum = 0, d;
    for (d = 1; d < n; d++)
        if (n % d == 0)
            sum += d;
    return sum;
}

int main(void) {
    int i, count = 0, twins = 0;
    long sum = 0;
    sieve();
    for (i = 2; i <= LIMIT; i++) {
        if (!isPrime(i))
            continue;
        count++;
        sum += i;
        if (isPrime(i + 2))
            twins++;
        if (i < 100)
            printf("%d%c", i, count % 10 == 0 ? '\n' : ' ');
    }
    printf("\n%d primes, sum %ld, %d pairs of twins\n", count, sum, twins);
    for (i = 360; i <= 370; i++)
        printFactors(i);
    for (i = 2; i <= 500; i++)
        if (sumOfDivisors(i) == i)
            printf("%d is perfect\n", i);
    for (i = 4; i <= 60; i += 2) {
        int a;
        for (a = 2; a <= i / 2; a++)
            if (isPrime(a) && isPrime(i - a))
                break;
        printf("%2d = %d + %d%s", i, a, i - a, i % 12 == 0 ? "\n" : ", ");
    }
    return count % 256;
}
