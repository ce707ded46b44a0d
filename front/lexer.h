// The lexer turns the characters of lineBuffer into tokens, one at a time, on demand of the
// parsers. Macro calls are replaced as text in the line buffer, and parsers may look at the
// characters behind the cursor; one token can be handed back through pushedBack.
#pragma once

#include "front/lexerState.h"

namespace zy {

void nextToken();

// Fills lineBuffer from the current source; resets linePos, clears pushedBack and endOfInput.
void readSourceLine();
void readFileLine(FILE *stream);

// Advances a cursor over space, tab, CR, FF and VT; the count.
int skipBlanks(int16_t &cursor, const char *text);
// Moves linePos to the next significant character, across comments, line ends and continuations;
// the current token survives. peekAndExpand expands a macro that stands there first.
void peekNonBlank();
void peekAndExpand();
void skipComment();

// Escapes of string text: at most `length` bytes of source into dest; the number written.
int decodeEscapes(char *dest, const char *source, int length);
int mapTrigraphs(char *dest, const char *source, int length);

// Reads a token that must be c. Otherwise it is pushed back and, with report set, a message
// printed.
void expectChar(char c, bool report);
// Finishes a message with the current token.
void tokenContext();

// What later rooms hang in: the line reader of directives, macro expansion, the interactive reader,
// the end of an included file. The lexer calls them; front/preprocessor has them.
void readFilteredLine(FILE *stream);
bool expandMacro(const char *name);  // true: the line has been rewritten at linePos
void endOfIncludedFile();
bool readConsoleLine(char *line, int size);

}  // namespace zy
