// State of the statement parser beside its stack.

#include "stmt/parser.h"

namespace zy {

StmtNode *pendingBefore, *pendingAfter;
StmtNode *currentStmt;

}  // namespace zy
