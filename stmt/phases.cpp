// The progress fields of a function's body stand in the shared tree. A call saves and clears them,
// so that its activation starts on clean fields; the return puts them back.

#include <cstdlib>
#include <vector>

#include "stmt/execute.h"
#include "stmt/program.h"

namespace zy {

namespace {

using Statements = std::vector<StmtNode *>;

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

unsigned char progressOf(const StmtNode *statement) {
    switch (statement->kind) {
        case STMT_FOREACH: return static_cast<unsigned char>(statement->level);
        case STMT_IF:
        case STMT_SWITCH: return statement->operandD.progress;
        default: return statement->operandE.progress;
    }
}

void setProgress(StmtNode *statement, unsigned char progress) {
    switch (statement->kind) {
        case STMT_FOREACH: statement->level = progress; break;
        case STMT_IF:
        case STMT_SWITCH: statement->operandD.progress = progress; break;
        default: statement->operandE.progress = progress;
    }
}

// The compound statements of a body, found once, and how many activations of it there are.
struct PhaseList {
    Statements statements;
    int activations = 0;
};

PhaseList *phaseListOf(StmtNode *body) {
    auto *list = static_cast<PhaseList *>(body->operandE.pointer);
    if (list)
        return list;
    list = new PhaseList;
    collect(body->operandA.statement, nullptr, list->statements);
    body->operandE.pointer = list;
    return list;
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
    bool nested = list->activations++ > 0 && !list->statements.empty();
    if (context->resumeStatus)
        context->resumeStatus[0] = nested;
    if (!nested)
        return;
    unsigned char *buffer = phaseBuffer(context, list->statements.size() + 1);
    if (!buffer)
        return;
    *buffer++ = true;
    for (StmtNode *statement : list->statements) {
        *buffer++ = progressOf(statement);
        setProgress(statement, 0);
    }
}

void restoreStatementPhases(ExecContext *context, StmtNode *body) {
    PhaseList *list = phaseListOf(body);
    list->activations--;
    const unsigned char *buffer = context->resumeStatus;
    bool saved = buffer && buffer[0];
    for (StmtNode *statement : list->statements)
        setProgress(statement, saved ? *++buffer : 0);
    if (saved)
        freeLargeBuffer(context, list->statements.size() + 1);
}

void releasePhaseList(StmtNode *body) { delete static_cast<PhaseList *>(body->operandE.pointer); }

}  // namespace zy
