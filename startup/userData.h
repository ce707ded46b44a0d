// Who uses this instance: name, machine, home, the text of the first prompt.
#pragma once

#include <string>

namespace zy {

// Sets userName, hostName, userHome and promptText. Ends the process, after a message, if there is
// no folder that could be the home.
void findUserData();
void releaseUserData();

// Exports HOME if the home wasn't taken from there.
void publishUserHome();

// The steps of findUserData() that choose the home: the account's folder, else what the environment
// says, else the last resort. "" if none will do.
std::string chooseUserHome(const std::string &accountHome, const char *lastResort);

bool isAdministrator();  // by name

}  // namespace zy
