#include "embed/hostArrays.h"

#include <algorithm>
#include <cstring>

#include "expr/nodes.h"
#include "numeric/shape.h"

namespace zy {

namespace {

// NULL if an extent is none.
ShapeList shapeFromHost(int rank, HostArguments &arguments) {
    ShapeList shape = nullptr;
    ShapeNode **end = &shape;
    bool isValid = rank > 0;
    for (int i = 0; i < rank && isValid; i++) {
        int extent = va_arg(arguments.list, int);
        isValid = extent > 0 && (*end = newShapeNode(0, extent));
        if (isValid)
            end = &(*end)->next;
    }
    if (isValid)
        return shape;
    releaseShape(shape);
    return nullptr;
}

int elementBytes(int type) { return isHostElement(type) ? elementSize(type) : 0; }

}  // namespace

bool isHostElement(int type) {
    return type >= 0 && (isScalarNumeric(type) || isPointer(type) || type == DT_STRING);
}

Value *arrayFromHost(int type, int elementType, void *data, int rank, HostArguments &arguments) {
    ShapeList shape = shapeFromHost(rank, arguments);
    if (!shape)
        return nullptr;
    Value *value = newZeroValue(type);
    value->payload.p = data;
    value->payload2.elementType = elementType;
    value->shape = shape;
    value->count = setRowStrides(shape);
    value->ownership = ARRAY_OWNS_SHAPE;
    return value;
}

ExprNode *declarationLike(const Value *array) {
    TypeInfo *type = newTypeInfo();
    type->level = TYPE_ONLY_LEVEL;
    type->kind = array->type == DT_ARRAY ? KIND_ARRAY : KIND_C_ARRAY;
    type->dataType = array->payload2.elementType;
    type->arrayLink = newArrayInfo();
    for (const ShapeNode *node = array->shape; node; node = node->next) {
        appendListCell(type->arrayLink->bounds, newIntNode(node->extent.lower));
        appendListCell(type->arrayLink->bounds, newIntNode(node->extent.limit));
        type->arrayLink->rank++;
    }
    return newSymbolNode(type);
}

// A type that isn't that of the elements never makes it read behind them.
void copyElementsToHost(void *result, int hostElement, const Value *array) {
    if (!array->payload.p)
        return;
    auto size = static_cast<size_t>(
        std::min(elementBytes(hostElement), elementBytes(array->payload2.elementType)));
    memcpy(result, array->payload.p, size * array->count);
}

}  // namespace zy
