// Running foreach. The loop's record lives on the value stack, over a Value with the text that ends
// the loop, so that calls and nested loops in the body find each its own.

#include <cstdlib>
#include <cstring>

#include "expr/readers.h"
#include "expr/scope.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "stmt/arms.h"
#include "stmt/statements.h"

namespace zy {

namespace {

struct ForeachState {
    VarCell *index;
    char *list, *delimiters;  // owned
    char *position;
    const StmtNode *statement;
};

// The record on the stack, a node of kind NODE_FOREACH, and what it stands for.
ForeachState *stateOf(const ExprNode *record) {
    return static_cast<ForeachState *>(record->payload.p);
}

// The next token; NULL if there is none. The token is cut off where it stands.
char *splitToken(char *text, const char *delimiters, char *&position) {
    char *start = text ? text : position;
    if (!start)
        return nullptr;
    if (!delimiters)
        delimiters = "";
    start += strspn(start, delimiters);
    position = start;
    if (!*start)
        return nullptr;
    position = start + strcspn(start, delimiters);
    if (*position)
        *position++ = '\0';
    return start;
}

void storeToken(const ForeachState *state, char *token) {
    VarCell *index = state->index;
    if (index->type == DT_STRING) {
        free(index->data.text);
        index->data.text = copyString(token);
    } else {
        index->data.text = token;
    }
}

// A text of its own of a Value that the loop takes.
char *takeText(Value *value) {
    return value->type == DT_STRING ? value->payload.text : copyString(value->payload.text);
}

void releaseRecord(ExecContext *context) {
    ExprNode *record = popValue();
    ForeachState *state = stateOf(record);
    bool indexAssigned = !variableOf(state->statement->operandA.tree);
    free(state->list);
    free(state->delimiters);
    delete state;
    recycleValue(record);
    if (context->stack)
        deleteValue(popValue());  // what ends the loop
    if (indexAssigned && context->stack)
        deleteValue(popValue());
}

// The loop's record, with what stands above it released; NULL after a message.
ExprNode *findRecord(ExecContext *context, const StmtNode *statement, const char *failure) {
    while (ExprNode *top = context->stack) {
        if (top->kind != NODE_FOREACH)
            deleteValue(popValue());
        else if (stateOf(top)->statement == statement)
            return top;
        else
            releaseRecord(context);
    }
    runError("%s", failure);
    return nullptr;
}

void startForeach(ExecContext *context, StmtNode *statement) {
    bool popped;
    Value *list = operandOf(statement->operandB.tree, popped);
    char *text = list ? (popped ? takeText(list) : copyString(list->payload.text)) : nullptr;
    if (list && popped)
        recycleValue(list);
    Value *top = context->stack;  // the delimiters
    auto *state = new ForeachState{findVarCell(foreachIndex(statement->operandA.tree)), text,
                                   takeText(top), nullptr, statement};
    top->kind = NODE_FOREACH;
    top->payload.p = state;
    storeToken(state, text ? splitToken(text, state->delimiters, state->position) : nullptr);
    statement->level = 1;
}

bool goesOn(const ExprNode *record) {
    const char *token = stateOf(record)->index->data.text;
    const Value *end = record->next;
    const char *terminator = end && end->type != DT_NULL ? end->payload.text : nullptr;
    return token && (!terminator || strcmp(token, terminator) != 0);
}

}  // namespace

void runForeach(ExecContext *context, StmtNode *statement) {
    if (statement->level == 0)
        startForeach(context, statement);
    if (goesOn(context->stack)) {
        moveTo(context, statement->operandE.statement);
        return;
    }
    statement->level = 0;
    releaseRecord(context);
    moveTo(context, statement->next);
}

void advanceForeach(ExecContext *context, StmtNode *statement, const char *failure) {
    ExprNode *record = findRecord(context, statement, failure);
    if (!record) {
        moveTo(context, statement->next);
        return;
    }
    ForeachState *state = stateOf(record);
    storeToken(state, splitToken(nullptr, state->delimiters, state->position));
    context->statement = statement;
    context->phase = 2;  // in progress: its chain isn't loaded again
}

void leaveForeachs(ExecContext *context, const Statements &owners) {
    while (ExprNode *top = context->stack) {
        if (top->kind != NODE_FOREACH) {
            deleteValue(popValue());
            continue;
        }
        auto *statement = const_cast<StmtNode *>(stateOf(top)->statement);
        if (contains(owners, statement))
            return;
        releaseRecord(context);
        statement->level = 0;
    }
}

void abandonForeach(ExecContext *context, StmtNode *statement) {
    if (findRecord(context, statement, "cannot find FOR node (stack error)"))
        releaseRecord(context);
    statement->level = 0;
    moveTo(context, statement->next);
}

}  // namespace zy
