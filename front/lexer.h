// The lexer turns the characters of lineBuffer into tokens, one at a time, on demand of the
// parsers. Macro calls are replaced as text in the line buffer, and parsers may look at the
// characters behind the cursor; one token can be handed back through pushedBack.
//
// A token is always delivered, and a token of the text always before the end of input is reported,
// however far a look ahead has read. Constants are new Values that belong to the caller; the count
// of a string constant is the number of its characters with the NUL at its end, as its text may
// hold further ones.
#pragma once

#include "front/lexerState.h"

namespace zy {

void nextToken();

// Fills lineBuffer from the current source; resets linePos, clears pushedBack and endOfInput.
void readSourceLine();
// Leaves the files that have ended, then reads one line.
void readFileLine(FILE *stream);
// One line as it stands: without its end, bounded, recorded for replay. False at the end of the
// file, with endOfFile set and an empty line.
bool readRawLine(FILE *stream);
// The recorded lines of the program.
void releaseSourceLines();

// Advances a cursor over space, tab, CR, FF and VT; the count.
int skipBlanks(int16_t &cursor, const char *text);
// Moves linePos to the next significant character, across comments, line ends and continuations;
// the current token and identifierBuffer survive. In rawLineMode a line's end is the end.
void peekNonBlank();
// The same, and a macro that stands there is replaced by its text.
void peekAndExpand();
// Steps over a comment at linePos, also one that starts with /#, and over a further one behind it;
// false if there is none.
bool skipComment();

// Escapes of string text: at most `length` bytes of source into dest, which has room for as many;
// the number written.
int decodeEscapes(char *dest, const char *source, int length);
int mapTrigraphs(char *dest, const char *source, int length);

// Reads a token that must be c. Otherwise it is pushed back and, with report set, a message
// printed.
bool expectChar(char c, bool report);
// The current constant, which is the caller's from now on; the token is a blank then.
inline Value *takeConstant() {
    Value *constant = tokenValue.constant;
    tokenClass = TK_CHAR;
    tokenValue.character = ' ';
    return constant;
}
// Finishes a message with the current token, a line feed and the position.
void tokenContext();

// What the lexer calls: the line reader of directives (front/conditions.cpp), macro calls
// (front/macroExpansion.cpp), the end of an included file (front/includedFiles.cpp), the console.
//
// Reads lines until one is to be compiled.
void readFilteredLine(FILE *stream);
// With linePos behind a name: replaces a macro call in the line and reads a token from it. The name
// is that in identifierBuffer. 0: no macro call, and only the cursor may have moved.
int expandMacro(const char *name, uint16_t hash);
enum { MACRO_NONE, MACRO_EXPANDED, MACRO_EXPANDED_TO_LINE_END, MACRO_REFUSED };
// The same for a look ahead: reads no token. MACRO_NONE: all is as it was. MACRO_EXPANDED: linePos
// is at the replacement, in which a macro isn't replaced by itself again. MACRO_REFUSED, after a
// message: linePos is where the arguments end, which may be on another line.
int replaceMacro(const char *name, uint16_t hash);
// Takes back what entering the file changed, when the lexer has taken it off the source stack.
// True: the rest of the including line stands in lineBuffer again, at linePos.
bool fileEnded();
// A line without its end, at most size - 1 bytes. False at end of input.
bool readConsoleLine(char *line, int size);

}  // namespace zy
