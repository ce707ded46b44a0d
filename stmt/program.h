// A parsed program: its root, main block, labels. One program is held at a time.
#pragma once

#include "front/fileNames.h"
#include "stmt/stmtNode.h"

namespace zy {

// The compound statements around a place, innermost first. A heap block.
struct Enclosing {
    int count;
    StmtNode *statements[];
};

// A label of a function or of file level, made by the first goto or by its definition.
struct Label {
    Label *next;
    NameEntry *name;
    StmtNode *statement;   // NULL until it is defined
    StmtNode *block;       // the innermost block of the definition
    FuncInfo *function;    // NULL at file level
    bool wanted;           // a goto names it
    Enclosing *enclosing;  // of the definition; owned
};

// One or more `case` labels with the statement they stand at.
// A record of the shared format of nodes: `kind` lies where it lies in them.
struct CaseGroup {
    CaseGroup *next;
    ExprNode *labels;  // list cells with constants; see stmt/parseSwitch.cpp for `default`
    uint32_t kind;     // NODE_CASE_GROUP
    StmtNode *first;   // a place in the one list of the switch's body
};

// A fresh program with an empty main block, entered on the parse stack.
void newProgram();
// Releases the program with its statements and declarations; none is left.
void releaseProgram();
// Releases a list of statements up to its end, and the statements they hold.
void releaseStatements(StmtNode *first);
// Releases what the operands of a statement hold.
void releaseOperands(StmtNode *statement);

// The context list, frames, keyword changes and parser cells back to those of a fresh program.
void resetRunState();
// The same, but the base context with its frames of level 0 and 1 stays, and with it the global
// variables that the parser made.
void rewindRunState();

}  // namespace zy
