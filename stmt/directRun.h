// Statements that need no value stack, run one behind the other without the statement loop's steps.
#pragma once

#include "expr/value.h"
#include "stmt/stmtNode.h"

namespace zy {

// Runs from a statement that hasn't started as long as there is nothing but direct trees to
// evaluate: expressions, conditions of if and loops, and what holds them together. Gives the
// statement that the loop goes on with, not started; the context's position follows each step, for
// the messages. Only while the host wants no events.
StmtNode *runDirectStatements(ExecContext *context, StmtNode *statement);

}  // namespace zy
