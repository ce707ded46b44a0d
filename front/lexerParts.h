// What the sources of the lexer share: classes of characters, and the scanners of each kind of
// token. A scanner is called with linePos at the token's first character.
#pragma once

#include <array>

#include "front/lexer.h"

namespace zy {

enum CharClass : uint8_t {
    CC_LETTER = 1,  // and the underscore
    CC_DIGIT = 2,
    CC_HEX = 4,
    CC_DOT = 8,
    CC_BLANK = 16,
    CC_NAME = CC_LETTER | CC_DIGIT,
};

// Letters are those of ASCII, whatever the locale.
constexpr uint8_t classify(int c) {
    bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    bool digit = c >= '0' && c <= '9';
    bool hex = digit || (letter && (c | 32) <= 'f');
    bool blank = c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v';
    return static_cast<uint8_t>((letter || c == '_' ? CC_LETTER : 0) | (digit ? CC_DIGIT : 0) |
                                (hex ? CC_HEX : 0) | (c == '.' ? CC_DOT : 0) |
                                (blank ? CC_BLANK : 0));
}

constexpr std::array<uint8_t, 256> charClasses = [] {
    std::array<uint8_t, 256> table{};
    for (int c = 0; c < 256; c++)
        table[static_cast<size_t>(c)] = classify(c);
    return table;
}();

constexpr uint8_t classOf(char c) { return charClasses[static_cast<unsigned char>(c)]; }
// The value of a hexadecimal digit.
constexpr int digitValue(char c) { return c <= '9' ? c - '0' : (c | 32) - 'a' + 10; }

// Whether a further line can be read: interactive input is never awaited in the middle of a token
// or a look ahead.
inline bool linesFollow() { return fileMode || stringMode; }

inline void deliverChar(char c) {
    tokenClass = TK_CHAR;
    tokenValue.character = static_cast<unsigned char>(c);
}
// The value of an integer system variable; false before it has a cell.
bool systemFlag(const TypeInfo *symbol);

// Delivers a constant; NULL, when memory was exhausted, gives the end of the statement.
void deliverConstant(Value *value);

void scanNumber();
void scanCharConstant(bool wide);
void scanStringConstant(bool wide);
// The text that __FILE__, __DATE__ or __TIME__ at `word` stands for; NULL for anything else.
const char *predefinedText(const char *word);
// Delivers a string constant that begins with a text and goes on with the literals at linePos.
void joinToConstant(const char *text);

// Comments, at their first character. The message is that of an input that ends in the comment.
void skipBlockComment(const char *message);
void skipLineComment();
// Crosses the line's end behind a backslash at linePos that is its last character.
bool skipContinuation();

// Keeps the current token over a read of lines or a replacement of macros, which may scan tokens.
class TokenKeeper {
public:
    TokenKeeper();
    ~TokenKeeper();

private:
    TokenClass keptClass;
    TokenValue keptValue;
    KeywordEntry keptKeyword;
    bool keptPushedBack;
    char keptName[sizeof identifierBuffer];
};

}  // namespace zy
