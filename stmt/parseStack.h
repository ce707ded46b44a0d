// record header: the parser's stack of open statements. Each list of statements that is open has an
// entry, the node at which it stands: its end, before which statements are added, or the statement
// being built. Below it stands the entry of the list that holds the owner. A function and a switch
// have an entry of their own between the two. The root and the two entries of the main block occupy
// indexes 0 to 2, so the parser is at file level when the index is 2.
#pragma once

#include "stmt/stmtNode.h"

namespace zy {

constexpr int PARSE_STACK_SIZE = 128;
constexpr int FILE_LEVEL_TOP = 2;

struct ParseEntry {
    bool isCursor;  // a statement at which a list stands; otherwise a FuncInfo or a CaseGroup
    void *record;

    StmtNode *statement() const { return static_cast<StmtNode *>(record); }
};

extern ParseEntry parseStack[PARSE_STACK_SIZE];
extern int16_t parseTop;  // -1 when empty

extern StmtNode *rootStmt;      // of the program
extern StmtNode *globalBlock;   // its main block, level 1: the declarations at file scope
extern StmtNode *currentBlock;  // the innermost block being parsed

// False after a message, with the parse ended, if there is no room.
bool pushCursor(StmtNode *statement);
bool pushContext(void *record);

// The node at which the innermost list stands, and its owner; NULL if a context stands there.
inline StmtNode *cursor() { return parseStack[parseTop].statement(); }
inline StmtNode *ownerAt(int index) {
    return index >= 0 && parseStack[index].isCursor ? parseStack[index].statement() : nullptr;
}
// The function of a context entry, NULL for any other entry.
FuncInfo *functionAt(int index);
// The function whose body is being parsed, NULL at file level.
FuncInfo *parsedFunction();

}  // namespace zy
