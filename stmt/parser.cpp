#include "stmt/parser.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "decl/aggregates.h"
#include "decl/declaration.h"
#include "decl/layout.h"
#include "decl/functionFiles.h"
#include "expr/members.h"
#include "expr/nodes.h"
#include "expr/operators.h"
#include "expr/parser.h"
#include "expr/scope.h"
#include "expr/thread.h"
#include "front/lexer.h"
#include "front/preprocessor.h"
#include "instance/report.h"
#include "stmt/lists.h"
#include "stmt/resolve.h"
#include "stmt/statements.h"

namespace zy {

namespace {

constexpr int SYNTAX_ERROR_LIMIT = 10;

// ---- Recovery -----------------------------------------------------------------------------------

const char *sourceName() {
    return sourceDepth >= 0 && sourceNames[sourceDepth] ? sourceNames[sourceDepth] : "";
}

// The line with the place where the parser stood.
void showSyntaxError() {
    plainError("syntax error before or at line %d in file '%s'", currentLine, sourceName());
    fprintf(stderr, "  ==>: %s\n", lineBuffer);
    fprintf(stderr, "  BUG: %.*s<== ???%s\n", linePos, lineBuffer,
            currentStmt ? "" : " bug may be here");
}

bool startsStatement() {
    if (tokenClass == TK_IDENTIFIER)
        return true;
    if (tokenClass == TK_CHAR)
        return tokenValue.character == ';';
    return tokenClass == TK_KEYWORD && currentKeyword.keywordClass != KC_CLAUSE &&
           currentKeyword.keywordClass != KC_CONSOLE;
}

// A constant that is left to be read belongs to nobody else.
void dropPushedBackToken() {
    if (pushedBack && tokenClass == TK_CONSTANT)
        deleteValue(tokenValue.constant);
    pushedBack = false;
}

// Skips to where a statement may begin again.
void skipToStatement() {
    while (!endOfInput) {
        nextToken();
        if (endOfInput || startsStatement())
            break;
        if (tokenClass == TK_CONSTANT)
            deleteValue(tokenValue.constant);
    }
    if (endOfInput)
        dropPushedBackToken();
    else
        pushedBack = true;
}

// False: the parse gives up.
bool recover() {
    parseOk = 0;
    showSyntaxError();
    dropStatement();
    if (++syntaxErrors >= SYNTAX_ERROR_LIMIT || parseTop + 1 >= PARSE_STACK_SIZE) {
        dropPushedBackToken();
        return false;
    }
    skipToStatement();
    return true;
}

// ---- Statements by their first token ------------------------------------------------------------

bool isTypedefName(const Symbol *symbol) { return symbol && symbol->storage == STORAGE_TYPEDEF; }

// A `:` that ends a label: not the start of ::, nor of a drive's path.
bool labelFollows() {
    peekNonBlank();
    char behind = lineBuffer[linePos + 1];
    return lineBuffer[linePos] == ':' && behind != ':' && behind != '/' && behind != '\\';
}

// main() without a type at file level is an int function.
bool isBareMain(const NameEntry *name) {
    if (parseTop != FILE_LEVEL_TOP || strcmp(name->text, "main") != 0)
        return false;
    peekNonBlank();
    return lineBuffer[linePos] == '(';
}

void insertIntBeforeMain() {
    int nameLength = 4, start = linePos;
    while (start >= 0 && strncmp(lineBuffer + start, "main", static_cast<size_t>(nameLength)) != 0)
        start--;
    if (start < 0) {  // it stood on an earlier line
        start = linePos;
        nameLength = 0;
    }
    std::string head = std::string("int ") + bareMainName();
    int added = static_cast<int>(head.size()) - nameLength;
    if (lineLength + added >= SOURCE_LINE_MAX) {
        errorFlag = 1;
        return;
    }
    char *rest = lineBuffer + start + nameLength;
    memmove(rest + added, rest, strlen(rest) + 1);
    memcpy(lineBuffer + start, head.data(), head.size());
    lineLength = static_cast<int16_t>(lineLength + added);
    linePos = static_cast<int16_t>(start);
    pushedBack = false;
}

void parseUnknownName(NameEntry *name) { parseError("variable '%s' not defined", name->text); }

// The name of a type begins an expression in Class(arguments), an object that nothing keeps, and
// where it leads to a member: one that all objects share, or one of the object whose class's code
// this is. Other members are being defined.
bool startsExpression(const Symbol *symbol) {
    MemberPath path = memberAtPath(symbol);
    if (path.member)
        symbol = path.member;
    if (symbol->dataType == DT_TAG) {
        bool isCall = *path.behind == '(' && path.behind[1] != '*';  // A (*p)[3] is declared
        return symbol->structLink && symbol->structLink->constructor && isCall;
    }
    bool isMember = path.member && symbol->storage != STORAGE_TYPEDEF;
    bool isShared = symbol->storage == STORAGE_STATIC || isEnumerator(symbol);
    return isMember && (isShared || insideClass(path.owner));
}

void parseIdentifier() {
    NameEntry *name = tokenValue.name;
    if (labelFollows()) {
        defineLabel(newStatement(STMT_LABEL), name);
        linePos++;
        return;
    }
    if (isBareMain(name)) {
        insertIntBeforeMain();
        return;
    }
    ClassContext *classRecord = nullptr;
    Symbol *symbol = lookupSymbolParse(name, nullptr, &classRecord);
    if (isTypedefName(symbol)) {
        if (startsExpression(symbol))
            parseExpressionStatement();
        else
            parseDeclarationStatement();
        return;
    }
    peekNonBlank();
    if (!symbol && lineBuffer[linePos] != '(' && !startsStreamForm(name))
        parseUnknownName(name);
    else
        parseExpressionStatement();
}

void parseCharacter() {
    switch (tokenValue.character) {
        case '(': parseExpressionStatement(); break;
        case ';': newStatement(STMT_NULL); break;
        case '\n': break;
        default: parseError("syntax error");
    }
}

// `. file` reads a script as if its text stood here.
bool isDotCommand() {
    char next = lineBuffer[linePos];
    return currentKeyword.code == OP_MEMBER && (next == ' ' || next == '\t' || next == '"');
}

void parseKeyword() {
    switch (currentKeyword.keywordClass) {
        case KC_OPERATOR:
            if (isDotCommand())
                runDirective();
            else
                parseExpressionStatement();
            break;
        case KC_TYPE: parseDeclarationStatement(); break;
        case KC_CLAUSE: parseClause(currentKeyword.code); break;
        case KC_STATEMENT: parseWordStatement(currentKeyword.code); break;
        case KC_CONSOLE: errorFlag = 1; break;
    }
}

void parseStatement() {
    switch (tokenClass) {
        case TK_IDENTIFIER: parseIdentifier(); break;
        case TK_CONSTANT: parseExpressionStatement(); break;
        case TK_CHAR: parseCharacter(); break;
        case TK_KEYWORD: parseKeyword(); break;
    }
}

// A statement that opened a body goes on there; it is complete when the body is.
void finishStatement() {
    if (!currentStmt || cursor() != currentStmt)
        return;
    splicePending(currentStmt);
    closeStatement();
}

// The parser back at file level, whatever is open.
void returnToFileLevel() {
    parseTop = FILE_LEVEL_TOP;
    currentBlock = globalBlock;
    while (cursor()->kind != STMT_END)
        parseStack[parseTop].record = cursor()->next;
}

// True: there is more to parse after all.
bool atEndOfInput() {
    if (parseTop == FILE_LEVEL_TOP) {
        finishLabels(nullptr);
        return resolveFunctions(globalBlock->symbols(), true);
    }
    parseError("missing '}'");
    plainError(
        "maybe missing '}' at the end of program at line %d or there is an extra '{' in "
        "other place in file '%s' ",
        currentLine, sourceName());
    return false;
}

}  // namespace

void parseProgram(bool) {
    syntaxErrors = 0;
    for (;;) {
        currentStmt = nullptr;
        nextToken();
        // Directives and the reader of lines have complained by themselves.
        if (errorFlag)
            parseOk = 0;
        errorFlag = 0;
        if (endOfInput && tokenClass == TK_CHAR && tokenValue.character == '\n') {
            if (atEndOfInput())
                continue;
            break;
        }
        parseStatement();
        if (!errorFlag)
            finishStatement();  // which reads the condition of a do
        if (errorFlag && !recover())
            break;
    }
    returnToFileLevel();
    leaveFunctionFiles();
    deleteNode(pendingCases);
    pendingCases = nullptr;
}

}  // namespace zy
