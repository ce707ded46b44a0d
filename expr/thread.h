// open header: Threading: a finished tree becomes a postfix program. Its nodes are linked through
// `next` in the order in which they run, operands before operators, and each gets the routine that
// runs it. The tree stays: operators find their constant operands, and their targets, in their
// operand fields. Threading a tree again gives the same chain and makes no new nodes.
//
// Whatever an operator reads by itself is not in the chain: the variable that a subscript node
// (704 to 713) takes its element from, and the operand of `&`, whose node stands alone behind the
// subscripts and pointers of its operand. So no routine has to step over nodes.
#pragma once

#include "expr/value.h"

namespace zy {

// The head of the chain of `tree`, which continues with `next`. Constants are read where they stand
// and are part of the chain only with keepConstants.
ExprNode *compileChain(ExprNode *tree, ExprNode *next, bool keepConstants);

// What runs in front of `next`, so that the subscripts and pointers of an assignment's target lie
// on the stack when it stores.
ExprNode *threadAssignTarget(ExprNode *target, ExprNode *next);

// Of && || and ?: where the chain goes on, by the operand: the branch that then runs goes on with what
// stands behind the operator.
struct BranchChains {
    ExprNode *first;   // right of && and ||; what stands behind ?
    ExprNode *second;  // behind && and || that are decided; what stands behind :
};
BranchChains branchChainsOf(const ExprNode *node);
// What runs at the end of such a branch, if anything has to.
void endShortCircuit(ExprNode *end);
void endFirstBranch(ExprNode *end);
void endSecondBranch(ExprNode *end);

// Of operators that evaluate their arguments one at a time: each list cell keeps the chain of its
// item, which is no part of the operator's. A constant, which is read in place, has none.
void threadArguments(ExprNode *list);
inline ExprNode *argumentChain(const ExprNode *cell) { return static_cast<ExprNode *>(cell->link); }

// Whether the target of a cast has its shape from a Value of its own, which the chain pushes before
// the operand.
bool hasRunTimeShape(const ExprNode *target);

// The address node that runs behind an argument which is passed by reference and is an lvalue but
// no plain variable; its pointer lies above the argument's value. NULL for every other argument.
ExprNode *referenceAddressOf(const ExprNode *actual);

}  // namespace zy
