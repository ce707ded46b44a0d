// Cells of strtok: where its next search starts, and the private text that it runs on if the text
// was a string_t.
#pragma once

namespace zy {

extern char *tokenPosition;
extern char *tokenBuffer;  // owned, NULL for a text of the script's own

void releaseTokens();

}  // namespace zy
