// Running scripts: the state machine that guards runs, the phases of a run, the functions given to
// atexit.
#pragma once

#include "instance/langState.h"

namespace zy {

struct AtExitEntry {
    AtExitEntry *next;
    void *function;  // of the script
};

// Runs the functions given to atexit, newest first, those included that they add.
void runAtExit();

// Runs the file at `path`, which is open as the first source; 0, or -1 for any failure.
int runScriptFile(const char *path, bool keepMain);

}  // namespace zy
