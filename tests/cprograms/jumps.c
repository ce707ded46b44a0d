/* setjmp and longjmp: out of loops, recursion and operands of operators, back again and again. */
#include <setjmp.h>
#include <stdio.h>

static jmp_buf place, retry;

static void jump(int n) {
    printf("jump %d\n", n);
    longjmp(place, n);
    printf("not here\n");
}

static void deep(int n) {
    int local = n;
    while (1) {
        for (;;) {
            if (n == 0)
                jump(local + 7);
            deep(n - 1);
        }
    }
}

static int leave(int n) {
    if (n > 2)
        longjmp(place, n);
    return n;
}

static int retries(void) {
    volatile int n = 0;
    int i;
    volatile int r;
    r = setjmp(retry);
    n++;
    if (r < 3) {
        for (i = 0; i < 5; i++)
            if (i == 2)
                longjmp(retry, r + 1);
        printf("no\n");
    }
    return r * 10 + n;
}

static int insideLoop(void) {
    volatile int i, sum = 0;
    jmp_buf here;
    for (i = 0; i < 3; i++) {
        if (setjmp(here) == 0) {
            sum += 1;
            if (i < 3)
                longjmp(here, 5);
        } else {
            sum += 100;
        }
    }
    return sum;
}

static int asCondition(void) {
    jmp_buf here;
    volatile int n = 0;
    while (setjmp(here) < 4) {
        n++;
        if (n > 10)
            break;
        longjmp(here, n);
    }
    return n;
}

static int recursive(int n) {
    jmp_buf here;
    volatile int r;
    r = setjmp(here);
    if (r)
        return r;
    if (n > 0) {
        int i, s = 0;
        for (i = 0; i < 2; i++)
            s += recursive(n - 1);
        return s + 1;
    }
    longjmp(here, 5);
    return -1;
}

/* A parser that gives up from any depth. */
static const char *position;
static jmp_buf failure;

static void fail(int code) { longjmp(failure, code); }
static int parseSum(void);
static int parsePrimary(void) {
    int value = 0;
    if (*position == '(') {
        position++;
        value = parseSum();
        if (*position != ')')
            fail(2);
        position++;
        return value;
    }
    if (*position < '0' || *position > '9')
        fail(1);
    while (*position >= '0' && *position <= '9')
        value = value * 10 + (*position++ - '0');
    return value;
}
static int parseProduct(void) {
    int value = parsePrimary();
    while (*position == '*' || *position == '/') {
        char op = *position++;
        int right = parsePrimary();
        if (op == '/' && right == 0)
            fail(3);
        value = op == '*' ? value * right : value / right;
    }
    return value;
}
static int parseSum(void) {
    int value = parseProduct();
    while (*position == '+' || *position == '-')
        value = *position++ == '+' ? value + parseProduct() : value - parseProduct();
    return value;
}
static void calculate(const char *text) {
    static const char *messages[] = {"", "number expected", "missing )", "division by zero"};
    int code, value;
    position = text;
    code = setjmp(failure);
    if (code) {
        printf("%s: %s at %d\n", text, messages[code], (int)(position - text));
        return;
    }
    value = parseSum();
    printf("%s = %d\n", text, value);
}

int main(void) {
    volatile int r;
    int k;
    if (setjmp(place) == 0)
        deep(3);
    else
        printf("back\n");
    r = setjmp(place);
    if (r == 0)
        longjmp(place, 0);
    printf("%d\n", r);
    r = setjmp(place);
    if (r < 4)
        jump(r + 1);
    printf("%d %d %d %d\n", retries(), insideLoop(), asCondition(), recursive(3));
    r = setjmp(place);
    if (r == 0) {
        for (k = 0; k < 5; k++)
            if (k && leave(k))
                printf("k %d\n", k);
    }
    printf("and: %d\n", r);
    r = setjmp(place);
    if (r == 0) {
        int v = 1 + (k < 100 ? leave(5) : 3);
        printf("no %d\n", v);
    }
    printf("conditional: %d\n", r);
    r = setjmp(place);
    if (r == 0 && (k == 0 || (r == 0 && leave(9))))
        printf("no\n");
    printf("nested: %d\n", r);
    calculate("1+2*(3+4)");
    calculate("1+(2*(3+4)");
    calculate("8/(4-2*2)+1");
    calculate("2*(3+)");
    calculate("100/7-4");
    return 0;
}
