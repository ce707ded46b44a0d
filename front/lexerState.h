// record header: state of the lexer. front/lexerState.cpp defines it; resetLexerState() gives every
// cell its first value, releaseLexer() also gives back what the cells own.
#pragma once

#include <cstdio>

#include "front/tokens.h"
#include "instance/langState.h"

namespace zy {

constexpr int SOURCE_DEPTH_MAX = 32;

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

// Lines that were read from files, kept for replay in stringMode. The text stands behind the
// record.
struct SourceLine {
    SourceLine *next;
    int length;
    char *text() { return reinterpret_cast<char *>(this + 1); }
};
extern SourceLine *firstSourceLine, *lastSourceLine;
extern SourceLine *replayLine;  // the next one that stringMode delivers
extern bool replayParse;        // the parse began in stringMode: its lines are in the list already

// The texts of wide string constants. A pointer Value doesn't own what it points to, and a script
// may keep the pointer, so they live as long as the instance. The units stand behind the record.
struct WideText {
    WideText *next;
    uint16_t *units() { return reinterpret_cast<uint16_t *>(this + 1); }
};
extern WideText *wideTexts;

// The two vocabulary switches.
extern int caseSensitive;  // _casesen
extern int floatConstant;  // _floatconst

void resetLexerState();
void releaseLexer();

}  // namespace zy
