// The progress fields of a function's body stand in the shared tree. A call saves and clears them,
// so that its activation starts on clean fields; the return puts them back.

#include <cstdlib>

#include "stmt/execute.h"
#include "stmt/program.h"

namespace zy {

namespace {

// Calls visit(progress byte) for each compound statement of a list, in one fixed order.
template <class Visit>
void visitPhases(StmtNode *first, const StmtNode *stop, Visit &visit);

template <class Visit>
void visitSwitch(StmtNode *statement, Visit &visit) {
    visit(statement->operandD.progress);
    visitPhases(statement->operandC.statement->operandA.statement, statement, visit);
    if (const CaseGroup *group = statement->operandB.groups->next)
        visitPhases(group->first, nullptr, visit);
}

template <class Visit>
void visitForeach(StmtNode *statement, Visit &visit) {
    auto progress = static_cast<unsigned char>(statement->level);
    visit(progress);
    statement->level = progress;
    visitPhases(statement->operandE.statement, nullptr, visit);
}

template <class Visit>
void visitPhases(StmtNode *first, const StmtNode *stop, Visit &visit) {
    for (StmtNode *statement = first; statement && statement != stop && statement->kind != STMT_END;
         statement = statement->next) {
        switch (statement->kind) {
            case STMT_BLOCK: visitPhases(statement->operandA.statement, nullptr, visit); break;
            case STMT_FOREACH: visitForeach(statement, visit); break;
            case STMT_IF:
                visit(statement->operandD.progress);
                visitPhases(statement->operandB.statement, nullptr, visit);
                visitPhases(statement->operandC.statement, nullptr, visit);
                break;
            case STMT_LOOP:
            case STMT_DO:
                visit(statement->operandE.progress);
                visitPhases(statement->operandC.statement, nullptr, visit);
                break;
            case STMT_SWITCH: visitSwitch(statement, visit); break;
            default: break;
        }
    }
}

constexpr int PHASE_STEP = 128;

// Saves bytes one behind the other; the buffer is made when the first one comes.
struct PhaseSaver {
    unsigned char *&buffer;
    int count = 0;
    void operator()(unsigned char &progress) {
        if (count % PHASE_STEP == 0)
            buffer = static_cast<unsigned char *>(realloc(buffer, count + PHASE_STEP));
        buffer[count++] = progress;
        progress = 0;
    }
};

struct PhaseRestorer {
    const unsigned char *buffer;
    int count = 0;
    void operator()(unsigned char &progress) { progress = buffer[count++]; }
};

}  // namespace

void saveStatementPhases(ExecContext *context, StmtNode *body) {
    PhaseSaver saver{context->resumeStatus};
    visitPhases(body->operandA.statement, nullptr, saver);
}

void restoreStatementPhases(ExecContext *context, StmtNode *body) {
    PhaseRestorer restorer{context->resumeStatus};
    if (restorer.buffer)
        visitPhases(body->operandA.statement, nullptr, restorer);
}

}  // namespace zy
