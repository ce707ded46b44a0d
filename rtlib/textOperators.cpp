// Operators that write texts. A destination knows what it is: an array is never written beyond its
// end, a string_t gets a new text, which is assigned to its variable, and a bare pointer is trusted
// as in C.

#include "rtlib/textOperators.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "expr/calls.h"
#include "expr/evaluator.h"
#include "expr/nodes.h"
#include "expr/routines.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "numeric/assign.h"
#include "rtlib/cFunctions.h"
#include "rtlib/libraryCall.h"
#include "rtlib/textState.h"
#include "rtlib/valueText.h"

namespace zy {

// What leads to a target that is no plain variable has to run anew.
void assignText(ExprNode *target, const char *text) {
    ExprNode *value = newZeroValue(DT_P_CHAR);
    if (!value)
        return;
    value->payload.text = const_cast<char *>(text);
    if (variableOf(target)) {
        assignValue(target, value);
        deleteValue(value);
        return;
    }
    ExprNode *assignment = newOperatorNode(OP_ASSIGN, copyNode(target), value);
    const Value *below = currentContext->stack;
    runNested(compileChain(assignment, nullptr, false));
    if (currentContext->stack != below)
        deleteValue(popValue());
    deleteNode(assignment);
}

namespace {

// What is written to, and with what. `count` is the size of an array.
struct TextCall {
    bool isString, isArray;
    char *to;
    const char *from;
    size_t count, n;
};

// Gives the result: of a string_t a new text, else an address.
using Writer = char *(*)(const TextCall &call);

// A new text of two parts; NULL for no part at all.
char *joined(const char *a, size_t aLength, const char *b, size_t bLength) {
    auto *text = static_cast<char *>(allocOrFail(aLength + bLength + 1));
    if (!text)
        return nullptr;
    if (aLength)
        memcpy(text, a, aLength);
    if (bLength)
        memcpy(text + aLength, b, bLength);
    text[aLength + bLength] = '\0';
    return text;
}

// As much of a text as fits, with a NUL in the array's last element.
void fillArray(const TextCall &call, size_t used) {
    if (call.count == 0)
        return;
    size_t room = call.count > used + 1 ? call.count - used - 1 : 0;
    memcpy(call.to + used, call.from, std::min(room, strlen(call.from)));
    call.to[call.count - 1] = '\0';
}

char *writeCopy(const TextCall &call) {
    if (call.isString)
        return copyString(call.from);
    if (!call.to || !call.from)
        return nullptr;
    if (call.isArray && call.count < strlen(call.from) + 1) {
        runError("string length s1 is less than s2 in strcpy(s1,s2)");
        fillArray(call, 0);
        return call.to;
    }
    memmove(call.to, call.from, strlen(call.from) + 1);
    return call.to;
}

char *writeCounted(const TextCall &call) {
    if (call.isString)
        return call.from ? joined(call.from, strnlen(call.from, call.n), nullptr, 0) : nullptr;
    if (!call.to || !call.from)
        return nullptr;
    size_t n = call.n;
    if (call.isArray && call.count < n) {
        runError("string length s1 is less than n in strncpy(s1,s2,n)");
        n = call.count;
    }
    size_t length = strnlen(call.from, n);
    memmove(call.to, call.from, length);
    memset(call.to + length, 0, n - length);
    return call.to;
}

// The length of what an array holds, its end at the latest.
size_t usedLength(const TextCall &call) {
    return call.isArray ? strnlen(call.to, call.count) : strlen(call.to);
}

// Appends `length` characters to what isn't a string_t.
char *appendTo(const TextCall &call, size_t length, size_t wanted, const char *complaint) {
    size_t used = usedLength(call);
    if (call.isArray && call.count < used + wanted + 1) {
        runError("%s", complaint);
        TextCall part = call;
        std::string text(call.from, length);
        part.from = text.c_str();
        fillArray(part, used);
        return call.to;
    }
    memmove(call.to + used, call.from, length);
    call.to[used + length] = '\0';
    return call.to;
}

char *joinedTo(const TextCall &call, size_t length) {
    if (!call.to && !call.from)
        return nullptr;
    return joined(call.to, call.to ? strlen(call.to) : 0, call.from, length);
}

char *writeAppended(const TextCall &call) {
    if (call.isString)
        return joinedTo(call, call.from ? strlen(call.from) : 0);
    if (!call.to) {
        runError("s1 is NULL in strcat(s1,s2)");
        return nullptr;
    }
    if (!call.from) {
        runWarningAlways("s2 is NULL in strcat(s1,s2)");
        return call.to;
    }
    size_t length = strlen(call.from);
    return appendTo(call, length, length,
                    "the remaining string length s1 is less than s2 in strcat(s1,s2)");
}

char *writeCountedAppended(const TextCall &call) {
    size_t length = call.from ? strnlen(call.from, call.n) : 0;
    if (call.isString)
        return joinedTo(call, length);
    if (!call.to || !call.from)
        return call.to;
    return appendTo(call, length, call.n,
                    "the remaining string length s1 is less than n in strncat(s1,s2,n)");
}

}  // namespace

void pushText(ExprNode *target, bool isString, char *text) {
    Value *result = pushNewValue();
    if (!result)
        return;
    result->type = isString ? DT_STRING : DT_P_CHAR;
    result->payload.text = text;
    result->count = 0;
    if (isString && isLvalue(target, true) == LVALUE_YES)
        assignText(target, text);
}

namespace {

template <Writer write, bool counted>
void writeText(ExprNode *node) {
    char *text;
    bool isString;
    {
        Operand to(node->left, Operand::CONTENTS), from(node->right, Operand::CONTENTS);
        if (!to || !from)
            return;
        TextCall call{to->type == DT_STRING,
                      to->type == DT_CARRAY,
                      static_cast<char *>(addressIn(to.get())),
                      static_cast<const char *>(addressIn(from.get())),
                      to->count,
                      0};
        if constexpr (counted) {
            Operand number(node->third);
            if (!number)
                return;
            double n = readDouble(number.get());
            call.n = n > 0 ? static_cast<size_t>(truncateToInt64(n)) : 0;
        }
        isString = call.isString;
        text = write(call);
    }
    pushText(node->left, isString, text);
}

}  // namespace

void strcpyOperator(ExprNode *node) { writeText<writeCopy, false>(node); }
void strncpyOperator(ExprNode *node) { writeText<writeCounted, true>(node); }
void strcatOperator(ExprNode *node) { writeText<writeAppended, false>(node); }
void strncatOperator(ExprNode *node) { writeText<writeCountedAppended, true>(node); }

// ---- New texts ----------------------------------------------------------------------------------

namespace {

// A text that grows, in a block that a string variable may own. Null parts add nothing, and a text
// of nothing else is null.
class GrowingText {
public:
    ~GrowingText() { free(text); }
    // The text of an operand; false if there is no operand, or no memory.
    bool addOperand(ExprNode *node) {
        const Operand operand(node, Operand::CONTENTS);
        return operand && append(static_cast<const char *>(addressIn(operand.get())));
    }
    bool append(const char *part) {
        if (!part)
            return true;
        size_t size = strlen(part);
        if (length + size >= room) {
            constexpr size_t spare = 32;  // for the short parts that mostly follow
            auto *larger = static_cast<char *>(realloc(text, length + size + spare));
            if (!larger) {
                reportOutOfMemory();
                return false;
            }
            text = larger;
            room = length + size + spare;
        }
        memcpy(text + length, part, size + 1);
        length += size;
        return true;
    }
    void push() {
        Value *result = pushNewValue();
        if (!result)
            return;
        result->type = DT_STRING;
        result->payload.text = std::exchange(text, nullptr);
    }

private:
    char *text = nullptr;
    size_t length = 0, room = 0;
};

bool isText(const Value *value) {
    int type = static_cast<int>(value->type);
    return type == DT_STRING || type == DT_P_CHAR || type == DT_P_UCHAR || type == DT_P_VOID ||
           type == DT_NULL || isArray(type);
}

}  // namespace

void straddOperator(ExprNode *node) {
    GrowingText sum;
    for (const ExprNode *cell = node->left; cell; cell = cell->next)
        if (!sum.addOperand(cell->item))
            return;
    sum.push();
}

void addStringOperator(ExprNode *node) {
    GrowingText sum;
    if (sum.addOperand(node->left) && sum.addOperand(node->right))
        sum.push();
}

void toStringOperator(ExprNode *node) {
    GrowingText text;
    bool done = false;
    {
        const Operand operand(node->left, Operand::CONTENTS);
        if (operand && isText(operand.get()))
            done = text.append(static_cast<const char *>(addressIn(operand.get())));
        else if (operand)
            done = text.append(valueToText(operand.get()).c_str());
    }
    if (done)
        text.push();
}

// ---- Tokens -------------------------------------------------------------------------------------

namespace {

// The next token, and the text cut behind it; NULL if there is none.
char *nextWord(char *start, const char *delimiters) {
    char *text = start ? start : tokenPosition;
    tokenPosition = nullptr;
    if (!text)
        return nullptr;
    text += strspn(text, delimiters);
    if (!*text)
        return nullptr;
    char *end = text + strcspn(text, delimiters);
    if (*end) {
        *end = '\0';
        tokenPosition = end + 1;
    }
    return text;
}

}  // namespace

void strtokOperator(ExprNode *node) {
    Operand source(node->left, Operand::CONTENTS), delimiters(node->right, Operand::CONTENTS);
    if (!source || !delimiters)
        return;
    auto *text = static_cast<char *>(addressIn(source.get()));
    bool isString = source->type == DT_STRING;
    if (isString && text) {  // the scan cuts a text of its own, until the last token is out
        releaseTokens();
        text = tokenBuffer = copyString(text);
    }
    const auto *set = static_cast<const char *>(addressIn(delimiters.get()));
    char *word = nextWord(text, set ? set : "");
    bool isCopy = isString || tokenBuffer;
    Value *result = pushNewValue();
    if (!result)
        return;
    result->type = isCopy ? DT_STRING : DT_P_CHAR;
    result->payload.text = isCopy ? copyString(word) : word;
    if (!word)
        releaseTokens();
}

// ---- Lines --------------------------------------------------------------------------------------

namespace {

// A line of a stream into a string_t; NULL at its end.
char *readNewLine(int num, FILE *stream) {
    if (num <= 0)
        return nullptr;
    std::string line(static_cast<size_t>(num), '\0');
    return fgets(line.data(), num, stream) ? copyString(line.c_str()) : nullptr;
}

char *readLineInto(const Value *to, int num, FILE *stream) {
    auto *memory = static_cast<char *>(addressIn(to));
    if (to->type == DT_CARRAY && num > static_cast<int>(to->count)) {
        runError("array length of str in fgets(str,num,stream) is less than num");
        num = static_cast<int>(to->count);
    }
    return memory && num > 0 ? fgets(memory, num, stream) : nullptr;
}

// A line of standard input without its end; false at the end of the input.
bool readInputLine(std::string &line) {
    int c = getchar();
    if (c == EOF)
        return false;
    for (; c != EOF && c != '\n'; c = getchar())
        line += static_cast<char>(c);
    return true;
}

char *storeInputLine(const Value *to, std::string &line) {
    auto *memory = static_cast<char *>(addressIn(to));
    bool isSized = to->type == DT_CARRAY || to->type == DT_P_CARRAY;
    if (isSized && line.size() + 1 > to->count) {
        runError("array length of str in gets(str) is less than the length of the input string");
        line.resize(to->count ? to->count - 1 : 0);
    }
    if (memory)
        memcpy(memory, line.c_str(), line.size() + 1);
    return memory;
}

}  // namespace

void getsOperator(ExprNode *node) {
    char *text = nullptr;
    bool isString;
    {
        Operand to(node->left, Operand::CONTENTS);
        if (!to)
            return;
        isString = to->type == DT_STRING;
        if (std::string line; readInputLine(line))
            text = isString ? copyString(line.c_str()) : storeInputLine(to.get(), line);
    }
    pushText(node->left, isString, text);
}

// ---- Transformation -----------------------------------------------------------------------------

namespace {

size_t transformInto(const Value *to, const char *source, size_t n) {
    if (to->type == DT_CARRAY && to->count < n) {
        runError(
            "buffer for dest is less than len in strxfrm(char *dst, const char *src, size_t n)");
        n = to->count;
    }
    auto *memory = static_cast<char *>(addressIn(to));
    return strxfrm(memory, source, memory ? n : 0);
}

}  // namespace

void strxfrmOperator(ExprNode *node) {
    Operand to(node->left, Operand::CONTENTS), from(node->right, Operand::CONTENTS);
    Operand number(node->third);
    if (!to || !from || !number)
        return;
    const auto *text = static_cast<const char *>(addressIn(from.get()));
    const char *source = text ? text : "";
    size_t n = readUnsigned64(number.get());
    if (to->type != DT_STRING) {
        pushInteger(node->op, static_cast<int>(transformInto(to.get(), source, n)));
        return;
    }
    size_t needed = strxfrm(nullptr, source, 0);
    std::string block(std::min(n, needed) + 1, '\0');
    pushInteger(node->op, static_cast<int>(strxfrm(block.data(), source, block.size())));
    assignText(node->left, block.c_str());
}

// ---- Times --------------------------------------------------------------------------------------

void strftimeOperator(ExprNode *node) {
    Operand to(node->left, Operand::CONTENTS), size(node->right);
    Operand format(node->third, Operand::CONTENTS), time(node->fourth, Operand::CONTENTS);
    if (!to || !size || !format || !time)
        return;
    size_t room = readUnsigned64(size.get());
    if (to->type == DT_CARRAY && to->count < room) {
        runError("memory of str in strftime(str,maxsize,format,time) is less than maxsize");
        room = to->count;
    }
    bool isString = to->type == DT_STRING;
    constexpr size_t most = 65536;  // no format makes more
    std::string block(isString ? std::min(room, most) : 0, '\0');
    auto *memory = isString ? block.data() : static_cast<char *>(addressIn(to.get()));
    size_t length =
        formatTime(memory, isString ? block.size() : room,
                   static_cast<const char *>(addressIn(format.get())), addressIn(time.get()));
    pushInteger(node->op, static_cast<int>(length));
    if (isString && isLvalue(node->left, true) == LVALUE_YES)
        assignText(node->left, block.c_str());
}

void fgetsOperator(ExprNode *node) {
    char *text = nullptr;
    bool isString;
    {
        Operand to(node->left, Operand::CONTENTS), number(node->right), from(node->third);
        if (!to || !number || !from)
            return;
        isString = to->type == DT_STRING;
        int num = truncateToInt32(readDouble(number.get()));
        if (auto *stream = static_cast<FILE *>(addressIn(from.get())))
            text = isString ? readNewLine(num, stream) : readLineInto(to.get(), num, stream);
    }
    pushText(node->left, isString, text);
}

}  // namespace zy
