#include "numeric/elementProgram.h"

#include <algorithm>

#include "expr/nodeClasses.h"
#include "instance/report.h"
#include "numeric/arrayValue.h"
#include "numeric/elementTypes.h"

namespace zy {

// ---- The operators ------------------------------------------------------------------------------

namespace {

bool isFunction(int op) { return inRange(op, OP_SIN_ARRAY, OP_EXP_ARRAY) && op != OP_ATAN2_ARRAY; }
bool isUnary(int op) { return op == OP_NEGATE_ARRAY || isFunction(op); }

}  // namespace

bool isElementwise(int op) {
    bool withScalar = inRange(op, OP_ARRAY_ADD_SCALAR, OP_ARRAY_DIVIDE_SCALAR) ||
                      inRange(op, OP_SCALAR_ADD_ARRAY, OP_SCALAR_MULTIPLY_ARRAY);
    bool ofArrays = inRange(op, OP_ARRAYS_ADD, OP_ARRAYS_SUBTRACT);
    return isUnary(op) || ofArrays || (withScalar && op != OP_ARRAY_POWER_SCALAR);
}

namespace {

bool addLeaves(ExprNode *node, ProgramLeaves &leaves) {
    if (isOperator(node) && isElementwise(node->op))
        return ++leaves.steps <= MAX_STEPS && addLeaves(node->left, leaves) &&
               (isUnary(node->op) || addLeaves(node->right, leaves));
    if (leaves.count == MAX_LEAVES)
        return false;
    leaves.nodes[leaves.count++] = node;
    return true;
}

}  // namespace

void collectLeaves(ExprNode *node, ProgramLeaves &leaves) {
    leaves.isSingle = !addLeaves(node, leaves);
    if (!leaves.isSingle)
        return;
    leaves.count = 0;
    leaves.nodes[leaves.count++] = node->left;
    if (!isUnary(node->op))
        leaves.nodes[leaves.count++] = node->right;
}

// ---- Plans --------------------------------------------------------------------------------------

ElementProgram::ElementProgram(const ExprNode *node, Value *const *leaves, bool isSingle)
    : leaves(leaves), isSingle(isSingle) {
    result = plan(node);
    usable = usable && result.model && result.source.step;
}

ElementProgram::Part ElementProgram::planLeaf(const Value *value) {
    Part part;
    int type = static_cast<int>(value->type);
    if (!isArrayLike(type)) {
        part.type = type;
        part.scalar = value;
        usable = usable && isElementType(type);
        return part;
    }
    part.type = value->payload2.elementType;
    part.count = value->count;
    part.model = value;
    usable = usable && isElementType(part.type) && value->payload.p && value->count > 0 &&
             shapeCount(value->shape) == value->count;
    if (usable)
        part.source = {value->payload.p, nullptr, static_cast<size_t>(elementSize(part.type)),
                       nullptr};
    return part;
}

bool ElementProgram::fit(const Part &left, const Part &right) const {
    if (!left.model || !right.model)
        return left.model || right.model;
    return left.count == right.count &&
           isFortranOrdered(left.model->shape) == isFortranOrdered(right.model->shape);
}

ElementSource ElementProgram::sourceFor(const Part &part, int type) {
    if (part.scalar) {
        unsigned char *scalar = scalars[scalarCount++];
        fillFromScalar(scalar, 1, type, part.scalar);
        return {scalar, nullptr, 0, nullptr};
    }
    ElementSource source = part.source;
    if (part.type != type)
        source.convert = conversionKernel(type, part.type);
    return source;
}

// The step of an operator whose operands are planned; `part` gets the type of its result.
ElementStep ElementProgram::planStep(const ExprNode *node, const Part &left, const Part &right,
                                     Part &part) {
    ElementStep step;
    if (isUnary(node->op)) {
        bool isNegation = node->op == OP_NEGATE_ARRAY;
        part.type = isNegation ? left.type : std::max<int>(left.type, DT_FLOAT);
        step.kernel = isNegation ? negationKernel(part.type) : functionKernel(node->op, part.type);
        step.left = sourceFor(left, part.type);
    } else {
        OperandForm form = left.scalar ? SCALAR_ARRAY : right.scalar ? ARRAY_SCALAR : ARRAY_ARRAY;
        part.type = std::max({left.type, right.type, static_cast<int>(DT_INT)});
        step.kernel = arithmeticKernel(arraysCodeOf(node->op), part.type, form);
        step.left = sourceFor(left, part.type);
        step.right = sourceFor(right, part.type);
    }
    step.resultBytes = static_cast<size_t>(elementSize(part.type));
    return step;
}

ElementProgram::Part ElementProgram::planOperand(const ExprNode *node) {
    bool isInner = !isSingle && isOperator(node) && isElementwise(node->op);
    return isInner ? plan(node) : planLeaf(leaves[leafCount++]);
}

ElementProgram::Part ElementProgram::plan(const ExprNode *node) {
    Part left = planOperand(node->left), right;
    if (!isUnary(node->op))
        right = planOperand(node->right);
    usable = usable && (isUnary(node->op) ? left.model != nullptr : fit(left, right));
    Part part;
    if (!usable)
        return part;
    const Part &first = left.model ? left : right;
    part.count = first.count;
    part.model = first.model;
    ElementStep &step = steps[stepCount++];
    step = planStep(node, left, right, part);
    part.source = {nullptr, nullptr, step.resultBytes, &step};
    return part;
}

// ---- Runs ---------------------------------------------------------------------------------------

// Elements at the same place of the target may be read while it is written, others not.
bool ElementProgram::canWriteTo(const void *data, int type) const {
    if (type != result.type)
        return false;
    auto start = reinterpret_cast<uintptr_t>(data);
    size_t bytes = static_cast<size_t>(elementSize(type));
    for (int i = 0; i < leafCount; i++) {
        if (!isArrayLike(static_cast<int>(leaves[i]->type)))
            continue;
        auto from = reinterpret_cast<uintptr_t>(leaves[i]->payload.p);
        size_t own = static_cast<size_t>(elementSize(leaves[i]->payload2.elementType));
        bool apart = from + leaves[i]->count * own <= start || start + count() * bytes <= from;
        if (!apart && (from != start || own != bytes))
            return false;
    }
    return true;
}

void ElementProgram::run(void *to) {
    runStep(*result.source.step, to, count());
    for (int i = 0; i < stepCount; i++)
        if (steps[i].dividedByZero)
            runWarning("integer divide by zero ");
}

}  // namespace zy
