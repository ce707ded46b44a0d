// Statements with a condition and a body: if, while, for, do, foreach.

#include "decl/dataType.h"
#include "expr/direct.h"
#include "expr/guards.h"
#include "expr/nodeClasses.h"
#include "expr/nodes.h"
#include "expr/operators.h"
#include "expr/parser.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
#include "front/lexer.h"
#include "instance/report.h"
#include "stmt/statements.h"

namespace zy {

// ---- Conditions ---------------------------------------------------------------------------------

bool parseCondition(StmtNode *statement, const char *word) {
    ExprNode *tree = parseTree();
    statement->operandA.tree = tree;
    if (!tree || errorFlag)
        return false;
    int type = treeType(tree);
    if (type == DT_ARRAY || type == DT_P_ARRAY) {
        parseError("controlling expression of %s cannot be array, it must be a scalar type", word);
        return false;
    }
    if (!isPointer(type) && type != DT_STRING)
        convertTree(tree, DT_INT);
    if (!makeDirectCondition(tree))
        statement->chain = compileChain(tree, nullptr, false);
    return !errorFlag;
}

namespace {

bool parseParenthesised(StmtNode *statement, const char *word) {
    expectChar('(', true);
    if (errorFlag || !parseCondition(statement, word))
        return false;
    expectChar(')', true);
    return !errorFlag;
}

}  // namespace

// ---- if, while, do ------------------------------------------------------------------------------

void parseIf(StmtNode *statement) {
    if (parseParenthesised(statement, "if-statement"))
        statement->operandB.statement = openBody(statement);
}

void parseWhile(StmtNode *statement) {
    if (parseParenthesised(statement, "while-loop"))
        statement->operandC.statement = openBody(statement);
}

void parseDo(StmtNode *statement) { statement->operandC.statement = openBody(statement); }

bool parseDoCondition(StmtNode *statement) {
    // The `else` of an `if` that is the whole body comes before the condition.
    nextToken();
    bool isClause = tokenClass == TK_KEYWORD && currentKeyword.keywordClass == KC_CLAUSE;
    if (isClause && currentKeyword.code == 1) {
        pushedBack = true;
        return false;
    }
    bool isWhile = tokenClass == TK_KEYWORD && currentKeyword.keywordClass == KC_STATEMENT &&
                   currentKeyword.code == STMT_LOOP;
    if (!isWhile) {
        pushedBack = true;
        currentStmt = statement;
        parseError("need while");
        return false;
    }
    statement->line = currentLine;
    currentStmt = statement;
    if (!parseParenthesised(statement, "do-loop"))
        return false;
    expectChar(';', true);
    return !errorFlag;
}

// ---- for ----------------------------------------------------------------------------------------

namespace {

// An expression that runs as a statement of its own, linked to nothing.
StmtNode *newStep(ExprNode *tree) {
    StmtNode *step = newStmtNode(tree ? STMT_EXPRESSION : STMT_NULL);
    step->operandA.tree = tree;
    if (tree && !errorFlag && !makeDirectStatement(tree))
        step->chain = compileChain(tree, nullptr, false);
    return step;
}

bool comesNext(char c) {
    if (pushedBack)
        return tokenClass == TK_CHAR && tokenValue.character == c;
    peekNonBlank();
    return lineBuffer[linePos] == c;
}

bool expectSemicolon() {
    expectChar(';', false);
    if (!pushedBack)
        return true;
    parseError("missing ';' in for-loop");
    return false;
}

bool parseForHead(StmtNode *statement) {
    expectChar('(', false);
    if (pushedBack) {
        parseError("missing '(' in for-loop");
        return false;
    }
    StmtNode *first = newStep(comesNext(';') ? nullptr : parseTree());
    first->next = statement;
    statement->operandB.statement = first;
    if (errorFlag || !expectSemicolon())
        return false;
    if (!comesNext(';') && !parseCondition(statement, "for-loop"))
        return false;
    if (!expectSemicolon())
        return false;
    if (!comesNext(')'))
        statement->operandD.statement = newStep(parseTree());
    if (errorFlag)
        return false;
    expectChar(')', true);
    return !errorFlag;
}

}  // namespace

void parseFor(StmtNode *statement) {
    if (!parseForHead(statement))
        return;
    StmtNode *start = openBody(statement);
    statement->operandC.statement = start;
    // The step stands at the tail of the body, which falls into it.
    if (StmtNode *step = statement->operandD.statement) {
        StmtNode *end = start->next;
        step->prev = start;
        step->next = end;
        start->next = end->prev = step;
    }
}

// ---- foreach ------------------------------------------------------------------------------------

namespace {

ExprNode *parseText() {
    ExprNode *tree = parseTree();
    return tree ? convertTree(tree, DT_STRING) : nullptr;
}

bool expectSeparator(const char *where) {
    expectChar(';', false);
    if (!pushedBack)
        return true;
    parseError("expecting ';' %s", where);
    return false;
}

ExprNode *newTextNode(const char *text) {
    Value *node = newZeroValue(DT_P_CHAR);
    node->payload.text = keepText(copyString(text));
    return node;
}

}  // namespace

TypeInfo *foreachIndex(const ExprNode *tree) {
    return variableOf(isOperator(tree) && tree->op == OP_ASSIGN ? tree->left : tree);
}

namespace {

bool isScalarIndex(const ExprNode *tree) {
    return foreachIndex(tree) && !isArray(treeType(tree));
}

// The condition that ends the loop and the delimiters, where they are given.
void parseForeachEnd(StmtNode *statement) {
    if (comesNext(')')) {
        statement->operandC.tree = newZeroValue(DT_NULL);
        statement->operandD.tree = newTextNode(" ;");
        return;
    }
    if (!expectSeparator(""))
        return;
    statement->operandC.tree = parseText();
    if (errorFlag)
        return;
    if (comesNext(')'))
        statement->operandD.tree = newTextNode(" ;");
    else if (expectSeparator(""))
        statement->operandD.tree = parseText();
}

}  // namespace

void parseForeach(StmtNode *statement) {
    expectChar('(', true);
    ExprNode *index = errorFlag ? nullptr : parseText();
    statement->operandA.tree = index;
    if (errorFlag)
        return;
    if (!isScalarIndex(index)) {
        parseError("index of foreach-loop is not scalar variable");
        return;
    }
    if (!expectSeparator("in foreach-loop"))
        return;
    statement->operandB.tree = parseText();
    if (!errorFlag)
        parseForeachEnd(statement);
    expectChar(')', true);
    if (errorFlag)
        return;
    // The condition's value lies lowest, but for that of an index that is assigned first; then
    // the delimiters, then the list.
    ExprNode *list = compileChain(statement->operandB.tree, nullptr, false);
    ExprNode *delimiters = compileChain(statement->operandD.tree, list, true);
    statement->chain = compileChain(statement->operandC.tree, delimiters, true);
    if (!variableOf(index))
        statement->chain = compileChain(index, statement->chain, true);
    statement->operandE.statement = openBody(statement);
}

}  // namespace zy
