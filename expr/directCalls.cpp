// A tree of numbers with one call in it, which runs before all else of the tree: the chain makes
// the call, then the tree is computed directly, with the call's result from the stack in its place.
// Of several calls the results would lie on the stack in the wrong order.

#include "expr/directCalls.h"

#include "decl/funcInfo.h"
#include "expr/directOperands.h"
#include "expr/nodeClasses.h"
#include "expr/nodes.h"
#include "expr/typeQueries.h"
#include "stmt/calls.h"

namespace zy {

namespace {

bool isConstant(const ExprNode *tree) {
    return tree && tree->kind == NODE_VALUE && tree->type != DT_NAME;
}

bool runsLeftFirst(int op) {
    return op == OP_AND || op == OP_OR || op == OP_CONDITIONAL || op == OP_COMMA;
}

// Places are found by their nodes alone.
bool isPlace(int op) {
    return isSubscript(op) || isMember(op) || isIncrement(op) || op == OP_INDIRECTION;
}

// With the call `known`, whose arguments are its own affair. Of a tree with many, or so deep that
// it can't be direct, not all.
int countCalls(const ExprNode *tree, const ExprNode *known, int depth) {
    if (!tree || depth > DEPTH_MAX)
        return 0;
    if (tree->kind == NODE_LIST)
        return countCalls(tree->item, known, depth + 1) + countCalls(tree->next, known, depth + 1);
    if (tree->kind != NODE_OPERATOR)
        return 0;
    int count = tree->op == OP_CALL;
    for (const ExprNode *operand : {tree->left, tree->right, tree->third})
        if (tree != known && count < 2)
            count += countCalls(operand, known, depth + 1);
    return count;
}

// What runs before all else of a tree.
ExprNode *firstOperator(ExprNode *tree) {
    for (int depth = 0; depth <= DEPTH_MAX; depth++) {
        if (!isOperator(tree) || tree->op == OP_CALL || isPlace(tree->op))
            break;
        bool takesRight = tree->right && !isConstant(tree->right) && !runsLeftFirst(tree->op);
        tree = takesRight ? tree->right : tree->left;
    }
    return tree;
}

bool givesNumber(const ExprNode *call) {
    const FuncInfo *function = calledFunction(call);
    bool isPlain = function && function->returnKind == KIND_SIMPLE && isNumber(treeType(call));
    bool isMemberCall = isPlain && function->owner && function->owner->flags & FLAG_MEMBER_FUNCTION;
    bool byElement = isOperator(call->left) && isSubscript(call->left->op);
    return isPlain && !isMemberCall && (byElement || variableOf(call->left));
}

void runCallInFront(ExprNode *node) {
    ExprNode *call = node->left;
    call->next = node->next;
    callFunction(call);
}

template <class T>
Register<T> poppedNumber(ExprNode *) {
    Value *value = popValue();
    if (!value || value->type != Scalar<T>::type) [[unlikely]]
        return numberOf<T>(value);
    T number = numberIn<T>(value->payload);
    recycleValue(value);
    return number;
}

}  // namespace

ExprNode *callInFront(ExprNode *tree) {
    ExprNode *call = firstOperator(tree);
    bool isCall = call != tree && isOperator(call) && call->op == OP_CALL;
    if (!isCall || !givesNumber(call) || countCalls(tree, call, 0) != 1)
        return nullptr;
    bool isFree = !call->fourth || call->fourth->kind == NODE_BRANCHES;
    return isFree ? call : nullptr;
}

DirectForm makeDirectCall(ExprNode *node, int) {
    if (node != madeCall)
        return {};
    int type = treeType(node);
    return withType(type,
                    [&]<class T>() { return DirectForm{adopt(node, poppedNumber<T>, type)}; });
}

ExprNode *nodeOfCall(ExprNode *call) {
    ExprNode *node = branchesOf(call);
    if (!node)
        return nullptr;
    node->left = call;
    node->right = nullptr;
    node->routine = runCallInFront;
    return node;
}

}  // namespace zy
