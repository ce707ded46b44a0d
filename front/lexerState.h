// record header: state of the lexer. front/lexerState.cpp defines it; resetLexerState() gives every
// cell its first value.
#pragma once

#include <cstdio>

#include "front/tokens.h"
#include "instance/langState.h"

namespace zy {

constexpr int SOURCE_DEPTH_MAX = 32;

struct SourceLine;  // a line kept in memory for replay

extern char lineBuffer[SOURCE_LINE_MAX];  // the line being read, NUL-terminated, without line end
extern int16_t linePos;                   // next character to scan
extern int16_t lineLength;

extern TokenClass tokenClass;  // of the current token
union TokenValue {
    NameEntry *name;
    Value *constant;
    int character;
};
extern TokenValue tokenValue;
extern KeywordEntry currentKeyword;
extern bool pushedBack;  // nextToken delivers the current token again

extern bool endOfInput;   // the present parse has no more input
extern bool endOfFile;    // the file at the top of the source stack is exhausted
extern bool fileMode;     // lines come from the source stack
extern bool stringMode;   // lines come from the list of lines in memory
extern bool commandMode;  // one interactive command line is being parsed
extern int32_t currentLine;
extern int expressionDepth;  // active expression parses
extern bool dotsSeen;        // `...` was scanned
extern char identifierBuffer[SOURCE_LINE_MAX + 8];

extern FILE *sourceFiles[SOURCE_DEPTH_MAX];
extern const char *sourceNames[SOURCE_DEPTH_MAX];  // interned
extern int32_t savedLines[SOURCE_DEPTH_MAX];       // line of the including file at the push
extern int16_t sourceDepth;                        // index of the top, -1 when empty

// The two vocabulary switches.
extern int caseSensitive;  // _casesen
extern int floatConstant;  // _floatconst

void resetLexerState();

}  // namespace zy
