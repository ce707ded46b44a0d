// The element-wise operators as steps: a kernel, chosen once for an array, and where its operands
// come from. A step runs in blocks that stay in the nearest cache, so that operands of another
// element type are converted on the way and need no memory of their own.
#pragma once

#include <cstddef>

#include "numeric/elementConversion.h"

namespace zy {

// Computes `count` elements. An operand that is a scalar is one element; a unary kernel reads the
// left one alone. The target may be an operand's own memory, but not overlap it otherwise. True if
// an integer was divided by zero.
using ElementKernel = bool (*)(void *to, const void *left, const void *right, size_t count);

// Which operands are arrays.
enum OperandForm { ARRAY_ARRAY, ARRAY_SCALAR, SCALAR_ARRAY, OPERAND_FORMS };

struct ElementSource {
    const void *data = nullptr;       // the elements, or a scalar of the kernel's type
    ConvertKernel convert = nullptr;  // from the element type to the kernel's
    size_t stride = 0;                // bytes of an element; 0 for a scalar
    // Elements from `begin` on in the kernel's type, in the buffer if they have to be converted.
    const void *block(size_t begin, size_t count, void *buffer) const {
        const char *from = static_cast<const char *>(data) + begin * stride;
        if (!convert)
            return from;
        convert(buffer, from, count);
        return buffer;
    }
};

struct ElementStep {
    ElementKernel kernel = nullptr;
    size_t resultBytes = 0;  // of an element
    ElementSource left, right;
};

// Runs a step over all elements. True if an integer was divided by zero.
bool runStep(const ElementStep &step, void *to, size_t count);

// ---- The loop of all kernels --------------------------------------------------------------------

// Operation::of for each element. No element depends on another, whether or not the target is an
// operand: ivdep says so where the compiler can't see it.
template <class Operation, class T, class Result, OperandForm form>
bool combineElements(void *to, const void *left, const void *right, size_t count) {
    auto *result = static_cast<Result *>(to);
    auto *a = static_cast<const T *>(left);
    auto *b = static_cast<const T *>(right);
    if constexpr (form == ARRAY_SCALAR) {
        T scalar = *b;
#pragma GCC ivdep
        for (size_t i = 0; i < count; i++)
            result[i] = Operation::of(a[i], scalar);
    } else if constexpr (form == SCALAR_ARRAY) {
        T scalar = *a;
#pragma GCC ivdep
        for (size_t i = 0; i < count; i++)
            result[i] = Operation::of(scalar, b[i]);
    } else {
#pragma GCC ivdep
        for (size_t i = 0; i < count; i++)
            result[i] = Operation::of(a[i], b[i]);
    }
    return false;
}

template <class Operation, class T, class Result>
bool mapElements(void *to, const void *from, const void *, size_t count) {
    auto *result = static_cast<Result *>(to);
    auto *a = static_cast<const T *>(from);
#pragma GCC ivdep
    for (size_t i = 0; i < count; i++)
        result[i] = Operation::of(a[i]);
    return false;
}

// ---- The tables ---------------------------------------------------------------------------------

// NULL for an element type that isn't computed in: the integers below int, and what is no number.
ElementKernel arithmeticKernel(int arraysCode, int elementType, OperandForm form);
ElementKernel comparisonKernel(int arraysCode, int elementType, OperandForm form);

}  // namespace zy
