// Scripts of the system's manager and of the user that an instance reads at its start and end. What
// they leave in system variables, keywords, aliases and the environment stays; their variables and
// functions go with their program.
#pragma once

namespace zy {

// Reads a start-up file (NULL: the regular or restricted one of the home, and whatever else comes
// with the start of a shell). A missing one is no error.
void readStartupFile(const char *path);

}  // namespace zy
