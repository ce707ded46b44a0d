// One conversion of a format, taken apart. The C library never sees a script's format: it gets a
// conversion made anew from these fields, with only what is defined for its letter and in the
// length of the value that goes with it.
#pragma once

namespace zy {

enum ConversionKind : unsigned char {
    CONVERT_NONE,  // no letter, or one that converts nothing
    CONVERT_SIGNED,
    CONVERT_UNSIGNED,
    CONVERT_REAL,
    CONVERT_CHARACTER,
    CONVERT_TEXT,
    CONVERT_ADDRESS,
    CONVERT_BINARY,
    CONVERT_COUNT,  // %n
};

enum ConversionLength : unsigned char { LENGTH_PLAIN, LENGTH_CHAR, LENGTH_SHORT, LENGTH_64 };

constexpr int NOT_GIVEN = -1;

struct Conversion {
    ConversionKind kind = CONVERT_NONE;
    ConversionLength length = LENGTH_PLAIN;
    char letter = 0;
    bool byType = false;  // begins with %ll: the value's type says whether it has a sign
    char flags[7] = "";   // those that the letter has, each once
    int width = NOT_GIVEN, precision = NOT_GIVEN;
    const char *tail = "";  // the text behind it
};

// The first letter of a conversion's text ends it, or is the first of its length.
constexpr bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// The text begins with a %.
Conversion parseConversion(const char *text);

// Whether its output has a size that somebody may have meant.
bool hasRoom(const Conversion &conversion);

// The same for the C library, with a length word ("ll" or "") and a letter.
struct ConversionText {
    char text[40];
};
ConversionText conversionText(const Conversion &conversion, const char *length, char letter);

}  // namespace zy
