#include "startup/userData.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/files.h"
#include "platform/user.h"
#include "startup/environment.h"
#include "startup/startupState.h"

namespace zy {

namespace {

// HOMEPATH and HOMEDRIVE, where an environment brought along from another system has them.
std::string environmentHomePath() {
    const char *path = readEnvironment("HOMEPATH");
    if (!path || !*path)
        return "";
    std::string home = std::string(path).substr(0, 256);
    const char *drive = readEnvironment("HOMEDRIVE");
    if (drive && home.find(':') == std::string::npos)
        return drive + home;
    return home.find('/') == std::string::npos ? home + '/' : home;
}

std::string environmentHome() {
    const char *path = readEnvironment("HOME");
    std::string home = path ? path : "";
    std::replace(home.begin(), home.end(), '\\', '/');
    return home;
}

const char *firstUserName() {
    for (const char *variable : {"LOGNAME", "USER", "USERNAME"})
        if (const char *name = readEnvironment(variable); name && *name)
            return name;
    return "zy";
}

void setUserHome() {
    std::string home = chooseUserHome(platform::accountHomeFolder(), platform::lastResortHome);
    if (home.empty()) {
        fputs("Error: cannot create home directory for _home\n", stderr);
        exit(-1);
    }
    userHome = copyString(home.c_str());
}

}  // namespace

std::string chooseUserHome(const std::string &accountHome, const char *lastResort) {
    if (!accountHome.empty())
        return accountHome;
    for (const std::string &home : {environmentHomePath(), environmentHome()})
        if (!home.empty())
            return home;
    return platform::isWritable(lastResort) ? lastResort : "";
}

bool isAdministrator() {
    return strcmp(userName, "administrator") == 0 || strcmp(userName, "Administrator") == 0;
}

void findUserData() {
    userName = copyString(firstUserName());
    std::string machine = platform::machineName();
    hostName = copyString(machine.empty() ? readEnvironment("USERDOMAIN") : machine.c_str());
    setUserHome();
    promptText = copyString((workingFolder() + (isAdministrator() ? "# " : "> ")).c_str());
}

void publishUserHome() {
    const char *known = readEnvironment("HOME");
    if (!known || strcmp(known, userHome) != 0)
        writeEnvironment("HOME", userHome);
}

void releaseUserData() {
    for (char **text : {&userName, &hostName, &userHome, &promptText}) {
        free(*text);
        *text = nullptr;
    }
}

}  // namespace zy
