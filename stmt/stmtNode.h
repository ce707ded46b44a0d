// record header: StmtNode, one statement. The statements of a block form a doubly linked list that
// ends in an end-of-block node; the parts of compound statements hang on operands, told by kind:
//
//   kind        A                  B                 C                D               E
//   ROOT        main block         labels            pending gotos
//   BLOCK       first statement    enclosing block   TypeInfo list    tag list         body: phases
//   END                            owning statement
//   FOREACH     index expression   list              condition        delimiters       body
//   IF          condition          then part         else part        progress
//   LOOP        condition          first of `for`    body             step of `for`    progress
//   DO          condition                            body                              progress
//   SWITCH      controlling tree   case groups       body's block     progress         list's end
//   COMMAND     command word       option word       argument text    $ expression
//   RETURN      value              FuncInfo          1: in the script                  of a number
//   GOTO        label record       block of the goto  what it is in
//   EXIT, STOP, ABORT, PERROR, FREE, CLEARERR, SRAND   argument tree
//   LONGJMP     environment        value
//   INITIALISE  variable           value
//   DELETE      pointer            array size        destructors
//   EXPRESSION  expression
//   BREAK, CONTINUE  target        its own block     target's block
//
// A compound statement keeps its own progress, so that running it needs no recursion: the position
// of a running script is data.
#pragma once

#include <cstdint>

#include "decl/structInfo.h"
#include "decl/typeInfo.h"

namespace zy {

struct ExprNode;
struct FuncInfo;
struct CaseGroup;
struct Enclosing;
struct Label;
struct NameEntry;

enum StmtKind : uint32_t {
#define ZY_STATEMENT(name, kind, arm) STMT_##name = kind,
#include "stmt/statements.inc"
#undef ZY_STATEMENT
};

constexpr int STATEMENT_KIND_COUNT = 73;

// An operand of a statement, by what its kind keeps there.
union StmtOperand {
    void *pointer;
    ExprNode *tree;
    struct StmtNode *statement;
    TypeInfo *symbols;
    TagEntry *tags;
    FuncInfo *function;
    CaseGroup *groups;
    Label *label;
    Enclosing *enclosing;
    intptr_t number;
    unsigned char progress;
    void (*compute)(ExprNode *tree, ExprNode *result);  // DirectNumber
};

struct StmtNode {
    StmtNode *next, *prev;
    ExprNode *chain;   // evaluated first, or NULL
    uint32_t kind;     // StmtKind
    const char *file;  // interned
    int32_t line;
    StmtOperand operandA, operandB, operandC, operandD, operandE;
    uint16_t level;        // of a block its scope level, of a command its mode
    uint16_t symbolCount;  // of a block: declarations in it
    uint8_t hasObjects;    // of a block: its end has something to destroy

    // The views of a block.
    StmtNode *enclosingBlock() const { return operandB.statement; }
    TypeInfo *&symbols() { return operandC.symbols; }
};

}  // namespace zy
