// The loop that runs chains, and the nested runs of what && || and ?: decide to run.

#include "expr/evaluator.h"

#include "expr/calls.h"
#include "expr/direct.h"
#include "expr/evaluatorState.h"
#include "expr/events.h"
#include "expr/operands.h"
#include "expr/operators.h"
#include "instance/report.h"
#include "platform/stack.h"
#include "stmt/stmtNode.h"

namespace zy {

namespace {

// What runs behind a node. The node itself may have moved the context's chain, or may have made
// another context current, whose chain a call then begins with.
inline ExprNode *advance() {
    ExecContext *context = currentContext;
    return context->chain ? context->chain = context->chain->next : nullptr;
}

// An event once in every callbackInterval + 1 nodes.
void countStep() {
    const StmtNode *statement = currentContext->statement;
    if (!wantsEvent(EVENT_STEP) || !statement || statement->line == 0)
        return;
    if (stepCounter != e_lang->callbackInterval) {
        stepCounter++;
        return;
    }
    deliverEvent(EVENT_STEP);
    stepCounter = 0;
}

void runChainWithEvents() {
    for (ExprNode *node = currentContext->chain; node; node = advance()) {
        bool isTree = node->kind == NODE_BRANCHES && !(node->left && node->left->op == OP_CALL);
        if (isTree)
            noteDirectSteps(node->left);
        else
            countStep();
        node->routine(node);
    }
}

}  // namespace

void deliverDirectSteps(const ExprNode *tree) {
    for (int steps = countSteps(tree); steps > 0; steps--)
        countStep();
}

void runChain() {
    if (wantsEvent(EVENT_STEP)) [[unlikely]] {
        runChainWithEvents();
        return;
    }
    ExecContext *context = currentContext;
    ExprNode *node = context->chain;
    while (node) {
        node->routine(node);
        // Few nodes move the chain; where none did, the next node needn't be read back from the
        // context, so its load doesn't wait for the store.
        if (currentContext == context && context->chain == node) [[likely]] {
            node = node->next;
            context->chain = node;
        } else {
            node = advance();
            context = currentContext;
        }
    }
}

Value *pushNewValue() {
    if (Value *value = pushFreeValue())
        return value;
    Value *value = newValue();
    if (!value) [[unlikely]] {
        endChain();
        return nullptr;
    }
    value->kind = NODE_VALUE;
    pushValue(value);
    return value;
}

Value *copyRecord(const Value *value) {
    Value *copy = newValue();
    if (!copy)
        return nullptr;
    *copy = *value;
    copy->next = nullptr;
    copy->link = nullptr;
    if (copy->type == DT_STRING)
        copy->payload.text = copyString(copy->payload.text);
    return copy;
}

namespace {

// The whole run has ended in a nested one, whose contexts are gone. The operator that waits for a
// value gets one, and the outer loop finds nothing more to run.
void endInterrupted() {
    currentContext->chain = nullptr;
    currentContext->statement = nullptr;
    if (!currentContext->stack)
        pushValue(newZeroValue(DT_INT));
}

// A jump has left the nested run. What is left of the statement doesn't run, whatever waited for
// the value gets one. The statement stays: if the jump fails, the one behind it is next.
void endJumped(StmtNode *statement) {
    currentContext->chain = nullptr;
    currentContext->statement = statement;
    pushValue(newZeroValue(DT_INT));
}

// Nested runs stand on the host's stack, unlike the calls of a script.
void refuseNesting() {
    runError("calls are nested too deeply");
    pushValue(newZeroValue(DT_INT));
}

}  // namespace

void runNested(ExprNode *chain) {
    if (platform::stackIsLow()) {
        refuseNesting();
        return;
    }
    ExecContext *context = currentContext;
    ExprNode *savedChain = context->chain;
    StmtNode *savedStatement = context->statement;
    if (isUnwinding()) {
        endJumped(savedStatement);
        return;
    }
    context->chain = chain;
    runChain();
    if (currentContext != context || context->chain) {
        // A call has made its own context current: statements run until it has returned, to a
        // context that has none.
        context->statement = nullptr;
        unsigned char savedExecuting = executing;
        runStatements(false);
        if (!isUnwinding() && runCutShort()) {
            endInterrupted();
            return;
        }
        if (!isUnwinding())
            executing = savedExecuting;
    }
    if (isUnwinding()) {
        endJumped(savedStatement);
        return;
    }
    currentContext->chain = savedChain;
    currentContext->statement = savedStatement;
}

}  // namespace zy
