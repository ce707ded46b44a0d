// One run: release of the previous program, parse, file-level statements, main.

#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <string>

#include "decl/funcInfo.h"
#include "embed/kernel.h"
#include "embed/newHandler.h"
#include "embed/scriptDriver.h"
#include "expr/context.h"
#include "expr/evaluator.h"
#include "expr/nodes.h"
#include "expr/operators.h"
#include "expr/readers.h"
#include "expr/thread.h"
#include "front/lexer.h"
#include "front/names.h"
#include "front/preprocessor.h"
#include "instance/report.h"
#include "platform/files.h"
#include "startup/builtins.h"
#include "startup/startup.h"
#include "startup/startupState.h"
#include "stmt/calls.h"
#include "stmt/execute.h"
#include "stmt/objectLife.h"
#include "stmt/parser.h"
#include "stmt/program.h"

namespace zy {

FILE *openScript(const char *path) { return platform::openForReading(path); }

// ---- Parsing ------------------------------------------------------------------------------------

void freshProgram() {
    releaseProgram();
    newHandler = nullptr;
    newProgram();
    resetRunState();
    refreshEnvironment();  // what the last program set may have moved the list
}

namespace {

void openSource(FILE *file, const char *path) {
    fileMode = true;
    stringMode = false;
    sourceDepth = 0;
    sourceFiles[0] = file;
    sourceNames[0] = internFileName(path);
    currentLine = 0;
    endOfFile = endOfInput = pushedBack = false;
}

void closeSource() {
    leaveIncludedFiles();
    if (sourceFiles[0])
        fclose(sourceFiles[0]);
    sourceFiles[0] = nullptr;
    fileMode = false;
    sourceDepth = 0;
    currentLine = 0;
    endOfFile = pushedBack = false;
}

// The first token, which the parser finds again. A `{` is dropped.
void readFirstToken() {
    readSourceLine();
    nextToken();
    bool isBrace = tokenClass == TK_KEYWORD && currentKeyword.keywordClass == KC_STATEMENT &&
                   currentKeyword.code == STMT_BLOCK;
    pushedBack = !isBrace;
}

void applyLocale() {
    if (e_lang->setlocale && findVarCell(e_lang->setlocale)->data.i)
        std::setlocale(LC_ALL, "");
}

// False: the program must not run.
bool parseFile(FILE *file, const char *path) {
    parseOk = 1;
    errorFlag = 0;
    runStatus = RUN_CLEAN;
    freshProgram();
    openSource(file, path);
    if (e_lang->parseOnly)
        e_lang->warningLevel = 3;
    readFirstToken();
    parseProgram(false);
    closeSource();
    if (!parseOk)
        errorFlag = 1;  // for the start of an instance to see, too
    return !errorFlag && parseOk && runStatus != RUN_ERROR;
}

}  // namespace

int parseScriptFile(FILE *file, const char *path) { return parseFile(file, path) ? 0 : -1; }

// ---- main ---------------------------------------------------------------------------------------

namespace {

constexpr char MAIN_PREFIX[] = "___";

bool isMainName(const NameEntry *name) {
    return name && strncmp(name->text, MAIN_PREFIX, sizeof MAIN_PREFIX - 1) == 0;
}

// The main of the script with that base name, or else the first one of the program.
TypeInfo *findMain(const std::string &baseName) {
    NameEntry *name = lookupName((MAIN_PREFIX + baseName).c_str());
    if (name && name->symbol)
        return name->symbol;
    for (TypeInfo *symbol = globalBlock->operandC.symbols; symbol; symbol = symbol->next)
        if (isMainName(symbol->name))
            return symbol;
    return nullptr;
}

std::string baseNameOf(const char *path) {
    path += strspn(path, " ");
    const char *separator = strrchr(path, platform::separator);
    return separator ? separator + 1 : path;
}

ExprNode *newPointerNode(int type, void *pointer) {
    Value *node = newZeroValue(type);
    node->payload.p = pointer;
    return node;
}

// A copy of the pointer array, for main to change.
char **copyArguments(int count, char **arguments) {
    auto **copy = static_cast<char **>(allocOrFail(sizeof(char *) * (count + 1)));
    for (int i = 0; copy && i <= count; i++)
        copy[i] = i < count ? arguments[i] : nullptr;
    return copy;
}

int parameterCount(const FuncInfo *function) {
    int count = 0;
    for (const TypeInfo *formal = function->parameters; formal; formal = formal->next)
        if (formal->dataType != DT_VOID || formal->kind >= KIND_P_FUNCTION)
            count++;
    return count;
}

// The text of the command line behind its first word.
std::string argumentText() {
    std::string text;
    for (int i = 1; i < scriptArgc; i++)
        text += (i > 1 ? " " : "") + std::string(scriptArgv[i]);
    return text;
}

ExprNode *mainArguments(int count, char **arguments, const std::string &text) {
    ExprNode *list = nullptr;
    if (count == 4) {  // the form of a windows program
        constexpr int showDefault = 10;
        appendListCell(list, newPointerNode(DT_P_VOID, nullptr));
        appendListCell(list, newPointerNode(DT_P_VOID, nullptr));
        appendListCell(list, newPointerNode(DT_P_CHAR, const_cast<char *>(text.c_str())));
        appendListCell(list, newIntNode(showDefault));
        return list;
    }
    if (count > 0)
        appendListCell(list, newIntNode(scriptArgc));
    if (count > 1)
        appendListCell(list, newPointerNode(DT_PP_CHAR, arguments));
    if (count > 2)
        appendListCell(list, newPointerNode(DT_PP_CHAR, environmentCopy));
    return list;
}

// The int that main, or _exit in it, has left on the stack.
int takeResult() {
    if (!currentContext->stack)
        return 0;
    Value *value = popValue();
    int result = value->type == DT_VOID ? 0 : static_cast<int>(readSigned64(value));
    deleteValue(value);
    return e_lang->abortedRun ? 0 : result;
}

int callMain(const std::string &baseName) {
    TypeInfo *function = findMain(baseName);
    if (!function || !function->functionLink)
        return 0;
    char **arguments = copyArguments(scriptArgc, scriptArgv);
    std::string text = argumentText();
    ExprNode *list = mainArguments(parameterCount(function->functionLink), arguments, text);
    ExprNode *call = newOperatorNode(OP_CALL, newSymbolNode(function), list);
    currentContext->statement = nullptr;
    currentContext->phase = 0;
    currentContext->chain = compileChain(call, nullptr, false);
    runStatements(true);
    int result = takeResult();
    deleteNode(call);
    free(arguments);
    return result;
}

void armCallback(bool on) {
    if (e_lang->embedded && e_lang->callbackFn)
        e_lang->callbackActive = on;
}

int runProgram(const char *path) {
    std::string baseName = baseNameOf(path);
    errno = 0;
    runEnded = false;
    armCallback(!findMain(baseName));
    currentContext->statement = globalBlock->operandA.statement;
    currentContext->phase = 0;
    currentContext->chain = nullptr;
    runStatements(true);
    int result = 0;
    if (runEnded || e_lang->abortedRun) {
        result = takeResult();
    } else {
        armCallback(true);
        result = callMain(baseName);
    }
    clearValueStack();
    destroyStaticObjects();
    executing = 0;
    if (!e_lang->embedded || e_lang->multiRun)
        runAtExit();
    cleanup();
    return runStatus == RUN_ERROR ? -1 : result;
}

}  // namespace

int runScriptFile(FILE *file, const char *path, bool) {
    applyLocale();
    if (!parseFile(file, path)) {
        plainError("cannot execute command '%s'", path);
        return -1;
    }
    if (e_lang->parseOnly)
        return 0;
    rewindRunState();
    return runProgram(path);
}

int execParsedScript(const char *command) {
    runStatus = RUN_CLEAN;
    const char *blank = command ? strchr(command, ' ') : nullptr;
    if (blank)
        setArgumentsFromText(command);
    std::string path = blank ? std::string(command, blank) : command ? command : "";
    if (!rootStmt)
        return 0;
    rewindRunState();
    return runProgram(path.c_str());
}

}  // namespace zy
