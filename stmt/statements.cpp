// Statements that hold no others: expressions, declarations, and the words that take arguments.

#include "stmt/statements.h"

#include <cstring>

#include "decl/declaration.h"
#include "expr/direct.h"
#include "expr/guards.h"
#include "expr/nodes.h"
#include "expr/operators.h"
#include "expr/parser.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
#include "front/lexer.h"
#include "front/preprocessor.h"
#include "front/vocabularySwitches.h"
#include "instance/report.h"

namespace zy {

ExprNode *parseTree() {
    ExprNode *tree = parseExpression(false);
    if (!tree)
        errorFlag = 1;
    return tree;
}

void takeArgument(StmtNode *statement, ExprNode *tree, int expected) {
    if (!tree)
        return;
    convertTree(tree, expected);
    statement->operandA.tree = tree;
    statement->chain = compileChain(tree, nullptr, false);
}

void parseExpressionStatement() {
    StmtNode *statement = newStatement(STMT_EXPRESSION);
    pushedBack = true;
    ExprNode *tree = parseTree();
    statement->operandA.tree = tree;
    if (!tree || errorFlag)
        return;
    if (!makeDirectStatement(tree))
        statement->chain = compileChain(tree, nullptr, false);
    expectChar(';', true);
}

namespace {

// A declaration stands in a block's own list.
bool declarationFits() {
    if (parseTop == FILE_LEVEL_TOP || commandMode)
        return true;
    StmtNode *owner = ownerAt(parseTop - 1);
    return !owner || owner->kind == STMT_BLOCK;
}

// ---- Words with arguments in parentheses --------------------------------------------------------

// `( expression );` with a type that the argument must have.
void parseOneArgument(StmtNode *statement, int expected) {
    expectChar('(', true);
    takeArgument(statement, errorFlag ? nullptr : parseTree(), expected);
    expectChar(')', true);
    expectChar(';', true);
}

void parseExit(StmtNode *statement) {
    expectChar('(', true);
    peekNonBlank();
    if (lineBuffer[linePos] != ')' && !errorFlag)
        takeArgument(statement, parseTree(), DT_INT);
    expectChar(')', true);
    expectChar(';', true);
}

bool listIsEmpty() {
    peekNonBlank();
    const char *text = lineBuffer + linePos;
    return *text == '(' && text[1 + strspn(text + 1, " \t")] == ')';
}

// An argument list as of printf, if there is one, whose arguments are evaluated as they are
// printed: the statement has no chain of its own.
void parsePrintArguments(StmtNode *statement) {
    if (listIsEmpty()) {
        expectChar('(', true);
        expectChar(')', true);
    } else {
        ExprNode *list = parsePrimary(newOperatorNode(OP_PRINT_LIST), false);
        statement->operandA.tree = list;
        if (list && !errorFlag)
            compileChain(list, nullptr, false);
    }
    expectChar(';', true);
}

void parseLongjmp(StmtNode *statement) {
    expectChar('(', true);
    int savedComma = e_lang->commaEndsExpression;
    e_lang->commaEndsExpression = 1;
    ExprNode *environment = errorFlag ? nullptr : parseTree();
    expectChar(',', true);
    ExprNode *value = errorFlag ? nullptr : parseTree();
    e_lang->commaEndsExpression = savedComma;
    if (environment)
        convertTree(environment, DT_P_INT);
    if (value)
        convertTree(value, DT_INT);
    statement->operandA.tree = environment;
    statement->operandB.tree = value;
    if (!errorFlag)
        statement->chain = compileChain(value, compileChain(environment, nullptr, false), false);
    expectChar(')', true);
    expectChar(';', true);
}

// free and clearerr, whose parentheses are those of an expression.
void parsePointerArgument(StmtNode *statement, const char *word) {
    ExprNode *tree = parseTree();
    statement->operandA.tree = tree;
    if (errorFlag)
        return;
    int type = treeType(tree);
    if (!isPointer(type) && !isArray(type)) {
        parseError("The argument of %s() is not a pointer", word);
        return;
    }
    statement->chain = compileChain(tree, nullptr, false);
    expectChar(';', true);
}

void openBlockStatement() {
    StmtNode *block = newStatement(STMT_BLOCK);
    openBlock(block, currentBlock->level + 1);
}

}  // namespace

// else, case, default.
void parseClause(int code) {
    constexpr int elseCode = 1, caseCode = 3, defaultCode = 4;
    switch (code) {
        case elseCode:
            if (!openElse())
                parseError("Can't have an 'else' here ");
            break;
        case caseCode: parseCaseLabel(false); break;
        case defaultCode: parseCaseLabel(true); break;
        default: break;
    }
}

void parseDeclarationStatement() {
    if (!declarationFits()) {
        parseError("invalid place for a declaration");
        return;
    }
    StmtNode *statement = newStatement(STMT_DECLARATION);
    StmtNode *block = currentBlock;
    int count = block->symbolCount;
    TypeInfo *last = nullptr;
    declare(statement, block->level, &block->operandD.tags, &block->operandC.symbols, &last, &count,
            CONTEXT_PLAIN);
    block->symbolCount = static_cast<uint16_t>(count);
}

void parseWordStatement(int code) {
    if (code == STMT_END) {
        closeBlock();
        return;
    }
    if (code == STMT_BLOCK) {
        openBlockStatement();
        return;
    }
    if (code == STMT_DIRECTIVE) {
        runDirective();
        return;
    }
    bool isFor = code == STMT_FOREACH;
    auto kind = static_cast<StmtKind>(code);
    if (isFor)
        kind = STMT_LOOP;
    else if (code == STMT_FOREACH_WORD)
        kind = STMT_FOREACH;
    StmtNode *statement = newStatement(kind);
    switch (kind) {
        case STMT_FOREACH: parseForeach(statement); break;
        case STMT_IF: parseIf(statement); break;
        case STMT_LOOP: isFor ? parseFor(statement) : parseWhile(statement); break;
        case STMT_DO: parseDo(statement); break;
        case STMT_SWITCH: parseSwitch(statement); break;
        case STMT_RETURN: parseReturn(statement); break;
        case STMT_GOTO: parseGoto(statement); break;
        case STMT_EXIT: parseExit(statement); break;
        case STMT_STOP:
        case STMT_ABORT: parsePrintArguments(statement); break;
        case STMT_PERROR: parseOneArgument(statement, DT_STRING); break;
        case STMT_LONGJMP: parseLongjmp(statement); break;
        case STMT_FREE: parsePointerArgument(statement, "free"); break;
        case STMT_CLEARERR: parsePointerArgument(statement, "clearerr"); break;
        case STMT_DELETE: parseDelete(statement); break;
        case STMT_USING: parseUsing(); break;
        case STMT_CASESEN: statement->operandA.tree = casesenStatement(); break;
        case STMT_FLOATCONST: statement->operandA.tree = floatconstStatement(); break;
        case STMT_SRAND: parseOneArgument(statement, DT_UINT); break;
        case STMT_BREAK: parseBreak(statement); break;
        case STMT_CONTINUE: parseContinue(statement); break;
        default: errorFlag = 1;
    }
}

}  // namespace zy
