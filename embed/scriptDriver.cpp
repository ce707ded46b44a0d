#include "embed/scriptDriver.h"

#include <cstdio>
#include <cstring>

#include "embed/kernel.h"
#include "instance/report.h"

namespace zy {

namespace {

// ---- A second run is refused --------------------------------------------------------------------

enum RunEntry { RUN_SCRIPT, RUN_SCRIPT_M, EXEC_SCRIPT, EXEC_SCRIPT_M };

// What is printed when an entry is called although a script was run by Zy_RunScript (first column)
// or Zy_ExecScript (second).
const char *const refusals[][2] = {
    {"using Zy_RunScript(), call Zy_Reset() before calling Zy_RunScript() again.",
     "using Zy_ExecScript(), call Zy_Reset() before calling Zy_ExecScript() again."},
    {"using Zy_RunScript(), cannot use Zy_RunScriptM().",
     "using Zy_ExecScript(), cannot use Zy_RunScriptM()."},
    {"using Zy_RunScript(), cannot use Zy_ExecScript().",
     "using Zy_ExecScript(), cannot use Zy_ExecScript() again."},
    {"using Zy_RunScript(), cannot use Zy_ExecScriptM().",
     "using Zy_ExecScript(), cannot use Zy_ExecScriptM()."},
};

bool refused(RunEntry entry) {
    if (scriptMode == SCRIPT_IDLE)
        return false;
    plainError("this interpreter has processed a script");
    fprintf(stderr, "       %s\n", refusals[entry][scriptMode == SCRIPT_EXECUTED]);
    noteRunError();
    return true;
}

// ---- One run ------------------------------------------------------------------------------------

int countArguments(char **argv) {
    int count = 0;
    while (argv[count])
        count++;
    return count;
}

// Makes argv the arguments of the run and argv[0] the current script.
void takeArguments(char **argv) {
    copyArgcArgv(countArguments(argv), argv);
    snprintf(e_filenamebuf, ZY_FILENAME_SIZE, "%s", argv[0] ? argv[0] : "");
}

void beginRun() {
    e_lang->abortedRun = 0;
    abortRequest = 0;  // a request from before the run is not meant for it
}

// A restricted instance keeps its output on the screen until a key is pressed.
void waitIfRestricted() {
    if (e_lang->restricted == 1)
        getchar();
}

int hostResult(int runResult) { return runResult != 0 ? -1 : e_lang->abortedRun ? 1 : 0; }

// The M forms: any number of scripts, one after the other.
template <class Run>
int runRepeatedly(RunEntry entry, Run run) {
    if (refused(entry))
        return -1;
    e_lang->multiRun = 1;
    int result = run();
    scriptMode = SCRIPT_IDLE;
    return result;
}

}  // namespace

}  // namespace zy

using namespace zy;

int Zy_RunScript_kernel(void *, char **argv) {
    if (refused(RUN_SCRIPT))
        return -1;
    scriptMode = SCRIPT_RUN;
    takeArguments(argv);
    FILE *file = openScript(e_filenamebuf);
    if (!file) {
        plainError("cannot open file '%s' ", e_filenamebuf);
        return -1;
    }
    beginRun();
    int result = runScriptFile(file, e_filenamebuf, false);
    waitIfRestricted();
    return hostResult(result);
}

int Zy_RunScriptM_kernel(void *, char **argv) {
    return runRepeatedly(RUN_SCRIPT_M, [&] { return Zy_RunScript_kernel(nullptr, argv); });
}

int Zy_ExecScript_kernel(void *, char *command) {
    if (refused(EXEC_SCRIPT))
        return -1;
    scriptMode = SCRIPT_EXECUTED;
    beginRun();
    int result = execParsedScript(command);
    waitIfRestricted();
    return hostResult(result);
}

int Zy_ExecScriptM_kernel(void *, char *command) {
    return runRepeatedly(EXEC_SCRIPT_M, [&] { return Zy_ExecScript_kernel(nullptr, command); });
}

namespace {

// Parses the script argv[0]; warnings print from that level on.
int parseOnly(char **argv, int warningLevel, bool initialisers) {
    takeArguments(argv);
    FILE *file = openScript(e_filenamebuf);
    if (!file)
        return -1;
    int savedLevel = e_lang->warningLevel;
    e_lang->warningLevel = warningLevel;
    e_lang->runInitialisers = initialisers;
    int result = parseScriptFile(file, e_filenamebuf);
    e_lang->runInitialisers = 1;
    e_lang->warningLevel = savedLevel;
    errorFlag = 0;
    return result;
}

}  // namespace

int Zy_ParseScript_kernel(void *, char **argv) { return parseOnly(argv, 3, true); }

int Zy_ParseScriptNoInit_kernel(void *, char **argv) { return parseOnly(argv, 0, false); }

int Zy_Reset_kernel(void *) {
    runAtExit();
    scriptMode = SCRIPT_IDLE;
    return 0;
}

int Zy_Abort_kernel(void *) {
    if (executing)
        abortRequest = 1;
    return 0;
}
