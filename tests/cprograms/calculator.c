/* A calculator: reads expressions, one a line, and prints their values. */
#include <stdio.h>
#include <stdlib.h>
#include <ctype.h>
#include <math.h>
#include <string.h>

const char *text;
int failed;
double memory[26];

double expression(void);

void skipBlanks(void) {
    while (*text == ' ' || *text == '\t')
        text++;
}

void fail(const char *message) {
    if (!failed)
        printf("error: %s before '%s'\n", message, text);
    failed = 1;
}

double number(void) {
    double value = 0, scale = 1;
    while (isdigit(*text))
        value = value * 10 + (*text++ - '0');
    if (*text == '.') {
        text++;
        while (isdigit(*text)) {
            value = value * 10 + (*text++ - '0');
            scale *= 10;
        }
    }
    return value / scale;
}

double function(const char *name, double x) {
    if (strcmp(name, "sqrt") == 0)
        return sqrt(x);
    if (strcmp(name, "sin") == 0)
        return sin(x);
    if (strcmp(name, "exp") == 0)
        return exp(x);
    if (strcmp(name, "abs") == 0)
        return fabs(x);
    fail("unknown function");
    return 0;
}

double primary(void) {
    double value = 0;
    skipBlanks();
    if (*text == '-') {
        text++;
        return -primary();
    }
    if (*text == '(') {
        text++;
        value = expression();
        skipBlanks();
        if (*text == ')')
            text++;
        else
            fail("missing )");
        return value;
    }
    if (isdigit(*text))
        return number();
    if (isalpha(*text)) {
        char name[16];
        int length = 0;
        while (isalpha(*text) && length < 15)
            name[length++] = tolower(*text++);
        name[length] = '\0';
        if (length == 1)
            return memory[name[0] - 'a'];
        return function(name, primary());
    }
    fail("number expected");
    return 0;
}

double power(void) {
    double value = primary();
    skipBlanks();
    if (*text != '^')
        return value;
    text++;
    return pow(value, power());
}

double term(void) {
    double value = power();
    skipBlanks();
    while (*text == '*' || *text == '/') {
        char sign = *text++;
        double operand = power();
        if (sign == '*')
            value *= operand;
        else if (operand != 0)
            value /= operand;
        else
            fail("division by zero");
        skipBlanks();
    }
    return value;
}

double expression(void) {
    double value = term();
    int more = 1;
    while (more) {
        skipBlanks();
        switch (*text) {
            case '+':
                text++;
                value += term();
                break;
            case '-':
                text++;
                value -= term();
                break;
            default: more = 0;
        }
    }
    return value;
}

int main(void) {
    char line[200];
    int errors = 0;
    while (fgets(line, 200, stdin) != NULL) {
        double value;
        char target = 0;
        line[strcspn(line, "\n")] = '\0';
        text = line;
        failed = 0;
        skipBlanks();
        if (!*text)
            continue;
        if (islower(text[0]) && strchr(text, '=') != NULL) {
            target = text[0];
            text = strchr(text, '=') + 1;
        }
        value = expression();
        skipBlanks();
        if (*text)
            fail("end expected");
        if (failed) {
            errors++;
            continue;
        }
        if (target)
            memory[target - 'a'] = value;
        printf("%s -> %.6g\n", line, value);
    }
    return errors;
}
