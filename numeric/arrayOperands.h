// What the array operators share: operands at run time, and the result they fill.
#pragma once

#include "expr/value.h"
#include "numeric/elementLoops.h"

namespace zy {

// An array operand as its operator reads it; NULL arrays, and what is no array, have no elements.
struct ArrayOperand {
    explicit ArrayOperand(Value *value);
    bool isNull() const { return elementType == DT_NULL; }
    bool isNumeric() const;

    Value *value;
    const void *data;
    int elementType;
    uint32_t count;
    const ShapeNode *shape;
};

// Memory for as long as an operator computes.
class ScratchMemory {
public:
    explicit ScratchMemory(size_t bytes);
    ScratchMemory(const ScratchMemory &) = delete;
    ScratchMemory &operator=(const ScratchMemory &) = delete;
    ~ScratchMemory();
    void *get() const { return memory; }

private:
    void *memory;
};

// Two arrays whose elements meet one by one. If just one of them is column-major, its elements are
// put into the row-major order of the other first.
class ArrayPair {
public:
    ArrayPair(Value *leftValue, Value *rightValue);
    bool hasNull() const { return left.isNull() || right.isNull(); }
    bool isNumeric() const { return left.isNumeric() && right.isNumeric(); }
    bool countsDiffer() const { return left.count != right.count; }
    uint32_t count() const { return left.count < right.count ? left.count : right.count; }
    // The operand whose shape the result has, and the other one.
    const ArrayOperand &model() const { return leftIsModel ? left : right; }
    const ArrayOperand &other() const { return leftIsModel ? right : left; }

    ArrayOperand left, right;

private:
    bool leftIsModel, mixesOrders;
    ScratchMemory ordered;
};

// A scalar in the type of a kernel.
class ScalarElement {
public:
    ScalarElement(const Value *value, int kernelType);
    ElementSource source() const { return {bytes, nullptr, 0, nullptr}; }

private:
    alignas(16) unsigned char bytes[16];
};

int rankOf(const ShapeNode *shape);
size_t extentOf(const ShapeNode *dimension);
size_t bytesOf(int elementType);

// The element type that two operands compute in.
int commonType(int left, int right);

// The elements of an operand for a kernel of that type.
ElementSource sourceOf(const ArrayOperand &operand, int kernelType);

// A result with the shape of `model` and `count` elements (the rest of a larger shape is zero). It
// takes over the memory of an operand that ends here, if its elements fit: a step may write where
// it reads. `other` is NULL for operators of one array. The operands it didn't take are released.
class ArrayResult {
public:
    ArrayResult(const ArrayOperand &model, const ArrayOperand *other, int elementType,
                uint32_t count);
    ArrayResult(const ArrayResult &) = delete;
    ArrayResult &operator=(const ArrayResult &) = delete;
    ~ArrayResult();
    explicit operator bool() const { return result; }
    void *elements() const { return result->payload.p; }
    uint32_t count() const { return result->count; }
    // Elements that an operator leaves undefined are zero.
    void clear();
    Value *get() const { return result; }

private:
    Value *left, *right, *result;
};

// Runs a step into the result; warns if an integer was divided by zero.
void runInto(const ArrayResult &result, ElementStep step);

}  // namespace zy
