// Stand-ins until the lexer and the parse stack have theirs, which take precedence.

#include "front/lexer.h"
#include "front/lexerState.h"
#include "front/tokens.h"

namespace zy {

__attribute__((weak)) void peekNonBlank() {
    while (lineBuffer[linePos] == ' ' || lineBuffer[linePos] == '\t')
        linePos++;
}

__attribute__((weak)) bool atDeclaration() { return false; }

}  // namespace zy
