// Elements, members and what pointers point to, as operands and targets of direct trees. Where such
// a number lies is found without the stack; a place that the guards have something to say about is
// left to the chain of a copy, which prints the messages and does what they say.
#pragma once

#include "expr/direct.h"

namespace zy {

// What reads the number of a node `a[i]`, `a[i][j]`, `p[i]`, `*p`, `s.m` or `p->m`. Its type, or an
// empty form for a node that isn't one, or not of a number.
DirectForm makeDirectPlaceRead(ExprNode *node, int depth);
// Makes such a node the target of a store: its `place` gives the address. Its type, or -1.
int makeDirectTarget(ExprNode *node, int depth);

// Makes the `place` of such a node find a pointer to function. Whether it is one.
bool makeDirectFunctionRead(ExprNode *node);
// Runs in a chain for it: pushes the pointer.
void pushFunctionElement(ExprNode *node);

// For a target whose place() gave NULL: the number there, and a store to it.
Value *readPlaceSlowly(ExprNode *target);
void storeInPlaceSlowly(ExprNode *target, const Value &number);

// Whether evaluating the tree changes nothing, so that it can be done twice.
bool isPure(const ExprNode *tree);

// The subscripts of the node whose place was last not found.
struct LostSubscripts {
    int count;
    int values[2];
};
extern LostSubscripts lostSubscripts;

}  // namespace zy
