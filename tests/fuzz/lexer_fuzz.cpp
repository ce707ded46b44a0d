// The lexer must survive any text. The first byte of an input says how the rest is read: as a file,
// as a file with an included one, as lines in memory, as a line that is typed; and with which
// switches. Tokens are pulled to the end of input, with looks ahead between them. Directives are
// tokens here, but for conditional ones: what they would run is no business of the lexer.
//
// tests/fuzz/run builds and runs it.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "embed/scriptDriver.h"
#include "expr/context.h"
#include "expr/value.h"
#include "extern/include/embedzy.h"
#include "front/lexer.h"
#include "front/preprocessorState.h"
#include "instance/langState.h"
#include "text_fuzz.h"

using namespace zy;

namespace {

enum Switch : uint8_t {
    AS_LINES = 1,     // with AS_INCLUDED: a line that is typed
    AS_INCLUDED = 2,  // the second half is a file that the first one includes
    RAW_LINES = 4,
    FOLD_CASE = 8,
    FLOAT_CONSTANTS = 16,
    NO_MACROS = 32,
    LOOK_AHEAD = 64,
    EXPECT = 128,
};

FILE *openText(const uint8_t *data, size_t size) {
    static const uint8_t blank[] = " ";
    return size ? fmemopen(const_cast<uint8_t *>(data), size, "r")
                : fmemopen(const_cast<uint8_t *>(blank), 1, "r");
}

void pushFile(const uint8_t *data, size_t size, const char *name) {
    if (sourceDepth >= 0)
        savedLines[sourceDepth] = currentLine;
    sourceDepth++;
    sourceFiles[sourceDepth] = openText(data, size);
    sourceNames[sourceDepth] = name;
    currentLine = 0;
    fileMode = true;
    readSourceLine();
}

void typeLine(const uint8_t *data, size_t size) {
    size_t length = size < SOURCE_LINE_MAX ? size : SOURCE_LINE_MAX - 1;
    memcpy(lineBuffer, data, length);
    lineBuffer[length] = '\0';
    lineLength = static_cast<int16_t>(strlen(lineBuffer));
}

// The lines of a file, read once, are the lines in memory.
void replayLines(const uint8_t *data, size_t size) {
    FILE *file = openText(data, size);
    while (readRawLine(file))
        ;
    fclose(file);
    endOfFile = false;
    currentLine = 0;
    replayLine = firstSourceLine;
    stringMode = replayParse = true;
    readSourceLine();
}

void openSource(uint8_t switches, const uint8_t *data, size_t size) {
    bool lines = switches & AS_LINES, included = switches & AS_INCLUDED;
    if (lines && included)
        typeLine(data, size);
    else if (lines)
        replayLines(data, size);
    else {
        size_t half = included ? size / 2 : size;
        pushFile(data, half, "a.zy");
        if (included)
            pushFile(data + half, size - half, "i.h");
    }
}

void closeFiles() {
    for (; sourceDepth >= 0; sourceDepth--)
        if (sourceFiles[sourceDepth])
            fclose(sourceFiles[sourceDepth]);
}

void checkLine() {
    if (linePos < 0 || linePos > lineLength || lineLength >= SOURCE_LINE_MAX)
        fail("the cursor has left the line");
    if (strlen(lineBuffer) != static_cast<size_t>(lineLength))
        fail("the line isn't as long as it says");
}

void dropConstant() {
    if (tokenClass == TK_CONSTANT)
        deleteValue(tokenValue.constant);
}

void takeToken(uint8_t switches, unsigned turn) {
    nextToken();
    if (switches & LOOK_AHEAD && turn % 3 == 0) {
        pushedBack = turn % 2;
        turn % 5 ? peekNonBlank() : peekAndExpand();
        pushedBack = false;
    }
    checkLine();
    if (switches & EXPECT && turn % 7 == 0)
        tokenContext();
    dropConstant();
    if (switches & EXPECT && turn % 4 == 0) {
        if (!expectChar(';', turn % 8 == 0))
            dropConstant();
        pushedBack = false;
    }
    if (switches & RAW_LINES && turn % 16 == 15)
        e_lang->rawLineMode = !e_lang->rawLineMode;  // it would give `;` for ever
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (freshInstance())
        freshProgram();
    if (size == 0)
        return 0;
    std::string text(data, data + size);
    if (has(text, "if") && has(text, "#") && scriptMayHavePointers(text))
        return -1;  // conditions are evaluated
    directivesIdle = true;
    uint8_t switches = *data++;
    size--;
    int values = liveValueCount();
    openSource(switches, data, size);
    e_lang->rawLineMode = switches & RAW_LINES ? 1 : 0;
    e_lang->macroExpansionOn = switches & NO_MACROS ? 0 : 1;
    caseSensitive = !(switches & FOLD_CASE);
    floatConstant = switches & FLOAT_CONSTANTS;
    // Every character gives a token at most, every line two `;` or so, before raw lines end.
    size_t most = 40 * size + 100;
    for (unsigned turn = 0; !endOfInput; turn++) {
        if (turn > most)
            fail("the end of the input isn't reached");
        takeToken(switches, turn);
    }
    freshProgram();  // the expression of an #if may have declared something
    if (liveValueCount() != values)
        fail("a constant has leaked");
    closeFiles();
    resetConditions();
    releaseLexer();
    e_lang->rawLineMode = 0;
    directivesIdle = false;
    return 0;
}
