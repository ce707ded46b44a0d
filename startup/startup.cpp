#include "startup/startup.h"

#include <cstdio>

#include "embed/environment.h"
#include "extern/include/embedzy.h"
#include "front/lexerState.h"
#include "front/tokens.h"

namespace zy {

char homeFolder[SOURCE_LINE_MAX];

void readStartupFile(const char *) {}

void releaseStartup() { resetLexerState(); }

}  // namespace zy

using namespace zy;

void initConstSysVars() {
    createLangState();
    e_lang->putenvFn = envPut;
    e_lang->getenvFn = envGet;
    initKeywords();
}

int initExecution() {
    errorFlag = 0;
    snprintf(homeFolder, sizeof homeFolder, "%s", e_lang->zyhome ? e_lang->zyhome : "");
    return 0;
}

void copyArgcArgv(int, char **) {}
void nullPrompt() {}
