// Keeps the place of the reader, lines, token, source stack and groups of lines, while other text
// is read: the head of a function file, a text that a running script hands to the parser.
#pragma once

#include "front/lexerParts.h"
#include "front/preprocessorState.h"

namespace zy {

class SourceKeeper {
public:
    SourceKeeper();
    SourceKeeper(const SourceKeeper &) = delete;
    SourceKeeper &operator=(const SourceKeeper &) = delete;
    // Closes what is still open of the other text.
    ~SourceKeeper();

private:
    TokenKeeper token;
    char line[SOURCE_LINE_MAX];
    int16_t position = linePos, length = lineLength, depth = sourceDepth;
    bool inFile = fileMode, inString = stringMode, inCommand = commandMode;
    bool inputEnded = endOfInput, fileEnded = endOfFile, replaying = replayParse;
    int32_t lineNumber = currentLine;
    int openExpressions = expressionDepth;
    int rawLines, inContinuation, commaEnds, lineOffset;
    const char *shownFile;
    ConditionGroup *group = conditionGroup;
    int32_t openGroups = condDepth, skipped = skipLevel;
    int replaced = expansionCount;
    uint16_t origins[SOURCE_LINE_MAX];
    FILE *files[SOURCE_DEPTH_MAX];
    const char *names[SOURCE_DEPTH_MAX];
    int32_t lines[SOURCE_DEPTH_MAX];
};

// The only source from here on. `name` is interned; `file` NULL: the text stands in lineBuffer.
void enterSource(FILE *file, const char *name);
// The reader at the start of the file at the top of the source stack.
void startTopFile();
// Closes the files of the source stack.
void closeSources();

}  // namespace zy
