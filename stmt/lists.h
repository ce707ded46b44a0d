// Statement lists while they are parsed: adding a statement, closing it and what it completes.
#pragma once

#include "stmt/parser.h"
#include "stmt/program.h"

namespace zy {

// A statement at the place where the innermost list stands.
StmtNode *newStatement(StmtKind kind);
// Makes a body, entered as the innermost list: a null statement, which the next statement takes
// over, and the list's end.
StmtNode *openBody(StmtNode *owner);
// Makes a block entered as the innermost list; `block` is its statement.
bool openBlock(StmtNode *block, int level);
// Moves on behind the statement that is complete, and behind all that it completes in turn.
void closeStatement();
// The end of a block, `}`.
void closeBlock();
// Puts the pending lists around the statement.
void splicePending(StmtNode *statement);
// Takes a failed statement out of its list, and the entries above it off the stack.
void dropStatement();

// Enters the else part of the `if` that an `else` belongs to here. False if there is none.
bool openElse();

// `while (...);` behind the body of a do statement.
bool parseDoCondition(StmtNode *statement);
// The labels in front of a statement that is dropped stand in front of the next one.
void moveCases(const StmtNode *dropped, StmtNode *next);
// The end of a switch, whose block is complete.
void finishSwitch(StmtNode *statement);
// Attaches the case labels that wait to the statement.
void attachCases(StmtNode *statement);

// ---- Cells (stmt/parserState.cpp) -------------------------------------------------------------

extern ExprNode *pendingCases;                  // labels read and not attached yet
extern NameEntry *lineConstant, *fileConstant;  // __LINE__ and __FILE__
extern int syntaxErrors;                        // reported in this parse

// ---- Jumps --------------------------------------------------------------------------------------

void finishLabels(FuncInfo *function);
// What is wrong with a function's last statement, as a message.
void checkReturn(StmtNode *block, FuncInfo *function);

}  // namespace zy
