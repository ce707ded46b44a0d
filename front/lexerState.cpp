#include "front/lexerState.h"

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

int caseSensitive = 1;
int floatConstant = 0;

void resetLexerState() {
    lineBuffer[0] = '\0';
    linePos = lineLength = 0;
    pushedBack = endOfInput = endOfFile = fileMode = stringMode = commandMode = dotsSeen = false;
    currentLine = 0;
    expressionDepth = 0;
    sourceDepth = -1;
    caseSensitive = 1;
    floatConstant = 0;
}

bool parsePosition(SourcePosition &position) {
    if ((!fileMode && !stringMode) || sourceDepth < 0 || !sourceNames[sourceDepth])
        return false;
    position = {currentLine, sourceNames[sourceDepth]};
    return true;
}

}  // namespace zy
