#include "rtlib/conversion.h"

#include <charconv>
#include <climits>
#include <cstring>
#include <iterator>
#include <string_view>

namespace zy {

namespace {

struct LetterRow {
    const char *letters;
    ConversionKind kind;
    const char *flags;  // those that are defined for it
    bool precision;
};
constexpr LetterRow letterRows[] = {
    {"di", CONVERT_SIGNED, "-+ 0'", true},  {"u", CONVERT_UNSIGNED, "-0'", true},
    {"oxX", CONVERT_UNSIGNED, "-#0", true}, {"fFgG", CONVERT_REAL, "-+ #0'", true},
    {"eEaA", CONVERT_REAL, "-+ #0", true},  {"c", CONVERT_CHARACTER, "-", false},
    {"s", CONVERT_TEXT, "-", true},         {"p", CONVERT_ADDRESS, "-", false},
    {"b", CONVERT_BINARY, "", false},       {"n", CONVERT_COUNT, "", false},
};

// The row of each letter, found once when this file is compiled.
struct LetterTable {
    signed char row[128];
};
constexpr LetterTable makeLetterTable() {
    LetterTable table{};
    for (signed char &row : table.row)
        row = -1;
    for (size_t i = 0; i < std::size(letterRows); i++)
        for (const char *letter = letterRows[i].letters; *letter; letter++)
            table.row[static_cast<int>(*letter)] = static_cast<signed char>(i);
    return table;
}
constexpr LetterTable letterTable = makeLetterTable();

const LetterRow *rowOf(char letter) {
    auto index = static_cast<unsigned char>(letter);
    int row = index < 128 ? letterTable.row[index] : -1;
    return row < 0 ? nullptr : &letterRows[row];
}

// The longer words first.
struct LengthRow {
    std::string_view word;
    ConversionLength length;
};
constexpr LengthRow lengthRows[] = {
    {"I64", LENGTH_64}, {"I32", LENGTH_PLAIN}, {"hh", LENGTH_CHAR}, {"h", LENGTH_SHORT},
    {"ll", LENGTH_64},  {"l", LENGTH_PLAIN},   {"L", LENGTH_PLAIN}, {"q", LENGTH_64},
    {"j", LENGTH_64},   {"z", LENGTH_64},      {"t", LENGTH_64},    {"w", LENGTH_PLAIN},
};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Too large a number is one that no output has room for.
int readNumber(const char *&text) {
    int number = 0;
    for (; isDigit(*text); text++)
        number = number > (INT_MAX - 9) / 10 ? INT_MAX : number * 10 + (*text - '0');
    return number;
}

void readPrecision(const char *&text, Conversion &conversion) {
    bool negative = *text == '-';  // from a *, and as if there were none
    text += negative;
    int precision = readNumber(text);
    conversion.precision = negative ? NOT_GIVEN : precision;
}

void readLength(const char *&text, Conversion &conversion) {
    for (const LengthRow &row : lengthRows) {
        size_t size = row.word.size();
        bool matches = row.word[0] == *text && strncmp(text, row.word.data(), size) == 0;
        if (matches && rowOf(text[size])) {
            conversion.length = row.length;
            text += size;
            return;
        }
    }
}

void keepFlags(Conversion &conversion, const char *given, int count, const char *defined) {
    if (count == 0)
        return;
    char *end = conversion.flags;
    for (const char *flag = defined; *flag; flag++)
        if (memchr(given, *flag, count))
            *end++ = *flag;
    *end = '\0';
}

}  // namespace

Conversion parseConversion(const char *text) {
    Conversion conversion;
    conversion.byType = text[1] == 'l' && text[2] == 'l';
    const char *flags = ++text;
    int flagCount = static_cast<int>(strspn(text, "-+ #0'"));
    text += flagCount;
    if (isDigit(*text))
        conversion.width = readNumber(text);
    if (*text == '.')
        readPrecision(++text, conversion);
    readLength(text, conversion);
    if (const LetterRow *row = rowOf(*text)) {
        conversion.kind = row->kind;
        conversion.letter = *text;
        keepFlags(conversion, flags, flagCount, row->flags);
        if (!row->precision)
            conversion.precision = NOT_GIVEN;
    }
    conversion.tail = text + isLetter(*text);
    return conversion;
}

bool hasRoom(const Conversion &conversion) {
    constexpr int longest = 1 << 24;
    bool countsPrecision = conversion.kind != CONVERT_TEXT;  // of a text it only cuts
    return conversion.kind == CONVERT_BINARY ||
           (conversion.width <= longest && (!countsPrecision || conversion.precision <= longest));
}

namespace {

char *append(char *end, const char *text) {
    while (*text)
        *end++ = *text++;
    return end;
}

char *append(char *end, int number) { return std::to_chars(end, end + 10, number).ptr; }

}  // namespace

ConversionText conversionText(const Conversion &conversion, const char *length, char letter) {
    ConversionText result;
    char *end = result.text;
    *end++ = '%';
    end = append(end, conversion.flags);
    if (conversion.width != NOT_GIVEN)
        end = append(end, conversion.width);
    if (conversion.precision != NOT_GIVEN) {
        *end++ = '.';
        end = append(end, conversion.precision);
    }
    end = append(end, length);
    *end++ = letter;
    *end = '\0';
    return result;
}

}  // namespace zy
