// Running a switch: the body's block is entered first, then the label that fits is looked for.

#include <cstring>

#include "expr/readers.h"
#include "expr/scope.h"
#include "stmt/arms.h"
#include "stmt/program.h"

namespace zy {

namespace {

enum SwitchProgress : unsigned char { SWITCH_START, BODY_DUE, SEARCH_DUE };

constexpr int DEFAULT_LABEL = 0x7fffffff;

struct Controlling {
    bool isText;
    int number;
    const char *text;
};

bool isDefault(const Value *label) {
    return label->type == DT_INT ? label->payload.i == DEFAULT_LABEL : !label->payload.text;
}

bool fits(const Value *label, const Controlling &controlling) {
    if (label->type == DT_INT)
        return !controlling.isText && label->payload.i == controlling.number;
    return label->payload.text && controlling.text &&
           strcmp(label->payload.text, controlling.text) == 0;
}

// The statement to go on with; NULL if no label fits and there is no default.
StmtNode *findCase(const CaseGroup *groups, const Controlling &controlling) {
    StmtNode *otherwise = nullptr;
    for (const CaseGroup *group = groups->next; group; group = group->next)
        for (const ExprNode *cell = group->labels; cell; cell = cell->next) {
            if (isDefault(cell->item))
                otherwise = group->first;
            else if (fits(cell->item, controlling))
                return group->first;
        }
    return otherwise;
}

Controlling readControlling(const Value *value) {
    if (!value)
        return {};
    if (value->type > DT_ULLONG)
        return {true, 0, value->payload.text};
    return {false, static_cast<int>(readSigned64(value)), nullptr};
}

}  // namespace

void runSwitch(ExecContext *context, StmtNode *statement) {
    unsigned char &progress = statement->operandD.progress;
    if (progress == SWITCH_START) {
        progress = BODY_DUE;
        context->chain = statement->chain;
        if (context->chain)
            return;
    }
    if (progress == BODY_DUE) {
        progress = SEARCH_DUE;
        moveTo(context, statement->operandC.statement);
        return;
    }
    progress = SWITCH_START;
    bool popped;
    Value *value = operandOf(statement->operandA.tree, popped);
    StmtNode *found = findCase(statement->operandB.groups, readControlling(value));
    if (value && popped)
        deleteValue(value);
    if (StmtNode *body = statement->operandC.statement; !found)
        leaveBlocks(body, body->enclosingBlock());
    moveTo(context, found ? found : statement->next);
}

void abandonSwitch(StmtNode *statement) {
    unsigned char &progress = statement->operandD.progress;
    bool popped;
    if (progress == SEARCH_DUE)
        if (Value *value = operandOf(statement->operandA.tree, popped); value && popped)
            deleteValue(value);
    progress = SWITCH_START;
}

}  // namespace zy
