#include "decl/functionFiles.h"

#include <cstdlib>
#include <cstring>

#include "decl/currentToken.h"
#include "decl/declState.h"
#include "decl/declarator.h"
#include "expr/value.h"
#include "front/fileNames.h"
#include "front/names.h"
#include "front/sourceKeeper.h"
#include "instance/report.h"

namespace zy {

// ---- The files of the program -----------------------------------------------------------------

namespace {

FunctionFile *fileNoted(const char *path) {
    FunctionFile *file = functionFiles;
    while (file && strcmp(file->path, path) != 0)
        file = file->next;
    return file;
}

void noteFile(NameEntry *function, const std::string &path, FunctionFile::State state) {
    if (FunctionFile *known = fileNoted(path.c_str())) {
        known->state = state;
        return;
    }
    FunctionFile **end = &functionFiles;
    while (*end)
        end = &(*end)->next;
    *end = new FunctionFile{nullptr, function, internFileName(path.c_str()), state};
}

}  // namespace

void releaseFunctionFiles() {
    while (FunctionFile *file = functionFiles) {
        functionFiles = file->next;
        delete file;
    }
}

// ---- The head of a file -----------------------------------------------------------------------

namespace {

constexpr int DIRECTIVE_WORD = 25;

// Lifts the rules of the restricted shell while code of the system is read.
class TrustedCode {
public:
    TrustedCode() { e_lang->restricted = 0; }
    ~TrustedCode() { e_lang->restricted = restricted; }

private:
    int restricted = e_lang->restricted;
};

// Reads the head of one file, with the running parse kept aside.
class FunctionHead {
public:
    FunctionHead(NameEntry *function, const std::string &file) : name(function), path(file) {
        // The lines of a head are no lines of the program yet.
        replayParse = true;
        directivesIdle = true;
        enterSource(fopen(file.c_str(), "r"), internFileName(file.c_str()));
    }

    ~FunctionHead() { directivesIdle = false; }

    // Up to the name. False after a message.
    bool read();
    // The parameter list, after read(). NULL after a message.
    TypeInfo *declare();

private:
    bool skipDirectives();
    bool isBareMain() const;
    bool startsType() const;
    bool checkName();

    SourceKeeper source;
    TrustedCode trusted;
    NameEntry *name;
    const std::string &path;
    Specifiers specifiers;
    Declarator declarator;
};

bool endsInBackslash() { return lineLength > 0 && lineBuffer[lineLength - 1] == '\\'; }

// Whatever a directive says is done when the file itself is parsed. False at the end of the file.
bool FunctionHead::skipDirectives() {
    nextToken();
    while (isBodyWord(DIRECTIVE_WORD) && !endOfInput) {
        while (endsInBackslash() && !endOfInput)
            readSourceLine();
        linePos = lineLength;
        nextToken();
    }
    return !endOfInput;
}

bool FunctionHead::isBareMain() const {
    return tokenClass == TK_IDENTIFIER && strcmp(tokenValue.name->text, "main") == 0;
}

bool FunctionHead::startsType() const {
    return isKeyword(KC_TYPE, currentKeyword.code) ||
           (tokenClass == TK_IDENTIFIER && typedefNamed(tokenValue.name, nullptr));
}

bool FunctionHead::checkName() {
    if (declarator.name == name)
        return true;
    parseError("the function name should be '%s' instead of  '%s' in file '%s'", name->text,
               declarator.name ? declarator.name->text : "", path.c_str());
    return false;
}

bool FunctionHead::read() {
    bool found = skipDirectives();
    if (found && isBareMain()) {
        specifiers.dataType = declarator.dataType = DT_INT;
        declarator.name = name;
        return true;
    }
    if (!found || !startsType()) {
        if (tokenClass == TK_CONSTANT)
            deleteValue(takeConstant());
        parseError("need a type declarator at the beginning of the function file %s", path.c_str());
        return false;
    }
    if (!parseSpecifiers(specifiers, CONTEXT_PLAIN, FILE_LEVEL, nullptr)) {
        parseError("invalid function definition in function file '%s'", path.c_str());
        return false;
    }
    return parseDeclarator(specifiers, FILE_LEVEL, nullptr, CONTEXT_PLAIN, declarator) &&
           checkName();
}

TypeInfo *FunctionHead::declare() {
    peekNonBlank();
    if (lineBuffer[linePos] != '(') {
        parseError("missing '(' in function file %s", path.c_str());
        return nullptr;
    }
    return declareHead(specifiers, declarator);
}

}  // namespace

bool checkFunctionFile(NameEntry *name, const std::string &path) {
    return FunctionHead(name, path).read();
}

bool declareFromFunctionFile(NameEntry *name, const std::string &path) {
    FunctionHead head(name, path);
    TypeInfo *function = head.read() ? head.declare() : nullptr;
    if (function)
        function->used = 1;
    noteFile(name, path, function ? FunctionFile::HEAD_READ : FunctionFile::REFUSED);
    return function != nullptr;
}

// ---- The file as the next source --------------------------------------------------------------

namespace {

// The static names of one function file are not seen by the script, nor by the next file.
void enterFunctionFile() {
    if (inFunctionFile)
        restoreFileNames();
    hideFileNames();
    inFunctionFile = true;
    if (e_lang->restricted == 1 && !e_lang->restrictionSuspended) {
        showRestrictedKeywords();
        e_lang->restricted = 0;
        e_lang->restrictionSuspended = 1;
    }
}

// Takes the place of the file that has ended.
void replaceTopFile(const char *path) {
    if (sourceDepth < 0)
        sourceDepth = 0;
    if (sourceFiles[sourceDepth])
        fclose(sourceFiles[sourceDepth]);
    sourceFiles[sourceDepth] = fopen(path, "r");
    sourceNames[sourceDepth] = internFileName(path);
    fileMode = true;
    stringMode = false;
    startTopFile();
}

}  // namespace

FunctionFileResult continueWithFunctionFile(const TypeInfo *function) {
    std::string path;
    if (!findFunctionFile(function->name->text, path))
        return FUNCTION_FILE_NONE;
    if (const FunctionFile *known = fileNoted(path.c_str())) {
        if (known->state == FunctionFile::PARSED)
            return FUNCTION_FILE_NONE;
        if (known->state == FunctionFile::REFUSED)
            return FUNCTION_FILE_REFUSED;
    }
    if (errorFlag)
        parseOk = 0;
    errorFlag = 0;
    if (!checkFunctionFile(function->name, path)) {
        noteFile(function->name, path, FunctionFile::REFUSED);
        return FUNCTION_FILE_REFUSED;
    }
    noteFile(function->name, path, FunctionFile::PARSED);
    enterFunctionFile();
    replaceTopFile(path.c_str());
    return FUNCTION_FILE_OPENED;
}

const char *bareMainName() {
    const char *path = sourceDepth >= 0 ? sourceNames[sourceDepth] : nullptr;
    const FunctionFile *file = path ? fileNoted(path) : nullptr;
    return file ? file->function->text : "main";
}

void leaveFunctionFiles() {
    if (!inFunctionFile)
        return;
    inFunctionFile = false;
    restoreFileNames();
    if (e_lang->restrictionSuspended) {
        e_lang->restrictionSuspended = 0;
        e_lang->restricted = 1;
        hideRestrictedKeywords();
    }
}

}  // namespace zy
