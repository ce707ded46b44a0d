#include "startup/startup.h"

#include <cstdio>

#include "expr/context.h"
#include "extern/include/embedzy.h"
#include "front/lexerState.h"
#include "front/preprocessor.h"
#include "front/tokens.h"
#include "instance/report.h"
#include "startup/builtins.h"
#include "startup/home.h"
#include "startup/options.h"
#include "startup/paths.h"
#include "startup/startupState.h"
#include "startup/systemVariables.h"
#include "startup/userData.h"

namespace zy {

namespace {

constexpr int PREALLOCATED_VALUES = 202;

// Outside every function __func__ is empty. It never owns its text, and a script has no business
// writing to it.
void clearFunctionName() {
    if (VarCell *name = systemCell(SLOT_FUNC))
        name->data.text = const_cast<char *>("");
}

}  // namespace

void releaseStartup() {
    resetLexerState();
    releaseBuiltins();
    for (SearchTable &table : searchTables)
        releaseSearchTable(table);
    releaseUserData();
    homeFolder[0] = '\0';
    if (argumentRecord)
        killEntry(argumentRecord);
    argumentRecord = nullptr;
    scriptArgc = 0;
    scriptArgv = nullptr;
}

}  // namespace zy

using namespace zy;

void initConstSysVars() {
    createLangState();
    findUserData();
    initKeywords();
    createBuiltinSymbols();
}

int initExecution() {
    redirectErrors();
    findHome();
    publishUserHome();
    publishVersion();
    publishManual();
    refreshEnvironment();
    resetContexts();
    preallocateValues(PREALLOCATED_VALUES);
    createSystemVariables();
    rememberStartFolder(workingFolder().c_str());
    storeArguments();
    clearFunctionName();
    return errorFlag ? -1 : 0;
}
