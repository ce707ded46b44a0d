#include "startup/home.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "instance/report.h"
#include "instance/version.h"
#include "platform/files.h"
#include "platform/store.h"
#include "platform/user.h"
#include "startup/environment.h"
#include "startup/startupState.h"

namespace zy {

namespace {

void setHome(const std::string &home) {
    snprintf(homeFolder, sizeof homeFolder, "%s", home.c_str());
    if (writeEnvironment("ZYHOME", homeFolder) != 0) {
        plainError("cannot set environment variable ZYHOME with '%s'", homeFolder);
        errorFlag = 1;
    }
}

// A host's own choice: nothing stands in for it when it is wrong.
void takeOptionHome() {
    std::string home = e_lang->zyhome;
    if (home.size() > 1 && (home.back() == '/' || home.back() == '\\'))
        home.pop_back();
    if (platform::isDirectory(home.c_str())) {
        setHome(home);
        return;
    }
    plainError("invalid Embedded Zy home directory '%s'", home.c_str());
    errorFlag = 1;
}

void reportNoStore() {
    plainError("cannot obtain a value for ZYHOME");
    if (e_lang->embedded)
        fputs(
            "       you may set it using 'option.zyhome' in Embedded Zy API"
            " Zy_Initialize(&interp, &option)\n",
            stderr);
    errorFlag = 1;
}

void takeStoreHome() {
    char value[SOURCE_LINE_MAX];
    switch (platform::readStore("ZYHOME", value, sizeof value)) {
        case platform::StoreResult::found:
            setHome(std::string(value) + (e_lang->embedded ? "/toolkit/embedzy" : ""));
            break;
        case platform::StoreResult::noStore: reportNoStore(); break;
        case platform::StoreResult::noValue:
            plainError("register value ZYHOME cannot be obtained from registry");
            errorFlag = 1;
    }
}

}  // namespace

void findHome() {
    homeFolder[0] = '\0';
    const char *known = readEnvironment("ZYHOME");
    if (e_lang->embedded && e_lang->zyhome)
        takeOptionHome();
    else if (known && !e_lang->embedded)
        snprintf(homeFolder, sizeof homeFolder, "%s", known);
    else
        takeStoreHome();
}

void publishVersion() {
    const std::pair<const char *, std::string> values[] = {
        {"ZYVERMAJOR", std::to_string(versionMajor)},
        {"ZYVERMINOR", std::to_string(versionMinor)},
        {"ZYVERMICRO", std::to_string(versionMicro)},
        {"ZYBUILD", std::to_string(versionBuild)},
        {"ZYEDITION", versionEdition},
        {"ZYVERSION", versionText},
        {"ZYRELEASEDATE", versionReleaseDate},
    };
    for (auto &[name, value] : values)
        writeEnvironment(name, value.c_str());
}

void publishManual() {
    if (!homeFolder[0])
        return;
    std::string folders = std::string(homeFolder) + "/docs/man";
    const char *known = readEnvironment("MANPATH");
    if (known && strstr(known, folders.c_str()))
        return;
    if (known && *known)
        folders = folders + platform::listSeparator + known;
    writeEnvironment("MANPATH", folders.c_str());
}

}  // namespace zy
