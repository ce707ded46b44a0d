#include "platform/user.h"

#include <pwd.h>
#include <unistd.h>

#include <filesystem>
#include <vector>

namespace zy::platform {

const char *const lastResortHome = "/";
const char *const programFolders = "/usr/local/sbin;/usr/local/bin;/usr/sbin;/usr/bin;/sbin;/bin;";

std::string accountHomeFolder() {
    std::vector<char> buffer(16384);  // a whole account record; the system's own limit is smaller
    passwd record, *found = nullptr;
    if (getpwuid_r(getuid(), &record, buffer.data(), buffer.size(), &found) != 0 || !found)
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
    std::error_code failed;
    std::filesystem::path folder = std::filesystem::current_path(failed);
    return failed ? "" : folder.string();
}

}  // namespace zy::platform
