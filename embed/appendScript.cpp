// More text for the running program: parsed behind its file-level statements, and run if asked.

#include <cstring>
#include <string>

#include "decl/functionFiles.h"
#include "embed/contextKeeper.h"
#include "embed/kernel.h"
#include "embed/scriptDriver.h"
#include "expr/context.h"
#include "front/names.h"
#include "front/sourceKeeper.h"
#include "instance/report.h"
#include "platform/files.h"
#include "stmt/execute.h"
#include "stmt/parser.h"
#include "stmt/program.h"

namespace zy {

namespace {

constexpr size_t SHORT_CODE_MAX = 5119;  // longer code doesn't fit the line buffer
constexpr size_t SHOWN_CODE_MAX = 70;    // of the code in the name that messages show

// A text goes into the line buffer whole.
void enterText(const char *code, size_t length, const char *name) {
    memcpy(lineBuffer, code, length + 1);
    lineLength = static_cast<int16_t>(length);
    linePos = 0;
    enterSource(nullptr, name);
}

// The last file-level statement, NULL if there is none.
StmtNode *lastStatement() {
    StmtNode *last = nullptr;
    for (StmtNode *statement = globalBlock->operandA.statement; statement->kind != STMT_END;
         statement = statement->next)
        last = statement;
    return last;
}

// 0 or -1; the parser's flags are clean afterwards.
int parseMore() {
    errorFlag = 0;
    parseOk = 1;
    parseProgram(false);
    bool failed = errorFlag || !parseOk;
    errorFlag = 0;
    parseOk = 1;
    return failed ? -1 : 0;
}

int runFrom(StmtNode *statement) {
    currentContext->statement = statement;
    currentContext->chain = nullptr;
    currentContext->phase = 0;
    e_lang->abortedRun = 0;
    abortRequest = 0;
    runStatus = RUN_CLEAN;
    runStatements(true);
    int result = runStatus == RUN_ERROR ? -1 : 0;
    runStatus = RUN_CLEAN;
    return result == 0 && e_lang->abortedRun ? 1 : result;
}

// Parses the source that was entered, and runs it.
int append(bool run) {
    int level = e_lang->warningLevel;
    runStatus = RUN_CLEAN;
    if (!run)
        e_lang->warningLevel = 3;
    if (sourceFiles[0])
        readSourceLine();
    StmtNode *last = lastStatement();
    int result = parseMore();
    e_lang->warningLevel = level;
    if (run && result == 0)
        result = runFrom(last ? last->next : globalBlock->operandA.statement);
    return result;
}

int appendFile(const char *path, bool run) {
    if (!path)
        return -1;
    FILE *file = openScript(path);
    if (!file) {
        plainError("cannot open file '%s'", path);
        return -1;
    }
    SourceKeeper source;
    ContextKeeper context;
    enterSource(file, internFileName(path));
    return append(run);
}

// ---- Code as a text -----------------------------------------------------------------------------

std::string temporaryFolder() {
    for (const char *name : {"TMP", "TEMP"})
        if (const char *folder = e_lang->getenvFn(name); folder && *folder)
            return folder;
    for (const char *const *folder = platform::temporaryFolders; *folder; folder++)
        if (platform::isWritable(*folder))
            return *folder;
    return "";
}

int appendLongCode(const char *code, bool run) {
    std::string folder = temporaryFolder(), path;
    if (folder.empty()) {
        plainError("cannot find a temporary directory");
        return -1;
    }
    if (folder.back() != '/' && folder.back() != '\\')
        folder += platform::separator;
    FILE *file = platform::openTemporaryFile(folder.c_str(), path);
    bool written = file && fputs(code, file) >= 0;
    if (file)
        written = fclose(file) == 0 && written;
    if (!written)
        plainError("cannot open a temporary file '%s'", path.c_str());
    int result = written ? appendFile(path.c_str(), run) : -1;
    platform::removeFile(path.c_str());
    return result;
}

int appendCode(const char *code, bool run) {
    if (!code)
        return -1;
    size_t length = strlen(code);
    if (length >= SHORT_CODE_MAX || strchr(code, '\n'))
        return appendLongCode(code, run);
    std::string name = "@string: " + std::string(code, strnlen(code, SHOWN_CODE_MAX));
    SourceKeeper source;
    ContextKeeper context;
    enterText(code, length, internFileName(name.c_str()));
    return append(run);
}

}  // namespace

bool loadFunctionFile(NameEntry *name, const std::string &path) {
    if (!checkFunctionFile(name, path))
        return false;
    unsigned char status = runStatus;
    hideFileNames();
    bool loaded = appendFile(path.c_str(), false) == 0;
    restoreFileNames();
    runStatus = status;
    errorFlag = !loaded;
    return loaded;
}

}  // namespace zy

int Zy_AppendParseScript_kernel(void *, char *code) { return zy::appendCode(code, false); }
int Zy_AppendParseScriptFile_kernel(void *, char *path) { return zy::appendFile(path, false); }
int Zy_AppendRunScript_kernel(void *, char *code) { return zy::appendCode(code, true); }
int Zy_AppendRunScriptFile_kernel(void *, char *path) { return zy::appendFile(path, true); }
