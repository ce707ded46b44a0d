// What a stand-alone front end calls when the instance is ready.

#include <cstdio>

#include "embed/kernel.h"
#include "embed/lifecycle.h"
#include "embed/scriptDriver.h"
#include "instance/report.h"

using namespace zy;

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
    int result = runScriptFile(file, e_filenamebuf, false);
    fflush(stdout);
    cleanMemory();
    constexpr int failed = 255;
    return result == 0 ? 0 : failed;
}
