// record header: the run-time shape of an array, a list of dimensions, and what an array in a Value
// owns. The order of elements lives in the strides alone.
#pragma once

#include <cstdint>

namespace zy {

struct ArrayInfo;
struct ExprNode;
struct TypeInfo;
struct VarCell;
using Value = ExprNode;

struct ExtentRec {
    int32_t limit;    // one past the upper subscript
    int32_t lower;    // limit == lower in the first dimension: an unknown extent
    uint32_t stride;  // in elements
};

// A ShapeList is the pointer to the first dimension.
struct ShapeNode {
    ShapeNode *next;
    ExtentRec extent;
};
using ShapeList = ShapeNode *;

ShapeNode *newShapeNode(int lower, int limit);  // stride 0; NULL if memory is exhausted
ShapeList copyShape(const ShapeNode *shape);    // NULL in, NULL out
void releaseShape(ShapeList shape);

// Write all strides and give the count of elements; shapeCount writes nothing.
uint32_t setRowStrides(ShapeList shape);
uint32_t setFortranStrides(ShapeList shape);
uint32_t shapeCount(const ShapeNode *shape);
// The count of a shape's elements, 0 without a shape. False after a message for a number that isn't
// one of 32 bits: there is no memory for so many.
bool countElements(const ShapeNode *shape, uint32_t &count);

// The shape that constant bounds declare, with strides; NULL for bounds that aren't known, and
// after a message if memory is exhausted. A dimension of open limit has no extent.
ShapeList declaredShape(const ArrayInfo *info);
// The same, owned by the declaration, for views of what has no cell of its own.
ShapeNode *fixedShapeOf(ArrayInfo *info);

// Bytes of one element of a data type.
int elementSize(int elementType);
// The same for the elements of a declared array, which may be aggregates.
int elementSizeOf(const TypeInfo *symbol);

// What the Value's array fields hold.
enum ArrayOwnership : uint8_t {
    ARRAY_VIEW = 0,        // of memory owned elsewhere
    ARRAY_OWNED = 1,       // data and shape
    ARRAY_OWNS_SHAPE = 2,  // the data has been handed to a callee
    ARRAY_ARGUMENT = 3,    // a view of a variable that holds argument memory
};

bool isArrayLike(int dataType);
// Releases what the array fields own, not the Value.
void releaseArrayValue(Value *value);
// Releases the texts of an array of strings.
void releaseElements(void *data, uint32_t count, int elementType);

}  // namespace zy
