// Where an operator's operands stand, and where its result goes. A constant is read in the tree;
// all else lies on the stack, the leftmost on top. A record that was popped becomes the result's,
// so a scalar operator takes a new record only when both operands are constants.
#pragma once

#include "expr/value.h"

namespace zy {

// The operand wasn't there, after a message about the stack: what is left of the chain isn't run.
inline void endChain() { currentContext->chain = nullptr; }
// The result of an operator; without one the chain ends.
inline void pushOrEnd(Value *result) {
    if (result)
        pushValue(result);
    else
        endChain();
}

// Whether operandOf reads it where it stands.
inline bool standsInPlace(const ExprNode *operand) {
    return operand->kind == NODE_VALUE && operand->type != DT_NAME && operand->type != DT_TAG;
}

inline const Value *operandInPlace(const ExprNode *operand) {
    return operand->type == DT_CONSTANT ? operand->payload.value : operand;
}

// A record on top of the stack, for the caller to fill. It takes one from the free list alone and
// is NULL if that is empty: routines that take another way then need no call on the common one.
inline Value *pushFreeValue() {
    Value *value = valueFreeList;
    if (!value) [[unlikely]]
        return nullptr;
    ExecContext *context = currentContext;
    valueFreeList = value->next;
    value->next = context->stack;
    value->link = nullptr;
    value->kind = NODE_VALUE;
    context->stack = value;
    return value;
}

// The same, from the heap at need. NULL if memory is exhausted; the chain ends.
Value *pushNewValue();

// A copy of a Value on no list, with a text of its own. NULL if memory is exhausted.
Value *copyRecord(const Value *value);

// The top of the stack, which stays there. NULL after a message if there is none.
inline Value *topValue() {
    Value *top = currentContext->stack;
    if (!top) [[unlikely]] {
        reportEmptyStack();
        endChain();
    }
    return top;
}

// An operand for as long as an operator reads it. Its record goes back at the end if it was popped;
// `contents` too, for what isn't a plain number: an operator owns what it popped.
class Operand {
public:
    enum Release { RECORD, CONTENTS };
    explicit Operand(ExprNode *field, Release release = RECORD)
        : value(operandOf(field, popped)), release(release) {
        if (!value) [[unlikely]]
            endChain();
    }
    Operand(const Operand &) = delete;
    Operand &operator=(const Operand &) = delete;
    ~Operand() {
        if (popped && release == CONTENTS)
            deleteValue(value);
        else if (popped)
            recycleValue(value);
    }
    void releaseContents() { release = CONTENTS; }
    explicit operator bool() const { return value; }
    Value *operator->() const { return value; }
    Value *get() const { return value; }
    // The record for the caller to keep: the popped one, or NULL for one that stands in place.
    Value *takeRecord() {
        bool mine = popped;
        popped = false;
        return mine ? value : nullptr;
    }

private:
    bool popped;
    Value *value;
    Release release;
};

// One record holds the result: the popped one that lies lower, or a new one.
template <class Family>
[[gnu::noinline]] void runAnyBinary(ExprNode *node) {
    Operand left(node->left);
    if (!left)
        return;
    Operand right(node->right);
    if (!right)
        return;
    Value *result = newValue();
    if (!result) [[unlikely]] {
        endChain();
        return;
    }
    result->kind = NODE_VALUE;
    Family::run(result, left.get(), right.get());
    pushValue(result);
}

// The way for the common types, without a call; all else is done by runAnyBinary.
template <class Family, bool leftInPlace, bool rightInPlace>
void binaryForm(ExprNode *node) {
    constexpr bool bothOnStack = !leftInPlace && !rightInPlace;
    ExecContext *context = currentContext;
    Value *top = context->stack;
    Value *result = bothOnStack && top ? top->next : top;
    const Value *left = leftInPlace ? operandInPlace(node->left) : top;
    const Value *right = rightInPlace ? operandInPlace(node->right) : result;
    if (!result || !Family::runFast(result, left, right)) [[unlikely]] {
        runAnyBinary<Family>(node);
        return;
    }
    if constexpr (bothOnStack) {
        context->stack = result;
        recycleValue(top);
    }
}

// The form for the places that the node's operands have.
template <class Family>
void runBinary(ExprNode *node) {
    bool right = standsInPlace(node->right);
    if (standsInPlace(node->left))
        node->routine = right ? runAnyBinary<Family> : binaryForm<Family, true, false>;
    else
        node->routine = right ? binaryForm<Family, false, true> : binaryForm<Family, false, false>;
    node->routine(node);
}

template <class Family>
void unaryOnStack(ExprNode *) {
    if (Value *operand = topValue())
        Family::run(operand, operand);
}
template <class Family>
void unaryInPlace(ExprNode *node) {
    if (Value *result = pushNewValue())
        Family::run(result, operandInPlace(node->left));
}

template <class Family>
void runUnary(ExprNode *node) {
    node->routine = standsInPlace(node->left) ? unaryInPlace<Family> : unaryOnStack<Family>;
    node->routine(node);
}

}  // namespace zy
