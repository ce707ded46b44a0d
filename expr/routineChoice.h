// Where threading asks which routine runs a node of a chain: an operator's, or the one that pushes
// an operand. The place to pick a routine made for the operands' places and static types.
#pragma once

#include "expr/value.h"

namespace zy {

// Called once for each node that gets into a chain, when its operands have been threaded. `link`
// shares storage with the routine and is overwritten with the answer.
NodeRoutine routineFor(ExprNode *node);

}  // namespace zy
