// What the lexer calls and later parts of the front end will have: directives, macros, included
// files and the console. Until then a line is read as it stands, no name is a macro, and a console
// line comes straight from standard input.

#include <cstring>

#include "front/lexer.h"

namespace zy {

void readFilteredLine(FILE *stream) { readRawLine(stream); }

int expandMacro(const char *, uint16_t) { return MACRO_NONE; }

bool replaceMacro(const char *, uint16_t) { return false; }

bool fileEnded() { return false; }

bool readConsoleLine(char *line, int size) {
    if (!fgets(line, size, stdin)) {
        clearerr(stdin);
        return false;
    }
    line[strcspn(line, "\n")] = '\0';
    return true;
}

}  // namespace zy
