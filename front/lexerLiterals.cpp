// Character and string constants: escapes, trigraphs, continuation over lines, and the joining of
// adjacent strings.

#include <cstdlib>
#include <cstring>

#include "expr/value.h"
#include "front/lexerParts.h"
#include "front/names.h"
#include "instance/report.h"

namespace zy {

namespace {

void missingQuote(char quote) {
    parseError("missing '%c'", quote);
    if (!linesFollow())
        endOfInput = true;
}

bool mapsTrigraphs() { return !systemFlag(e_lang->ignoretrigraph); }

// The character that `??` and this one stand for; 0 if they don't.
char trigraphOf(char third) {
    const char thirds[] = "!'()-/<=>", meant[] = "|^[]~\\{#}";
    const char *found = third ? strchr(thirds, third) : nullptr;
    return found ? meant[found - thirds] : 0;
}

// The character of an escape of one letter; -1 if the letter makes none.
int simpleEscape(char letter) {
    switch (letter) {
        case '"':
        case '\'':
        case '?':
        case '\\': return letter;
        case 'a': return 7;
        case 'b': return 8;
        case 'f': return 12;
        case 'n': return 10;
        case 'r': return 13;
        case 't': return 9;
        case 'v': return 11;
        default: return -1;
    }
}

unsigned readHexadecimal(const char *&text, const char *end) {
    unsigned value = 0;
    for (; text < end && classOf(*text) & CC_HEX; text++)
        value = value << 4 | static_cast<unsigned>(digitValue(*text));
    return value;
}

unsigned readOctal(const char *&text, const char *end) {
    unsigned value = 0;
    for (int digits = 0; digits < 3 && text < end && *text >= '0' && *text <= '7'; digits++)
        value = value << 3 | static_cast<unsigned>(*text++ - '0');
    return value;
}

// ---- Characters of more than one byte ---------------------------------------------------------

bool isHigh(char c) { return static_cast<signed char>(c) < 0; }
bool isTrail(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// The length of the character at a byte with the high bit: that of UTF-8 where it is well formed,
// else two bytes, as in the other encodings. The quote at the end of a literal is never part of it.
int multibyteLength(const char *text, const char *end) {
    auto lead = static_cast<unsigned char>(*text);
    int length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    int trails = 1;
    while (trails < length && text + trails < end && isTrail(text[trails]))
        trails++;
    if (lead >= 0xC2 && lead <= 0xF4 && trails == length)
        return length;
    return text + 1 < end && text[1] != '"' ? 2 : 1;
}

// One character of a wide literal as 16-bit units; the number of units. What the locale can't
// convert stands as it is.
int wideUnits(const char *text, int length, uint16_t *units) {
    wchar_t wide = 0;
    mbtowc(nullptr, nullptr, 0);
    if (mbtowc(&wide, text, static_cast<size_t>(length)) != length) {
        for (int i = 0; i < length; i++)
            units[i] = static_cast<unsigned char>(text[i]);
        return length;
    }
    auto code = static_cast<uint32_t>(wide);
    if (code <= 0xFFFF) {
        units[0] = static_cast<uint16_t>(code);
        return 1;
    }
    units[0] = static_cast<uint16_t>(0xD800 + ((code - 0x10000) >> 10));
    units[1] = static_cast<uint16_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
    return 2;
}

// ---- Character constants ----------------------------------------------------------------------

// Behind the backslash.
unsigned readOctalConstant() {
    const char *text = lineBuffer + linePos;
    const char *start = text;
    unsigned value = readOctal(text, start + 3);
    bool bad = false;
    if (text < start + 3 && (*text == '8' || *text == '9')) {
        bad = true;
        text++;
    }
    if (bad || *text != '\'')
        parseError("badly formed octal numeric escape character");
    linePos = static_cast<int16_t>(text - lineBuffer);
    return value;
}

// Behind the backslash; the code of the character.
unsigned readEscape() {
    char letter = lineBuffer[linePos];
    if (letter == '\0')
        return '\\';  // the line ends, and the missing quote is reported
    if (letter >= '0' && letter <= '7')
        return readOctalConstant();
    linePos++;
    if (letter == 'x') {
        const char *text = lineBuffer + linePos;
        unsigned value = readHexadecimal(text, lineBuffer + lineLength);
        linePos = static_cast<int16_t>(text - lineBuffer);
        return value;
    }
    if (int code = simpleEscape(letter); code >= 0)
        return static_cast<unsigned>(code);
    parseWarning("dubious escape '\\%c'", letter);
    return static_cast<unsigned char>(letter);
}

// At `??`, the first of it behind the opening quote.
unsigned readTrigraph() {
    char third = lineBuffer[linePos + 2];
    linePos = static_cast<int16_t>(linePos + (third ? 3 : 2));
    char meant = trigraphOf(third);
    if (meant == '\\')
        return readEscape();
    if (meant)
        return static_cast<unsigned char>(meant);
    if (third)
        parseWarning("too many characters'%c%c%c'", '?', '?', third);
    return '?';
}

unsigned readPlainCharacter(bool wide) {
    const char *text = lineBuffer + linePos;
    if (!*text)
        return 0;
    int length = wide && isHigh(*text) ? multibyteLength(text, lineBuffer + lineLength) : 1;
    linePos = static_cast<int16_t>(linePos + length);
    if (!wide)
        return static_cast<unsigned char>(*text);
    uint16_t units[4];
    wideUnits(text, length, units);
    return units[0];
}

unsigned readCharacter(bool wide) {
    const char *text = lineBuffer + linePos;
    if (*text == '\\') {
        linePos++;
        return readEscape();
    }
    if (text[0] == '?' && text[1] == '?' && mapsTrigraphs())
        return readTrigraph();
    return readPlainCharacter(wide);
}

}  // namespace

void scanCharConstant(bool wide) {
    linePos++;
    unsigned code = readCharacter(wide);
    if (lineBuffer[linePos] == '\'')
        linePos++;
    else
        missingQuote('\'');
    Value *value = newZeroValue(wide ? DT_USHORT : DT_CHAR);
    if (value && wide)
        value->payload.us = static_cast<uint16_t>(code);
    else if (value)
        value->payload.c = static_cast<char>(code);
    deliverConstant(value);
}

// ---- Text of strings --------------------------------------------------------------------------

int mapTrigraphs(char *dest, const char *source, int length) {
    char *out = dest;
    for (int i = 0; i < length;) {
        char meant = source[i] == '?' && i + 2 < length && source[i + 1] == '?'
                         ? trigraphOf(source[i + 2])
                         : '\0';
        *out++ = meant ? meant : source[i];
        i += meant ? 3 : 1;
    }
    return static_cast<int>(out - dest);
}

namespace {

bool holdsTrigraphMark(const char *source, int length) {
    const char *end = source + length;
    for (const char *mark = source; mark + 1 < end; mark++) {
        mark = static_cast<const char *>(memchr(mark, '?', static_cast<size_t>(end - mark)));
        if (!mark || mark + 1 == end)
            return false;
        if (mark[1] == '?')
            return true;
    }
    return false;
}

// Behind the backslash; true if a character of the text comes of it.
bool decodeEscape(const char *&text, const char *end, char &decoded) {
    char letter = *text;
    if (letter >= '0' && letter <= '7') {
        decoded = static_cast<char>(readOctal(text, end));
        return true;
    }
    if (letter == 'x') {
        decoded = static_cast<char>(readHexadecimal(++text, end));
        return true;
    }
    if (int code = simpleEscape(letter); code >= 0) {
        decoded = static_cast<char>(code);
        text++;
        return true;
    }
    if (e_lang->macroExpansionOn)
        parseWarning("dubious escape '\\%c'", letter);
    return false;  // what follows stands for itself
}

}  // namespace

// The text never grows, so what the trigraphs gave is decoded where it stands.
int decodeEscapes(char *dest, const char *source, int length) {
    if (holdsTrigraphMark(source, length) && mapsTrigraphs()) {
        length = mapTrigraphs(dest, source, length);
        source = dest;
    }
    char *out = dest;
    const char *text = source, *end = source + length;
    while (text < end) {
        if (isHigh(*text)) {
            int bytes = multibyteLength(text, end);
            memmove(out, text, static_cast<size_t>(bytes));
            out += bytes;
            text += bytes;
        } else if (*text != '\\' || text + 1 == end)
            *out++ = *text++;
        else if (char decoded; decodeEscape(++text, end, decoded))
            *out++ = decoded;
        else if (!isHigh(*text))
            *out++ = *text++;
    }
    return static_cast<int>(out - dest);
}

// ---- String constants -------------------------------------------------------------------------

namespace {

// A text that grows piece by piece; NULL after memory was exhausted.
struct Text {
    char *start = nullptr;
    int length = 0;
    bool lost = false;
};

// Room for so many further bytes and a NUL.
char *grow(Text &text, int bytes) {
    if (text.lost)
        return nullptr;
    void *grown = realloc(text.start, static_cast<size_t>(text.length + bytes) + 1);
    if (!grown) {
        reportOutOfMemory();
        text.lost = true;
        return nullptr;
    }
    text.start = static_cast<char *>(grown);
    return text.start + text.length;
}

void appendDecoded(Text &text, const char *source, int length) {
    char *room = grow(text, length);
    if (room)
        text.length += decodeEscapes(room, source, length);
}

void appendPlain(Text &text, const char *source) {
    auto length = static_cast<int>(strlen(source));
    char *room = grow(text, length);
    if (!room)
        return;
    memcpy(room, source, static_cast<size_t>(length));
    text.length += length;
}

// The end of the piece of a literal that starts at `text`: its closing quote, or the line's end.
// `escaped` is left set if the line ends in an escaping backslash.
const char *findQuote(const char *text, bool &escaped) {
    const char *end = lineBuffer + lineLength;
    escaped = false;
    while (*text && (escaped || *text != '"')) {
        int bytes = isHigh(*text) ? multibyteLength(text, end) : 1;
        escaped = !escaped && *text == '\\';
        text += bytes;
    }
    return text;
}

void readContinuation() {
    e_lang->inStringContinuation = 1;
    readSourceLine();
    e_lang->inStringContinuation = 0;
}

// Appends the literal at linePos.
void readLiteral(Text &text) {
    linePos++;
    for (;;) {
        const char *start = lineBuffer + linePos;
        bool escaped;
        const char *end = findQuote(start, escaped);
        bool closed = *end == '"', continues = !closed && escaped && linesFollow();
        appendDecoded(text, start, static_cast<int>(end - start) - (continues ? 1 : 0));
        linePos = static_cast<int16_t>(end - lineBuffer + (closed ? 1 : 0));
        if (closed)
            return;
        if (!continues) {
            missingQuote('"');
            return;
        }
        readContinuation();
    }
}

// Steps over __FILE__, __DATE__ or __TIME__ at linePos.
const char *readPredefined() {
    const char *text = predefinedText(lineBuffer + linePos);
    while (text && classOf(lineBuffer[linePos]) & CC_NAME)
        linePos++;
    return text;
}

// Goes to a further literal on the same line; the cursor stays where it is if there is none. While
// macros aren't expanded a directive or the arguments of a macro are read: these take the text of
// the line, and a directive must be carried out before the next line is read.
bool nextLiteralOnLine() {
    int16_t cursor = linePos;
    for (;;) {
        skipBlanks(cursor, lineBuffer);
        const char *text = lineBuffer + cursor;
        if (*text == '"') {
            linePos = cursor;
            return true;
        }
        const char *end = text[0] == '/' && text[1] == '*' ? strstr(text + 2, "*/") : nullptr;
        if (!end)
            return false;
        cursor = static_cast<int16_t>(end + 2 - lineBuffer);
    }
}

// Messages that follow show the literal: the end of the input has left no line.
void showLiteral(const Text &text) {
    lineBuffer[0] = '\0';
    if (text.start)
        snprintf(lineBuffer, sizeof lineBuffer, "\"%.*s\"", text.length, text.start);
    linePos = lineLength = static_cast<int16_t>(strlen(lineBuffer));
}

// Appends the literals that follow.
void joinAdjacent(Text &text) {
    if (endOfInput)
        return;
    if (!e_lang->macroExpansionOn) {
        while (nextLiteralOnLine())
            readLiteral(text);
        return;
    }
    for (;;) {
        peekAndExpand();
        if (endOfInput) {
            showLiteral(text);
            return;
        }
        if (lineBuffer[linePos] == '"')
            readLiteral(text);
        else if (const char *predefined = readPredefined())
            appendPlain(text, predefined);
        else
            return;
    }
}

Value *makeString(Text &text) {
    Value *value = text.lost || !grow(text, 0) ? nullptr : newZeroValue(DT_STRING);
    if (!value) {
        free(text.start);
        return nullptr;
    }
    text.start[text.length] = '\0';
    value->payload.text = text.start;
    value->count = static_cast<uint32_t>(text.length) + 1;
    return value;
}

int widen(const Text &text, uint16_t *units) {
    const char *end = text.start + text.length;
    int count = 0;
    for (const char *c = text.start; c < end;) {
        int bytes = isHigh(*c) ? multibyteLength(c, end) : 1;
        count += wideUnits(c, bytes, units + count);
        c += bytes;
    }
    units[count++] = 0;
    return count;
}

Value *makeWideString(Text &text) {
    // A character never has more units than bytes.
    size_t bytes = (static_cast<size_t>(text.length) + 1) * sizeof(uint16_t);
    auto *wide =
        text.lost ? nullptr : static_cast<WideText *>(allocOrFail(sizeof(WideText) + bytes));
    Value *value = wide ? newZeroValue(DT_P_USHORT) : nullptr;
    if (value) {
        wide->next = wideTexts;
        wideTexts = wide;
        value->payload.p = wide->units();
        value->count = static_cast<uint32_t>(widen(text, wide->units()));
    } else
        free(wide);
    free(text.start);
    return value;
}

}  // namespace

const char *predefinedText(const char *word) {
    if (word[0] != '_' || word[1] != '_')
        return nullptr;
    for (const char *name : {"__FILE__", "__DATE__", "__TIME__"}) {
        size_t length = strlen(name);
        if (strncmp(word, name, length) != 0 || classOf(word[length]) & CC_NAME)
            continue;
        const NameEntry *entry = lookupName(name);
        const TypeInfo *symbol = entry ? entry->symbol : nullptr;
        if (!symbol || symbol->dataType != DT_CONSTANT || !symbol->constant ||
            !isStringLike(static_cast<int>(symbol->constant->type)))
            return nullptr;
        return symbol->constant->payload.text;
    }
    return nullptr;
}

void scanStringConstant(bool wide) {
    Text text;
    readLiteral(text);
    if (!wide)
        joinAdjacent(text);
    deliverConstant(wide ? makeWideString(text) : makeString(text));
}

void joinToConstant(const char *predefined) {
    Text text;
    appendPlain(text, predefined);
    joinAdjacent(text);
    deliverConstant(makeString(text));
}

}  // namespace zy
