// Where threading asks which routine runs a node of a chain: an operator's, or the one that pushes
// an operand. The place to pick a routine made for the operands' places and static types.
#pragma once

#include "expr/value.h"

namespace zy {

// Called for each node that gets into a chain; threading stores the answer in the node's `routine`,
// which shares storage with `link`.
NodeRoutine routineFor(ExprNode *node);

}  // namespace zy
