// State of the statement parser.

#include "stmt/parseStack.h"

namespace zy {

ParseEntry parseStack[PARSE_STACK_SIZE];
int16_t parseTop = -1;

StmtNode *rootStmt;
StmtNode *globalBlock;
StmtNode *currentBlock;

}  // namespace zy
