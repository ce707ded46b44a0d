// The arms of the statement loop: each runs the statement where the context stands, whose chain has
// run, and moves the context on.
#pragma once

#include <algorithm>
#include <vector>

#include "expr/value.h"
#include "stmt/stmtNode.h"

namespace zy {

using StatementArm = void (*)(ExecContext *context, StmtNode *statement);

#define ZY_STATEMENT(name, kind, arm) void arm(ExecContext *context, StmtNode *statement);
#include "stmt/statements.inc"
#undef ZY_STATEMENT

// The common ending.
inline void moveTo(ExecContext *context, StmtNode *statement) {
    context->phase = 0;
    context->statement = statement;
}

// Releases the frames of the blocks from `block` outward that lie inside `outer`.
void leaveBlocks(StmtNode *block, const StmtNode *outer);

// Progress of a statement.
enum LoopProgress : unsigned char { NOT_STARTED, CONDITION_DUE, VALUE_STANDS };

// The progress fields of the compound statements of a body.
std::vector<unsigned char *> progressFields(StmtNode *body);

// foreach: the next token for a loop whose body has ended, and the end of one that is left.
void advanceForeach(ExecContext *context, StmtNode *statement, const char *failure);
void abandonForeach(ExecContext *context, StmtNode *statement);

// Ends a switch that a jump leaves, with its value if a label has still to be looked for.
void abandonSwitch(StmtNode *statement);

// A jump to a statement: what it lies in, from the innermost outward, stays begun, all else of the
// body isn't any more.
using Statements = std::vector<StmtNode *>;
inline bool contains(const Statements &statements, const void *statement) {
    return std::find(statements.begin(), statements.end(), statement) != statements.end();
}
void resetProgress(StmtNode *body, const StmtNode *target, const Statements &owners);
// Empties the value stack down to the record of the innermost foreach that the jump stays in.
void leaveForeachs(ExecContext *context, const Statements &owners);

// The condition of a statement, whose chain has run, as a truth value.
bool truthOf(const StmtNode *statement);

}  // namespace zy
