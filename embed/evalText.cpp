#include "embed/evalText.h"

#include <cstring>
#include <string>

#include "decl/declState.h"
#include "decl/funcInfo.h"
#include "embed/contextKeeper.h"
#include "expr/calls.h"
#include "expr/evaluator.h"
#include "expr/nodes.h"
#include "expr/parser.h"
#include "expr/thread.h"
#include "front/fileNames.h"
#include "front/sourceKeeper.h"
#include "instance/report.h"
#include "platform/stack.h"
#include "stmt/execute.h"
#include "stmt/parser.h"
#include "stmt/resolve.h"
#include "stmt/stmtNode.h"

namespace zy {

namespace {

void enterLine(const char *text, size_t length) {
    memcpy(lineBuffer, text, length);
    lineBuffer[length] = '\0';
    lineLength = static_cast<int16_t>(length);
    linePos = 0;
    pushedBack = endOfInput = endOfFile = false;
    fileMode = stringMode = false;
    errorFlag = 0;
}

// The parser has read the whole text, which may end in a line feed.
bool atTextEnd() {
    bool isEnd = tokenClass == TK_CHAR && (tokenValue.character == '\n' || !tokenValue.character);
    return endOfInput || (isEnd && !lineBuffer[linePos]);
}

// Functions that a refused text named aren't missing: nothing calls them.
void forgetUses() {
    TypeInfo *symbol = globalBlock ? globalBlock->symbols() : nullptr;
    for (; symbol; symbol = symbol->next)
        if (symbol->kind == KIND_FUNCTION && symbol->functionLink && !symbol->functionLink->body)
            symbol->used = 0;
}

}  // namespace

ExprNode *parseText(const char *text) {
    size_t length = strlen(text);
    if (length >= SOURCE_LINE_MAX) {
        parseError("source code line exceeded the maximum length of %d", SOURCE_LINE_MAX);
        return nullptr;
    }
    enterLine(text, length);
    ExprNode *tree = parseExpression(true);
    if (tree && !errorFlag && atTextEnd()) {
        pushedBack = false;
        return tree;
    }
    deleteNode(tree);
    if (pushedBack && tokenClass == TK_CONSTANT)
        deleteValue(takeConstant());  // left to be read, it belongs to nobody else
    pushedBack = false;
    forgetUses();
    return nullptr;
}

namespace {

// Runs the tree in the current context; its value is on the stack. 0 or -1.
int runTree(ExprNode *tree) {
    ExprNode *chain = compileChain(tree, nullptr, true);
    runStatus = RUN_CLEAN;
    currentContext->statement = nullptr;
    currentContext->phase = 0;
    currentContext->chain = chain;
    runStatements(false);
    int result = runStatus == RUN_ERROR ? -1 : 0;
    runStatus = RUN_CLEAN;
    return result;
}

// Functions that the text calls and that have a prototype alone: their files are parsed now.
bool findFunctions() {
    parseOk = 1;
    if (globalBlock && resolveFunctions(globalBlock->operandC.symbols, true))
        parseProgram(true);
    bool isComplete = !errorFlag && parseOk;
    parseOk = 1;
    return isComplete;
}

int refuseText(int caller) {
    pushValue(newZeroValue(DT_INT));
    if (caller == TEXT_OF_SCRIPT) {
        printRunErrorPosition();
        noteRunError();
    }
    return -1;
}

}  // namespace

namespace {

int parseAndRun(const char *text, int caller) {
    SourceKeeper source;
    ContextKeeper context;
    ExprNode *tree = parseText(text);
    if (!tree)
        return refuseText(caller);
    bool isComplete = findFunctions();
    int result = isComplete ? runTree(tree) : -1;
    if (!isComplete)
        pushValue(newZeroValue(DT_INT));
    errorFlag = 0;
    deleteNode(tree);
    return result;
}

}  // namespace

int evalText(const char *text, int caller) {
    if (platform::stackIsLow()) {
        plainError("texts are evaluated within each other too deeply");
        return refuseText(caller);
    }
    bool hadErrors = runStatus == RUN_ERROR;
    int result = parseAndRun(text, caller);
    if (hadErrors)
        noteRunError();  // of the run around it
    return result;
}

int declareText(const char *declaration, const char *tooLong) {
    constexpr char prefix[] = "__declspec(global) ";
    constexpr size_t longest = SOURCE_LINE_MAX - 1 - sizeof prefix;
    if (strlen(declaration) > longest) {
        plainError(tooLong, SOURCE_LINE_MAX);
        return -1;
    }
    constexpr size_t shown = 70;
    std::string text = prefix + std::string(declaration);
    std::string name = "@string: " + std::string(declaration, strnlen(declaration, shown));
    SourceKeeper source;
    ContextKeeper context;
    enterLine(text.c_str(), text.size());
    enterSource(nullptr, internFileName(name.c_str()));
    runStatus = RUN_CLEAN;
    parseOk = 1;
    declaresGlobals = true;
    parseProgram(true);
    declaresGlobals = false;
    bool failed = errorFlag || !parseOk;
    errorFlag = 0;
    parseOk = 1;
    return failed ? -1 : 0;
}

}  // namespace zy
