// Operators that move elements or tell the shape: transpose, shape.

#include <algorithm>
#include <cstring>

#include "expr/readers.h"
#include "instance/report.h"
#include "numeric/arrayOperands.h"
#include "numeric/arrayOperators.h"
#include "numeric/arrayValue.h"
#include "numeric/elementTypes.h"

namespace zy {

// ---- transpose ----------------------------------------------------------------------------------

namespace {

// Position row * columns + column goes to column * rows + row. In squares, so that neither side
// walks through memory in long steps alone.
template <class T>
void transposeElements(void *target, const void *source, size_t rows, size_t columns) {
    constexpr size_t square = 16;
    auto *to = static_cast<T *>(target);
    auto *from = static_cast<const T *>(source);
    for (size_t top = 0; top < rows; top += square)
        for (size_t start = 0; start < columns; start += square)
            for (size_t row = top; row < std::min(top + square, rows); row++)
                for (size_t column = start; column < std::min(start + square, columns); column++)
                    to[column * rows + row] = from[row * columns + column];
}

using Transposition = void (*)(void *, const void *, size_t, size_t);

// By size alone; NULL for a type that isn't moved.
Transposition transpositionOf(int elementType) {
    if (!isElementType(elementType) && !isPointer(elementType))
        return nullptr;
    switch (elementSize(elementType)) {
        case 1: return transposeElements<uint8_t>;
        case 2: return transposeElements<uint16_t>;
        case 4: return transposeElements<uint32_t>;
        case 8: return transposeElements<uint64_t>;
        default: return transposeElements<Complex<double>>;
    }
}

ShapeList transposedShape(const ShapeNode *shape) {
    ShapeList first = newShapeNode(shape->next->extent.lower, shape->next->extent.limit);
    if (first)
        first->next = newShapeNode(shape->extent.lower, shape->extent.limit);
    if (isFortranOrdered(shape))
        setFortranStrides(first);
    else
        setRowStrides(first);
    return first;
}

// Of a column-major matrix the columns lie in memory as the rows of a row-major one.
Value *transposedMatrix(const ArrayOperand &matrix, Transposition transpose) {
    Value *result = newArrayValue(matrix.elementType, transposedShape(matrix.shape));
    if (!result) {
        runError("no memory for array allocation for transpose() array function");
        return nullptr;
    }
    size_t rows = extentOf(matrix.shape), columns = extentOf(matrix.shape->next);
    if (isFortranOrdered(matrix.shape))
        std::swap(rows, columns);
    if (rows * columns <= matrix.count)
        transpose(result->payload.p, matrix.data, rows, columns);
    return result;
}

Value *copyOf(const ArrayOperand &array) {
    return isArrayLike(static_cast<int>(array.value->type)) && !array.isNull()
               ? copyArrayValue(array.value, array.elementType)
               : newArrayValue(DT_DOUBLE, nullptr);
}

}  // namespace

Value *arrayTranspose(Value *value, Value *, int) {
    ArrayOperand array(value);
    bool isMatrix = array.shape && array.shape->next;
    Transposition transpose = transpositionOf(array.elementType);
    if (array.isNull() || !transpose) {
        runWarning("unsupported data type for array function");
        isMatrix = false;
    }
    if (!isMatrix && value->ownership == ARRAY_OWNED && value->type == DT_ARRAY)
        return value;
    Value *result = isMatrix ? transposedMatrix(array, transpose) : copyOf(array);
    if (isArrayLike(static_cast<int>(value->type)))
        releaseArrayValue(value);
    return result;
}

// ---- shape --------------------------------------------------------------------------------------

Value *arrayShape(Value *value, Value *, int) {
    const ShapeNode *shape = isArrayLike(static_cast<int>(value->type)) ? value->shape : nullptr;
    int rank = rankOf(shape);
    ShapeList resultShape = newShapeNode(0, std::max(rank, 1));
    setRowStrides(resultShape);
    Value *result = newArrayValue(DT_INT, resultShape);
    if (result) {
        auto *extents = static_cast<int *>(result->payload.p);
        extents[0] = 0;
        for (const ShapeNode *node = shape; node; node = node->next)
            *extents++ = static_cast<int>(extentOf(node));
    }
    if (isArrayLike(static_cast<int>(value->type)))
        releaseArrayValue(value);
    return result;
}

Value *arrayExtent(Value *value, Value *index, int) {
    bool isArray = isArrayLike(static_cast<int>(value->type));
    int number = readInt32(index), extent = -1;
    const ShapeNode *node = isArray && number >= 0 ? value->shape : nullptr;
    for (; node && number > 0; number--)
        node = node->next;
    if (node)
        extent = static_cast<int>(extentOf(node));
    if (isArray)
        releaseArrayValue(value);
    Value *result = newZeroValue(DT_INT);
    if (result)
        result->payload.i = extent;
    return result;
}

}  // namespace zy
