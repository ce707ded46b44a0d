#include "numeric/arrayCast.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "decl/arrayInfo.h"
#include "decl/structInfo.h"
#include "expr/nodeClasses.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "numeric/arrayStorage.h"
#include "numeric/arrayValue.h"
#include "numeric/convert.h"

namespace zy {

namespace {

// ---- The target ---------------------------------------------------------------------------------

struct CastTarget {
    int type;
    int elementType;
    size_t elementBytes;
    ShapeList shape;
    uint32_t count;
};

size_t bytesOfElement(const ExprNode *target, int elementType) {
    if (elementType != DT_STRUCT)
        return static_cast<size_t>(elementSize(elementType));
    const StructInfo *info = structInfoOf(target);
    return info ? static_cast<size_t>(info->size) : 0;
}

// The shape that the target's own Value has, which was pushed before the operand.
ShapeList shapeOnStack(uint32_t &count) {
    Value *model = popValue();
    if (!model)
        return nullptr;
    bool isArray = isArrayLike(static_cast<int>(model->type));
    ShapeList shape = isArray ? copyShape(model->shape) : nullptr;
    count = isArray ? model->count : 0;
    deleteValue(model);
    return shape;
}

CastTarget targetOf(const ExprNode *target, int type, const Value *operand) {
    CastTarget result{type, elementTypeOf(target), 0, nullptr, 0};
    if (type == DT_PP_CARRAY)
        result.elementType = bandBelow(result.elementType);
    result.elementBytes = bytesOfElement(target, result.elementType);
    const TypeInfo *declaration = declarationOf(target);
    const ArrayInfo *info = declaration ? declaration->arrayLink : nullptr;
    if (hasRunTimeShape(target)) {
        result.shape = shapeOnStack(result.count);
    } else if (info && info->bounds && info->shapeKind != SHAPE_ASSUMED) {
        result.shape = evalArrayBounds(info->bounds, info->fortranOrder, result.count, true);
    } else if (isArrayLike(static_cast<int>(operand->type))) {
        result.shape = copyShape(operand->shape);
        result.count = operand->count;
    }
    return result;
}

// ---- Results ------------------------------------------------------------------------------------

// The operand's record as an array of the target's type and shape.
Value *finish(Value *record, const CastTarget &target, void *data, uint8_t ownership) {
    record->kind = NODE_VALUE;
    record->type = target.type;
    record->payload.p = data;
    record->payload2.bits = 0;
    record->payload2.elementType = target.elementType;
    record->shape = target.shape;
    record->count = target.count;
    record->ownership = ownership;
    return record;
}

void releaseContents(Value *operand) {
    if (isArrayLike(static_cast<int>(operand->type)))
        releaseArrayValue(operand);
    else if (operand->type == DT_STRING)
        free(operand->payload.text);
}

// Elements of the target's own, from the operand's; zero behind them. Without memory for them the
// result is a null array: what stands behind the cast finds its operand.
Value *copied(Value *operand, const CastTarget &target) {
    void *data = newElements(target.count, target.elementBytes, true);
    bool isArray = isArrayLike(static_cast<int>(operand->type));
    if (!data)
        releaseShape(target.shape);
    else if (!isArray)
        fillFromScalar(data, target.count, target.elementType, operand);
    else if (target.elementType == DT_STRUCT)
        memcpy(data, operand->payload.p,
               std::min(target.count, operand->count) * target.elementBytes);
    else
        copyElements(data, target.elementType, operand->payload.p, operand->payload2.elementType,
                     std::min(target.count, operand->count));
    releaseContents(operand);
    if (data)
        return finish(operand, target, data, ARRAY_OWNED);
    return finish(operand, {target.type, target.elementType, 0, nullptr, 0}, nullptr, ARRAY_VIEW);
}

// The operand's memory under the target's shape. What the operand owns, the result owns.
Value *viewed(Value *operand, const CastTarget &target) {
    void *data = pointerOf(operand);
    bool isArray = isArrayLike(static_cast<int>(operand->type));
    bool owned = isArray && operand->ownership == ARRAY_OWNED;
    if (isArray && operand->ownership != ARRAY_VIEW && operand->ownership != ARRAY_ARGUMENT)
        releaseShape(operand->shape);
    return finish(operand, target, data, owned ? ARRAY_OWNED : ARRAY_OWNS_SHAPE);
}

// `(array double [:])a`: the operand's memory, for a pointer to be bound to.
Value *bound(Value *operand, int type, int elementType) {
    CastTarget target{type, elementType, 0, nullptr, 0};
    bool isArray = isArrayLike(static_cast<int>(operand->type));
    if (!isArray || operand->ownership == ARRAY_OWNED) {
        runError("invalid operand casted to pointer to computational array");
        releaseContents(operand);
        return finish(operand, target, nullptr, ARRAY_VIEW);
    }
    target.shape =
        operand->ownership == ARRAY_OWNS_SHAPE ? operand->shape : copyShape(operand->shape);
    target.count = operand->count;
    Value *result = finish(operand, target, operand->payload.p, ARRAY_OWNS_SHAPE);
    result->payload2.castFlag = 1;
    return result;
}

bool isBinding(const ExprNode *target, int type) {
    const TypeInfo *named = variableOf(target);
    return type == DT_P_ARRAY && named && named->level == TYPE_ONLY_LEVEL &&
           named->kind == KIND_P_ARRAY && named->arrayLink &&
           named->arrayLink->shapeKind == SHAPE_ASSUMED;
}

// Whether an operand's own elements can be the result's.
bool canPass(const Value *operand, const CastTarget &target) {
    return operand->ownership == ARRAY_OWNED && operand->count >= target.count &&
           operand->payload2.elementType == target.elementType;
}

}  // namespace

bool hasCastElements(const ExprNode *target) {
    int type = elementTypeOf(target);
    return isScalarNumeric(type) || (isPointer(type) && !isArrayLike(type)) || type == DT_STRING ||
           type == DT_STRUCT;
}

Value *castToArray(const ExprNode *target, int type, Value *operand) {
    if (isBinding(target, type))
        return bound(operand, type, elementTypeOf(target));
    CastTarget wanted = targetOf(target, type, operand);
    int found = static_cast<int>(operand->type);
    bool isArray = isArrayLike(found);
    if (isComputational(type) && isScalarNumeric(found))
        return copied(operand, wanted);
    bool pointsOnly = type == DT_P_CARRAY || type == DT_PP_CARRAY || !isArray ||
                      (type == DT_CARRAY && !isCArray(found));
    if (pointsOnly || canPass(operand, wanted))
        return viewed(operand, wanted);
    return copied(operand, wanted);
}

bool takeFirstElement(Value *array) {
    Value whole = *array;
    bool found = whole.payload.p && whole.count > 0 &&
                 loadElement(array, whole.payload.p, whole.payload2.elementType);
    releaseArrayValue(&whole);
    return found;
}

}  // namespace zy
