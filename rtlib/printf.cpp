// The engine of formatted output: a walk along the arguments, in which a text starts a format and
// each conversion of a format takes the next argument. The text that stands behind a conversion
// goes to the value's printer with it.

#include "rtlib/printf.h"

#include <cstring>
#include <string>

#include "expr/calls.h"
#include "expr/evaluator.h"
#include "expr/operands.h"
#include "expr/readers.h"
#include "expr/thread.h"
#include "numeric/convert.h"
#include "rtlib/engine.h"
#include "rtlib/printValue.h"

namespace zy {

namespace {

// The value of an argument for as long as it is printed. NULL if evaluating it left none.
class Argument {
public:
    explicit Argument(ExprNode *cell) {
        ExprNode *item = cell->item;
        if (!item)
            return;
        if (item->kind == NODE_VALUE && standsInPlace(item)) {
            value = operandInPlace(item);
            return;
        }
        if (!argumentChain(cell))
            cell->link = compileChain(item, nullptr, false);
        popped = evaluate(item, argumentChain(cell));
        value = popped;
    }
    Argument(const Argument &) = delete;
    Argument &operator=(const Argument &) = delete;
    ~Argument() {
        if (popped)
            deleteValue(popped);
    }
    const Value *get() const { return value; }

private:
    // A variable is pushed by its own routine, without a run of the loop.
    static Value *evaluate(ExprNode *item, ExprNode *chain) {
        const Value *below = currentContext->stack;
        if (item->kind == NODE_VALUE)
            item->routine(item);
        else
            runNested(chain);
        return currentContext->stack != below ? popValue() : nullptr;
    }

    const Value *value = nullptr;
    Value *popped = nullptr;
};

class Walk {
public:
    Walk(Sink &sink, ExprNode *arguments) : sink(sink), cell(arguments) {}
    void printAll();
    void printFirstFormat();

private:
    ExprNode *next() {
        ExprNode *current = cell;
        cell = cell->next;
        return current;
    }
    bool takeFormat(std::string &format);
    void printFormat(const std::string &format);
    const char *collect(const char *percent, std::string &conversion);
    bool takeStar(std::string &conversion);
    void convertNext(const char *conversion);

    Sink &sink;
    ExprNode *cell;  // the next argument
};

// A * stands for the next argument. False if there is none.
bool Walk::takeStar(std::string &conversion) {
    if (!cell)
        return false;
    Argument number(next());
    conversion += std::to_string(number.get() ? readInt32(number.get()) : 0);
    return true;
}

// A conversion and the text behind it, up to the next %. The end of it in the format; NULL if
// arguments ran out.
const char *Walk::collect(const char *percent, std::string &conversion) {
    conversion = '%';
    bool inConversion = true;
    const char *end = percent + 1;
    for (; *end && *end != '%'; end++) {
        inConversion = inConversion && !isLetter(*end);
        if (*end != '*' || !inConversion)
            conversion += *end;
        else if (!takeStar(conversion))
            return nullptr;
    }
    return cell ? end : nullptr;
}

// Through a pointer to an integer.
void storeCount(const Value *pointer, long long count) {
    bool toInteger = pointer->type >= DT_P_CHAR && pointer->type <= DT_P_ULLONG;
    if (!toInteger || isNullAddress(pointer->payload.p))
        return;
    Value number{};
    number.kind = NODE_VALUE;
    number.type = DT_LLONG;
    number.payload.ll = count;
    storeByPointerType(pointer->payload.p, &number, static_cast<int>(pointer->type));
}

void Walk::convertNext(const char *conversion) {
    Argument argument(next());
    if (!argument.get())
        return;
    Conversion parsed = parseConversion(conversion);
    if (parsed.kind == CONVERT_COUNT && isPointer(argument.get()->type)) {
        storeCount(argument.get(), sink.count());
        sink.write(parsed.tail);
    } else {
        printConverted(sink, parsed, argument.get());
    }
}

void Walk::printFormat(const std::string &format) {
    const char *position = format.c_str();
    std::string conversion;
    while (const char *percent = strchr(position, '%')) {
        if (percent[1] == '%') {
            sink.write(position, percent + 1 - position);
            position = percent + 2;
            continue;
        }
        sink.write(position, percent - position);
        position = percent;
        const char *end = collect(percent, conversion);
        if (!end)
            break;
        convertNext(conversion.c_str());
        position = end;
    }
    sink.write(position);
}

// The next argument as a format, copied, as evaluating those behind it may change the text it came
// from. False for all else, which is printed.
bool Walk::takeFormat(std::string &format) {
    Argument argument(next());
    if (!argument.get())
        return false;
    size_t limit;
    const char *text = textOf(argument.get(), limit);
    if (text)
        format.assign(text, strnlen(text, limit));
    else
        printValue(sink, nullptr, argument.get());
    return text;
}

void Walk::printAll() {
    std::string format;
    while (cell)
        if (takeFormat(format))
            printFormat(format);
}

void Walk::printFirstFormat() {
    std::string format;
    if (cell && takeFormat(format))
        printFormat(format);
    dropArguments(cell);
}

}  // namespace

void printArguments(Sink &sink, ExprNode *arguments, Formats formats) {
    Walk walk(sink, arguments);
    if (formats == Formats::ALL_TEXTS)
        walk.printAll();
    else
        walk.printFirstFormat();
}

void dropArguments(ExprNode *arguments) {
    for (ExprNode *cell = arguments; cell; cell = cell->next)
        Argument dropped(cell);
}

int printfEngine(void *stream, ExprNode *arguments) {
    Sink sink(stream ? static_cast<FILE *>(stream) : stdout);
    printArguments(sink, arguments, Formats::ALL_TEXTS);
    return sink.result();
}

}  // namespace zy
