// Numbers. Integers are accumulated as they are read. The value of a decimal or hexadecimal
// floating constant comes from its text in one step, so that it is the nearest one whatever the
// number of digits, and independent of the locale.

#include <charconv>
#include <climits>
#include <cmath>
#include <cstring>

#include "expr/value.h"
#include "front/lexerParts.h"
#include "instance/report.h"

namespace zy {

namespace {

struct Number {
    const char *text;  // its first character in lineBuffer
    int base = 10;
    unsigned long long integer = 0;  // modulo 2 to the 64
    double real = 0;                 // the same digits
    bool beyond = false;             // the integer is larger than 64 bits
    bool floating = false;
};

enum Suffix { SUFFIX_NONE, SUFFIX_U, SUFFIX_L, SUFFIX_LL, SUFFIX_ULL };

// Longest first.
const struct {
    const char *text;
    Suffix suffix;
} integerSuffixes[] = {
    {"ull", SUFFIX_ULL}, {"llu", SUFFIX_ULL}, {"ul", SUFFIX_U}, {"lu", SUFFIX_U},
    {"ll", SUFFIX_LL},   {"l", SUFFIX_L},     {"u", SUFFIX_U},
};

char here() { return lineBuffer[linePos]; }
char lowerHere() { return static_cast<char>(here() | 32); }  // of a letter
bool isDigit(char c) { return classOf(c) & CC_DIGIT; }

// ---- Reading ----------------------------------------------------------------------------------

void readBase(Number &number) {
    if (here() != '0')
        return;
    char mark = static_cast<char>(lineBuffer[linePos + 1] | 32);
    number.base = mark == 'x' ? 16 : mark == 'b' ? 2 : 8;
    if (number.base != 8)
        linePos = static_cast<int16_t>(linePos + 2);
}

void addDigit(Number &number, int digit) {
    auto base = static_cast<unsigned>(number.base);
    unsigned long long shifted = 0;
    bool wraps = __builtin_mul_overflow(number.integer, base, &shifted);
    wraps |= __builtin_add_overflow(shifted, static_cast<unsigned>(digit), &number.integer);
    number.beyond |= wraps;
    number.real = number.real * base + digit;
}

void readDigits(Number &number) {
    uint8_t accepted = number.base == 16 ? CC_HEX : CC_DIGIT;
    for (; classOf(here()) & accepted; linePos++) {
        int digit = digitValue(here());
        if (digit >= number.base)
            parseError("badly formed binary or octal integer");
        addDigit(number, digit);
    }
}

void skipDigits(uint8_t accepted) {
    while (classOf(here()) & accepted)
        linePos++;
}

// Behind the letter of an exponent. False: there is no digit.
bool skipExponent() {
    if (here() == '+' || here() == '-')
        linePos++;
    if (!isDigit(here()))
        return false;
    skipDigits(CC_DIGIT);
    return true;
}

void readHexadecimalRest(Number &number) {
    if (here() == '.') {
        number.floating = true;
        linePos++;
        skipDigits(CC_HEX);
    }
    if (lowerHere() == 'p') {
        number.floating = true;
        linePos++;
        if (!skipExponent())
            parseError("the exponent of a hexadecimal floating constant has no decimal digit");
    } else if (number.floating)
        parseError("a hexadecimal floating constant requires an exponent");
}

void readDecimalRest(Number &number) {
    if (here() == '.') {
        number.floating = true;
        linePos++;
        skipDigits(CC_DIGIT);
    }
    if (lowerHere() == 'e') {
        number.floating = true;
        linePos++;
        if (!skipExponent())
            parseError("badly formed floating-point constant");
    }
}

// ---- Value of a floating constant -------------------------------------------------------------

long readExponent(const char *text, const char *end) {
    bool negative = *text == '-';
    if (negative || *text == '+')
        text++;
    constexpr long LIMIT = 100000000;  // more than any line has digits
    long exponent = 0;
    for (; text < end && isDigit(*text) && exponent < LIMIT; text++)
        exponent = exponent * 10 + (*text - '0');
    return negative ? -exponent : exponent;
}

// Whether a value that is out of range is so because it is large: the place of its first digit that
// isn't 0, corrected by the exponent.
bool isLarge(const char *text, const char *end, std::chars_format format) {
    bool hexadecimal = format == std::chars_format::hex;
    uint8_t digits = hexadecimal ? CC_HEX : CC_DIGIT;
    long place = 0;
    bool inFraction = false, started = false;
    for (; text < end && classOf(*text) & (digits | CC_DOT); text++) {
        started = started || (*text != '0' && *text != '.');
        if (*text == '.')
            inFraction = true;
        else if (inFraction && !started)
            place--;
        else if (!inFraction && started)
            place++;
    }
    long exponent = text < end ? readExponent(text + 1, end) : 0;
    return (hexadecimal ? place * 4 : place) + exponent > 0;
}

template <class Real>
Real parseReal(const char *text, const char *end, std::chars_format format) {
    Real value = 0;
    if (std::from_chars(text, end, value, format).ec == std::errc::result_out_of_range)
        value = isLarge(text, end, format) ? static_cast<Real>(HUGE_VAL) : 0;
    return value;
}

// A binary constant with a fraction or an exponent has no notation of its own anywhere: the integer
// is written in decimal, the rest is decimal already.
template <class Real>
Real parseBinaryReal(const Number &number, const char *end) {
    char text[SOURCE_LINE_MAX + 400];
    int length = snprintf(text, sizeof text, "%.0f", number.real);
    const char *rest = number.text + 2;
    while (isDigit(*rest))
        rest++;
    auto restLength = static_cast<size_t>(end - rest);
    memcpy(text + length, rest, restLength);
    return parseReal<Real>(text, text + length + restLength, std::chars_format::general);
}

template <class Real>
Real realValue(const Number &number, const char *end) {
    if (number.base == 16)
        return parseReal<Real>(number.text + 2, end, std::chars_format::hex);
    if (number.base == 2 && number.floating)
        return parseBinaryReal<Real>(number, end);
    if (number.base == 10 || number.floating)
        return parseReal<Real>(number.text, end, std::chars_format::general);
    return static_cast<Real>(number.real);
}

// ---- Types ------------------------------------------------------------------------------------

// The letter behind a floating constant, or the one that makes an integer floating; 0 for none.
char realSuffix(const Number &number) {
    char letter = lowerHere();
    bool accepted = letter == 'f' || letter == 'd' || (number.floating && letter == 'l');
    if (!accepted)
        return 0;
    linePos++;
    return letter;
}

Value *makeReal(const Number &number, const char *end, char suffix) {
    bool single = suffix ? suffix == 'f' : floatConstant != 0;
    Value *value = newZeroValue(single ? DT_FLOAT : DT_DOUBLE);
    if (!value)
        return nullptr;
    if (single)
        value->payload.f = realValue<float>(number, end);
    else
        value->payload.d = realValue<double>(number, end);
    return value;
}

bool matchesHere(const char *suffix) {
    for (const char *c = lineBuffer + linePos; *suffix; c++, suffix++)
        if ((*c | 32) != *suffix)
            return false;
    return true;
}

Suffix readIntegerSuffix() {
    for (const auto &entry : integerSuffixes)
        if (matchesHere(entry.text)) {
            linePos = static_cast<int16_t>(linePos + static_cast<int>(strlen(entry.text)));
            return entry.suffix;
        }
    return SUFFIX_NONE;
}

int integerType(const Number &number, Suffix suffix) {
    bool fitsInt = !number.beyond && number.integer <= INT_MAX;
    int unsignedType = !number.beyond && number.integer <= UINT_MAX ? DT_UINT : DT_ULLONG;
    switch (suffix) {
        case SUFFIX_ULL: return DT_ULLONG;
        case SUFFIX_U: return unsignedType;
        case SUFFIX_LL: return DT_LLONG;
        case SUFFIX_L: return fitsInt ? DT_INT : DT_LLONG;
        case SUFFIX_NONE: break;
    }
    bool isSigned = number.base == 8 || number.base == 10;
    return isSigned && fitsInt ? DT_INT : unsignedType;
}

Value *makeInteger(const Number &number, Suffix suffix) {
    int type = integerType(number, suffix);
    Value *value = newZeroValue(type);
    if (!value)
        return nullptr;
    if (type == DT_INT || type == DT_UINT)
        value->payload.u = static_cast<unsigned>(number.integer);
    else
        value->payload.ull = number.integer;
    return value;
}

}  // namespace

void scanNumber() {
    Number number{.text = lineBuffer + linePos};
    readBase(number);
    readDigits(number);
    if (number.base == 16)
        readHexadecimalRest(number);
    else
        readDecimalRest(number);
    const char *end = lineBuffer + linePos;
    char suffix = realSuffix(number);
    if (suffix || number.floating)
        deliverConstant(makeReal(number, end, suffix));
    else
        deliverConstant(makeInteger(number, readIntegerSuffix()));
}

}  // namespace zy
