#include "embed/evalText.h"

#include <cstring>
#include <string>

#include "expr/calls.h"
#include "expr/evaluator.h"
#include "expr/nodes.h"
#include "expr/parser.h"
#include "expr/thread.h"
#include "front/lexer.h"
#include "instance/report.h"
#include "stmt/execute.h"
#include "stmt/parser.h"
#include "stmt/program.h"
#include "stmt/resolve.h"

namespace zy {

namespace {

// Where the parser and the running context stand, put back at the end.
class SavedPlace {
public:
    SavedPlace() { memcpy(line, lineBuffer, static_cast<size_t>(length) + 1); }
    SavedPlace(const SavedPlace &) = delete;
    SavedPlace &operator=(const SavedPlace &) = delete;
    ~SavedPlace() {
        memcpy(lineBuffer, line, static_cast<size_t>(length) + 1);
        lineLength = length;
        linePos = position;
        fileMode = inFile;
        stringMode = inString;
        endOfInput = inputEnded;
        endOfFile = fileEnded;
        pushedBack = heldBack;
        currentLine = lineNumber;
        sourceDepth = depth;
        if (depth >= 0)
            sourceNames[depth] = name;
        context->statement = statement;
        context->chain = chain;
        context->phase = phase;
        executing = running;
    }

private:
    int16_t length = lineLength, position = linePos, depth = sourceDepth;
    bool inFile = fileMode, inString = stringMode, inputEnded = endOfInput, fileEnded = endOfFile,
         heldBack = pushedBack;
    int32_t lineNumber = currentLine;
    const char *name = sourceDepth >= 0 ? sourceNames[sourceDepth] : nullptr;
    ExecContext *context = currentContext;
    StmtNode *statement = context->statement;
    ExprNode *chain = context->chain;
    uint16_t phase = context->phase;
    unsigned char running = executing;
    char line[SOURCE_LINE_MAX];
};

void enterLine(const char *text, size_t length) {
    memcpy(lineBuffer, text, length);
    lineBuffer[length] = '\0';
    lineLength = static_cast<int16_t>(length);
    linePos = 0;
    pushedBack = endOfInput = endOfFile = false;
    fileMode = stringMode = false;
    errorFlag = 0;
}

// The parser has read the whole line.
bool atLineEnd() {
    if (pushedBack)
        pushedBack = false;
    bool isEnd = tokenClass == TK_CHAR && (tokenValue.character == '\n' || !tokenValue.character);
    return endOfInput || isEnd || linePos >= lineLength;
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
    if (tree && !errorFlag && atLineEnd() && endOfInput)
        return tree;
    deleteNode(tree);
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

int refuseText(int caller) {
    pushValue(newZeroValue(DT_INT));
    if (caller == TEXT_OF_SCRIPT) {
        printRunErrorPosition();
        noteRunError();
    }
    return -1;
}

}  // namespace

int evalText(const char *text, int caller) {
    SavedPlace place;
    ExprNode *tree = parseText(text);
    if (!tree)
        return refuseText(caller);
    if (globalBlock)
        resolveFunctions(globalBlock->operandC.symbols, true);
    int result = errorFlag ? -1 : runTree(tree);
    if (errorFlag)
        pushValue(newZeroValue(DT_INT));
    errorFlag = 0;
    deleteNode(tree);
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
    SavedPlace place;
    enterLine(text.c_str(), text.size());
    fileMode = true;
    sourceDepth = 0;
    sourceFiles[0] = nullptr;
    sourceNames[0] = internFileName(name.c_str());
    currentLine = 1;
    runStatus = RUN_CLEAN;
    parseOk = 1;
    parseProgram(true);
    bool failed = errorFlag || !parseOk;
    errorFlag = 0;
    parseOk = 1;
    return failed ? -1 : 0;
}

}  // namespace zy
