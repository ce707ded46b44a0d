// The start of an instance: the constants and tables that every interpreter has, its home and
// system variables, its start-up files. startupState.h has the room's cells, paths.h the search
// tables, systemVariables.h what an assignment to a system variable does.
#pragma once

namespace zy {

// Makes the words of a text the script's arguments.
void setArgumentsFromText(const char *text);

// Puts the arguments last given to copyArgcArgv() into _argc and _argv.
void storeArguments();

// In the restricted shell the variables that say where things are become constants without a text:
// what was made of them stays in force.
void freezeSystemVariables();

// Gives the instance back to the state before initConstSysVars(). The prompt expression must be
// gone by then: its records belong to the expressions' room.
void releaseStartup();

}  // namespace zy
