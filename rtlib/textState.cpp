// The cells of strtok.

#include "rtlib/textState.h"

#include <cstdlib>

namespace zy {

char *tokenPosition;
char *tokenBuffer;

void releaseTokens() {
    free(tokenBuffer);
    tokenBuffer = tokenPosition = nullptr;
}

}  // namespace zy
