// The machine that walks statement lists. There is no recursion over the program's structure: the
// position is data in the context and in the progress fields of compound statements, and a call
// only swaps currentContext.
#pragma once

#include "expr/value.h"
#include "stmt/stmtNode.h"

namespace zy {

// Runs from currentContext's position until the program's end, or until something clears
// `executing`. debug is true where a program or a host call starts the statements, false for nested
// runs, whose caller saves `executing`, `statement` and `chain`.
void runStatements(bool debug);

// Saves the progress of the compound statements of a function's body behind resumeStatus and clears
// it; a call does it for the callee's activation, the return puts it back.
void saveStatementPhases(ExecContext *context, StmtNode *body);
void restoreStatementPhases(ExecContext *context, StmtNode *body);

// Cells (stmt/runState.cpp).
extern bool stepMode;  // the debugger's single-stepping is on
extern bool runEnded;  // _exit or _abort ended the run: main isn't called any more

// The end of a run that Zy_Abort() asked for.
void doAbort();
// Defined by the embedding interface, which calls the functions.
void runAtExit();
void freeAtExitList();

}  // namespace zy
