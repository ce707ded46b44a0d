#include "front/sourceKeeper.h"

#include <cstring>

#include "front/preprocessor.h"

namespace zy {

SourceKeeper::SourceKeeper() {
    memcpy(line, lineBuffer, static_cast<size_t>(length) + 1);
    rawLines = e_lang->rawLineMode;
    inContinuation = e_lang->inStringContinuation;
    commaEnds = e_lang->commaEndsExpression;
    lineOffset = e_lang->lineOffset;
    shownFile = e_lang->lineFileName;
    memcpy(files, sourceFiles, sizeof files);
    memcpy(names, sourceNames, sizeof names);
    memcpy(lines, savedLines, sizeof lines);
    memset(sourceFiles, 0, sizeof files);
    sourceDepth = -1;
    if (expansionCount)
        memcpy(origins, lineOrigins, sizeof origins);
    openMacroCalls++;
    conditionGroup = nullptr;
    condDepth = skipLevel = 0;
}

SourceKeeper::~SourceKeeper() {
    leaveIncludedFiles();
    closeSources();
    resetConditions();
    conditionGroup = group;
    condDepth = openGroups;
    skipLevel = skipped;
    openMacroCalls--;
    expansionCount = replaced;
    if (expansionCount)
        memcpy(lineOrigins, origins, sizeof origins);
    memcpy(sourceFiles, files, sizeof files);
    memcpy(sourceNames, names, sizeof names);
    memcpy(savedLines, lines, sizeof lines);
    memcpy(lineBuffer, line, static_cast<size_t>(length) + 1);
    linePos = position;
    lineLength = length;
    sourceDepth = depth;
    fileMode = inFile;
    stringMode = inString;
    commandMode = inCommand;
    endOfInput = inputEnded;
    endOfFile = fileEnded;
    replayParse = replaying;
    currentLine = lineNumber;
    expressionDepth = openExpressions;
    e_lang->rawLineMode = rawLines;
    e_lang->inStringContinuation = inContinuation;
    e_lang->commaEndsExpression = commaEnds;
    e_lang->lineOffset = lineOffset;
    e_lang->lineFileName = shownFile;
}

void enterSource(FILE *file, const char *name) {
    sourceDepth = 0;
    sourceFiles[0] = file;
    sourceNames[0] = name;
    fileMode = true;
    stringMode = commandMode = false;
    expressionDepth = 0;
    e_lang->commaEndsExpression = 0;
    if (file)
        startTopFile();
    else
        currentLine = 1;
    pushedBack = endOfInput = endOfFile = false;
}

void startTopFile() {
    lineBuffer[0] = '\0';
    linePos = lineLength = 0;
    currentLine = 0;
    pushedBack = endOfInput = endOfFile = false;
    e_lang->rawLineMode = e_lang->inStringContinuation = e_lang->lineOffset = 0;
    e_lang->lineFileName = nullptr;
}

void closeSources() {
    for (FILE *&file : sourceFiles) {
        if (file)
            fclose(file);
        file = nullptr;
    }
}

}  // namespace zy
