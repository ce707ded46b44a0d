// Truth and order of what need not be a number: texts and pointers, and the operators that run an
// operand only if it decides.

#include <cstring>

#include "expr/evaluator.h"
#include "expr/operators.h"
#include "expr/routines.h"
#include "expr/scalarFamilies.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
#include "numeric/convert.h"
#include "numeric/shape.h"

namespace zy {

namespace {

// Releases what a Value that becomes a result owned as an operand.
void releaseContents(Value *value) {
    if (value->type == DT_STRING)
        free(value->payload.text);
    else if (isArrayLike(value->type))
        releaseArrayValue(value);
}

struct NotFamily {
    static void run(Value *result, const Value *operand) {
        int answer = !logicalValue(operand);
        if (result == operand)
            releaseContents(result);
        setScalar(result, answer);
    }
};

}  // namespace

void notOperator(ExprNode *node) { runUnary<NotFamily>(node); }

void xorOperator(ExprNode *node) {
    int answer = 0;
    {
        Operand left(node->left, Operand::CONTENTS);
        Operand right(node->right, Operand::CONTENTS);
        if (!left || !right)
            return;
        answer = logicalValue(left.get()) != logicalValue(right.get());
    }
    pushScalar(answer);
}

bool takeAddresses(ExprNode *node, uintptr_t &left, uintptr_t &right) {
    Operand first(node->left, Operand::CONTENTS);
    Operand second(node->right, Operand::CONTENTS);
    if (!first || !second)
        return false;
    auto address = [](const Operand &operand) {
        return operand->type == DT_INT ? static_cast<uintptr_t>(operand->payload.i)
                                       : reinterpret_cast<uintptr_t>(pointerOf(operand.get()));
    };
    left = address(first);
    right = address(second);
    return true;
}

namespace {

// No text compares like an empty one.
const char *textOf(const Operand &operand) {
    const auto *text = static_cast<const char *>(pointerOf(operand.get()));
    return text ? text : "";
}

}  // namespace

bool takeTextOrder(ExprNode *node, int &order) {
    Operand left(node->left, Operand::CONTENTS);
    Operand right(node->right, Operand::CONTENTS);
    if (!left || !right)
        return false;
    int difference = strcmp(textOf(left), textOf(right));
    order = (difference > 0) - (difference < 0);
    return true;
}

// ---- On demand ----------------------------------------------------------------------------------

// The operator's node says itself what runs next.

bool evalShortCircuit(ExprNode *node, int code, const Value *left) {
    bool truth = logicalValue(left), decides = truth == (code == OP_OR);
    BranchChains chains = branchChainsOf(node);
    node->next = decides ? chains.second : chains.first;
    return decides;
}

void shortCircuit(ExprNode *node) {
    bool decides;
    {
        Operand left(node->left, Operand::CONTENTS);
        if (!left)
            return;
        decides = evalShortCircuit(node, node->op, left.get());
    }
    if (decides)
        pushScalar(int{node->op == OP_OR});
}

void endShortCircuit(ExprNode *end) {
    int answer;
    {
        Operand right(end->right->right, Operand::CONTENTS);
        answer = right && logicalValue(right.get());
    }
    pushScalar(answer);
}

void evalConditional(ExprNode *node) {
    Operand condition(node->left, Operand::CONTENTS);
    BranchChains chains = branchChainsOf(node);
    node->next = condition && logicalValue(condition.get()) ? chains.first : chains.second;
}

namespace {

// The value of the branch that ran, on top of the stack, in the type of the other if that is wider.
// A text stays one: it owns its characters, which a pointer to them wouldn't.
void widen(ExprNode *chosen, ExprNode *other) {
    int type = treeType(other), own = treeType(chosen);
    bool isPointerBesideNull = type == DT_NULL && own >= DT_P_FILE;  // functions, too
    Value *value = own < type && !isPointerBesideNull ? topValue() : nullptr;
    if (!value || value->type == DT_STRING || convertScalar(value, type))
        return;
    popValue();
    Value *converted = castValue(other, value);
    if (converted)
        pushValue(converted);
    deleteValue(value);
}

}  // namespace

void endFirstBranch(ExprNode *end) { widen(end->right->right, end->right->third); }

void endSecondBranch(ExprNode *end) { widen(end->right->third, end->right->right); }

}  // namespace zy
