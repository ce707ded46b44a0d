#include "expr/arrayRoutines.h"

#include "expr/calls.h"
#include "expr/operands.h"
#include "expr/operators.h"
#include "expr/typeQueries.h"
#include "numeric/arrayValue.h"

namespace zy {

void runArrayUnary(ExprNode *node, ArrayEntry entry) {
    Operand array(node->left);
    if (!array)
        return;
    Value *result = entry(array.get(), nullptr, node->op);
    if (result == array.get())
        array.takeRecord();
    pushOrEnd(result);
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
    pushOrEnd(result);
}

// ---- Assignments --------------------------------------------------------------------------------

namespace {

// The target as it is after the store is the value of the expression: a view of a variable.
void storeArray(ExprNode *target, Value *array) {
    assignValue(target, array);
    if (TypeInfo *variable = variableOf(target)) {
        deleteValue(array);
        fetchVariable(variable, 0);
    } else {
        pushValue(array);
    }
}

bool isPostfix(int code) { return code == OP_POSTFIX_INCREMENT || code == OP_POSTFIX_DECREMENT; }
bool isUp(int code) { return code == OP_PREFIX_INCREMENT || code == OP_POSTFIX_INCREMENT; }

Value *copyOfArray(const Value *array) {
    bool whole = isArrayLike(static_cast<int>(array->type)) && array->payload.p;
    return whole ? copyArrayValue(array, array->payload2.elementType) : nullptr;
}

}  // namespace

void arrayCompoundAssignment(ExprNode *node) {
    runArrayBinary(node, arrayCompound);
    if (Value *result = currentContext->chain ? popValue() : nullptr)
        storeArray(node->third, result);
}

void arrayIncrement(ExprNode *node) {
    Operand array(node->left);
    if (!array)
        return;
    Value one{};
    one.kind = NODE_VALUE;
    one.type = DT_INT;
    one.payload.i = 1;
    Value *old = isPostfix(node->op) ? copyOfArray(array.get()) : nullptr;
    Value *fresh = arrayScalarOp(array.get(), &one,
                                 isUp(node->op) ? OP_ARRAY_ADD_SCALAR : OP_ARRAY_SUBTRACT_SCALAR);
    if (fresh == array.get())
        array.takeRecord();
    if (fresh)
        storeArray(node->right, fresh);
    else
        endChain();
    if (fresh && old) {
        deleteValue(popValue());
        pushValue(old);
    }
}

}  // namespace zy
