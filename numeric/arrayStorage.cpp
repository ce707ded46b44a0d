#include "numeric/arrayStorage.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "decl/arrayInfo.h"
#include "expr/calls.h"
#include "expr/objects.h"
#include "expr/operands.h"
#include "expr/readers.h"
#include "expr/routines.h"
#include "expr/typeQueries.h"
#include "front/names.h"
#include "instance/report.h"
#include "numeric/arrayValue.h"
#include "numeric/convert.h"

namespace zy {

// ---- Computed shapes ----------------------------------------------------------------------------

namespace {

int readBound(ExprNode *bound) {
    bool popped;
    Value *value = operandOf(bound, popped);
    if (!value)
        return 0;
    int number = truncateToInt32(readDouble(value));
    if (popped)
        deleteValue(value);
    return number;
}

bool isValid(const ExtentRec &extent, bool isFirst) {
    if (extent.limit < 0 && extent.lower > 0)
        return false;
    int64_t count = int64_t{extent.limit} - extent.lower;
    return isFirst ? count >= 0 : count > 0;
}

void guardDimension(ExtentRec &extent, int dimension) {
    if (isValid(extent, dimension == 1))
        return;
    runError(
        "zero or negative subscript, or upper limit equal or less than lower limit for dimension "
        "%d of array",
        dimension);
    extent.limit = 1;
    extent.lower = 0;
}

}  // namespace

ShapeList evalArrayBounds(ExprNode *bounds, bool fortranOrder, uint32_t &count, bool guard) {
    ShapeList shape = nullptr;
    ShapeNode **tail = &shape;
    int dimension = 1;
    for (ExprNode *cell = bounds; cell && cell->next; cell = cell->next->next, dimension++) {
        int lower = readBound(cell->item), limit = readBound(cell->next->item);
        ShapeNode *node = newShapeNode(lower, limit);
        if (!node)
            break;
        if (guard)
            guardDimension(node->extent, dimension);
        *tail = node;
        tail = &node->next;
    }
    bool fits = countElements(shape, count);
    if (fortranOrder)
        setFortranStrides(shape);
    else
        setRowStrides(shape);
    if (!fits)
        count = 0;
    return shape;
}

namespace {

constexpr uint32_t SPARE_ELEMENTS = 1024;  // what an array without elements has

// A block of `bytes` with the old contents and zeroes behind them. False, with the old one
// released, if there is no memory.
bool resizeBlock(VarCell *cell, size_t oldBytes, size_t bytes) {
    void *block = cell->data.p ? realloc(cell->data.p, bytes) : calloc(1, bytes);
    if (!block) {
        reportOutOfMemory();
        free(cell->data.p);
        cell->count = 0;
    } else if (cell->data.p && bytes > oldBytes) {
        memset(static_cast<char *>(block) + oldBytes, 0, bytes - oldBytes);
    }
    cell->data.p = block;
    return block;
}

void releaseTextsFrom(VarCell *cell, uint32_t first, uint32_t end) {
    if (cell->data.p && first < end)
        releaseElements(static_cast<char **>(cell->data.p) + first, end - first,
                        cell->data2.elementType);
}

}  // namespace

void allocDeferredArray(TypeInfo *symbol) {
    VarCell *cell = findVarCell(symbol);
    if (symbol->dataType == DT_STRUCT && hasLife(symbol->structLink))
        destroyVariable(symbol);  // what an earlier run of the declaration has constructed
    uint32_t oldCount = cell->count, count = 0;
    ShapeList shape =
        evalArrayBounds(symbol->arrayLink->bounds, symbol->arrayLink->fortranOrder, count, true);
    releaseShape(cell->shape);
    cell->shape = shape;
    if (symbol->storage == STORAGE_TYPEDEF) {
        cell->data.p = nullptr;
        return;
    }
    size_t size = elementSizeOf(symbol);
    if (symbol->dataType == DT_STRING)
        releaseTextsFrom(cell, count, oldCount);
    cell->count = count;
    if (count == 0) {
        runError("declare a deferred shape array with a 0 subscript");
        resizeBlock(cell, 0, SPARE_ELEMENTS * size);
    } else {
        resizeBlock(cell, std::min(oldCount, count) * size, count * size);
    }
}

void arrayBoundsOperator(ExprNode *node) { allocDeferredArray(variableOf(node->left)); }

Value *newHeapArray(int type, TypeInfo *model) {
    uint32_t count = 0;
    const ArrayInfo *info = model->arrayLink;
    ShapeList shape =
        info ? evalArrayBounds(info->bounds, info->fortranOrder, count, true) : nullptr;
    auto size = static_cast<size_t>(elementSizeOf(model));
    Value *array = size > 0 ? newZeroValue(type) : nullptr;
    if (!array) {
        releaseShape(shape);
        return nullptr;
    }
    array->payload.p = newElements(count, size, true);
    array->payload2.elementType = model->dataType;
    array->shape = shape;
    array->count = count;
    array->ownership = ARRAY_OWNS_SHAPE;
    if (!array->payload.p && count)
        memoryFailed();
    else if (model->dataType == DT_STRUCT)
        constructHeapObjects(array->payload.p, count, model->structLink);
    return array;
}

// ---- Shapes that are taken over -----------------------------------------------------------------

namespace {

void recount(VarCell *cell) {
    cell->count = cell->fortranOrder ? setFortranStrides(cell->shape) : setRowStrides(cell->shape);
}

}  // namespace

void adoptShape(VarCell *cell, const Value *array) {
    const ShapeNode *source = array->shape;
    for (ShapeNode *node = cell->shape; node; node = node->next) {
        node->extent.limit = source ? source->extent.limit : 1;
        node->extent.lower = source ? source->extent.lower : 0;
        source = source ? source->next : nullptr;
    }
    recount(cell);
}

void adoptExtents(VarCell *cell, const ExprNode *formalBounds, const Value *array) {
    const ShapeNode *source = array->shape;
    const ExprNode *bound = formalBounds;
    for (ShapeNode *node = cell->shape; node; node = node->next) {
        const Value *lower = bound ? constantOf(bound->item) : nullptr;
        node->extent.lower = lower && lower->payload.i != OPEN_LIMIT ? lower->payload.i : 0;
        int extent = source ? source->extent.limit - source->extent.lower : 1;
        node->extent.limit = node->extent.lower + extent;
        source = source ? source->next : nullptr;
        bound = bound && bound->next ? bound->next->next : nullptr;
    }
    recount(cell);
}

// ---- Assignment of whole arrays -----------------------------------------------------------------

void assignElements(void *data, uint32_t count, int elementType, const Value *value) {
    if (!data)
        return;
    if (isArrayLike(static_cast<int>(value->type)))
        copyElements(data, elementType, value->payload.p, value->payload2.elementType,
                     std::min(count, value->count));
    else
        fillFromScalar(data, count, elementType, value);
}

void assignArrayVariable(TypeInfo *symbol, const Value *value) {
    VarCell *cell = findVarCell(symbol);
    bool isCast = isArrayLike(static_cast<int>(value->type)) && value->payload2.castFlag == 1;
    assignElements(cell->data.p, cell->count, cell->data2.elementType, value);
    if (!isCast)
        return;
    runWarning(
        "lvalue is not pointer to computational array while rvalue is the result casted to pointer "
        "to computational array");
    noteRunError();
}

// ---- Pointers to arrays -------------------------------------------------------------------------

namespace {

constexpr char NOT_ALLOCATED[] =
    "lvalue of pointer to computational array has not been allocated memory before assignment "
    "operation";

// A temporary's elements have no other owner: the cell releases them as it does those of an
// argument.
void takeData(VarCell *cell, Value *array) {
    cell->data.p = array->payload.p;
    cell->data2.elementType = array->payload2.elementType;
    if (array->ownership != ARRAY_OWNED)
        return;
    array->ownership = ARRAY_OWNS_SHAPE;
    cell->argumentMark = ARRAY_ARGUMENT;
}

void rebind(const TypeInfo *symbol, VarCell *cell, Value *array) {
    if (cell->argumentMark == ARRAY_ARGUMENT && warningsAt(1)) {
        runWarning("temporary memory for '%s' passed from argument of function may be leaked",
                   symbol->name ? symbol->name->text : "");
        cell->argumentMark = 0;
    }
    takeData(cell, array);
    if (cell->adoptShape) {
        adoptShape(cell, array);
    } else if (cell->shape && array->shape) {
        const ExtentRec &first = array->shape->extent;
        cell->shape->extent.limit = cell->shape->extent.lower + (first.limit - first.lower);
        recount(cell);
    }
}

// The array that a pointer without memory gets is the script's, as any other that it points to.
// Without elements to copy there is none.
void allocateCopy(VarCell *cell, const Value *array) {
    if (array->payload.p) {
        adoptShape(cell, array);
        auto size = static_cast<size_t>(elementSize(cell->data2.elementType));
        cell->data.p = cell->count ? newElements(cell->count, size, true) : nullptr;
        assignElements(cell->data.p, cell->count, cell->data2.elementType, array);
    }
    runError("%s", NOT_ALLOCATED);
}

void assignArrayThrough(const TypeInfo *symbol, VarCell *cell, Value *array) {
    bool isFresh = array->ownership == ARRAY_OWNS_SHAPE && !cell->data.p;  // made by `new`
    if (array->payload2.castFlag == 1 || isFresh) {
        rebind(symbol, cell, array);
    } else if (!cell->data.p) {
        allocateCopy(cell, array);
    } else {
        if (cell->count == 0)
            runWarning(
                "pointer to computational array is incomplete with unknown number of elements");
        assignElements(cell->data.p, cell->count, cell->data2.elementType, array);
    }
}

bool isNullConstant(const Value *value) { return value->type == DT_NULL && !value->payload.p; }

}  // namespace

void assignPointerToArray(TypeInfo *symbol, Value *value) {
    VarCell *cell = findVarCell(symbol);
    if (isArrayLike(static_cast<int>(value->type)))
        assignArrayThrough(symbol, cell, value);
    else if (isNullConstant(value))
        cell->data.p = nullptr;
    else if (cell->data.p)
        assignElements(cell->data.p, cell->count, cell->data2.elementType, value);
    else
        runError("%s", NOT_ALLOCATED);
}

void assignPointerToCArray(VarCell *cell, const Value *value) {
    bool isNumber = isScalarNumeric(static_cast<int>(value->type));
    cell->data.p = isNumber
                       ? reinterpret_cast<void *>(static_cast<uintptr_t>(readUnsigned64(value)))
                       : pointerOf(value);
    if (isArrayLike(static_cast<int>(value->type)) && cell->adoptShape)
        adoptShape(cell, value);
}

// ---- Members ------------------------------------------------------------------------------------

namespace {

bool isPointerMember(const TypeInfo *member) {
    return member->kind == KIND_P_C_ARRAY || member->kind == KIND_P_ARRAY;
}

void *memberElements(const TypeInfo *member, void *place) {
    if (!isPointerMember(member))
        return place;
    void *pointer;
    memcpy(&pointer, place, sizeof pointer);
    return pointer;
}

}  // namespace

Value *viewArrayMember(const TypeInfo *member, void *place) {
    Value *view = newZeroValue(dataTypeOf(member));
    if (!view)
        return nullptr;
    view->payload.p = memberElements(member, place);
    view->payload2.elementType = member->dataType;
    if (member->arrayLink) {
        view->shape = fixedShapeOf(member->arrayLink);
        view->count = shapeCount(view->shape);
    }
    return view;
}

namespace {

// As of a variable, but that a member takes no temporary's elements over.
bool bindsMember(const TypeInfo *member, const void *elements, const Value *value) {
    if (member->kind != KIND_P_ARRAY || !isArrayLike(static_cast<int>(value->type)))
        return member->kind == KIND_P_C_ARRAY || (isPointerMember(member) && isNullConstant(value));
    bool isFresh = value->ownership == ARRAY_OWNS_SHAPE && !elements;
    return value->ownership != ARRAY_OWNED && (value->payload2.castFlag == 1 || isFresh);
}

}  // namespace

void assignArrayMember(const TypeInfo *member, void *place, const Value *value) {
    if (bindsMember(member, memberElements(member, place), value)) {
        void *pointer = pointerOf(value);
        memcpy(place, &pointer, sizeof pointer);
        return;
    }
    void *elements = memberElements(member, place);
    uint32_t count = member->arrayLink ? shapeCount(fixedShapeOf(member->arrayLink)) : 0;
    if (!elements && isArrayLike(static_cast<int>(value->type)))
        runError("member of pointer to computational array has not been allocated memory");
    else if (!elements)
        runError(
            "lvalye of pointer to computational array type  has not been allocated memory before "
            "assignment operation");
    if (!elements)
        return;
    if (count == 0)
        runWarning(
            "member of pointer to computational array is incomplete with unknown number of "
            "elements");
    assignElements(elements, count, member->dataType, value);
}

Value *pointerToArray(const Value *array) {
    ShapeNode *first = newShapeNode(0, 0);
    Value *pointer = first ? newZeroValue(bandAbove(static_cast<int>(array->type))) : nullptr;
    if (!pointer) {
        releaseShape(first);
        return nullptr;
    }
    first->extent.stride = array->count;
    first->next = copyShape(array->shape);
    pointer->payload.p = array->payload.p;
    pointer->payload2.elementType = array->payload2.elementType;
    pointer->shape = first;
    pointer->count = array->count;
    pointer->ownership = ARRAY_OWNS_SHAPE;
    return pointer;
}

}  // namespace zy
