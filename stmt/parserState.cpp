// State of the statement parser beside its stack.

#include "stmt/lists.h"

namespace zy {

StmtNode *pendingBefore, *pendingAfter;
StmtNode *currentStmt;
ExprNode *pendingCases;
NameEntry *lineConstant, *fileConstant;
int syntaxErrors;

}  // namespace zy
