#include "platform/user.h"

#include <pwd.h>
#include <unistd.h>

#include <climits>

namespace zy::platform {

const char *const lastResortHome = "/";
const char *const programFolders = "/usr/local/sbin;/usr/local/bin;/usr/sbin;/usr/bin;/sbin;/bin;";

std::string accountHomeFolder() {
    char buffer[16384];  // a whole account record; the system's own limit is smaller
    passwd record, *found = nullptr;
    if (getpwuid_r(getuid(), &record, buffer, sizeof buffer, &found) != 0 || !found)
        return "";
    return found->pw_dir ? found->pw_dir : "";
}

std::string machineName() {
    char name[256];  // longer than any host name
    if (gethostname(name, sizeof name) != 0)
        return "";
    name[sizeof name - 1] = '\0';  // a cut name has no end
    return name;
}

std::string currentFolder() {
    char folder[2 * PATH_MAX];  // the system's limit is about paths that are handed to it
    return getcwd(folder, sizeof folder) ? folder : "";
}

}  // namespace zy::platform
