/* A small stack machine with its assembler: enums, unions, tables of functions, switches. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum code { PUSH, ADD, SUB, MUL, DUP, SWAP, PRINT, JUMP, JUMPZ, HALT, CODES };

const char *names[] = {"push", "add", "sub", "mul", "dup", "swap", "print", "jump", "jumpz", "halt"};

typedef struct {
    enum code code;
    int operand;
} Instruction;

typedef int (*Operation)(int, int);

int add(int a, int b) { return a + b; }
int subtract(int a, int b) { return a - b; }
int multiply(int a, int b) { return a * b; }

Instruction program[64];
int programLength = 0;
int stack[32], top = 0, executed = 0;

int hasOperand(enum code code) { return code == PUSH || code == JUMP || code == JUMPZ; }

int findCode(const char *name) {
    int code;
    for (code = 0; code < CODES; code++)
        if (strcmp(names[code], name) == 0)
            return code;
    return -1;
}

int assemble(const char *source) {
    char text[400], *word;
    strcpy(text, source);
    programLength = 0;
    for (word = strtok(text, " \n"); word != NULL; word = strtok(NULL, " \n")) {
        int code = findCode(word);
        if (code < 0) {
            printf("unknown word %s\n", word);
            return 0;
        }
        program[programLength].code = code;
        if (hasOperand(code))
            program[programLength].operand = atoi(strtok(NULL, " \n"));
        programLength++;
    }
    return 1;
}

void apply(Operation operation) {
    int right = stack[--top];
    int left = stack[--top];
    stack[top++] = operation(left, right);
}

void run(void) {
    int at = 0, kept;
    top = executed = 0;
    for (;;) {
        Instruction now = program[at++];
        executed++;
        switch (now.code) {
            case PUSH: stack[top++] = now.operand; break;
            case ADD: apply(add); break;
            case SUB: apply(subtract); break;
            case MUL: apply(multiply); break;
            case DUP:
                stack[top] = stack[top - 1];
                top++;
                break;
            case SWAP:
                kept = stack[top - 1];
                stack[top - 1] = stack[top - 2];
                stack[top - 2] = kept;
                break;
            case PRINT: printf("%d ", stack[--top]); break;
            case JUMP: at = now.operand; break;
            case JUMPZ:
                if (stack[--top] == 0)
                    at = now.operand;
                break;
            case HALT:
                printf("(%d instructions)\n", executed);
                return;
            default: printf("bad code\n"); return;
        }
    }
}

int main(void) {
    if (assemble("push 6 push 7 mul print halt"))
        run();
    if (assemble("push 10 dup print push 1 sub dup jumpz 8 jump 1 halt"))
        run();
    if (assemble("push 3 push 4 swap sub push 5 mul print halt"))
        run();
    assemble("push 1 jmp 0");
    return programLength;
}
