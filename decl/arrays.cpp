#include "decl/arrays.h"

#include "decl/arrayInfo.h"
#include "expr/nodes.h"
#include "instance/report.h"

namespace zy {

bool isAssumedShape(const TypeInfo *info) {
    return info->arrayLink && info->arrayLink->shapeKind == SHAPE_ASSUMED;
}

bool addOpenShape(TypeInfo *info, bool fortranOrder) {
    bool isOpen = info->kind == KIND_ASSUMED_ARRAY || info->kind == KIND_P_ARRAY;
    if (!isOpen || info->arrayLink)
        return true;
    ArrayInfo *shape = info->arrayLink = newArrayInfo();
    if (!shape)
        return false;
    shape->shapeKind = SHAPE_ASSUMED;
    shape->fortranOrder = fortranOrder;
    if (info->kind == KIND_ASSUMED_ARRAY)
        return true;
    shape->rank = 1;
    appendListCell(shape->bounds, newIntNode(0));
    appendListCell(shape->bounds, newIntNode(OPEN_LIMIT));
    return true;
}

}  // namespace zy
