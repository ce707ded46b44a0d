// record header: the parser's stack of open statements. The root and the two entries of the main
// block occupy indexes 0 to 2; a block that is open has an entry for itself, and above it one for
// the place in its list.
#pragma once

#include "stmt/stmtNode.h"

namespace zy {

constexpr int PARSE_STACK_SIZE = 128;

struct ParseEntry {
    bool isCursor;  // a statement at which a list stands; otherwise a FuncInfo or a case group
    void *record;

    StmtNode *statement() const { return static_cast<StmtNode *>(record); }
};

extern ParseEntry parseStack[PARSE_STACK_SIZE];
extern int16_t parseTop;  // -1 when empty

extern StmtNode *rootStmt;      // of the program
extern StmtNode *globalBlock;   // its main block, level 1: the declarations at file scope
extern StmtNode *currentBlock;  // the innermost block being parsed

}  // namespace zy
