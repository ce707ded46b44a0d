// open header: The statement parser. It pulls tokens, classifies each statement by its first token
// and by the characters behind it, and builds one StmtNode for it, with its expressions as chains
// at once. Declarations take effect while they are parsed: there is one pass and no tree of the
// program beyond the lists of statements.
#pragma once

#include "stmt/parseStack.h"

namespace zy {

// Parses until the end of input; `nested` is set for a parse inside another. Called after the first
// line was read; errorFlag and parseOk tell how it went.
void parseProgram(bool nested);

// What a declaration or an expression wants to run before or after the statement being parsed: a
// list of statements linked by `next`, put into the statement list when it has been read.
extern StmtNode *pendingBefore, *pendingAfter;
// The statement being built, NULL between statements.
extern StmtNode *currentStmt;

// A statement of its own, outside of all lists, with the line and file of the parser.
StmtNode *newStmtNode(StmtKind kind);
// A statement at the end of such a list.
StmtNode *appendPending(StmtNode *&list, StmtKind kind);

// Enters the body of a function: a block two levels above the function, on the parse stack with the
// function. The block's next is the closing return.
StmtNode *openFunctionBody(FuncInfo *function);

}  // namespace zy
