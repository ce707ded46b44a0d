// switch. Its body is a block with one list. The list's first part, what stands before the first
// label, runs when the block is entered, and leads back to the switch; a label is a place in the
// rest. So cases fall through by themselves, and the body ends with a break.

#include <cstdio>
#include <cstring>

#include "expr/constantTrees.h"
#include "expr/guards.h"
#include "expr/nodes.h"
#include "expr/operators.h"
#include "expr/parser.h"
#include "expr/readers.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
#include "front/lexer.h"
#include "instance/report.h"
#include "stmt/statements.h"

namespace zy {

namespace {

// `default` among integral labels; among texts it is the NULL pointer constant.
constexpr int DEFAULT_LABEL = 0x7fffffff;

bool isTextSwitch(const StmtNode *statement) {
    return isStringLike(treeType(statement->operandA.tree));
}

// The switch whose body's list is the innermost one; NULL if that isn't one's.
StmtNode *enclosingSwitch() {
    StmtNode *owner = ownerAt(parseTop - 3);
    bool isOwn = owner && owner->kind == STMT_SWITCH && ownerAt(parseTop - 1) &&
                 owner->operandC.statement == ownerAt(parseTop - 1);
    return isOwn ? owner : nullptr;
}

}  // namespace

void parseSwitch(StmtNode *statement) {
    expectChar('(', true);
    ExprNode *tree = errorFlag ? nullptr : parseTree();
    statement->operandA.tree = tree;
    expectChar(')', true);
    if (errorFlag)
        return;
    int type = treeType(tree);
    if (!isIntegral(type) && !isStringLike(type)) {
        plainError("not an integral or string value as argument of switch at line %d in file '%s'",
                   currentLine, sourceNames[sourceDepth]);
        errorFlag = 1;
        return;
    }
    statement->chain = compileChain(tree, nullptr, false);
    nextToken();
    bool isBrace = tokenClass == TK_KEYWORD && currentKeyword.keywordClass == KC_STATEMENT &&
                   currentKeyword.code == STMT_BLOCK;
    if (!isBrace) {
        pushedBack = true;
        parseError("missing '{' for a switch statement");
        return;
    }
    auto *head = new CaseGroup{};  // stands on the stack and before the groups, has no labels
    head->kind = NODE_CASE_GROUP;
    statement->operandB.groups = head;
    StmtNode *block = newStmtNode(STMT_BLOCK);
    block->next = statement;
    statement->operandC.statement = block;
    if (pushContext(head) && pushCursor(block))
        openBlock(block, currentBlock->level + 1);
}

// ---- Labels -------------------------------------------------------------------------------------

namespace {

ExprNode *parseIntegralLabel() {
    ExprNode *tree = parseTree();
    if (errorFlag || !isIntegral(treeType(tree)) || !isConstantTree(tree)) {
        deleteNode(tree);
        parseError("not integral value after case");
        return nullptr;
    }
    ExprNode *label = newIntNode(evaluateConstant(tree));
    deleteNode(tree);
    return label;
}

ExprNode *parseTextLabel() {
    nextToken();
    if (tokenClass != TK_CONSTANT || !isStringLike(tokenValue.constant->type)) {
        pushedBack = tokenClass != TK_CONSTANT;
        if (!pushedBack)
            deleteValue(tokenValue.constant);
        parseError("not string value after case");
        return nullptr;
    }
    return tokenValue.constant;
}

ExprNode *newDefaultLabel(bool isText) {
    return isText ? newZeroValue(DT_NULL) : newIntNode(DEFAULT_LABEL);
}

bool sameLabel(const Value *a, const Value *b, bool isText) {
    if (!isText)
        return a->payload.i == b->payload.i;
    if (a->type == DT_NULL || b->type == DT_NULL)
        return a->type == b->type;
    return strcmp(a->payload.text, b->payload.text) == 0;
}

bool standsIn(const ExprNode *list, const Value *label, bool isText) {
    for (; list; list = list->next)
        if (sameLabel(list->item, label, isText))
            return true;
    return false;
}

bool isDuplicate(const StmtNode *statement, const Value *label, bool isText) {
    if (standsIn(pendingCases, label, isText))
        return true;
    for (const CaseGroup *group = statement->operandB.groups; group; group = group->next)
        if (standsIn(group->labels, label, isText))
            return true;
    return false;
}

void reportDuplicate(const Value *label, bool isText) {
    if (!isText)
        parseError("duplicate case %d in switch", label->payload.i);
    else if (label->type == DT_NULL)
        parseError("duplicate default case in switch");
    else
        parseError("duplicate case \"%s\" in switch", label->payload.text);
}

}  // namespace

void parseCaseLabel(bool isDefault) {
    StmtNode *statement = enclosingSwitch();
    if (!statement) {
        parseError("incorrect place for 'case', case outside switch, missing '}' or 'break' ");
        return;
    }
    bool isText = isTextSwitch(statement);
    ExprNode *label = isDefault ? newDefaultLabel(isText)
                      : isText  ? parseTextLabel()
                                : parseIntegralLabel();
    if (!label)
        return;
    bool duplicate = isDuplicate(statement, label, isText);
    if (duplicate)
        reportDuplicate(label, isText);
    appendListCell(pendingCases, label);
    expectChar(':', false);
    if (pushedBack && !duplicate)
        parseError("missing ':' after expression following case");
}

// What stands before the first label runs when the body is entered; in C nothing of it would.
static void warnOfStatementsBefore(const StmtNode *statement) {
    const StmtNode *before = statement->prev;
    while (before && before->prev)
        before = before->prev;
    for (; before && before != statement; before = before->next) {
        if (before->kind == STMT_DECLARATION || before->kind == STMT_DIRECTIVE ||
            before->kind == STMT_INITIALISE)
            continue;
        plainWarning("statement reached in Zy, not reached in ANSI C");
        fprintf(stderr, "         at line %d in file %s\n", before->line,
                before->file ? before->file : "");
    }
}

void attachCases(StmtNode *statement) {
    StmtNode *owner = enclosingSwitch();
    if (!owner)
        return;
    CaseGroup *last = owner->operandB.groups;
    if (!last->next && warningsAt(1))
        warnOfStatementsBefore(statement);
    while (last->next)
        last = last->next;
    last->next = new CaseGroup{nullptr, pendingCases, NODE_CASE_GROUP, statement};
    pendingCases = nullptr;
}

void moveCases(const StmtNode *dropped, StmtNode *next) {
    StmtNode *owner = enclosingSwitch();
    for (CaseGroup *group = owner ? owner->operandB.groups : nullptr; group; group = group->next)
        if (group->first == dropped)
            group->first = next;
}

void finishSwitch(StmtNode *statement) {
    StmtNode *block = statement->operandC.statement;
    if (pendingCases) {
        newStatement(STMT_NULL);  // labels without a statement
        parseStack[parseTop].record = cursor()->next;
    }
    StmtNode *end = cursor();
    if (!end->prev || end->prev->kind != STMT_BREAK) {
        StmtNode *leave = newStatement(STMT_BREAK);
        leave->operandA.statement = statement;
        leave->operandB.statement = block;
        leave->operandC.statement = block->enclosingBlock();
        leave->line = 0;
    }
    end->operandB.statement = statement;
    const CaseGroup *group = statement->operandB.groups->next;
    if (!group)
        return;
    // The list is cut in front of the first label.
    StmtNode *first = group->first;
    if (first->prev)
        first->prev->next = statement;
    else
        block->operandA.statement = statement;
    first->prev = nullptr;
}

}  // namespace zy
