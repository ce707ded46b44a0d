#include "stmt/lists.h"

#include <cstring>

#include "decl/aggregates.h"
#include "decl/funcInfo.h"
#include "expr/nodes.h"
#include "front/lexer.h"
#include "front/names.h"
#include "instance/report.h"
#include "stmt/objectLife.h"

namespace zy {

// ---- Nodes --------------------------------------------------------------------------------------

StmtNode *newStmtNode(StmtKind kind) {
    auto *statement = new StmtNode{};
    statement->kind = kind;
    statement->line = currentLine;
    if ((fileMode || stringMode) && sourceDepth >= 0)
        statement->file = sourceNames[sourceDepth];
    return statement;
}

namespace {

void linkBefore(StmtNode *statement, StmtNode *place) {
    statement->prev = place->prev;
    statement->next = place;
    if (place->prev)
        place->prev->next = statement;
    place->prev = statement;
}

// The end of a list; it has no line of its own before the list is closed.
StmtNode *newListEnd(StmtNode *owner) {
    StmtNode *end = newStmtNode(STMT_END);
    end->line = 0;
    end->operandB.statement = owner;
    return end;
}

// The list's owner finds it through its first statement.
void noteFirst(StmtNode *statement, StmtNode *oldFirst) {
    StmtNode *owner = ownerAt(parseTop - 1);
    if (owner && owner->kind == STMT_BLOCK && owner->operandA.statement == oldFirst)
        owner->operandA.statement = statement;
}

// The value of a constant of the system. NULL: a script has removed it, or a name of its own, as
// that of an enumerator, stands before it.
Value *systemConstant(const NameEntry *name, int type) {
    const TypeInfo *symbol = name ? name->symbol : nullptr;
    bool isOurs = symbol && symbol->level == SYSTEM_LEVEL && symbol->dataType == DT_CONSTANT &&
                  static_cast<int>(symbol->constant->type) == type;
    return isOurs ? symbol->constant : nullptr;
}

// The constants __LINE__ and __FILE__ tell where the statement stands.
void notePlace(const StmtNode *statement) {
    if (Value *line = systemConstant(lineConstant, DT_INT))
        line->payload.i = statement->line + e_lang->lineOffset;
    const char *file = e_lang->lineFileName ? e_lang->lineFileName : statement->file;
    Value *constant = file ? systemConstant(fileConstant, DT_STRING) : nullptr;
    if (!constant)
        return;
    if (constant->payload.text && strcmp(constant->payload.text, file) == 0)
        return;
    // It owns its text; expressions that have been parsed still point at the old one.
    if (constant->payload.text)
        keepText(constant->payload.text);
    constant->payload.text = copyString(file);
}

}  // namespace

StmtNode *appendPending(StmtNode *&list, StmtKind kind) {
    StmtNode *statement = newStmtNode(kind);
    StmtNode **end = &list;
    while (*end) {
        statement->prev = *end;
        end = &(*end)->next;
    }
    return *end = statement;
}

StmtNode *newStatement(StmtKind kind) {
    StmtNode *place = cursor(), *statement = place;
    if (place->kind == STMT_NULL) {  // the start of a body
        statement->kind = kind;
        statement->line = currentLine;
        statement->operandB = {};
    } else {
        statement = newStmtNode(kind);
        linkBefore(statement, place);
        noteFirst(statement, place);
        parseStack[parseTop].record = statement;
    }
    if (pendingCases)
        attachCases(statement);
    notePlace(statement);
    return currentStmt = statement;
}

StmtNode *openBody(StmtNode *owner) {
    StmtNode *start = newStmtNode(STMT_NULL);
    start->operandB.statement = owner;
    linkBefore(start, newListEnd(owner));
    pushCursor(start);
    return start;
}

bool openBlock(StmtNode *block, int level) {
    block->operandB.statement = currentBlock;
    block->level = static_cast<uint16_t>(level);
    StmtNode *end = newListEnd(block);
    block->operandA.statement = end;
    if (!pushCursor(end))
        return false;
    currentBlock = block;
    return true;
}

StmtNode *openFunctionBody(FuncInfo *function) {
    StmtNode *block = newStmtNode(STMT_BLOCK);
    StmtNode *closing = newStmtNode(STMT_RETURN);  // operand C 0: it is not the script's own
    closing->operandB.function = function;
    block->next = closing;
    closing->prev = block;
    function->body = block;
    function->isOpen = true;
    if (pushContext(function) && pushCursor(block))
        openBlock(block, function->parameterLevel + 1);
    return block;
}

void splicePending(StmtNode *statement) {
    if (pendingBefore)
        moveCases(statement, pendingBefore);  // a label leads to all of a declaration
    while (StmtNode *before = pendingBefore) {
        pendingBefore = before->next;
        StmtNode *oldFirst = statement;
        linkBefore(before, statement);
        noteFirst(before, oldFirst);
    }
    StmtNode *place = statement->next;
    while (StmtNode *after = pendingAfter) {
        pendingAfter = after->next;
        linkBefore(after, place);
        parseStack[parseTop].record = after;
    }
}

// ---- Closing ------------------------------------------------------------------------------------

namespace {

void stepCursor() { parseStack[parseTop].record = cursor()->next; }

// The entries of a function whose body is complete: its block and itself.
void closeFunction(FuncInfo *function) {
    finishLabels(function);
    function->isOpen = false;
    if (classOfFunction(function->owner))
        leaveClass();
    parseTop = static_cast<int16_t>(parseTop - 2);
}

}  // namespace

void closeStatement() {
    for (;;) {
        if (FuncInfo *function = functionAt(parseTop - 1)) {
            closeFunction(function);
            continue;
        }
        StmtNode *owner = ownerAt(parseTop - 1);
        if (!owner)
            return;
        switch (owner->kind) {
            case STMT_IF:
            case STMT_LOOP:
            case STMT_FOREACH: parseTop--; break;
            case STMT_DO:
                stepCursor();
                if (!parseDoCondition(owner))
                    return;
                parseTop--;
                break;
            default: stepCursor(); return;
        }
    }
}

void closeBlock() {
    StmtNode *end = parseTop > FILE_LEVEL_TOP && parseStack[parseTop].isCursor ? cursor() : nullptr;
    StmtNode *block = ownerAt(parseTop - 1);
    if (!end || end->kind != STMT_END || !block || block->kind != STMT_BLOCK) {
        parseError("Can't have a } here");
        return;
    }
    end->line = currentLine;
    end->file = block->file;
    FuncInfo *function = functionAt(parseTop - 2);
    if (function) {
        checkReturn(block, function);
        noteParameters(block, function);
    }
    StmtNode *owner = ownerAt(parseTop - 3);
    if (owner && owner->kind == STMT_SWITCH && owner->operandC.statement == block) {
        finishSwitch(owner);
        parseTop = static_cast<int16_t>(parseTop - 3);
    } else {
        parseTop--;
    }
    currentBlock = block->enclosingBlock();
    currentStmt = nullptr;
    closeStatement();
}

// ---- Failed statements --------------------------------------------------------------------------

namespace {

// The list in which the statement stands, by its cursor; -1 for none.
int entryOf(const StmtNode *statement) {
    for (int index = parseTop; index > 0; index--)
        if (parseStack[index].isCursor && parseStack[index].statement() == statement)
            return index;
    return -1;
}

}  // namespace

void dropStatement() {
    StmtNode *statement = currentStmt;
    currentStmt = nullptr;
    releaseStatements(pendingBefore);
    releaseStatements(pendingAfter);
    pendingBefore = pendingAfter = nullptr;
    int index = statement ? entryOf(statement) : -1;
    if (index < 0)
        return;
    parseTop = static_cast<int16_t>(index);
    StmtNode *next = statement->next, *owner = ownerAt(parseTop - 1);
    // A body keeps its only place, as the null statement that it started as.
    if (!statement->prev && owner && owner->kind != STMT_BLOCK) {
        releaseOperands(statement);
        *statement = StmtNode{};
        statement->kind = STMT_NULL;
        statement->next = next;
        statement->operandB.statement = owner;
        closeStatement();
        return;
    }
    noteFirst(next, statement);
    moveCases(statement, next);
    if (statement->prev)
        statement->prev->next = next;
    next->prev = statement->prev;
    parseStack[parseTop].record = next;
    releaseOperands(statement);
    delete statement;
}

// ---- else ---------------------------------------------------------------------------------------

namespace {

// The statement that a list's last statement is, or ends with; NULL if its end is closed.
StmtNode *lastOfBody(StmtNode *first, const StmtNode *step) {
    StmtNode *last = nullptr;
    for (StmtNode *statement = first; statement && statement->kind != STMT_END && statement != step;
         statement = statement->next)
        last = statement;
    return last;
}

StmtNode *openPartOf(StmtNode *statement) {
    switch (statement->kind) {
        case STMT_IF:
            return lastOfBody(statement->operandC.statement ? statement->operandC.statement
                                                            : statement->operandB.statement,
                              nullptr);
        case STMT_LOOP:
            return lastOfBody(statement->operandC.statement, statement->operandD.statement);
        case STMT_FOREACH: return lastOfBody(statement->operandE.statement, nullptr);
        default: return nullptr;
    }
}

}  // namespace

bool openElse() {
    StmtNode *last = cursor()->prev, *match = nullptr;
    for (StmtNode *statement = last; statement; statement = openPartOf(statement))
        if (statement->kind == STMT_IF && !statement->operandC.statement)
            match = statement;  // the innermost one
    if (!match)
        return false;
    // The lists between are open again.
    parseStack[parseTop].record = last;
    for (StmtNode *statement = last; statement != match;) {
        statement = openPartOf(statement);
        if (!pushCursor(statement))
            return true;
    }
    match->operandC.statement = openBody(match);
    return true;
}

}  // namespace zy
