// The directives of the token stream, and the expressions on their lines.

#include <cstring>
#include <string_view>

#include "expr/evaluator.h"
#include "expr/nodes.h"
#include "expr/parser.h"
#include "expr/scope.h"
#include "expr/thread.h"
#include "front/fileNames.h"
#include "front/lexerParts.h"
#include "front/macros.h"
#include "front/preprocessor.h"
#include "front/preprocessorParts.h"
#include "instance/report.h"

namespace zy {

namespace {

constexpr const char *directiveWords[] = {"define", "undef", "include", "if",    "ifdef",
                                          "ifndef", "else",  "elif",    "endif", "pragma",
                                          "line",   "error", "defined"};

// ---- The first line of a script ---------------------------------------------------------------

// Behind `#!`: whether the interpreter is named, and in which form.
Directive scriptLine() {
    skipBlanks(linePos, lineBuffer);
    std::string_view rest(lineBuffer + linePos);
    std::string_view word = rest.substr(0, rest.find_first_of(" \t\r\n"));
    rest.remove_prefix(word.size());
    size_t folder = word.rfind(word.find('/') != word.npos ? '/' : '\\');
    if (folder != word.npos)
        word.remove_prefix(folder + 1);
    if (word == "zy" || word == "zy.exe")
        return rest.find("-S") != rest.npos ? DIR_RESTRICTED_SCRIPT : DIR_SCRIPT;
    if (word == "zys")
        return DIR_RESTRICTED_SCRIPT;
    if (word != "env")
        return DIR_NONE;
    std::string_view program = rest.substr(rest.rfind('/') + 1);
    return program.find("zy") != program.npos ? DIR_SCRIPT : DIR_NONE;
}

// The line is for the shell that started the script, if it is the first one.
void skipScriptLine(const char *complaint, bool restrict) {
    if (currentLine != 1) {
        parseError("%s", complaint);
        return;
    }
    linePos = lineLength;
    if (restrict)
        e_lang->restricted = 1;
}

// ---- #line, #error ----------------------------------------------------------------------------

void warnOfRest() {
    if (warningsAt(1))
        plainWarning("string literal expected after #line <number>");
    parseWarning("tokens ignored at end of directive #line");
}

// Reads the name of the file, if one stands there.
void readLineName() {
    skipLineSpace();
    if (lineBuffer[linePos] == '"') {
        nextToken();
        if (tokenClass == TK_CONSTANT && tokenValue.constant->type == DT_STRING)
            e_lang->lineFileName = internFileName(tokenValue.constant->payload.text);
        dropToken();
        skipLineSpace();
    } else if (!atLineEnd()) {
        warnOfRest();
    }
}

// The line behind the directive gets the number.
void lineDirective() {
    DirectiveLine line(true);
    nextToken();
    if (tokenClass != TK_CONSTANT || tokenValue.constant->type != DT_INT) {
        dropToken();
        parseError("not a positive integer constant following #line ");
        return;
    }
    int number = tokenValue.constant->payload.i;
    dropToken();
    DirectiveLine name(false);
    readLineName();
    e_lang->lineOffset =
        static_cast<int>(static_cast<unsigned>(number) - 1U - static_cast<unsigned>(currentLine));
}

void errorDirective() {
    DirectiveLine line(false);
    skipBlanks(linePos, lineBuffer);
    std::string text;
    while (!atLineEnd()) {
        if (skipComment())
            text += ' ';
        else if (!skipContinuation())
            text += lineBuffer[linePos++];
    }
    text.erase(text.find_last_not_of(" \t\r") + 1);
    parseError("#error: %s", text.c_str());
}

// ---- Words ------------------------------------------------------------------------------------

void includeHeader() {
    if (commandMode) {
        plainError("cannot use #include in command mode");
        endOfInput = true;
        errorFlag = 1;
    } else {
        includeFile(INCLUDE_HEADER);
    }
}

// True: what stands behind the directive on its line, or in the file that it named, is text.
bool runWord(Directive word) {
    switch (word) {
        case DIR_DEFINE: defineDirective(); break;
        case DIR_UNDEF: undefDirective(); break;
        case DIR_INCLUDE: includeHeader(); return true;
        case DIR_PRAGMA: runPragma(); return true;
        case DIR_LINE: lineDirective(); break;
        case DIR_ERROR: errorDirective(); break;
        case DIR_SCRIPT: skipScriptLine("#!/bin/zy not at the first line", false); break;
        case DIR_RESTRICTED_SCRIPT: skipScriptLine("#!/bin/zys not at the first line", true); break;
        default: parseError("invalid directive");
    }
    return false;
}

Directive readDirectiveWord() {
    DirectiveLine line(true);
    Directive word = directiveNumber();
    dropToken();
    return word;
}

}  // namespace

Directive directiveNumber() {
    nextToken();
    const char *name = tokenName();
    if (!name) {
        bool isBang = tokenClass == TK_KEYWORD && strcmp(currentKeyword.name, "!") == 0;
        return isBang ? scriptLine() : DIR_NONE;
    }
    int number = 1;
    for (const char *word : directiveWords) {
        if (strcmp(name, word) == 0)
            return static_cast<Directive>(number);
        number++;
    }
    return DIR_NONE;
}

void runDirective() {
    if (linePos == 0 || lineBuffer[linePos - 1] != '#') {
        includeFile(INCLUDE_DOT);
        return;
    }
    skipLineSpace();
    if (atLineEnd() || runWord(readDirectiveWord()))
        return;
    DirectiveLine line(false);
    skipRestOfLine();
}

// ---- Expressions ------------------------------------------------------------------------------

ExprNode *parseLineExpression() {
    DirectiveLine line(true);
    ExprNode *tree = parseSeparateExpression();
    nextToken();  // the one that ended the expression
    bool ended = tokenClass == TK_CHAR && (tokenValue.character == ';' || endOfInput);
    dropToken();
    pushedBack = false;
    if (tree && ended && !errorFlag)
        return tree;
    errorFlag = 1;
    deleteNode(tree);
    return nullptr;
}

Value *runParsed(ExprNode *tree) {
    unsigned char status = runStatus, running = executing;
    const Value *below = currentContext->stack;
    runStatus = RUN_CLEAN;
    if (ExprNode *chain = compileChain(tree, nullptr, true))
        runNested(chain);
    executing = running;
    Value *value = currentContext->stack != below ? popValue() : nullptr;
    if (runStatus != RUN_ERROR) {
        runStatus = status;
        return value;
    }
    if (value)
        deleteValue(value);
    return nullptr;
}

std::string parseLineText() {
    ExprNode *tree = parseLineExpression();
    Value *value = tree ? runParsed(tree) : nullptr;
    std::string text;
    if (value && isStringLike(static_cast<int>(value->type)) && value->payload.text)
        text = value->payload.text;
    if (value)
        deleteValue(value);
    deleteNode(tree);
    return text;
}

}  // namespace zy
