// The machine that walks statement lists. There is no recursion over the program's structure: the
// position is data in the context and in the progress fields of compound statements, and a call
// only swaps currentContext.
#pragma once

#include "expr/value.h"
#include "stmt/stmtNode.h"

namespace zy {

// The script's memory for a place that longjmp returns to.
struct JumpRecord {
    int64_t value;
    FuncInfo *function;  // NULL at file level
    StmtNode *statement;
};

// Runs from currentContext's position until the program's end, or until something clears
// `executing`. debug is true where a program or a host call starts the statements, false for nested
// runs, whose caller saves `executing`, `statement` and `chain`.
void runStatements(bool debug);

// Cells (stmt/runState.cpp).
extern bool stepMode;      // the debugger's single-stepping is on
extern bool runEnded;      // _exit or _abort ended the run: main isn't called any more
extern bool runCut;        // the last runStatements() was ended so, or by an abort
extern int endingDepth;    // of the run that is to go on with the end; 0: none
extern bool hasEndStatus;  // the end leaves endStatus on the stack
extern int endStatus;
extern bool exitRequested;  // with abortRequest: the run is to end that way
extern int runDepth;        // of runs of the statement loop inside each other
extern JumpRecord *pendingJump;
extern ExecContext *pendingTarget;  // where it goes to; NULL: by the record's function
extern int pendingJumpDepth;        // of the run that is to take it up
// The cell of __func__, and the base frame in which it was found.
extern const ScopeFrame *functionNameFrame;
extern VarCell *functionNameCell;

// A jump that has ended a nested run: the run around it, of that depth, goes on with it. False if
// none waits for this run, or if the jump ends this run, too.
bool takeUpJump();

// The end of a run that Zy_Abort() asked for, or _exit in a call from the host during that run.
void doAbort();
// Leaves functions up to where this run of the loop began. A run inside another one stands on the
// host's stack, and what is below still uses the contexts of the run around it.
void leaveFunctions();
// Ends this run, and those around it when the host's functions between them have returned.
void endRun();
// The end has come to a call of the host.
void forgetEnding();
// The run ends before its next statement, as _exit ends one.
void endOuterRun();
// Defined by the embedding interface, which calls the functions.
void runAtExit();
void freeAtExitList();

}  // namespace zy
