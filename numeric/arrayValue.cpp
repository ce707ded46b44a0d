#include "numeric/arrayValue.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "expr/readers.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "numeric/convert.h"

namespace zy {

void *newElements(uint32_t count, size_t elementBytes, bool cleared) {
    size_t bytes = std::max<size_t>(count * elementBytes, 1);
    if (!cleared)
        return allocOrFail(bytes);
    void *block = calloc(1, bytes);
    if (!block)
        reportOutOfMemory();
    return block;
}

Value *newArrayValue(int elementType, ShapeList shape) {
    int size = elementSize(elementType);
    Value *array = size > 0 ? newValue() : nullptr;
    uint32_t count = shapeCount(shape);
    void *elements = array ? newElements(count, size, elementType == DT_STRING) : nullptr;
    if (!elements) {
        if (array)
            recycleValue(array);
        releaseShape(shape);
        return nullptr;
    }
    array->kind = NODE_VALUE;
    array->type = DT_ARRAY;
    array->payload.p = elements;
    array->payload2.elementType = elementType;
    array->payload2.castFlag = 0;
    array->shape = shape;
    array->count = count;
    array->ownership = ARRAY_OWNED;
    return array;
}

Value *newArrayLike(const Value *model, int elementType) {
    return newArrayValue(elementType, copyShape(model->shape));
}

Value *copyArrayValue(const Value *array, int elementType) {
    Value *copy = newArrayLike(array, elementType);
    if (copy)
        copyElements(copy->payload.p, elementType, array->payload.p, array->payload2.elementType,
                     std::min(copy->count, array->count));
    return copy;
}

// ---- * ------------------------------------------------------------------------------------------

namespace {

Value *firstElement(const Value *array) {
    int type = array->payload2.elementType;
    Value *value = newZeroValue(type);
    if (!value)
        return nullptr;
    if (isNullAddress(array->payload.p)) {
        runWarning("Pointer operation *ptr where ptr = NULL, 0 is assigned to *ptr");
    } else if (type == DT_STRUCT) {
        value->payload.p = array->payload.p;
        value->noFree = 1;
    } else if (!loadElement(value, array->payload.p, type)) {
        value->payload.bits = value->payload2.bits = 0;
    }
    return value;
}

}  // namespace

Value *derefArray(const Value *array) {
    const ShapeNode *first = array->shape;
    if (array->type != DT_PP_CARRAY && (!first || !first->next))
        return firstElement(array);
    Value *view = newZeroValue(DT_CARRAY);
    if (!view)
        return nullptr;
    view->payload2.elementType = array->payload2.elementType;
    view->payload.p = array->payload.p;
    if (array->type == DT_PP_CARRAY) {
        view->type = DT_P_CARRAY;
        view->shape = array->shape;
        view->count = array->count;
        if (array->payload.p)
            memcpy(&view->payload.p, array->payload.p, sizeof(void *));
        return view;
    }
    if (array->type == DT_ARRAY || array->type == DT_P_ARRAY)
        view->type = DT_ARRAY;
    view->shape = first->next;
    view->count = first->extent.stride;
    return view;
}

// ---- Elements -----------------------------------------------------------------------------------

namespace {

void copyTexts(char **destination, char *const *source, uint32_t count) {
    for (uint32_t i = 0; i < count; i++) {
        char *old = destination[i];
        destination[i] = copyString(source[i]);
        free(old);
    }
}

}  // namespace

void copyElements(void *destination, int target, const void *source, int sourceType,
                  uint32_t count) {
    if (!source || !destination || count == 0)
        return;
    if (target != sourceType)
        convertElements(destination, source, count, target, sourceType);
    else if (target == DT_STRING)
        copyTexts(static_cast<char **>(destination), static_cast<char *const *>(source), count);
    else
        memmove(destination, source, static_cast<size_t>(count) * elementSize(target));
}

// ---- Filling ------------------------------------------------------------------------------------

namespace {

// The scalar as one element. False for a type that can't be one.
bool scalarAsElement(void *element, int type, const Value *value) {
    Value converted = *value;
    if (!isScalarNumeric(type) && !isPointer(type))
        return false;
    // An integer of 64 bits reads as a double for the narrower types, as any number does.
    if (type <= DT_UINT && !isPointer(static_cast<int>(value->type))) {
        converted.type = DT_LLONG;
        converted.payload.ll = truncateToInt64(readDouble(value));
    }
    if (!convertScalar(&converted, type))
        return false;
    return storeElement(element, &converted);
}

// Doubles what is there until it fills the buffer: the copies are long, and none reads what
// another of the same step writes.
void repeat(char *buffer, size_t bytes, size_t filled) {
    while (filled < bytes) {
        size_t step = std::min(filled, bytes - filled);
        memcpy(buffer + filled, buffer, step);
        filled += step;
    }
}

int refuseFill(const Value *value) {
    if (isPointer(static_cast<int>(value->type)))
        runError("unsupported data type for scalar pointer to array promotion");
    else
        runError("unsupported data type for scalar to array promotion");
    return -1;
}

}  // namespace

int fillFromScalar(void *buffer, uint32_t count, int elementType, const Value *value) {
    unsigned char element[2 * sizeof(Payload)] = {};
    if (elementType == DT_STRING || !scalarAsElement(element, elementType, value))
        return refuseFill(value);
    size_t size = elementSize(elementType);
    if (count == 0)
        return 0;
    memcpy(buffer, element, size);
    repeat(static_cast<char *>(buffer), count * size, size);
    return 0;
}

// ---- Order --------------------------------------------------------------------------------------

bool isFortranOrdered(const ShapeNode *shape) {
    return shape && shape->next && shape->next->extent.stride != 1 && shape->extent.stride == 1;
}

void reorderElements(void *destination, const void *source, const ShapeNode *targetShape,
                     const ShapeNode *sourceShape, uint32_t count, uint32_t elementBytes) {
    auto *to = static_cast<char *>(destination);
    auto *from = static_cast<const char *>(source);
    for (uint32_t position = 0; position < count; position++) {
        uint32_t rest = position, offset = 0;
        const ShapeNode *target = targetShape, *other = sourceShape;
        for (; target && other; target = target->next, other = other->next) {
            uint32_t stride = target->extent.stride;
            offset += stride ? rest / stride * other->extent.stride : 0;
            rest = stride ? rest % stride : 0;
        }
        memcpy(to + size_t{position} * elementBytes, from + size_t{offset} * elementBytes,
               elementBytes);
    }
}

}  // namespace zy
