// Calls in direct trees.
#pragma once

#include "expr/direct.h"

namespace zy {

// The call of such a tree that runs before all else in it; NULL for a tree that has none, or more.
ExprNode *callInFront(ExprNode *tree);
// The call that the tree being made direct may have.
extern const ExprNode *madeCall;
// Makes it read its result from the stack.
DirectForm makeDirectCall(ExprNode *node, int depth);
// What stands in the chain for it, in its `fourth`: its own node computes the result. NULL if
// memory is exhausted.
ExprNode *nodeOfCall(ExprNode *call);

}  // namespace zy
