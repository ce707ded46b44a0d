// The progress fields of a function's body stand in the shared tree. A call saves and clears them,
// so that its activation starts on clean fields; the return puts them back.

#include <bit>
#include <cstdlib>
#include <vector>

#include "stmt/arms.h"
#include "stmt/execute.h"
#include "stmt/program.h"

namespace zy {

namespace {

// The compound statements of a list.
void collect(StmtNode *first, const StmtNode *stop, Statements &found);

void collectSwitch(StmtNode *statement, Statements &found) {
    collect(statement->operandC.statement->operandA.statement, statement, found);
    if (const CaseGroup *group = statement->operandB.groups->next)
        collect(group->first, nullptr, found);
}

void collectFrom(StmtNode *statement, Statements &found) {
    if (statement->kind == STMT_BLOCK) {
        collect(statement->operandA.statement, nullptr, found);
        return;
    }
    if (statement->kind < STMT_FOREACH || statement->kind > STMT_SWITCH)
        return;
    found.push_back(statement);
    switch (statement->kind) {
        case STMT_FOREACH: collect(statement->operandE.statement, nullptr, found); break;
        case STMT_IF:
            collect(statement->operandB.statement, nullptr, found);
            collect(statement->operandC.statement, nullptr, found);
            break;
        case STMT_SWITCH: collectSwitch(statement, found); break;
        default: collect(statement->operandC.statement, nullptr, found); break;
    }
}

void collect(StmtNode *first, const StmtNode *stop, Statements &found) {
    for (StmtNode *statement = first; statement && statement != stop && statement->kind != STMT_END;
         statement = statement->next)
        collectFrom(statement, found);
}

// Where a statement keeps its progress; a foreach, in the low byte of `level`.
unsigned char *progressOf(StmtNode *statement) {
    constexpr int lowByte = std::endian::native == std::endian::little ? 0 : 1;
    switch (statement->kind) {
        case STMT_FOREACH: return reinterpret_cast<unsigned char *>(&statement->level) + lowByte;
        case STMT_IF:
        case STMT_SWITCH: return &statement->operandD.progress;
        default: return &statement->operandE.progress;
    }
}

// The progress fields of a body, found once, and how many activations of it there are.
struct PhaseList {
    std::vector<unsigned char *> fields;
    int activations = 0;
};

PhaseList *phaseListOf(StmtNode *body) {
    auto *list = static_cast<PhaseList *>(body->operandE.pointer);
    if (list)
        return list;
    list = new PhaseList;
    Statements statements;
    collect(body->operandA.statement, nullptr, statements);
    for (StmtNode *statement : statements)
        list->fields.push_back(progressOf(statement));
    body->operandE.pointer = list;
    return list;
}

bool anyStarted(const PhaseList *list) {
    for (const unsigned char *field : list->fields)
        if (*field)
            return true;
    return false;
}

// A context's buffer: whether phases are saved in it, then the phases. That of the common size
// stays with the context for its next use.
constexpr size_t PHASE_BUFFER = 24;

unsigned char *phaseBuffer(ExecContext *context, size_t size) {
    if (size > PHASE_BUFFER || !context->resumeStatus) {
        free(context->resumeStatus);
        size_t room = size > PHASE_BUFFER ? size : PHASE_BUFFER;
        context->resumeStatus = static_cast<unsigned char *>(allocOrFail(room));
    }
    return context->resumeStatus;
}

void freeLargeBuffer(ExecContext *context, size_t size) {
    if (size <= PHASE_BUFFER)
        return;
    free(context->resumeStatus);
    context->resumeStatus = nullptr;
}

}  // namespace

// Only an activation that stands inside another of the same body finds phases to save.
void saveStatementPhases(ExecContext *context, StmtNode *body) {
    PhaseList *list = phaseListOf(body);
    bool nested = list->activations++ > 0 && anyStarted(list);
    if (context->resumeStatus)
        context->resumeStatus[0] = nested;
    if (!nested)
        return;
    unsigned char *buffer = phaseBuffer(context, list->fields.size() + 1);
    if (!buffer)
        return;
    *buffer++ = true;
    for (unsigned char *field : list->fields) {
        *buffer++ = *field;
        *field = 0;
    }
}

void restoreStatementPhases(ExecContext *context, StmtNode *body) {
    PhaseList *list = phaseListOf(body);
    list->activations--;
    const unsigned char *buffer = context->resumeStatus;
    bool saved = buffer && buffer[0];
    for (unsigned char *field : list->fields)
        *field = saved ? *++buffer : 0;
    if (saved)
        freeLargeBuffer(context, list->fields.size() + 1);
}

void resetProgress(StmtNode *body, const StmtNode *target, const Statements &owners) {
    Statements statements;
    collect(body->operandA.statement, nullptr, statements);
    for (StmtNode *statement : statements) {
        bool isLoop = statement->kind == STMT_LOOP || statement->kind == STMT_DO;
        if (isLoop && (statement == target || contains(owners, statement)))
            *progressOf(statement) = CONDITION_DUE;
        else if (statement->kind != STMT_FOREACH)
            *progressOf(statement) = NOT_STARTED;
    }
}

void releasePhaseList(StmtNode *body) { delete static_cast<PhaseList *>(body->operandE.pointer); }

}  // namespace zy
