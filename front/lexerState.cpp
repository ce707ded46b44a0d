// The cells of the lexer, and the position that messages about the source take from them.

#include "front/lexerState.h"

#include <cstdlib>

#include "front/lexer.h"
#include "instance/report.h"

namespace zy {

char lineBuffer[SOURCE_LINE_MAX];
int16_t linePos;
int16_t lineLength;

TokenClass tokenClass;
TokenValue tokenValue;
KeywordEntry currentKeyword;
bool pushedBack;

bool endOfInput;
bool endOfFile;
bool fileMode;
bool stringMode;
bool commandMode;
int32_t currentLine;
int expressionDepth;
bool dotsSeen;
char identifierBuffer[SOURCE_LINE_MAX + 8];

FILE *sourceFiles[SOURCE_DEPTH_MAX];
const char *sourceNames[SOURCE_DEPTH_MAX];
int32_t savedLines[SOURCE_DEPTH_MAX];
int16_t sourceDepth = -1;

SourceLine *firstSourceLine, *lastSourceLine;
SourceLine *replayLine;
bool replayParse;
WideText *wideTexts;

int caseSensitive = 1;
int floatConstant = 0;

void resetLexerState() {
    lineBuffer[0] = identifierBuffer[0] = '\0';
    linePos = lineLength = 0;
    tokenClass = TK_CHAR;
    tokenValue.character = '\n';
    currentKeyword = {};
    pushedBack = endOfInput = endOfFile = fileMode = stringMode = commandMode = dotsSeen = false;
    currentLine = 0;
    expressionDepth = 0;
    for (int i = 0; i < SOURCE_DEPTH_MAX; i++) {
        sourceFiles[i] = nullptr;
        sourceNames[i] = nullptr;
        savedLines[i] = 0;
    }
    sourceDepth = -1;
    replayLine = firstSourceLine;
    replayParse = false;
    caseSensitive = 1;
    floatConstant = 0;
}

void releaseLexer() {
    releaseSourceLines();
    while (WideText *text = wideTexts) {
        wideTexts = text->next;
        free(text);
    }
    resetLexerState();
}

bool parsePosition(SourcePosition &position) {
    if ((!fileMode && !stringMode) || sourceDepth < 0 || !sourceNames[sourceDepth])
        return false;
    position = {currentLine, sourceNames[sourceDepth]};
    return true;
}

}  // namespace zy
