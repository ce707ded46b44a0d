// The compound statements of a function's body and their progress fields.

#include <bit>
#include <vector>

#include "stmt/arms.h"
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

}  // namespace

std::vector<unsigned char *> progressFields(StmtNode *body) {
    Statements statements;
    collect(body->operandA.statement, nullptr, statements);
    std::vector<unsigned char *> fields;
    for (StmtNode *statement : statements)
        fields.push_back(progressOf(statement));
    return fields;
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

}  // namespace zy
