// What a stand-alone front end calls when the instance is ready.

#include <cstdio>
#include <cstring>
#include <string>

#include "embed/kernel.h"
#include "embed/lifecycle.h"
#include "embed/scriptDriver.h"
#include "embed/startupFiles.h"
#include "instance/report.h"
#include "instance/version.h"
#include "startup/options.h"

namespace zy {

namespace {

// The option word of a script's first line, "" if the line names no interpreter of this kind.
std::string optionWord(FILE *file) {
    char line[SOURCE_LINE_MAX] = "";
    if (!fgets(line, sizeof line, file))
        line[0] = '\0';
    rewind(file);
    std::string program(line, strcspn(line, " \t\r\n"));
    bool isOwn = program.ends_with("/zy") || program.ends_with("/zys");
    return strncmp(line, "#!", 2) == 0 && isOwn ? firstLineOptions(line) : "";
}

}  // namespace

}  // namespace zy

using namespace zy;

void consoleMessage(void) {
    printf("Zy %d.%d.%d %s\n", versionMajor, versionMinor, versionMicro, Zy_edition);
}

int console(void) {
    int parseOnly = e_lang->parseOnly;
    e_lang->parseOnly = 0;
    if (e_lang->startupMode == 0)
        readStartupFile(nullptr);
    e_lang->parseOnly = parseOnly;
    installFaultHandlers();
    FILE *file = openScript(e_filenamebuf);
    if (!file) {
        plainError("cannot open file '%s' ", e_filenamebuf);
        return 1;
    }
    std::string options = optionWord(file);
    if (!e_lang->ignoreFirstLine && options[0] == '-')
        applyOptionLine(e_filenamebuf, options.c_str());
    int result = runScriptFile(file, e_filenamebuf, false);
    fflush(stdout);
    cleanMemory();
    constexpr int failed = 255;
    return result == 0 ? 0 : failed;
}
