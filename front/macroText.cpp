// Tokens as the text of a macro: names and operators as they are, constants in one form for all
// spellings of a value, so that a macro is the same whichever of them defined it.

#include <cmath>
#include <cstring>

#include "expr/value.h"
#include "front/lexerParts.h"
#include "front/preprocessorParts.h"

namespace zy {

namespace {

std::string print(const char *format, auto number) {
    char text[64];
    snprintf(text, sizeof text, format, number);
    return text;
}

void appendChar(std::string &text, char c) {
    text += '\'';
    if (c == '\'' || c == '\\')
        text += '\\';
    text += c ? std::string(1, c) : "\\0";
    text += '\'';
}

// The count includes the NUL at the end; the text may hold further ones.
void appendString(std::string &text, const Value *value) {
    const char *c = value->payload.text;
    const char *end = c + (value->count ? value->count - 1 : strlen(c));
    text += '"';
    for (; c < end; c++) {
        bool trigraph = *c == '?' && text.back() == '?';
        if (*c == '"' || *c == '\\' || trigraph)
            text += '\\';
        text += *c ? std::string(1, *c) : "\\000";
    }
    text += '"';
}

bool hasSuffix(const std::string &source) {
    return !source.empty() && strchr("uUlL", source.back()) != nullptr;
}

// The shortest form, unless it loses digits.
std::string floatText(float number) {
    if (std::isinf(number))
        return "1e999F";
    std::string text = print("%g", static_cast<double>(number));
    if (strtof(text.c_str(), nullptr) != number)
        text = print("%.9g", static_cast<double>(number));
    return text + 'F';
}

std::string doubleText(double number) {
    return std::isinf(number) ? "1e999" : print("%.20e", number);
}

// A number that was written without a suffix stays without one. Those of a long long keep theirs:
// the text is read again, and a small number would be an int then.
std::string numberText(const Value *value, const std::string &source) {
    const Payload &payload = value->payload;
    bool marked = hasSuffix(source);
    switch (value->type) {
        case DT_INT: return print("%d", payload.i);
        case DT_UINT: return print("%u", payload.u) + (marked ? "U" : "");
        case DT_LLONG: return print("%lld", payload.ll) + (marked ? "LL" : "");
        case DT_ULLONG:
            return print("%llu", payload.ull) + (!marked                    ? ""
                                                 : payload.ull > UINT32_MAX ? "U"
                                                                            : "ULL");
        case DT_FLOAT: return floatText(payload.f);
        case DT_DOUBLE: return doubleText(payload.d);
        case DT_LDOUBLE: return print("%.35e", payload.d) + "L";
        default: return source;  // a wide literal
    }
}

void appendConstant(std::string &text, const Value *value, const std::string &source) {
    switch (value->type) {
        case DT_CHAR:
        case DT_UCHAR: appendChar(text, value->payload.c); break;
        case DT_STRING: appendString(text, value); break;
        default: text += numberText(value, source);
    }
}

}  // namespace

void appendToken(std::string &text, int start) {
    switch (tokenClass) {
        case TK_KEYWORD: text += currentKeyword.name; break;
        case TK_IDENTIFIER: text += tokenValue.name->text; break;
        case TK_CHAR: text += static_cast<char>(tokenValue.character); break;
        case TK_CONSTANT:
            appendConstant(text, tokenValue.constant,
                           linePos > start ? std::string(lineBuffer + start, lineBuffer + linePos)
                                           : std::string());
            dropToken();
    }
}

// ---- The line of a directive ------------------------------------------------------------------

bool atLineEnd() { return lineBuffer[linePos] == '\0' || lineBuffer[linePos] == '\n'; }

bool skipLineSpace() {
    bool any = false;
    for (;;) {
        if (skipBlanks(linePos, lineBuffer) || skipComment())
            any = true;
        else if (!skipContinuation())
            return any;
    }
}

void skipRestOfLine() {
    while (!atLineEnd())
        if (!skipLineSpace() && !atLineEnd())
            linePos++;
}

void dropToken() {
    if (tokenClass == TK_CONSTANT)
        deleteValue(takeConstant());
}

bool isOpeningAngle() { return tokenClass == TK_KEYWORD && strcmp(currentKeyword.name, "<") == 0; }

void expandOperand() {
    while (tokenClass == TK_IDENTIFIER &&
           expandMacro(tokenValue.name->text, tokenValue.name->hash) != MACRO_NONE) {
    }
}

const char *tokenName() {
    if (tokenClass == TK_IDENTIFIER)
        return tokenValue.name->text;
    bool isWord = tokenClass == TK_KEYWORD && classOf(*currentKeyword.name) & CC_LETTER;
    return isWord ? currentKeyword.name : nullptr;
}

}  // namespace zy
