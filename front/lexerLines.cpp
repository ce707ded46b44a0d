// Where lines come from: the stack of source files, the list of lines kept for replay, the console.
// Every line ends up in lineBuffer, without its end.

#include <cstdlib>
#include <cstring>

#include "expr/scope.h"
#include "expr/value.h"
#include "front/lexerParts.h"
#include "front/preprocessorState.h"
#include "instance/report.h"

namespace zy {

namespace {

// So many ends of input in a row leave the shell even under _ignoreeof: a closed terminal would
// give them for ever.
constexpr int CONSOLE_ENDS_MAX = 10;

const char STRING_SCRIPT[] = "@string: ";

void setLine(const char *text, int length) {
    memcpy(lineBuffer, text, static_cast<size_t>(length));
    lineBuffer[length] = '\0';
    lineLength = static_cast<int16_t>(length);
    linePos = 0;
}

void noMoreInput() {
    setLine("", 0);
    endOfInput = true;
}

// ---- Lines kept for replay --------------------------------------------------------------------

void recordLine() {
    if (replayParse)
        return;
    size_t bytes = static_cast<size_t>(lineLength) + 1;
    auto *line = static_cast<SourceLine *>(allocOrFail(sizeof(SourceLine) + bytes));
    if (!line)
        return;
    line->next = nullptr;
    line->length = lineLength;
    memcpy(line->text(), lineBuffer, bytes);
    (lastSourceLine ? lastSourceLine->next : firstSourceLine) = line;
    lastSourceLine = line;
}

void replayNextLine() {
    if (!replayLine) {
        noMoreInput();
        return;
    }
    setLine(replayLine->text(), replayLine->length);
    currentLine++;
    replayLine = replayLine->next;
}

// ---- Files ------------------------------------------------------------------------------------

// A script held in memory: lineBuffer had all of it from the start.
bool atStringScript() {
    return sourceDepth == 0 && sourceNames[0] &&
           strncmp(sourceNames[0], STRING_SCRIPT, sizeof STRING_SCRIPT - 1) == 0;
}

FILE *topFile() { return sourceDepth >= 0 ? sourceFiles[sourceDepth] : nullptr; }

// True: the rest of the line that included the file is to be scanned now.
bool popSourceFile() {
    if (FILE *file = topFile())
        fclose(file);
    sourceFiles[sourceDepth] = nullptr;
    linePos = 0;
    sourceDepth--;
    currentLine = savedLines[sourceDepth];
    return fileEnded();
}

// Pops the files that have ended. The file to read from; NULL if there is none, or if the rest of
// an including line has taken the place of the next one. The bottom file stays: who opened it
// closes it.
FILE *nextOpenFile() {
    while (endOfFile && sourceDepth > 0) {
        endOfFile = false;
        if (popSourceFile())
            return nullptr;
        endOfFile = atStringScript() || !topFile() || feof(topFile());
    }
    if (!endOfFile)
        return topFile();
    noMoreInput();
    return nullptr;
}

void reportOverlongLine() {
    parseError("source code line exceeded the maximum length of %d", SOURCE_LINE_MAX);
    fprintf(stderr, "source code: %s\n", lineBuffer);
}

// ---- The console ------------------------------------------------------------------------------

bool isBlankLine() {
    int16_t cursor = 0;
    skipBlanks(cursor, lineBuffer);
    return lineBuffer[cursor] == '\0';
}

void readInteractiveLine() {
    int ends = 0;
    do {
        lineBuffer[0] = '\0';
        if (readConsoleLine(lineBuffer, SOURCE_LINE_MAX))
            ends = 0;
        else if (systemFlag(e_lang->ignoreeof) && ++ends < CONSOLE_ENDS_MAX)
            fprintf(stderr, e_lang->loginShell ? "\nUse \"logout\" to logout\n"
                                               : "\nUse \"exit\" to leave Zy\n");
        else
            strcpy(lineBuffer, "exit");
    } while (isBlankLine());
    lineLength = static_cast<int16_t>(strlen(lineBuffer));
}

}  // namespace

bool systemFlag(const TypeInfo *symbol) {
    const VarCell *cell = symbol && baseFrame ? slotOf(baseFrame, symbol->index) : nullptr;
    return cell && cell->data.i != 0;
}

void releaseSourceLines() {
    while (SourceLine *line = firstSourceLine) {
        firstSourceLine = line->next;
        free(line);
    }
    lastSourceLine = replayLine = nullptr;
}

void readSourceLine() {
    linePos = 0;
    pushedBack = endOfInput = false;
    forgetExpansions();
    if (stringMode)
        replayNextLine();
    else if (!fileMode)
        readInteractiveLine();
    else if (atStringScript())
        noMoreInput();
    else
        readFileLine(topFile());
}

void readFileLine(FILE *stream) {
    if (endOfFile && !(stream = nextOpenFile()))
        return;
    if (e_lang->rawLineMode)
        readRawLine(stream);
    else
        readFilteredLine(stream);
}

bool readRawLine(FILE *stream) {
    currentLine++;
    if (!stream || !fgets(lineBuffer, SOURCE_LINE_MAX, stream)) {
        setLine("", 0);
        endOfFile = true;
        return false;
    }
    size_t length = strlen(lineBuffer);
    bool ended = length > 0 && lineBuffer[length - 1] == '\n';
    if (ended && --length > 0 && lineBuffer[length - 1] == '\r')
        length--;
    lineBuffer[length] = '\0';
    lineLength = static_cast<int16_t>(length);
    linePos = 0;
    if (!ended && length >= SOURCE_LINE_MAX - 1)
        reportOverlongLine();
    recordLine();
    return true;
}

}  // namespace zy
