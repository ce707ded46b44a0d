// Running scripts: the phases of a run, the functions given to atexit. The services with their
// state machine are in embed/scriptDriver.cpp.
#pragma once

#include <cstdio>

#include "instance/langState.h"

namespace zy {

struct AtExitEntry {
    AtExitEntry *next;
    void *function;  // of the script
};

// Runs the functions given to atexit, newest first, those included that they add.
void runAtExit();
// Frees the list without running them.
void freeAtExitList();

// Calls a function of the script without arguments; its result is dropped.
void callWithoutArguments(void *function);

// The script as a stream for reading; NULL if it can't be opened. A folder is no script.
FILE *openScript(const char *path);

// Parses and runs the file, and closes it: its file-level statements, then its main. 0, or -1 for
// any failure.
int runScriptFile(FILE *file, const char *path, bool keepMain);
// An empty program in place of the one held.
void freshProgram();
// Parses it only; 0 or -1.
int parseScriptFile(FILE *file, const char *path);
// Runs the program that is parsed. command is the script's name with its arguments behind a blank.
int execParsedScript(const char *command);

}  // namespace zy
