#include "decl/arrays.h"

#include "decl/aggregates.h"
#include "decl/arrayInfo.h"
#include "decl/funcInfo.h"
#include "decl/structInfo.h"
#include "expr/nodes.h"
#include "expr/operators.h"
#include "expr/thread.h"
#include "instance/report.h"
#include "stmt/parser.h"

namespace zy {

bool isAssumedShape(const TypeInfo *info) {
    return info->arrayLink && info->arrayLink->shapeKind == SHAPE_ASSUMED;
}

bool takesShape(const TypeInfo *info) {
    bool isPointer = info->kind == KIND_P_C_ARRAY || info->kind == KIND_P_ARRAY;
    return isPointer && info->context == CONTEXT_PARAMETER && info->level != TYPE_ONLY_LEVEL &&
           isAssumedShape(info);
}

bool isDeferred(const TypeInfo *info) {
    return info->arrayLink && info->arrayLink->shapeKind == SHAPE_DEFERRED;
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

// ---- Where arrays may stand ---------------------------------------------------------------------

void addPointerDimension(TypeInfo *info) {
    ArrayInfo *shape = info->arrayLink;
    ExprNode *bounds = nullptr;
    appendListCell(bounds, newIntNode(0));
    appendListCell(bounds, newIntNode(shape->shapeKind == SHAPE_ASSUMED ? OPEN_LIMIT : 0));
    if (!bounds || !bounds->next)
        return;
    bounds->next->next = shape->bounds;
    shape->bounds = bounds;
    shape->rank++;
}

namespace {

bool refuse(const char *text) {
    parseError("%s", text);
    return false;
}

bool checkDeferred(const TypeInfo *info, const ArrayPlace &place) {
    bool isMember = place.context == CONTEXT_MEMBER || place.context == CONTEXT_UNION_MEMBER;
    if (place.hasPrefix)
        return refuse("pointer to deferred-shape array");
    if (place.context == CONTEXT_PARAMETER && place.level != TYPE_ONLY_LEVEL)
        return refuse("deferred-shape array as formal arg of a function ");
    if (isMember)
        return refuse("deferred-shape array as field of a struct/class/union");
    if (info->storage == STORAGE_STATIC && place.level > FILE_LEVEL)
        return refuse("block scope static deferred-shape array ");
    return true;
}

}  // namespace

bool checkArrayPlace(const TypeInfo *info, const ArrayPlace &place) {
    uint32_t kind = info->arrayLink->shapeKind;
    if (place.fortranOrder && place.hasPrefix && kind != SHAPE_ASSUMED)
        return refuse("C-style pointer to Fortran array is invalid without the first dimension");
    if (kind == SHAPE_DEFERRED)
        return checkDeferred(info, place);
    bool isOpen = kind == SHAPE_ASSUMED && !place.hasPrefix;
    if (isOpen && place.context != CONTEXT_PARAMETER && info->storage != STORAGE_TYPEDEF)
        return refuse("assumed-shape array not in function prototype scope");
    return true;
}

bool applyArrayPlace(TypeInfo *info, const ArrayPlace &place) {
    if (place.fortranOrder)
        info->arrayLink->fortranOrder = 1;
    if (!checkArrayPlace(info, place))
        return false;
    if (place.hasPrefix) {
        addPointerDimension(info);
        info->kind = info->kind < KIND_ARRAY ? KIND_P_C_ARRAY : KIND_P_ARRAY;
    }
    return true;
}

// ---- Bounds that are computed -------------------------------------------------------------------

namespace {

bool constructorTakesArguments(const TypeInfo *info) {
    const StructInfo *aggregate = info->dataType == DT_STRUCT ? info->structLink : nullptr;
    const TypeInfo *constructor = aggregate ? aggregate->constructor : nullptr;
    const FuncInfo *function = constructor ? constructor->functionLink : nullptr;
    // The first formal is the object.
    const TypeInfo *formal =
        function && function->parameters ? function->parameters->next : nullptr;
    return formal && formal->dataType != DT_VOID;
}

}  // namespace

void addDeferredStep(TypeInfo *info) {
    if (constructorTakesArguments(info)) {
        const char *name = plainTagName(info->structLink->tag);
        parseError(
            "the constructor %s::%s() of the deferred-shape array of struct/class has argument",
            name, name);
        return;
    }
    ExprNode *step = newOperatorNode(OP_ARRAY_BOUNDS, newSymbolNode(info));
    StmtNode *statement = appendPending(pendingBefore, STMT_EXPRESSION);
    statement->operandA.tree = step;
    statement->chain = compileChain(step, nullptr, false);
}

}  // namespace zy
