// open header: direct evaluation. A tree whose parts are all plain numbers (variables with a cell
// of their declared type, constants, arithmetic, comparisons, assignments to such variables) needs
// no value stack: each of its nodes computes its number by calling those of its operands. Order and
// messages are those of the chain that the tree would otherwise be threaded into.
//
// A node keeps its function where a chain would keep its routine. Integers are passed in 64 bits,
// extended from their own type, real numbers as double; which of the two goes by the static type.
#pragma once

#include "expr/events.h"
#include "expr/value.h"

namespace zy {

// Off, all trees are threaded into chains; the two ways give the same.
extern bool makesDirect;

// What became of a tree.
struct DirectForm {
    int type = -1;                 // DataType of the number; -1: the tree can't be made direct
    NodeRoutine effect = nullptr;  // runs an assigning tree for its effect alone
    explicit operator bool() const { return type >= 0; }
};

// Gives the nodes of a tree their functions. They stay valid as long as the tree does; threading
// the tree into a chain afterwards undoes it.
DirectForm makeDirect(ExprNode *tree);

// A node for a chain that pushes the tree's number; it is released with the tree. NULL for a tree
// that isn't direct, and for a lone variable or constant, which gain nothing. A call in its `right`
// has to run in front of it.
ExprNode *directNode(ExprNode *tree);
// The record in `fourth` for what threading adds to a node; NULL if memory is exhausted.
ExprNode *branchesOf(ExprNode *node);

// A statement that consists of such a tree has no chain. For an expression statement: the tree's
// routine runs it. For a condition: directInteger() gives its truth.
bool makeDirectStatement(ExprNode *tree);
bool makeDirectCondition(ExprNode *tree);

// What sets a record to the tree's number; NULL for a tree that isn't direct.
DirectNumber makeDirectNumber(ExprNode *tree);

// Whether a tree is more than a constant that is read where it stands.
inline bool isStatementTree(const ExprNode *tree) {
    return tree->kind == NODE_OPERATOR || (tree->kind == NODE_VALUE && tree->type == DT_NAME);
}

inline int64_t directInteger(ExprNode *tree) { return tree->integer(tree); }

// The nodes that the tree would have in a chain. Who evaluates it for a statement calls the second,
// so that the host gets its events.
int countSteps(const ExprNode *tree);
void deliverDirectSteps(const ExprNode *tree);
inline void noteDirectSteps(const ExprNode *tree) {
    if (wantsEvents()) [[unlikely]]
        deliverDirectSteps(tree);
}

}  // namespace zy
