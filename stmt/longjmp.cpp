// setjmp and longjmp. A script's position is data, so a jump unwinds contexts and runs the
// statement with the setjmp again, which then gives the value of the jump. Where an operand of &&
// || ?: or a destructor makes calls, runs of the statement loop lie inside each other: a jump out
// of such a run ends it, and the run around it goes on with the jump.

#include "decl/funcInfo.h"
#include "expr/calls.h"
#include "expr/context.h"
#include "expr/operands.h"
#include "expr/readers.h"
#include "expr/routines.h"
#include "expr/scalarFamilies.h"
#include "expr/scope.h"
#include "extern/include/embedzy.h"
#include "instance/report.h"
#include "rtlib/libraryCall.h"
#include "stmt/arms.h"
#include "stmt/calls.h"
#include "stmt/execute.h"
#include "stmt/parseStack.h"
#include "stmt/signalState.h"

namespace zy {

void setjmpOperator(ExprNode *node) {
    JumpRecord *record;
    {
        Operand place(node->left, Operand::CONTENTS);
        if (!place)
            return;
        record = static_cast<JumpRecord *>(addressIn(place.get()));
    }
    int32_t value = 0;
    if (record) {
        value = static_cast<int32_t>(record->value);
        *record = {0, currentContext->function, currentContext->statement};
    } else {
        runError("env in setjmp(env) is a NULL pointer");
    }
    pushScalar(value);
}

namespace {

void skipStatement() {
    currentContext->chain = nullptr;
    moveTo(currentContext, currentContext->statement->next);
    currentContext->state = 1;
}

// ---- Unwinding ----------------------------------------------------------------------------------

struct SignalInterface {
    int *signal;      // being handled; 0 for none
    void **contexts;  // by signal: that in which the handler was set
};
constexpr SignalInterface signalInterfaces[] = {
    {&ZyLongjumSIG, ZyCurtdbForSignal},
    {&ZyLongjumSSIG, ZyCurtdbForSSignal},
    {&ZyLongjumSIGset, ZyCurtdbForSignalset},
    {&ZyLongjumSIGaction, ZyCurtdbForSignalaction},
};

// The context that a jump out of a signal handler goes to; NULL if no handler is at work.
ExecContext *takeSignalContext() {
    for (const SignalInterface &interface : signalInterfaces) {
        int signal = *interface.signal;
        if (signal <= 0 || signal >= ZY_SIGNAL_COUNT || !interface.contexts[signal])
            continue;
        *interface.signal = 0;
        return static_cast<ExecContext *>(interface.contexts[signal]);
    }
    return nullptr;
}

// The run around this one goes on with the jump.
void endNestedRun(JumpRecord *record, ExecContext *target) {
    pendingJump = record;
    pendingTarget = target;
    pendingJumpDepth = runDepth - 1;
    executing = 0;
}

// The context to which a call of the host returns: a run of the statement loop started there.
bool isHostContext(const ExecContext *context) {
    return context != baseContext && !context->caller;
}

bool isLive(const ExecContext *context) {
    const ExecContext *live = allContexts;
    while (live && live != context)
        live = live->allNext;
    return live != nullptr;
}

// The callers have run out. A handler was called by the host, in a run of its own.
bool leaveForSignal(JumpRecord *record, const ExecContext *caller) {
    ExecContext *target = takeSignalContext();
    if (!target || !isLive(target)) {
        runError("function containing setjmp() is terminated before longjmp() is called");
        skipStatement();
        return false;
    }
    leaveFunction(false);
    if (isHostContext(caller) && runDepth > 1) {
        endNestedRun(record, target);
        return false;
    }
    currentContext = target;
    return true;
}

// Functions are left until the target is current or, without one, the record's function. False if
// that is not yet so, or can't be.
bool unwindTo(JumpRecord *record, const ExecContext *target) {
    auto isThere = [&] {
        return target ? currentContext == target : currentContext->function == record->function;
    };
    while (!isThere()) {
        const ExecContext *caller = currentContext->caller;
        bool endsCallers =
            !caller || isHostContext(caller) || (!caller->function && record->function);
        if (endsCallers)
            return leaveForSignal(record, caller);
        bool endsRun = !caller->statement;  // a nested run was started there
        leaveFunction(false);
        if (endsRun) {
            endNestedRun(record, const_cast<ExecContext *>(target));
            return false;
        }
    }
    return true;
}

// ---- Arriving -----------------------------------------------------------------------------------

// The statement that a statement is part of; NULL for a function's body and the program's.
StmtNode *ownerOf(StmtNode *statement) {
    StmtNode *loop = statement->next;
    if (loop && loop->kind == STMT_LOOP && loop->operandB.statement == statement)
        return loop;  // the first part of a `for`
    for (; statement; statement = statement->next)
        if (statement->kind == STMT_END || statement->kind == STMT_GROUP_END)
            return statement->operandB.statement;
    return nullptr;
}

// What a statement lies in, from the innermost outward.
Statements ownersOf(StmtNode *statement, const StmtNode *body) {
    Statements owners;
    while ((statement = ownerOf(statement)) && statement->kind != STMT_ROOT) {
        owners.push_back(statement);
        if (statement == body)
            break;
    }
    return owners;
}

// Blocks that the jump leaves give up their variables, those that it enters get new ones.
void adjustFrames(ExecContext *context, const Statements &owners) {
    int outermost = context->function ? context->function->parameterLevel : FILE_LEVEL;
    auto isInnerBlock = [&](const ScopeFrame *frame) {
        return frame && !frame->isFunction && frame->level > outermost;
    };
    while (isInnerBlock(context->frames) && !contains(owners, context->frames->owner))
        popFrame();
    const void *innermost = isInnerBlock(context->frames) ? context->frames->owner : nullptr;
    auto entered = std::find(owners.begin(), owners.end(), innermost);
    while (entered != owners.begin()) {
        StmtNode *block = *--entered;
        if (block->kind != STMT_BLOCK || !block->symbols() || block->level <= outermost)
            continue;
        context->statement = block;
        enterBlock();
    }
}

void arrive(StmtNode *statement) {
    ExecContext *context = currentContext;
    StmtNode *body = context->function ? context->function->body : globalBlock;
    Statements owners = ownersOf(statement, body);
    leaveForeachs(context, owners);
    adjustFrames(context, owners);
    resetProgress(body, statement, owners);
    context->chain = nullptr;
    context->state = 1;
    moveTo(context, statement);
}

void jumpTo(JumpRecord *record, const ExecContext *target) {
    if (unwindTo(record, target))
        arrive(record->statement);
}

}  // namespace

bool isUnwinding() { return pendingJump || endingDepth; }

bool takeUpJump() {
    if (!pendingJump || pendingJumpDepth != runDepth)
        return false;
    JumpRecord *record = pendingJump;
    pendingJump = nullptr;
    executing = 1;
    jumpTo(record, pendingTarget);
    return executing;
}

void runLongjmp(ExecContext *, StmtNode *statement) {
    JumpRecord *record;
    int32_t value;
    {
        Operand environment(statement->operandA.tree, Operand::CONTENTS);
        Operand number(statement->operandB.tree, Operand::CONTENTS);
        record = environment ? static_cast<JumpRecord *>(addressIn(environment.get())) : nullptr;
        value = number ? truncateToInt32(readDouble(number.get())) : 0;
    }
    if (!record) {
        runError("env in longjmp(env, val) is a NULL pointer");
        skipStatement();
        return;
    }
    record->value = value ? value : 1;
    if (!record->statement) {
        runError("env in longjmp(env, val) has not been set by setjmp()");
        skipStatement();
        return;
    }
    jumpTo(record, nullptr);
}

}  // namespace zy
