// #pragma: what a script tells the parser between its declarations. The forms that change paths and
// name packages are in front/pathPragmas.cpp.

#include <cstring>

#include "decl/typeInfo.h"
#include "expr/constants.h"
#include "expr/nodes.h"
#include "expr/scope.h"
#include "front/keywordStatements.h"
#include "front/lexerParts.h"
#include "front/pathPragmas.h"
#include "front/pragmas.h"
#include "front/preprocessorParts.h"
#include "front/preprocessorState.h"
#include "front/vocabularySwitches.h"
#include "instance/report.h"

namespace zy {

namespace {

void pragmaExec() {
    ExprNode *tree = parseLineExpression();
    if (!tree)
        parseError("invalid expression for #pragma exec expr");
    else if (Value *value = runParsed(tree))
        deleteValue(value);
    deleteNode(tree);
}

// ---- Importing --------------------------------------------------------------------------------

// The static names of the importing file and those of the imported one are hidden from each other.
void importFile(IncludeMode mode) {
    int16_t depth = sourceDepth;
    includeFile(mode);
    if (sourceDepth == 1 && depth == 0) {
        hideFileNames();
        importOpen = true;
    }
}

// ---- Structure packing ------------------------------------------------------------------------

void refusePack() {
    dropToken();
    parseError(
        "the argument of pack()  in #pragma pack() cannot be converted to an integer constant");
}

// The current token as the alignment; false if it is none.
bool takeAlignment() {
    int number = 0;
    if (tokenClass == TK_CONSTANT) {
        bool valid = constantToInt(tokenValue.constant, number);
        dropToken();
        if (valid)
            e_lang->packAlignment = number;
        return valid;
    }
    if (tokenClass != TK_IDENTIFIER)
        return false;
    const Symbol *symbol = lookupSymbolParse(tokenValue.name, nullptr, nullptr);
    if (!symbol || symbol->dataType != DT_CONSTANT || !constantToInt(symbol->constant, number))
        return false;
    e_lang->packAlignment = number;
    return true;
}

bool isWord(const char *word) {
    const char *name = tokenName();
    return name && strcmp(name, word) == 0;
}

}  // namespace

// There is no stack: push sets, pop clears.
void pragmaPack(bool withParenthesis) {
    if (withParenthesis && !expectChar('(', true))
        return;
    nextToken();
    if (isWord("push")) {
        if (expectChar(',', true))
            pragmaPack(false);
    } else if (isWord("pop")) {
        e_lang->packAlignment = 0;
    } else if (isChar(')') && withParenthesis) {
        e_lang->packAlignment = 0;
        return;
    } else if (!takeAlignment()) {
        refusePack();
        return;
    }
    if (withParenthesis && !errorFlag)
        expectChar(')', true);
}

// ---- Variables --------------------------------------------------------------------------------

namespace {

// The name is free from now on. What has been parsed may still point at the variable.
void forgetVariable(NameEntry *name) {
    Symbol *symbol = name->symbol;
    name->symbol = nullptr;
    if (symbol->dataType == DT_CONSTANT && symbol->constant) {
        deleteValue(symbol->constant);
        symbol->constant = nullptr;
    }
}

void refuseVariable(bool withParenthesis) {
    dropToken();
    if (withParenthesis)
        parseError("argument of remvar() is not a defined variable ");
    else
        parseError("argument of remvar is not a defined variable ");
}

void warnOfVariable(const char *name, bool withParenthesis) {
    if (withParenthesis)
        parseWarning("variable '%s' in remvar() is not a global or external variable ", name);
    else
        parseWarning("variable '%s' in remvar is not a global or external variable ", name);
    noteRunWarning();
}

}  // namespace

void pragmaRemvar(bool withParenthesis) {
    if (withParenthesis && !expectChar('(', true))
        return;
    nextToken();
    if (tokenClass != TK_IDENTIFIER) {
        refuseVariable(withParenthesis);
        return;
    }
    NameEntry *name = tokenValue.name;
    if (withParenthesis && !expectChar(')', true))
        return;
    if (name->symbol)
        forgetVariable(name);
    else
        warnOfVariable(name->text, withParenthesis);
}

// ---- Words ------------------------------------------------------------------------------------

namespace {

struct PragmaRow {
    const char *word;
    void (*run)();
};

constexpr PragmaRow pragmaRows[] = {
    {"exec", pragmaExec},
    {"package", pragmaPackage},
    {"_fpath", pragmaFpath},
    {"_ipath", pragmaIpath},
    {"_lpath", pragmaLpath},
    {"_path", pragmaPath},
    {"pack", [] { pragmaPack(true); }},
    {"remvar", [] { pragmaRemvar(true); }},
    {"remkey", [] { pragmaRemkey(true); }},
    {"casesen", pragmaCasesen},
    {"floatconst", pragmaFloatconst},
};

// Other words are for other systems.
void runPragmaWord(const std::string &word) {
    DirectiveLine line(true);
    for (const PragmaRow &row : pragmaRows)
        if (word == row.word)
            row.run();
    if (pushedBack)
        dropToken();
    pushedBack = false;
    skipRestOfLine();
}

std::string readPragmaWord() {
    DirectiveLine line(true);
    skipLineSpace();
    if (!(classOf(lineBuffer[linePos]) & CC_LETTER))
        return "";
    nextToken();
    const char *name = tokenName();
    std::string word = name ? name : "";
    dropToken();
    return word;
}

}  // namespace

void runPragma() {
    std::string word = readPragmaWord();
    if (word == "importf")
        importFile(INCLUDE_FUNCTION);
    else if (word == "import")
        importFile(INCLUDE_COMMAND);
    else
        runPragmaWord(word);
}

}  // namespace zy
