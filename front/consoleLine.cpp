// The console's reader of lines; the line editor will take its place.

#include <cstring>

#include "front/lexer.h"

namespace zy {

bool readConsoleLine(char *line, int size) {
    if (!fgets(line, size, stdin)) {
        clearerr(stdin);
        return false;
    }
    line[strcspn(line, "\n")] = '\0';
    return true;
}

}  // namespace zy
