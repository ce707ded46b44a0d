// The start of an instance: the constants and tables that every interpreter has, its home and
// system variables, its start-up files.
#pragma once

namespace zy {

// The home folder, "" until it is found.
extern char homeFolder[];

// Reads a start-up file (NULL: the regular or restricted one of the home); a missing one is no
// error. What it leaves in system variables, keywords and aliases stays.
void readStartupFile(const char *path);

// Gives the instance back to the state before initConstSysVars().
void releaseStartup();

}  // namespace zy
