// Source text for tests of what reads it: a temporary file named a.zy.
#pragma once

#include <cstdio>
#include <cstring>
#include <string>

#include "front/lexer.h"

namespace zy {

inline void openSource(const std::string &text) {
    FILE *file = tmpfile();
    fwrite(text.data(), 1, text.size(), file);
    rewind(file);
    sourceFiles[0] = file;
    sourceNames[0] = "a.zy";
    sourceDepth = 0;
    fileMode = true;
    endOfFile = endOfInput = pushedBack = false;
    currentLine = 0;
    readSourceLine();
}

inline void closeSource() {
    if (sourceFiles[0])
        fclose(sourceFiles[0]);
    sourceFiles[0] = nullptr;
    fileMode = false;
    sourceDepth = -1;
}

// A line of the console.
inline void typeLine(const char *text) {
    snprintf(lineBuffer, SOURCE_LINE_MAX, "%s", text);
    lineLength = static_cast<int16_t>(strlen(lineBuffer));
    linePos = 0;
    pushedBack = false;
}

}  // namespace zy
