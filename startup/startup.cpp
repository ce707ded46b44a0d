#include "startup/startup.h"

#include <cstdio>

#include "extern/include/embedzy.h"
#include "front/lexerState.h"
#include "front/tokens.h"

namespace zy {

void readStartupFile(const char *) {}

void releaseStartup() { resetLexerState(); }

}  // namespace zy

using namespace zy;

void initConstSysVars() {
    createLangState();
    initKeywords();
}

int initExecution() {
    errorFlag = 0;
    snprintf(homeFolder, SOURCE_LINE_MAX, "%s", e_lang->zyhome ? e_lang->zyhome : "");
    return 0;
}

void copyArgcArgv(int, char **) {}
void nullPrompt() {}
