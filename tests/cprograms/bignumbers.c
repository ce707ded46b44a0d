/* Numbers of many digits: factorials, powers, Fibonacci numbers, digits of e. */
#include <stdio.h>
#include <string.h>

#define DIGITS 120

/* The first element is the count of the digits behind it, of which the lowest comes first. */

void set(int *number, unsigned int value) {
    int i;
    for (i = 0; i < DIGITS; i++)
        number[i] = 0;
    do {
        number[++number[0]] = value % 10;
        value /= 10;
    } while (value > 0);
}

void multiply(int *number, unsigned int factor) {
    unsigned int carry = 0;
    int i;
    for (i = 0; i < number[0] || carry > 0; i++) {
        carry += (i < number[0] ? number[i + 1] : 0) * factor;
        number[i + 1] = carry % 10;
        carry /= 10;
    }
    if (i > number[0])
        number[0] = i;
}

void add(int *sum, int *other) {
    int i, carry = 0;
    for (i = 0; i < sum[0] || i < other[0] || carry; i++) {
        int digit = carry;
        if (i < sum[0])
            digit += sum[i + 1];
        if (i < other[0])
            digit += other[i + 1];
        sum[i + 1] = digit % 10;
        carry = digit / 10;
    }
    if (i > sum[0])
        sum[0] = i;
}

void print(const char *title, int *number) {
    int i;
    printf("%s", title);
    for (i = number[0] - 1; i >= 0; i--)
        printf("%d", number[i + 1]);
    printf("\n");
}

void digitsOfE(int count) {
    int places[80], i, n, x = 0;
    for (i = 0; i < count + 4; i++)
        places[i] = 1;
    printf("2.");
    for (n = 0; n < count; n++) {
        x = 0;
        for (i = count + 3; i >= 0; i--) {
            x = 10 * places[i] + x;
            places[i] = x % (i + 2);
            x = x / (i + 2);
        }
        printf("%d", x);
    }
    printf("\n");
}

int main(void) {
    int number[DIGITS], a[DIGITS], b[DIGITS], kept[DIGITS];
    unsigned int i;
    char title[32];
    set(number, 1);
    for (i = 1; i <= 50; i++) {
        multiply(number, i);
        if (i % 10 == 0) {
            sprintf(title, "%u! = ", i);
            print(title, number);
        }
    }
    set(number, 1);
    for (i = 0; i < 200; i++)
        multiply(number, 2);
    print("2^200 = ", number);
    set(a, 0);
    set(b, 1);
    for (i = 0; i < 300; i++) {
        memcpy(kept, b, sizeof(b));
        add(b, a);
        memcpy(a, kept, sizeof(a));
    }
    print("F(300) = ", a);
    digitsOfE(60);
    return number[0];
}
