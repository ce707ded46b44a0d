// record header: arrays as Values. An operator's result is a new Value that owns its elements and
// its shape, so it never aliases an operand; whoever takes a Value releases what it owns.
#pragma once

#include "expr/value.h"
#include "numeric/shape.h"

namespace zy {

// A computational array of that shape, which the Value takes (with its strides as they stand). Its
// elements are for the caller to set; texts begin as NULL. NULL, with the shape released, if there
// is no memory for it (after a message) or the element type has no size.
Value *newArrayValue(int elementType, ShapeList shape);
// The same with a copy of the shape of another array.
Value *newArrayLike(const Value *model, int elementType);
// A copy that owns what it has, with the elements converted if their type differs. NULL as above.
Value *copyArrayValue(const Value *array, int elementType);

// What `*` gives of an array: its first element, or of more than one dimension the first part, a
// view whose elements and shape are the array's. NULL after a message.
Value *derefArray(const Value *array);

// Elements in memory of their own; zeroed if `cleared`, and for texts. NULL after a message if
// there is no such memory. A block is never empty.
void *newElements(uint32_t count, size_t elementBytes, bool cleared);

// Copies of a scalar, converted to the element type; 0, or -1 after a message for a type that can't
// be an element.
int fillFromScalar(void *buffer, uint32_t count, int elementType, const Value *value);

// `count` elements of one type as another: memory copied where the types are the same, texts as
// copies of their own.
void copyElements(void *destination, int target, const void *source, int sourceType,
                  uint32_t count);

// Whether the strides of an array are those of column-major order. Of a vector, or a matrix of one
// row, they never are.
bool isFortranOrdered(const ShapeNode *shape);
// Elements of a column-major array into the places of a row-major one of the same extents.
void reorderElements(void *destination, const void *source, const ShapeNode *targetShape,
                     const ShapeNode *sourceShape, uint32_t count, uint32_t elementBytes);

}  // namespace zy
