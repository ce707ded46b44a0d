#include "expr/arrayRoutines.h"

#include "expr/operands.h"

namespace zy {

namespace {

void pushResult(Value *result) {
    if (result)
        pushValue(result);
    else
        endChain();
}

}  // namespace

void runArrayUnary(ExprNode *node, ArrayEntry entry) {
    Operand array(node->left);
    if (!array)
        return;
    Value *result = entry(array.get(), nullptr, node->op);
    if (result == array.get())
        array.takeRecord();
    pushResult(result);
}

void runArrayBinary(ExprNode *node, ArrayEntry entry) {
    Operand left(node->left);
    if (!left)
        return;
    Operand right(node->right);
    if (!right)
        return;
    Value *result = entry(left.get(), right.get(), node->op);
    if (result == left.get())
        left.takeRecord();
    else if (result == right.get())
        right.takeRecord();
    pushResult(result);
}

}  // namespace zy
