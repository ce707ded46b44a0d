// How many events a direct tree makes: one for each node that a chain of it would have.

#include "expr/direct.h"
#include "expr/nodeClasses.h"

namespace zy {

namespace {

// What an operator does with its left operand by itself is not in a chain.
int stepsOfLeft(const ExprNode *node) {
    bool isTarget = node->op == OP_ASSIGN;
    if (isMember(node->op))
        return 0;
    if (isOperator(node->left))
        return countSteps(node->left) - isTarget;
    bool isRead = !isTarget && !isSubscript(node->op) && node->op != OP_CAST;
    return isRead ? countSteps(node->left) : 0;
}

// What runs on demand is counted where it runs, and a member is found by its node.
bool countsRight(int op) {
    bool onDemand = op == OP_AND || op == OP_OR || op == OP_CONDITIONAL;
    return !onDemand && !isMember(op) && !isIncrement(op);
}

}  // namespace

int countSteps(const ExprNode *tree) {
    if (!tree || (tree->kind == NODE_VALUE && tree->type != DT_NAME))
        return 0;
    if (tree->kind == NODE_LIST)
        return countSteps(tree->item) + countSteps(tree->next);
    if (tree->kind == NODE_VALUE)
        return 1;
    if (tree->op == OP_CALL)
        return 0;  // it stands in the chain itself
    return 1 + stepsOfLeft(tree) + (countsRight(tree->op) ? countSteps(tree->right) : 0);
}

}  // namespace zy
