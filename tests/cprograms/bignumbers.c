/* Numbers of many digits: factorials, powers, Fibonacci numbers, digits of e. */
#include <stdio.h>
#include <string.h>

#define DIGITS 120

typedef struct {
    int length;
    unsigned char digits[DIGITS];  /* the lowest first */
} Number;

void set(Number *number, unsigned int value) {
    memset(number->digits, 0, DIGITS);
    number->length = 0;
    do {
        number->digits[number->length++] = value % 10;
        value /= 10;
    } while (value > 0);
}

void multiply(Number *number, unsigned int factor) {
    unsigned int carry = 0;
    int i;
    for (i = 0; i < number->length || carry > 0; i++) {
        carry += (i < number->length ? number->digits[i] : 0) * factor;
        number->digits[i] = carry % 10;
        carry /= 10;
    }
    if (i > number->length)
        number->length = i;
}

void add(Number *sum, const Number *other) {
    int i, carry = 0;
    for (i = 0; i < sum->length || i < other->length || carry; i++) {
        int digit = carry;
        if (i < sum->length)
            digit += sum->digits[i];
        if (i < other->length)
            digit += other->digits[i];
        sum->digits[i] = digit % 10;
        carry = digit / 10;
    }
    if (i > sum->length)
        sum->length = i;
}

void print(const char *title, const Number *number) {
    int i;
    printf("%s", title);
    for (i = number->length - 1; i >= 0; i--)
        printf("%d", number->digits[i]);
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
    Number number, a, b;
    unsigned int i;
    char title[32];
    set(&number, 1);
    for (i = 1; i <= 50; i++) {
        multiply(&number, i);
        if (i % 10 == 0) {
            sprintf(title, "%u! = ", i);
            print(title, &number);
        }
    }
    set(&number, 1);
    for (i = 0; i < 200; i++)
        multiply(&number, 2);
    print("2^200 = ", &number);
    set(&a, 0);
    set(&b, 1);
    for (i = 0; i < 300; i++) {
        Number kept = b;
        add(&b, &a);
        a = kept;
    }
    print("F(300) = ", &a);
    digitsOfE(60);
    return number.length;
}
