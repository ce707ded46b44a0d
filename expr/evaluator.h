// record header: the evaluator. A chain is a postfix program of nodes linked by `next`; each node
// carries the routine that runs it, so the loop makes one indirect call a node and no choice. All
// state between two steps is the context's `chain` and `stack`.
#pragma once

#include "expr/value.h"

namespace zy {

// Runs currentContext->chain until it is NULL, in whichever context a step leaves.
void runChain();

// Runs a chain to its end, calls of script functions in it included, and comes back to where the
// current context stood. The chain's value is on the stack.
void runNested(ExprNode *chain);

// The address that `&inner` gives, as a pointer Value; NULL after a message.
Value *addressOf(ExprNode *inner);

// One more, one less: numbers by 1, pointers by an element. A new Value of the same type; NULL
// after a message for a type that can't.
Value *incrementValue(const Value *old);
Value *decrementValue(const Value *old);

// && and ||: goes on with the right operand, or behind the operator if the left one decides.
bool evalShortCircuit(ExprNode *node, int code, const Value *left);
void evalConditional(ExprNode *node);

}  // namespace zy
