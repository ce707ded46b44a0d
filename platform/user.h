// Who runs this and where: user, machine, current folder, the system's own folders.
#pragma once

#include <string>

namespace zy::platform {

// The home folder that the system's accounts give this user, "" if it has no account.
std::string accountHomeFolder();
std::string machineName();    // "" if the system doesn't tell
std::string currentFolder();  // "" if it can't be read

// The folder that is a home when nothing else names one.
extern const char *const lastResortHome;

// The folders of the system's own programs, each followed by a `;`.
extern const char *const programFolders;

// What separates the folders of a list in the process environment, as in PATH.
constexpr char listSeparator = ':';

}  // namespace zy::platform
