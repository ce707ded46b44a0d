// The arms of the statement loop: each runs the statement where the context stands, whose chain has
// run, and moves the context on.
#pragma once

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

// foreach: the next token for a loop whose body has ended, and the end of one that is left.
void advanceForeach(ExecContext *context, StmtNode *statement, const char *failure);
void abandonForeach(ExecContext *context, StmtNode *statement);

// The condition of a statement, whose chain has run, as a truth value.
bool truthOf(const StmtNode *statement);

}  // namespace zy
