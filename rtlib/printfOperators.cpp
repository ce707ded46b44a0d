// The operators of formatted output. The forms with a list of variable arguments put the format in
// front of that list and go the same ways.

#include <algorithm>
#include <cstring>

#include "expr/calls.h"
#include "expr/operands.h"
#include "expr/routines.h"
#include "expr/scalarFamilies.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "numeric/convert.h"
#include "rtlib/engine.h"
#include "rtlib/printf.h"

namespace zy {

namespace {

void pushPrinted(int count) {
    if (count < 0)
        runWarning("printf() failed");
    pushScalar(count);
}

// What a pointer leads to; NULL for any other value.
void *targetOf(const Value *value) {
    void *address = isPointer(value->type) ? pointerOf(value) : nullptr;
    return isNullAddress(address) ? nullptr : address;
}

void printTo(const Value *stream, ExprNode *arguments) {
    int count = -1;
    if (void *file = targetOf(stream)) {
        count = printfEngine(file, arguments);
    } else {
        runWarning("the file to be written by fprintf() has not open yet");
        dropArguments(arguments);
    }
    if (count < 0)
        runWarning("fprintf() failed");
    pushScalar(count);
}

// An argument list of its own for a format and the list that a va_list is.
struct VariableArguments {
    ExprNode format{};

    VariableArguments(Value *text, const Value *list) {
        format.kind = NODE_LIST;
        format.item = text;
        auto *cells = static_cast<ExprNode *>(targetOf(list));
        format.next = cells && cells->kind == NODE_LIST ? cells : nullptr;
    }
    ExprNode *cells() { return &format; }
};

// ---- Into memory --------------------------------------------------------------------------------

bool isString(const ExprNode *destination) { return treeType(destination) == DT_STRING; }

// Into a string: it gets a new text.
void assignText(ExprNode *target, const Sink &text) {
    Value value{};
    value.kind = NODE_VALUE;
    value.type = DT_P_CHAR;
    value.payload.text = const_cast<char *>(text.text());
    assignValue(target, &value);
}

// An array gets as much as fits, with the terminator.
void fillArray(const Value *array, const Sink &text) {
    size_t length = text.length();
    if (length + 1 > array->count) {
        runError(
            "array length of buf in sprintf(buf,format,arg-list) is less than the print "
            "output");
        if (array->count == 0)
            return;
        length = array->count - 1;
    }
    auto *memory = static_cast<char *>(array->payload.p);
    memcpy(memory, text.text(), length);
    memory[length] = '\0';
}

void fillMemory(const Value *pointer, const Sink &text) {
    if (void *memory = targetOf(pointer))
        memcpy(memory, text.text(), text.length() + 1);
    else
        runError("s in sprintf(s, ...) is a NULL pointer ");
}

void pushStored(const Sink &text) {
    int count = text.result();
    if (count < 0)
        runWarning("sprintf() failed");
    pushScalar(count);
}

void printIntoString(ExprNode *target, ExprNode *arguments) {
    Sink text;
    printArguments(text, arguments, Formats::ALL_TEXTS);
    assignText(target, text);
    pushStored(text);
}

void printIntoMemory(const Value *destination, ExprNode *arguments) {
    Sink text;
    if (destination->type == DT_CARRAY) {
        printArguments(text, arguments, Formats::ALL_TEXTS);
        fillArray(destination, text);
    } else {
        printArguments(text, arguments, Formats::FIRST_ONLY);
        fillMemory(destination, text);
    }
    pushStored(text);
}

}  // namespace

void printOperator(ExprNode *node) { pushPrinted(printfEngine(nullptr, node->left)); }

void fprintfOperator(ExprNode *node) {
    Operand stream(node->left, Operand::CONTENTS);
    if (stream)
        printTo(stream.get(), node->right);
}

namespace {

void sprintfIntoString(ExprNode *node) { printIntoString(node->left, node->right); }

void sprintfIntoMemory(ExprNode *node) {
    Operand destination(node->left, Operand::CONTENTS);
    if (destination)
        printIntoMemory(destination.get(), node->right);
}

}  // namespace

void sprintfOperator(ExprNode *node) {
    node->routine = isString(node->left) ? sprintfIntoString : sprintfIntoMemory;
    node->routine(node);
}

void vprintfOperator(ExprNode *node) {
    Operand format(node->left, Operand::CONTENTS), list(node->right, Operand::CONTENTS);
    if (format && list)
        pushPrinted(printfEngine(nullptr, VariableArguments(format.get(), list.get()).cells()));
}

void vfprintfOperator(ExprNode *node) {
    Operand stream(node->left, Operand::CONTENTS);
    Operand format(node->right, Operand::CONTENTS), list(node->third, Operand::CONTENTS);
    if (stream && format && list)
        printTo(stream.get(), VariableArguments(format.get(), list.get()).cells());
}

namespace {

void vsprintfIntoString(ExprNode *node) {
    Operand format(node->right, Operand::CONTENTS), list(node->third, Operand::CONTENTS);
    if (format && list)
        printIntoString(node->left, VariableArguments(format.get(), list.get()).cells());
}

void vsprintfIntoMemory(ExprNode *node) {
    Operand format(node->right, Operand::CONTENTS), list(node->third, Operand::CONTENTS);
    Operand destination(node->left, Operand::CONTENTS);  // it ran first
    if (destination && format && list)
        printIntoMemory(destination.get(), VariableArguments(format.get(), list.get()).cells());
}

}  // namespace

void vsprintfOperator(ExprNode *node) {
    node->routine = isString(node->left) ? vsprintfIntoString : vsprintfIntoMemory;
    node->routine(node);
}

}  // namespace zy
