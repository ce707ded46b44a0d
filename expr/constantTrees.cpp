#include "expr/constantTrees.h"

#include "expr/evaluator.h"
#include "expr/operators.h"
#include "expr/readers.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
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

int evaluateConstant(ExprNode *tree) {
    if (const Value *constant = constantOf(tree))
        return static_cast<int>(readSigned64(constant));
    if (errorFlag)
        return 0;  // operands may be missing
    int number = 0;
    unsigned char status = runStatus;
    runNested(compileChain(tree, nullptr, true));
    if (Value *value = popValue()) {
        number = static_cast<int>(readSigned64(value));
        deleteValue(value);
    }
    runStatus = status;
    return number;
}

}  // namespace zy
