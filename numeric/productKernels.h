// Products of matrices that lie in memory row by row, by element type.
#pragma once

#include <cstddef>

namespace zy {

// to[rows][columns] = left[rows][inner] * right[inner][columns], each sum in the order of the inner
// index. The operands have the element type and don't overlap the target.
struct ProductSize {
    size_t rows, inner, columns;
};
using ProductKernel = void (*)(void *to, const void *left, const void *right, ProductSize size);

// NULL for a type below int.
ProductKernel productKernel(int elementType);

// The sum of products of `count` pairs of elements, in their order.
using DotKernel = void (*)(void *to, const void *left, const void *right, size_t count);
DotKernel dotKernel(int elementType);

}  // namespace zy
