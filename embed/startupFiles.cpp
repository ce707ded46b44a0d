#include "embed/startupFiles.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "embed/scriptDriver.h"
#include "extern/include/embedzy.h"
#include "front/tokens.h"
#include "instance/report.h"
#include "platform/files.h"
#include "startup/startup.h"
#include "startup/startupState.h"
#include "startup/systemVariables.h"
#include "stmt/program.h"

namespace zy {

namespace {

constexpr int FAILED = 1;

// The files of a regular shell and of a restricted one.
const char *byShell(const char *regular, const char *restrictedName) {
    return e_lang->restricted ? restrictedName : regular;
}

std::string configFile(const char *name) { return std::string(homeFolder) + "/config/" + name; }

// A file of the user: hidden at the root, where it isn't alone.
std::string homeFile(const char *name) {
    const char *text = systemCell(SLOT_HOME)->data.text;
    std::string home = text ? text : "";
    if (home.size() == 1)
        return std::string("/.") + name;
    if (home.empty() || (home.back() != '/' && home.back() != '\\'))
        home += platform::separator;
    return home + '_' + name;
}

// What the system's manager wrote is trusted.
void runTrusted(FILE *file, const std::string &path) {
    int restricted = e_lang->restricted;
    e_lang->restricted = 0;
    runScriptFile(file, path.c_str(), false);
    saveKeywords();
    e_lang->restricted = restricted;
}

// ---- The user's copy of the model ---------------------------------------------------------------

bool mayOverwrite(const std::string &path) {
    printf("%s already exists - overwrite? [y/n]: ", path.c_str());
    fflush(stdout);
    char answer[SOURCE_LINE_MAX] = "";
    if (!fgets(answer, sizeof answer, stdin))
        return false;
    char first = answer[strspn(answer, " \t")];
    return first == 'y' || first == 'Y';
}

bool copyLines(FILE *from, FILE *to) {
    char line[SOURCE_LINE_MAX];
    while (fgets(line, sizeof line, from))
        if (fputs(line, to) < 0)
            return false;
    return !ferror(from);
}

bool copyFile(const std::string &from, const std::string &to) {
    FILE *source = openScript(from.c_str());
    FILE *target = source ? fopen(to.c_str(), "w") : nullptr;
    bool copied = target && copyLines(source, target);
    if (target)
        copied = fclose(target) == 0 && copied;
    if (source)
        fclose(source);
    return copied;
}

// Ends the process if the model can't be copied.
void copyModel() {
    std::string target = homeFile(byShell("zyrc", "zysrc"));
    std::string model = configFile(byShell("_zyrc", "_zysrc"));
    if (platform::isReadable(target.c_str()) && !mayOverwrite(target))
        return;
    if (copyFile(model, target)) {
        fprintf(stderr, "\n%s has been copied to %s\n", model.c_str(), target.c_str());
        return;
    }
    fprintf(stderr, "\nWARNING: %s cannot be copied to %s\n", model.c_str(), target.c_str());
    exit(FAILED);
}

// ---- Login --------------------------------------------------------------------------------------

// A login shell can't do without the file.
void runLoginFile() {
    std::string path = configFile(byShell("zylogin", "zyslogin"));
    FILE *file = openScript(path.c_str());
    if (!file) {
        plainError("cannot open file %s", path.c_str());
        exit(FAILED);
    }
    runTrusted(file, path);
    freshProgram();
}

}  // namespace

void readStartupFile(const char *path) {
    if (!path && e_lang->copyStartupFile)
        copyModel();
    std::string name = path ? path : configFile(byShell("zyrc", "zysrc"));
    if (FILE *file = openScript(name.c_str()))
        runTrusted(file, name);
    freshProgram();
    if (e_lang->loginShell)
        runLoginFile();
    if (e_lang->restricted == 1) {
        hideRestrictedKeywords();
        freezeSystemVariables();
    }
}

}  // namespace zy

using namespace zy;

void executezylogout(void) {
    std::string path = homeFile(byShell("zylogout", "zyslogout"));
    FILE *file = platform::isReadable(path.c_str()) ? openScript(path.c_str()) : nullptr;
    if (file && runScriptFile(file, path.c_str(), false) != 0)
        exit(FAILED);
    releaseProgram();
}
