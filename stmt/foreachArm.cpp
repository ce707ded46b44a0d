// Running foreach. The loop's record lives on the value stack, over a Value with the text that ends
// the loop, so that calls and nested loops in the body find each its own.

#include <cstdlib>
#include <cstring>

#include "expr/readers.h"
#include "expr/scope.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "stmt/arms.h"

namespace zy {

namespace {

// The record: a node of kind NODE_FOREACH whose operand fields hold these.
struct LoopRecord {
    ExprNode *node;

    VarCell *&index() { return reinterpret_cast<VarCell *&>(node->left); }
    char *&list() { return reinterpret_cast<char *&>(node->right); }
    char *&delimiters() { return reinterpret_cast<char *&>(node->third); }
    char *&position() { return reinterpret_cast<char *&>(node->fourth); }
    StmtNode *&statement() { return reinterpret_cast<StmtNode *&>(node->link); }
};

// The next token; NULL if there is none. The token is cut off where it stands.
char *splitToken(char *text, const char *delimiters, char *&position) {
    char *start = text ? text : position;
    if (!start)
        return nullptr;
    start += strspn(start, delimiters);
    position = start;
    if (!*start)
        return nullptr;
    position = start + strcspn(start, delimiters);
    if (*position)
        *position++ = '\0';
    return start;
}

void storeToken(LoopRecord record, char *token) {
    VarCell *index = record.index();
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
    LoopRecord record{popValue()};
    free(record.list());
    free(record.delimiters());
    recycleValue(record.node);
    if (context->stack)
        deleteValue(popValue());  // what ends the loop
}

// The loop's record, with what stands above it released; no node after a message.
LoopRecord findRecord(ExecContext *context, const StmtNode *statement, const char *failure) {
    while (Value *top = context->stack) {
        if (top->kind == NODE_FOREACH && LoopRecord{top}.statement() == statement)
            return {top};
        if (top->kind == NODE_FOREACH)
            releaseRecord(context);
        else
            deleteValue(popValue());
    }
    runError("%s", failure);
    return {nullptr};
}

void startForeach(ExecContext *context, StmtNode *statement) {
    bool popped;
    Value *list = operandOf(statement->operandB.tree, popped);
    char *text = list ? (popped ? takeText(list) : copyString(list->payload.text)) : nullptr;
    if (list && popped)
        recycleValue(list);
    Value *top = context->stack;  // the delimiters
    char *delimiters = takeText(top);
    top->kind = NODE_FOREACH;
    LoopRecord record{top};
    record.statement() = statement;
    record.index() = findVarCell(variableOf(statement->operandA.tree));
    record.list() = text;
    record.delimiters() = delimiters;
    record.position() = nullptr;
    storeToken(record, text ? splitToken(text, delimiters, record.position()) : nullptr);
    statement->level = 1;
}

bool goesOn(LoopRecord record) {
    const char *token = record.index()->data.text;
    const Value *end = record.node->next;
    const char *terminator = end && end->type != DT_NULL ? end->payload.text : nullptr;
    return token && (!terminator || strcmp(token, terminator) != 0);
}

}  // namespace

void runForeach(ExecContext *context, StmtNode *statement) {
    if (statement->level == 0)
        startForeach(context, statement);
    LoopRecord record{context->stack};
    if (goesOn(record)) {
        moveTo(context, statement->operandE.statement);
        return;
    }
    statement->level = 0;
    releaseRecord(context);
    moveTo(context, statement->next);
}

void advanceForeach(ExecContext *context, StmtNode *statement, const char *failure) {
    LoopRecord record = findRecord(context, statement, failure);
    if (!record.node) {
        moveTo(context, statement->next);
        return;
    }
    storeToken(record, splitToken(nullptr, record.delimiters(), record.position()));
    context->statement = statement;
    context->phase = 2;  // in progress: its chain isn't loaded again
}

void abandonForeach(ExecContext *context, StmtNode *statement) {
    LoopRecord record = findRecord(context, statement, "cannot find FOR node (stack error)");
    if (record.node)
        releaseRecord(context);
    statement->level = 0;
    moveTo(context, statement->next);
}

}  // namespace zy
