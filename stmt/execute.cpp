#include "stmt/execute.h"

#include <array>
#include <cstring>

#include "decl/funcInfo.h"
#include "expr/direct.h"
#include "expr/evaluator.h"
#include "expr/events.h"
#include "expr/readers.h"
#include "expr/scope.h"
#include "instance/report.h"
#include "stmt/arms.h"
#include "stmt/calls.h"
#include "stmt/directRun.h"
#include "stmt/objectLife.h"
#include "stmt/program.h"

namespace zy {

namespace {

constexpr auto armTable = [] {
    std::array<StatementArm, STATEMENT_KIND_COUNT> table{};
    for (StatementArm &arm : table)
        arm = runNext;
#define ZY_STATEMENT(name, kind, arm) table[kind] = arm;
#include "stmt/statements.inc"
#undef ZY_STATEMENT
    return table;
}();

// ---- Events -------------------------------------------------------------------------------------

// Files of headers are not the user's own code.
bool isHeader(const StmtNode *statement) {
    const char *dot = statement->file ? strchr(statement->file, '.') : nullptr;
    return dot && strcmp(dot, ".h") == 0;
}

void deliverIn(const StmtNode *statement, DebugEvent event) {
    if (wantsEvent(event) && !isHeader(statement))
        deliverEvent(event);
}

bool hasBegun(const StmtNode *statement) {
    return statement && statement->kind == STMT_LOOP && statement->operandE.progress != NOT_STARTED;
}

// The parts of a compound statement that have no line of their own make no event.
bool isStep(const StmtNode *statement) {
    switch (statement->kind) {
        case STMT_BLOCK:
        case STMT_END:
        case STMT_DIRECTIVE: return false;
        case STMT_DO: return statement->operandE.progress == CONDITION_DUE;
        case STMT_SWITCH: return statement->operandD.progress == 0;
        case STMT_DECLARATION: return statement->operandA.pointer != nullptr;
        default: return !hasBegun(statement) && !hasBegun(statement->next);
    }
}

// ---- The loop -----------------------------------------------------------------------------------

// The arms of these load the chain themselves, when the condition is due.
bool loadsOwnChain(const StmtNode *statement) {
    return statement->kind >= STMT_IF && statement->kind <= STMT_SWITCH;
}

void startStatement(ExecContext *context) {
    StmtNode *statement = context->statement;
    context->phase = 1;
    context->chain = loadsOwnChain(statement) ? nullptr : statement->chain;
    if (wantsEvent(EVENT_STATEMENT) && statement->line && isStep(statement))
        deliverIn(statement, EVENT_STATEMENT);
}

// Runs what is direct and starts the statement behind it. False if the run was asked to end.
bool advanceToStatement(ExecContext *context) {
    if (!wantsEvents()) [[likely]]
        context->statement = runDirectStatements(context, context->statement);
    if (abortRequest)
        return false;
    startStatement(context);
    return true;
}

}  // namespace

namespace {

// A nested run has ended with all runs.
void goOnEnding() {
    if (endingDepth != runDepth)
        return;
    leaveFunctions();
    endRun();
}

void runLoop(bool debug) {
    if (e_lang->debugLevel && currentContext != evalContext && debug)
        stepMode = true;
    runCut = false;
    executing = 1;
    currentContext->state = 1;
    for (;;) {
        if (abortRequest) {
            doAbort();
            return;
        }
        if (currentContext->phase == 0 && currentContext->statement &&
            !advanceToStatement(currentContext))
            continue;
        if (currentContext->chain) {
            runChain();
            if (currentContext->phase == 0 && currentContext->statement)
                continue;  // a call begins
        }
        StmtNode *statement = currentContext->statement;
        if (!statement)
            executing = 0;
        else if (executing)
            armTable[statement->kind](currentContext, statement);
        if (!executing && !takeUpJump()) {
            goOnEnding();
            return;
        }
    }
}

}  // namespace

void runStatements(bool debug) {
    if (runDepth++ == 0)
        pendingJump = nullptr;
    runLoop(debug);
    runDepth--;
}

// ---- The end of all runs ------------------------------------------------------------------------

namespace {

// A nested run leaves the context in which it begins without a statement.
bool nestedRunBegan() { return runDepth > 1 && !currentContext->statement; }

}  // namespace

void leaveFunctions() {
    while (currentContext->function && currentContext->caller && !nestedRunBegan())
        leaveFunction(false);
}

void endRun() {
    executing = 0;
    runCut = true;
    endingDepth = nestedRunBegan() ? runDepth - 1 : 0;
    if (endingDepth || !hasEndStatus)
        return;
    Value *value = newZeroValue(DT_INT);
    value->payload.i = endStatus;
    pushValue(value);
    hasEndStatus = false;
}

void forgetEnding() {
    endingDepth = 0;
    hasEndStatus = false;
}

namespace {

void endAbortedRun() {
    leaveFunctions();
    endRun();
    abortRequest = 0;
    exitRequested = false;
}

}  // namespace

void endOuterRun() {
    exitRequested = true;
    abortRequest = 1;
}

bool runCutShort() { return runCut; }

void doAbort() {
    if (exitRequested) {
        runEnded = true;
        endAbortedRun();
        return;
    }
    if (wantsEvent(EVENT_ABORT))
        deliverEvent(EVENT_ABORT);
    abortRequest = 0;  // the functions given to atexit run to their ends
    runAtExit();
    freeAtExitList();
    e_lang->abortedRun = 1;
    endAbortedRun();
}

bool truthOf(const StmtNode *statement) {
    ExprNode *tree = statement->operandA.tree;
    if (!statement->chain && isStatementTree(tree)) {
        noteDirectSteps(tree);
        return directInteger(tree) != 0;
    }
    bool popped;
    Value *value = operandOf(tree, popped);
    if (!value)
        return false;
    bool truth = logicalValue(value);
    if (popped)
        deleteValue(value);
    return truth;
}

// ---- Lists and blocks ---------------------------------------------------------------------------

void runNext(ExecContext *context, StmtNode *statement) { moveTo(context, statement->next); }

void runRoot(ExecContext *context, StmtNode *statement) {
    moveTo(context, statement->operandA.statement);
}

void runBlock(ExecContext *context, StmtNode *statement) {
    if (statement->operandC.symbols)
        enterBlock();
    bool isBody = context->function && context->function->body == statement;
    deliverIn(statement, isBody ? EVENT_FUNCTION_ENTRY : EVENT_BLOCK_ENTRY);
    moveTo(context, statement->operandA.statement);
}

namespace {

void endBlock(ExecContext *context, StmtNode *block) {
    const StmtNode *behind = block->next;
    bool isBody = behind && behind->kind == STMT_RETURN && behind->operandC.number == 0;
    if (block->hasObjects)
        destroyInBlock(block, context->function);
    DebugEvent event = isBody ? EVENT_FUNCTION_EXIT : EVENT_BLOCK_EXIT;
    if (wantsEvent(event))
        deliverEvent(event);
    if (block->operandC.symbols && block->level >= 2)
        popFrame();
    moveTo(context, block->next);
}

}  // namespace

void runEnd(ExecContext *context, StmtNode *statement) {
    StmtNode *owner = statement->operandB.statement;
    switch (owner->kind) {
        case STMT_ROOT:
            executing = 0;
            moveTo(context, owner);
            break;
        case STMT_BLOCK: endBlock(context, owner); break;
        case STMT_FOREACH:
            advanceForeach(context, owner, "cannot find do node (internal stack error)");
            break;
        case STMT_LOOP:
        case STMT_DO: moveTo(context, owner); break;
        default: moveTo(context, owner->next); break;
    }
}

// ---- if, loops ----------------------------------------------------------------------------------

void runIf(ExecContext *context, StmtNode *statement) {
    unsigned char &progress = statement->operandD.progress;
    if (progress == NOT_STARTED) {
        progress = CONDITION_DUE;
        context->chain = statement->chain;
        if (context->chain)
            return;
    }
    progress = NOT_STARTED;
    StmtNode *part =
        truthOf(statement) ? statement->operandB.statement : statement->operandC.statement;
    moveTo(context, part ? part : statement->next);
}

namespace {

// The condition of a loop: loaded, then read. True when its value decides.
bool conditionRead(ExecContext *context, StmtNode *statement) {
    unsigned char &progress = statement->operandE.progress;
    if (progress == VALUE_STANDS)
        return true;
    progress = VALUE_STANDS;
    context->chain = statement->chain;
    context->phase = 1;
    return !context->chain;
}

// Into the body again, or behind the loop.
void decideLoop(ExecContext *context, StmtNode *statement, bool goesOn) {
    statement->operandE.progress = goesOn ? CONDITION_DUE : NOT_STARTED;
    moveTo(context, goesOn ? statement->operandC.statement : statement->next);
}

}  // namespace

void runLoop(ExecContext *context, StmtNode *statement) {
    unsigned char &progress = statement->operandE.progress;
    if (progress == NOT_STARTED) {
        progress = CONDITION_DUE;
        if (StmtNode *first = statement->operandB.statement) {
            moveTo(context, first);  // its next is this loop
            return;
        }
    }
    if (!conditionRead(context, statement))
        return;
    bool goesOn = !statement->operandA.tree || truthOf(statement);
    decideLoop(context, statement, goesOn);
}

void runDo(ExecContext *context, StmtNode *statement) {
    unsigned char &progress = statement->operandE.progress;
    if (progress == NOT_STARTED) {
        decideLoop(context, statement, true);
        return;
    }
    if (!conditionRead(context, statement))
        return;
    if (!statement->operandA.tree)
        runError("invalid do-loop");
    decideLoop(context, statement, statement->operandA.tree && truthOf(statement));
}

// ---- Jumps --------------------------------------------------------------------------------------

void leaveBlocks(StmtNode *block, const StmtNode *outer) {
    for (; block && block != outer; block = block->enclosingBlock())
        if (block->operandC.symbols) {
            destroyInBlock(block, nullptr);
            popFrame();
        }
}

namespace {

bool encloses(const Enclosing *list, const StmtNode *statement) {
    for (int i = 0; list && i < list->count; i++)
        if (list->statements[i] == statement)
            return true;
    return false;
}

// What a jump leaves must start anew when it is reached again.
void abandon(ExecContext *context, StmtNode *statement) {
    switch (statement->kind) {
        case STMT_FOREACH: abandonForeach(context, statement); break;
        case STMT_SWITCH: abandonSwitch(statement); break;
        case STMT_LOOP:
        case STMT_DO: statement->operandE.progress = NOT_STARTED; break;
        default: break;
    }
}

void abandonAll(ExecContext *context, const Enclosing *left, const Enclosing *kept) {
    for (int i = 0; left && i < left->count; i++)
        if (!encloses(kept, left->statements[i]))
            abandon(context, left->statements[i]);
}

}  // namespace

void runBreak(ExecContext *context, StmtNode *statement) {
    StmtNode *target = statement->operandA.statement;
    leaveBlocks(statement->operandB.statement, statement->operandC.statement);
    switch (target->kind) {
        case STMT_FOREACH: abandonForeach(context, target); return;
        case STMT_SWITCH: abandonSwitch(target); break;
        default: target->operandE.progress = NOT_STARTED;
    }
    moveTo(context, target->next);
}

void runContinue(ExecContext *context, StmtNode *statement) {
    StmtNode *target = statement->operandA.statement;
    leaveBlocks(statement->operandB.statement, statement->operandC.statement);
    abandonAll(context, statement->operandD.enclosing, nullptr);
    if (target->kind == STMT_FOREACH) {
        advanceForeach(context, target, "cannot find FOR node (stack error)");
        return;
    }
    StmtNode *step = target->kind == STMT_LOOP ? target->operandD.statement : nullptr;
    moveTo(context, step ? step : target);
}

namespace {

// Blocks are left innermost first, each with the destructors of its objects.
void leaveBlock(StmtNode *block) {
    if (!block->operandC.symbols)
        return;
    destroyInBlock(block, nullptr);
    popFrame();
}

}  // namespace

void runGoto(ExecContext *context, StmtNode *statement) {
    const Label *label = statement->operandA.label;
    StmtNode *block = statement->operandB.statement;
    abandonAll(context, statement->operandC.enclosing, label->enclosing);
    if (label->function == context->function) {
        for (; block->level >= 2 && block->level > label->block->level;
             block = block->enclosingBlock())
            leaveBlock(block);
    } else {
        // The label was moved up out of the function, to file level.
        for (; block != context->function->body; block = block->enclosingBlock())
            leaveBlock(block);
        while (currentContext->function && currentContext->function != label->function)
            leaveFunction(true);
    }
    moveTo(currentContext, label->statement);
    currentContext->state = 1;
}

void runReturn(ExecContext *, StmtNode *statement) {
    if (statement->operandC.number == 1)
        deliverIn(statement, EVENT_FUNCTION_EXIT);
    returnFromFunction();
}

}  // namespace zy
