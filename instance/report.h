// The one way in which errors and warnings reach the user: text on the standard error stream,
// and a flag. Texts are given without the prefix "ERROR: " or "WARNING: " and without the line
// feed; the reporters add both, a position line where they know a position, and set the flag.
#pragma once

#include "instance/langState.h"

namespace zy {

struct SourcePosition {
    int line;
    const char *file;
};

// What the rooms above know of the position. False: there is none to print.
bool parsePosition(SourcePosition &position);  // the line being parsed
bool runPosition(SourcePosition &position);    // the statement being run

#define ZY_PRINTF(text, first) __attribute__((format(printf, text, first)))

// Warnings with a position print only when warningLevel is 1 or more.
//
// An error in the script while it runs; sets runStatus. The operation goes on with a neutral value.
void runError(const char *format, ...) ZY_PRINTF(1, 2);
// A warning while it runs; sets runStatus unless an error has.
void runWarning(const char *format, ...) ZY_PRINTF(1, 2);
// The same for what no warning level silences: a conversion that lost a number.
void runWarningAlways(const char *format, ...) ZY_PRINTF(1, 2);
// An error in the text being parsed; sets errorFlag.
void parseError(const char *format, ...) ZY_PRINTF(1, 2);
// A warning about the text being parsed. Sets nothing: a warning refuses no run.
void parseWarning(const char *format, ...) ZY_PRINTF(1, 2);
// An error or warning about no place in a script. Sets nothing.
void plainError(const char *format, ...) ZY_PRINTF(1, 2);
void plainWarning(const char *format, ...) ZY_PRINTF(1, 2);

// Whether warnings of that level print now. Ordinary ones have level 1, weak type matches 2,
// functions used before their definition 3, undefined variables and tags 4.
bool warningsAt(int level);

// The position lines alone, for messages that are put together in pieces.
void printErrorPosition(const SourcePosition &position);
void printWarningPosition(const SourcePosition &position);
void printRunErrorPosition();
void printParseErrorPosition();

// A run that has had an error stays in error, whatever warnings follow.
inline void noteRunError() { runStatus = RUN_ERROR; }
inline void noteRunWarning() {
    if (runStatus != RUN_ERROR)
        runStatus = RUN_WARNING;
}

// A record could not be allocated.
void reportOutOfMemory();

}  // namespace zy
