#include "expr/constantTrees.h"

#include "expr/evaluator.h"
#include "expr/operators.h"
#include "expr/readers.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
#include "instance/langState.h"
#include "instance/report.h"

namespace zy {

namespace {

bool hasConstantOperands(const ExprNode *node) {
    auto isConstant = [](const ExprNode *operand) { return !operand || isConstantTree(operand); };
    return isConstant(node->left) && isConstant(node->right) && isConstant(node->third);
}

}  // namespace

// A function without arguments has no operand; `fourth` of && || and ?: is none.
bool isConstantTree(const ExprNode *tree) {
    if (constantOf(tree))
        return true;
    if (!tree || tree->kind != NODE_OPERATOR || !tree->left)
        return false;
    if (tree->op == OP_CAST)
        return isConstantTree(tree->right);
    return (tree->op < OP_PRINT_LIST || tree->op == OP_CONDITIONAL) && hasConstantOperands(tree);
}

bool evaluateNow(ExprNode *tree, int &number) {
    Value *stack = currentContext->stack;
    unsigned char wasExecuting = executing, status = runStatus;
    if (ExprNode *chain = compileChain(tree, nullptr, false))
        runNested(chain);
    executing = wasExecuting;
    runStatus = status;
    bool popped;
    Value *value = operandOf(tree, popped);
    if (value)
        number = static_cast<int>(readSigned64(value));
    if (popped)
        deleteValue(value);
    while (currentContext->stack && currentContext->stack != stack)
        deleteValue(popValue());
    return value;
}

int evaluateConstant(ExprNode *tree) {
    int number = 0;
    if (!errorFlag || constantOf(tree))  // with an error, operands may be missing
        evaluateNow(tree, number);
    return number;
}

}  // namespace zy
