// Expressions of element-wise operators on arrays. The chain has their leaves and the topmost
// operator alone, which runs the whole as one program; into a variable, without an array between.
// Where that can't be, each operator has its turn.

#include <initializer_list>

#include "expr/arrayRoutines.h"
#include "expr/calls.h"
#include "expr/operands.h"
#include "expr/operators.h"
#include "expr/scope.h"
#include "expr/typeQueries.h"
#include "numeric/arrayOperators.h"
#include "numeric/arrayValue.h"
#include "numeric/elementProgram.h"

namespace zy {

namespace {

// The Values of the leaves, for as long as the expression runs.
class Leaves {
public:
    explicit Leaves(ExprNode *expression) {
        ProgramLeaves found;
        collectLeaves(expression, found);
        single = found.isSingle;
        for (int i = 0; i < found.count; i++) {
            Value *value = operandOf(found.nodes[i], popped[count]);
            if (!value)
                return;
            values[count++] = value;
        }
        complete = true;
    }
    Leaves(const Leaves &) = delete;
    Leaves &operator=(const Leaves &) = delete;
    ~Leaves() {
        for (int i = 0; i < count; i++)
            if (popped[i])
                deleteValue(values[i]);
    }
    bool isComplete() const { return complete; }
    bool isSingle() const { return single; }
    Value *const *get() const { return values; }
    int size() const { return count; }
    // The leaf's record, for an operator to keep or release.
    Value *take(int i) {
        Value *value = popped[i] ? values[i] : copyRecord(values[i]);
        popped[i] = false;
        return value;
    }

private:
    Value *values[MAX_LEAVES];
    bool popped[MAX_LEAVES];
    int count = 0;
    bool complete = false, single = false;
};

// ---- One operator after the other ---------------------------------------------------------------

bool isUnaryEntry(ArrayEntry entry) { return entry == arrayNegate || entry == arrayMathFunction; }

Value *evaluateSingly(const ExprNode *node, Leaves &leaves, int &next) {
    auto operand = [&](const ExprNode *child) {
        bool isInner =
            !leaves.isSingle() && child->kind == NODE_OPERATOR && isElementwise(child->op);
        return isInner ? evaluateSingly(child, leaves, next) : leaves.take(next++);
    };
    ArrayEntry entry = elementwiseEntry(node->op);
    bool isUnary = isUnaryEntry(entry);
    Value *left = operand(node->left);
    Value *right = isUnary ? nullptr : operand(node->right);
    Value *result = left && (right || isUnary) ? entry(left, right, node->op) : nullptr;
    for (Value *used : {left, right})
        if (used && used != result)
            recycleValue(used);
    return result;
}

// ---- As a program -------------------------------------------------------------------------------

// A leaf whose own elements can become those of the result.
int reusableLeaf(const ElementProgram &program, const Leaves &leaves) {
    for (int i = 0; i < leaves.size(); i++) {
        const Value *leaf = leaves.get()[i];
        if (leaf->type == DT_ARRAY && leaf->ownership == ARRAY_OWNED &&
            program.canWriteTo(leaf->payload.p, leaf->payload2.elementType) &&
            leaf->count == program.count() && leaf == program.model())
            return i;
    }
    return -1;
}

Value *runProgram(ElementProgram &program, Leaves &leaves) {
    int reused = reusableLeaf(program, leaves);
    Value *result =
        reused >= 0 ? leaves.take(reused) : newArrayLike(program.model(), program.elementType());
    if (!result)
        return nullptr;
    program.run(result->payload.p);
    result->payload2.castFlag = 0;
    return result;
}

Value *evaluate(const ExprNode *node, Leaves &leaves) {
    ElementProgram program(node, leaves.get(), leaves.isSingle());
    if (program.isUsable())
        return runProgram(program, leaves);
    int next = 0;
    return evaluateSingly(node, leaves, next);
}

}  // namespace

void elementwiseOperator(ExprNode *node) {
    Leaves leaves(node);
    if (leaves.isComplete())
        pushOrEnd(evaluate(node, leaves));
}

// ---- Into a variable ----------------------------------------------------------------------------

namespace {

bool runInPlace(const ExprNode *node, TypeInfo *variable, const Leaves &leaves) {
    ElementProgram program(node, leaves.get(), leaves.isSingle());
    VarCell *cell = findVarCell(variable);
    bool fits = program.isUsable() && cell->type == DT_ARRAY && cell->data.p &&
                cell->count == program.count() &&
                isFortranOrdered(cell->shape) == isFortranOrdered(program.model()->shape) &&
                program.canWriteTo(cell->data.p, cell->data2.elementType);
    if (fits)
        program.run(cell->data.p);
    return fits;
}

}  // namespace

void elementwiseAssignment(ExprNode *node) {
    TypeInfo *variable = variableOf(node->left);
    {
        Leaves leaves(node->right);
        if (!leaves.isComplete())
            return;
        if (!runInPlace(node->right, variable, leaves)) {
            Value *result = evaluate(node->right, leaves);
            if (!result) {
                endChain();
                return;
            }
            assignValue(node->left, result);
            deleteValue(result);
        }
    }
    fetchVariable(variable, 0);
}

bool isElementwiseAssignment(const ExprNode *node) {
    const TypeInfo *variable = variableOf(node->left);
    bool isWhole =
        variable && (variable->kind == KIND_ARRAY || variable->kind == KIND_ASSUMED_ARRAY);
    return isWhole && node->right && node->right->kind == NODE_OPERATOR &&
           isElementwise(node->right->op);
}

}  // namespace zy
