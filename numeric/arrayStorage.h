// record header: the storage of array variables while a script runs: computed shapes, assignments
// to arrays as wholes, and pointers to arrays that take over another array's shape.
#pragma once

#include "expr/scope.h"
#include "numeric/shape.h"

namespace zy {

// The shape of a list of bound expressions that have run: two for each dimension, the first on top
// of the stack. guard: a dimension without elements is reported and becomes one of 1 element; the
// first alone may be empty. `count` gets the number of elements. NULL for an empty list, and after
// a message if there is no memory.
ShapeList evalArrayBounds(ExprNode *bounds, bool fortranOrder, uint32_t &count, bool guard);

// The storage of an array whose declaration runs, with its bounds on the stack. A declaration that
// runs again keeps the elements that fit.
void allocDeferredArray(TypeInfo *symbol);

// A cleared array on the heap for `new`; the Value has the shape alone, the elements are the
// script's. Bounds that were computed are on the stack. NULL after a message.
Value *newHeapArray(int type, TypeInfo *model);

// Lower limits and limits of the Value's shape for those of the cell; a dimension that the Value
// hasn't becomes one of 1 element.
void adoptShape(VarCell *cell, const Value *array);
// The extents alone, counted from the lower limits that the formal declares.
void adoptExtents(VarCell *cell, const ExprNode *formalBounds, const Value *array);

// Elements of an array, or copies of a scalar, into `count` elements. What isn't there stays.
void assignElements(void *data, uint32_t count, int elementType, const Value *value);
// Into a variable of kind KIND_ARRAY or KIND_ASSUMED_ARRAY.
void assignArrayVariable(TypeInfo *symbol, const Value *value);
// Into a pointer to computational array: the elements that it points to, or, by a cast, what it
// points to. Memory of the Value's own may pass to the pointer.
void assignPointerToArray(TypeInfo *symbol, Value *value);
// A C array's pointer takes the address, and the shape if it has none of its own.
void assignPointerToCArray(VarCell *cell, const Value *value);

// ---- Members ------------------------------------------------------------------------------------

// An array, or a pointer to one, that lies in an object: a view of the array. NULL if there is no
// memory.
Value *viewArrayMember(const TypeInfo *member, void *place);
void assignArrayMember(const TypeInfo *member, void *place, const Value *value);
// The address of an array as a pointer to it, which counts it as one of any number; the shape is
// the pointer's own.
Value *pointerToArray(const Value *array);

}  // namespace zy
