#include "numeric/shape.h"

#include <cstdlib>

#include "decl/arrayInfo.h"
#include "decl/structInfo.h"
#include "expr/freeBlocks.h"
#include "expr/value.h"
#include "instance/report.h"

namespace zy {

ShapeNode *newShapeNode(int lower, int limit) {
    auto *node = static_cast<ShapeNode *>(takeBlock(freeShapes));
    if (!node)
        node = static_cast<ShapeNode *>(allocOrFail(sizeof(ShapeNode)));
    if (node)
        *node = {nullptr, {limit, lower, 0}};
    return node;
}

ShapeList copyShape(const ShapeNode *shape) {
    ShapeList copy = nullptr;
    ShapeNode **tail = &copy;
    for (; shape; shape = shape->next) {
        ShapeNode *node = newShapeNode(shape->extent.lower, shape->extent.limit);
        if (!node)
            break;
        node->extent.stride = shape->extent.stride;
        *tail = node;
        tail = &node->next;
    }
    return copy;
}

void releaseShape(ShapeList shape) {
    while (shape) {
        ShapeNode *next = shape->next;
        if (!giveBlock(freeShapes, shape))
            free(shape);
        shape = next;
    }
}

namespace {

// Extents in unsigned arithmetic: a script's limits may be anything.
uint32_t extentOf(const ShapeNode *node) {
    return static_cast<uint32_t>(node->extent.limit) - static_cast<uint32_t>(node->extent.lower);
}

}  // namespace

uint32_t setRowStrides(ShapeList shape) {
    if (!shape)
        return 1;
    shape->extent.stride = setRowStrides(shape->next);
    return shape->extent.stride * extentOf(shape);
}

uint32_t setFortranStrides(ShapeList shape) {
    uint32_t stride = 1;
    for (; shape; shape = shape->next) {
        shape->extent.stride = stride;
        stride *= extentOf(shape);
    }
    return stride;
}

uint32_t shapeCount(const ShapeNode *shape) {
    uint32_t count = 1;
    for (; shape; shape = shape->next)
        count *= extentOf(shape);
    return count;
}

bool countElements(const ShapeNode *shape, uint32_t &count) {
    uint64_t product = shape ? 1 : 0;
    for (; shape; shape = shape->next) {
        product *= extentOf(shape);
        if (product > UINT32_MAX) {
            reportOutOfMemory();
            return false;
        }
    }
    count = static_cast<uint32_t>(product);
    return true;
}

namespace {

int constantBound(const ExprNode *cell) {
    const ExprNode *leaf = cell ? cell->item : nullptr;
    return leaf && leaf->kind == NODE_VALUE && leaf->type == DT_INT ? leaf->payload.i : 0;
}

}  // namespace

ShapeList declaredShape(const ArrayInfo *info) {
    if (info->shapeKind == SHAPE_DEFERRED)
        return nullptr;
    ShapeList shape = nullptr;
    ShapeNode **tail = &shape;
    for (const ExprNode *cell = info->bounds; cell && cell->next; cell = cell->next->next) {
        int lower = constantBound(cell), limit = constantBound(cell->next);
        if (lower == OPEN_LIMIT)
            lower = 0;
        // A declaration that was refused may have limits that no array has.
        *tail = newShapeNode(lower, limit == OPEN_LIMIT || limit < lower ? lower : limit);
        if (!*tail)
            break;
        tail = &(*tail)->next;
    }
    if (info->fortranOrder)
        setFortranStrides(shape);
    else
        setRowStrides(shape);
    return shape;
}

ShapeNode *fixedShapeOf(ArrayInfo *info) {
    if (!info->fixedShape)
        info->fixedShape = declaredShape(info);
    return info->fixedShape;
}

int elementSize(int elementType) { return sizeofType(elementType); }

int elementSizeOf(const TypeInfo *symbol) {
    if (symbol->dataType != DT_STRUCT)
        return elementSize(symbol->dataType);
    return symbol->structLink ? symbol->structLink->size : 0;
}

bool isArrayLike(int dataType) {
    return dataType == DT_CARRAY || dataType == DT_P_CARRAY || dataType == DT_ARRAY ||
           dataType == DT_P_ARRAY || dataType == DT_PP_CARRAY;
}

void releaseElements(void *data, uint32_t count, int elementType) {
    if (elementType != DT_STRING || !data)
        return;
    auto *texts = static_cast<char **>(data);
    for (uint32_t i = 0; i < count; i++)
        free(texts[i]);
}

void releaseArrayValue(Value *value) {
    if (value->ownership == ARRAY_OWNED) {
        releaseElements(value->payload.p, value->count, value->payload2.elementType);
        free(value->payload.p);
    }
    if (value->ownership == ARRAY_OWNED || value->ownership == ARRAY_OWNS_SHAPE)
        releaseShape(value->shape);
}

}  // namespace zy
