// The element-wise operators as steps: a kernel, chosen once for an array, and where its operands
// come from. A step runs in blocks that stay in the nearest cache, so that operands of another
// element type are converted on the way and need no memory of their own.
#pragma once

#include <cstddef>

#include "numeric/elementConversion.h"
#include "numeric/independent.h"

namespace zy {

// Computes `count` elements. An operand that is a scalar is one element; a unary kernel reads the
// left one alone. The target may be an operand's own memory, but not overlap it otherwise. True if
// an integer was divided by zero.
using ElementKernel = bool (*)(void *to, const void *left, const void *right, size_t count);

// Which operands are arrays.
enum OperandForm { ARRAY_ARRAY, ARRAY_SCALAR, SCALAR_ARRAY, OPERAND_FORMS };

struct ElementStep;
struct ElementSource {
    const void *data = nullptr;       // the elements, or a scalar of the kernel's type
    ConvertKernel convert = nullptr;  // from the element type to the kernel's
    size_t stride = 0;                // bytes of an element; 0 for a scalar
    ElementStep *step = nullptr;      // in place of data: what another step computes
    bool isPlain() const { return !convert && !step; }
};

struct ElementStep {
    ElementKernel kernel = nullptr;
    size_t resultBytes = 0;  // of an element
    ElementSource left, right;
    bool dividedByZero = false;
};

// Runs a step, and those that it depends on, over all elements; they note divisions by zero.
void runStep(ElementStep &step, void *to, size_t count);

// ---- The loop of all kernels --------------------------------------------------------------------

// Operation::of for each element. No element depends on another, whether or not the target is an
// operand: ZY_INDEPENDENT says so where the compiler can't see it.
template <class Operation, class T, class Result, OperandForm form>
bool combineElements(void *to, const void *left, const void *right, size_t count) {
    auto *result = static_cast<Result *>(to);
    auto *a = static_cast<const T *>(left);
    auto *b = static_cast<const T *>(right);
    if constexpr (form == ARRAY_SCALAR) {
        T scalar = *b;
        ZY_INDEPENDENT
        for (size_t i = 0; i < count; i++)
            result[i] = Operation::of(a[i], scalar);
    } else if constexpr (form == SCALAR_ARRAY) {
        T scalar = *a;
        ZY_INDEPENDENT
        for (size_t i = 0; i < count; i++)
            result[i] = Operation::of(scalar, b[i]);
    } else {
        ZY_INDEPENDENT
        for (size_t i = 0; i < count; i++)
            result[i] = Operation::of(a[i], b[i]);
    }
    return false;
}

template <class Operation, class T, class Result>
bool mapElements(void *to, const void *from, const void *, size_t count) {
    auto *result = static_cast<Result *>(to);
    auto *a = static_cast<const T *>(from);
    ZY_INDEPENDENT
    for (size_t i = 0; i < count; i++)
        result[i] = Operation::of(a[i]);
    return false;
}

// ---- The tables ---------------------------------------------------------------------------------

// The operator on two arrays that computes what one of an array and a scalar does; others are
// themselves.
int arraysCodeOf(int code);
// NULL for an element type that isn't computed in: the integers below int, and what is no number.
ElementKernel arithmeticKernel(int arraysCode, int elementType, OperandForm form);
ElementKernel comparisonKernel(int arraysCode, int elementType, OperandForm form);
// Of the sign, for each element type; of a mathematical function, from float on.
ElementKernel negationKernel(int elementType);
ElementKernel functionKernel(int code, int elementType);

}  // namespace zy
