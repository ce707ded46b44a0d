// The arguments of a macro call, collected from the tokens of the text: each becomes a text of its
// own, over as many lines as it takes.

#include <cstring>

#include "expr/value.h"
#include "front/lexerParts.h"
#include "front/macroParts.h"
#include "front/preprocessorParts.h"

namespace zy {

namespace {

// Reads the arguments of a call, with linePos behind the `(`.
class ArgumentReader {
public:
    // False if the text ended before the `)`.
    bool read(Arguments &arguments);

private:
    bool readArgument();
    bool readToken();
    void appendCurrent(int start, int32_t line);
    bool skipSpace();
    static bool atEnd() {
        return lineBuffer[linePos] == '\0' || (lineBuffer[linePos] == '\n' && !linesFollow());
    }

    TracedText pending;
    int depth = 0;
};

// Over ends of lines too; whether there was any.
bool ArgumentReader::skipSpace() {
    int16_t position = linePos;
    int32_t line = currentLine;
    peekNonBlank();
    return linePos != position || currentLine != line;
}

void ArgumentReader::appendCurrent(int start, int32_t line) {
    uint16_t origin = originAt(start);
    bool isString = tokenClass == TK_CONSTANT && tokenValue.constant->type == DT_STRING;
    std::string text;
    if (isString && currentLine == line) {  // as it is written: it may be put in quotes
        text.assign(lineBuffer + start, lineBuffer + linePos);
        dropToken();
    } else {
        appendToken(text, start);
    }
    if (isChar('\\') && lineBuffer[linePos] == '"')
        text += lineBuffer[linePos++];
    pending.append(text, origin);
}

// One token into the pending text. False at the end of the text.
bool ArgumentReader::readToken() {
    if (atEnd())
        return false;
    if (strncmp(lineBuffer + linePos, "...", 3) == 0) {
        pending.append("...", originAt(linePos));
        linePos = static_cast<int16_t>(linePos + 3);
        return true;
    }
    int16_t start = linePos;
    int32_t line = currentLine;
    nextToken();
    if (endOfInput && isChar('\n'))
        return false;
    // The look-up of a keyword may have stepped on, to see whether the word is called.
    const char *name = tokenName();
    if (name && currentLine == line)
        linePos = static_cast<int16_t>(start + static_cast<int16_t>(strlen(name)));
    appendCurrent(start, line);
    depth += isChar('(') ? 1 : isChar(')') ? -1 : 0;
    return true;
}

// Up to the comma or parenthesis that ends the argument.
bool ArgumentReader::readArgument() {
    skipSpace();
    while (depth > 0 || (lineBuffer[linePos] != ')' && lineBuffer[linePos] != ',')) {
        if (!readToken())
            return false;
        if (skipSpace())
            pending.append(" ", 0);
    }
    pending.trim(' ');
    return true;
}

bool ArgumentReader::read(Arguments &arguments) {
    for (bool isLast = false; !isLast;) {
        if (!readArgument())
            return false;
        isLast = lineBuffer[linePos++] == ')';
        if (!isLast || !pending.text.empty())
            arguments.push_back(pending);
        pending.clear();
    }
    return true;
}

}  // namespace

bool readArguments(Arguments &arguments) {
    int saved = e_lang->macroExpansionOn;
    e_lang->macroExpansionOn = 0;
    linePos++;
    bool complete = ArgumentReader().read(arguments);
    e_lang->macroExpansionOn = saved;
    dotsSeen = false;
    return complete;
}

}  // namespace zy
