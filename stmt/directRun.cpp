#include "stmt/directRun.h"

#include "expr/direct.h"
#include "instance/langState.h"
#include "stmt/arms.h"

namespace zy {

namespace {

// A statement that isn't run here: the statement loop takes it.
constexpr StmtNode *NOT_HERE = nullptr;

bool isDirectCondition(const StmtNode *statement) {
    const ExprNode *tree = statement->operandA.tree;
    return tree && !statement->chain && isStatementTree(tree);
}

StmtNode *runDirectExpression(StmtNode *statement) {
    ExprNode *tree = statement->operandA.tree;
    bool isDirect = !statement->chain && tree && tree->kind == NODE_OPERATOR && tree->routine;
    if (!isDirect)
        return NOT_HERE;
    tree->routine(tree);
    return statement->next;
}

StmtNode *runDirectIf(StmtNode *statement) {
    if (!isDirectCondition(statement) || statement->operandD.progress != NOT_STARTED)
        return NOT_HERE;
    bool truth = directInteger(statement->operandA.tree) != 0;
    StmtNode *part = truth ? statement->operandB.statement : statement->operandC.statement;
    return part ? part : statement->next;
}

StmtNode *decide(StmtNode *statement, bool goesOn) {
    statement->operandE.progress = goesOn ? CONDITION_DUE : NOT_STARTED;
    return goesOn ? statement->operandC.statement : statement->next;
}

StmtNode *runDirectLoop(StmtNode *statement) {
    unsigned char &progress = statement->operandE.progress;
    bool endless = !statement->operandA.tree;
    if (progress == VALUE_STANDS || !(endless || isDirectCondition(statement)))
        return NOT_HERE;
    if (progress == NOT_STARTED && statement->operandB.statement) {
        progress = CONDITION_DUE;
        return statement->operandB.statement;  // its next is this loop
    }
    return decide(statement, endless || directInteger(statement->operandA.tree) != 0);
}

StmtNode *runDirectDo(StmtNode *statement) {
    if (statement->operandE.progress == NOT_STARTED)
        return decide(statement, true);
    if (statement->operandE.progress == VALUE_STANDS || !isDirectCondition(statement))
        return NOT_HERE;
    return decide(statement, directInteger(statement->operandA.tree) != 0);
}

bool isBareBlock(const StmtNode *block) {
    return !block->operandC.symbols && !block->hasObjects && !block->chain;
}

StmtNode *runDirectEnd(const StmtNode *statement) {
    StmtNode *owner = statement->operandB.statement;
    switch (owner->kind) {
        case STMT_BLOCK: return isBareBlock(owner) ? owner->next : NOT_HERE;
        case STMT_IF: return owner->next;
        case STMT_LOOP:
        case STMT_DO: return owner;
        default: return NOT_HERE;
    }
}

StmtNode *runDirectStatement(StmtNode *statement) {
    if (!statement->next && statement->kind != STMT_END)
        return NOT_HERE;  // the last one of a run
    switch (statement->kind) {
        case STMT_EXPRESSION: return runDirectExpression(statement);
        case STMT_IF: return runDirectIf(statement);
        case STMT_LOOP: return runDirectLoop(statement);
        case STMT_DO: return runDirectDo(statement);
        case STMT_NULL: return statement->chain ? NOT_HERE : statement->next;
        case STMT_BLOCK: return isBareBlock(statement) ? statement->operandA.statement : NOT_HERE;
        case STMT_END:
        case STMT_GROUP_END: return runDirectEnd(statement);
        default: return NOT_HERE;
    }
}

}  // namespace

StmtNode *runDirectStatements(ExecContext *context, StmtNode *statement) {
    while (!abortRequest) {
        context->statement = statement;
        StmtNode *next = runDirectStatement(statement);
        if (!next)
            break;
        statement = next;
    }
    return statement;
}

}  // namespace zy
