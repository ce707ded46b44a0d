// record header: values of one data type turned into another: the cast, the readings of a scalar as
// a pair, the arithmetic of addresses. The readers of a scalar as a number are in expr/readers.h.
#pragma once

#include "expr/value.h"

namespace zy {

// The cast: the operand, read by operandOf, as the type that the target names: a leaf with the
// TypeInfo of a type or variable, a plain value node, or an expression. A new Value, or the
// operand's own record; after a message an empty one if the cast can't be done. NULL for void, and
// if there was no operand.
Value *castValue(ExprNode *target, ExprNode *operand);

// The same for a Value at hand and a target type without a class or a shape: changes the Value.
// What the old payload owned passes on or is released. False, and the Value as it was, if there is
// no such conversion.
bool convertScalar(Value *value, int type);

// Any scalar as a complex or dual number: an infinity or NaN fills both parts.
struct FloatPair {
    float first, second;
};
struct DoublePair {
    double first, second;
};
FloatPair readComplex(const Value *value);
DoublePair readDoubleComplex(const Value *value);

// Elements of one type into another. 0, or -1 after a message for an unsupported target.
int convertElements(void *destination, const void *source, uint32_t count, int target,
                    int sourceType);

// What an operand points to, for a pointer, a text or an array: for a pointer to function its
// entry, or NULL if the function has no body.
void *pointerOf(const Value *value);

// A pointer or array plus or minus a number of elements, by the static types of the node's
// operands. Neither operand is recycled. A new Value.
Value *pointerAdd(const ExprNode *node, const Value *left, const Value *right, int code);
// In elements; negative when left lies below right.
int pointerDifference(const ExprNode *node, const Value *left, const Value *right);

// Whether an address is NULL or was computed from NULL: no object lies that close to it. What reads
// and writes through pointers asks this in place of comparing with NULL.
inline bool isNullAddress(const void *address) {
    constexpr intptr_t reach = 65536;
    auto number = reinterpret_cast<intptr_t>(address);
    return number > -reach && number < reach;
}

}  // namespace zy
