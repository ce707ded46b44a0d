// The built-in symbols: system variables without storage yet, and constants. startup/builtins.inc
// lists them.
#pragma once

namespace zy {

// Binds all of them, on the list of level 0: constants first, then the variables by slot.
void createBuiltinSymbols();
// Makes the constant _environ what the environment of the process is now.
void refreshEnvironment();
void releaseBuiltins();

// A copy of the process's list, which moves when a variable is added; the texts are the process's.
extern char **environmentCopy;

}  // namespace zy
