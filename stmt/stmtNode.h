// record header: StmtNode, one statement. The statements of a block form a doubly linked list that
// ends in an end-of-block node; the parts of compound statements hang on operands, as told by kind.
#pragma once

#include <cstdint>

#include "decl/typeInfo.h"

namespace zy {

struct ExprNode;

enum StmtKind : uint32_t {
    STMT_ROOT = 0,       // A main block, B labels, C pending gotos
    STMT_BLOCK = 1,      // A first statement, B enclosing block, C its TypeInfo list, D its tags
    STMT_END = 3,        // last node of a list; B owning statement
    STMT_GROUP_END = 4,  // the same at the end of a case group
    STMT_DECLARATION = 26,
    STMT_NULL = 27,  // start node of every body
};

struct StmtNode {
    StmtNode *next, *prev;
    ExprNode *chain;   // evaluated first, or NULL
    uint32_t kind;     // StmtKind
    const char *file;  // interned
    int32_t line;
    void *operandA, *operandB, *operandC, *operandD, *operandE;
    uint16_t level;        // of a block its scope level, of a command its mode
    uint16_t symbolCount;  // of a block: declarations in it

    // The views of a block.
    StmtNode *enclosingBlock() const { return static_cast<StmtNode *>(operandB); }
    TypeInfo *&symbols() { return reinterpret_cast<TypeInfo *&>(operandC); }
};

}  // namespace zy
