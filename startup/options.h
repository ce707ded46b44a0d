// Option letters: of the command line, which a stand-alone front end takes before the start, and of
// the first line of a script, which come behind it.
#pragma once

#include <string>

#include "instance/langState.h"

namespace zy {

// Sets the flag of a letter; false for one that has none.
inline bool takeOptionLetter(ZyLang *lang, char letter) {
    switch (letter) {
        case 'a': lang->noOptionalLib = 1; return true;
        case 'c':
        case 'i': return true;
        case 'd': lang->copyStartupFile = 1; return true;
        case 'f': lang->startupMode = 2; return true;
        case 'g': lang->errorsToOutputUnbuffered = 1; return true;
        case 'n': lang->parseOnly = 1; return true;
        case 'r': lang->errorsToOutput = 1; return true;
        case 'S': lang->restricted = lang->noOptionalLib = 1; return true;
        case 'w': lang->warningLevel = 3; return true;
        default: return false;
    }
}

// Does what the letters behind the `-` say, for the script `file`. What the start has done already
// stays as it is.
void applyOptionLine(const char *file, const char *options);

// The word behind the interpreter's name on the first line of a script, "" if there is none.
std::string firstLineOptions(const char *line);

// Standard error follows standard output, if an option asks for it.
void redirectErrors();

}  // namespace zy
