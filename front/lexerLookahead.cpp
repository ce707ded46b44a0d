// What lies between tokens: blanks, comments, line ends; and the look ahead of the parsers.

#include <cstring>

#include "front/lexerParts.h"
#include "instance/report.h"

namespace zy {

TokenKeeper::TokenKeeper()
    : keptClass(tokenClass),
      keptValue(tokenValue),
      keptKeyword(currentKeyword),
      keptPushedBack(pushedBack) {
    memcpy(keptName, identifierBuffer, strlen(identifierBuffer) + 1);
}

TokenKeeper::~TokenKeeper() {
    tokenClass = keptClass;
    tokenValue = keptValue;
    currentKeyword = keptKeyword;
    pushedBack = keptPushedBack;
    memcpy(identifierBuffer, keptName, strlen(keptName) + 1);
}

namespace {

void readLineKeepingToken() {
    TokenKeeper keeper;
    readSourceLine();
}

// Inside a comment a line is no more than text.
void readCommentLine() {
    int saved = e_lang->rawLineMode;
    e_lang->rawLineMode = 1;
    readLineKeepingToken();
    e_lang->rawLineMode = saved;
}

void reportOpenComment(const char *message) {
    SourcePosition position = {currentLine, ""};
    parsePosition(position);
    plainError("%s", message);
    errorFlag = 1;
    if (!commandMode) {
        plainError("syntax error before or at line %d in file '%s'", position.line, position.file);
        fprintf(stderr, "  ==>: %s\n", lineBuffer);
    }
}

bool commentFollows() {
    return lineBuffer[linePos] == '/' &&
           (lineBuffer[linePos + 1] == '*' || lineBuffer[linePos + 1] == '/' ||
            lineBuffer[linePos + 1] == '#');
}

}  // namespace

int skipBlanks(int16_t &cursor, const char *text) {
    int16_t start = cursor;
    while (classOf(text[cursor]) & CC_BLANK)
        cursor++;
    return cursor - start;
}

// A line feed ends the comment in a script that is held in memory as one line.
void skipLineComment() {
    const char *end = strchr(lineBuffer + linePos, '\n');
    linePos = static_cast<int16_t>(end ? end - lineBuffer : lineLength);
}

void skipBlockComment(const char *message) {
    linePos = static_cast<int16_t>(linePos + 2);  // the slash of `/*/` doesn't end it
    const char *end;
    while (!(end = strstr(lineBuffer + linePos, "*/"))) {
        linePos = lineLength;
        if (linesFollow())
            readCommentLine();
        // A comment ends with its file: what included the file is text again.
        if (!linesFollow() || endOfInput || endOfFile) {
            reportOpenComment(message);
            return;
        }
    }
    linePos = static_cast<int16_t>(end + 2 - lineBuffer);
}

bool skipComment() {
    if (!commentFollows())
        return false;
    while (commentFollows()) {
        if (lineBuffer[linePos + 1] != '*') {
            skipLineComment();
            break;
        }
        skipBlockComment("missing */ ");
        skipBlanks(linePos, lineBuffer);
    }
    return true;
}

bool skipContinuation() {
    char next = lineBuffer[linePos + 1];
    if (lineBuffer[linePos] != '\\' || (next && next != '\n') || !linesFollow())
        return false;
    if (next)
        linePos = static_cast<int16_t>(linePos + 2);
    else
        readLineKeepingToken();
    return true;
}

namespace {

// Crosses a line's end; false if none is here, or none that a look ahead may cross.
bool skipLineEnd() {
    if (!linesFollow())
        return false;
    char c = lineBuffer[linePos];
    if (c == '\n')
        linePos++;
    else if (c == '\0' && !e_lang->rawLineMode)
        readLineKeepingToken();
    else
        return skipContinuation();
    return true;
}

}  // namespace

void peekNonBlank() {
    do {
        skipBlanks(linePos, lineBuffer);
        while (skipComment())
            skipBlanks(linePos, lineBuffer);
    } while (skipLineEnd() && !endOfInput);
}

namespace {

// Replaces the macro whose name stands at linePos. False: nothing stands there that is replaced.
bool replaceNext() {
    char name[sizeof identifierBuffer];
    int16_t start = linePos;
    unsigned sum = 0;
    int length = 0;
    for (char c; classOf(c = lineBuffer[linePos]) & CC_NAME; linePos++) {
        if (!caseSensitive && c >= 'A' && c <= 'Z')
            c = static_cast<char>(c | 32);
        sum += static_cast<unsigned char>(c);
        name[length++] = c;
    }
    name[length] = '\0';
    TokenKeeper keeper;
    int outcome = replaceMacro(name, static_cast<uint16_t>(sum));
    if (outcome == MACRO_NONE)
        linePos = start;
    return outcome == MACRO_EXPANDED;
}

}  // namespace

void peekAndExpand() {
    peekNonBlank();
    if (!e_lang->macroExpansionOn)
        return;
    while (classOf(lineBuffer[linePos]) & CC_LETTER && replaceNext())
        peekNonBlank();
}

}  // namespace zy
