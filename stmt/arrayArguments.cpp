#include "stmt/arrayArguments.h"

#include <cstring>

#include "decl/arrayInfo.h"
#include "expr/evaluator.h"
#include "expr/thread.h"
#include "instance/report.h"
#include "numeric/arrayStorage.h"
#include "numeric/arrayValue.h"
#include "numeric/assign.h"

namespace zy {

// ---- Arguments ----------------------------------------------------------------------------------

namespace {

// The cell's type tells who releases the elements: an array's cell does, a pointer's doesn't.
int cellType(const TypeInfo *formal, bool ownsData) {
    bool isComputational = formal->kind == KIND_ASSUMED_ARRAY || formal->kind == KIND_P_ARRAY;
    if (isComputational)
        return ownsData ? DT_ARRAY : DT_P_ARRAY;
    return ownsData ? DT_CARRAY : DT_P_CARRAY;
}

bool hasElements(const TypeInfo *formal, const Value *actual) {
    return isArrayLike(static_cast<int>(actual->type)) && actual->payload.p &&
           actual->payload2.elementType == formal->dataType;
}

// What a formal of assumed shape knows itself by: all of the actual's.
VarCell *newSharedCell(const TypeInfo *formal, Value *actual) {
    bool owns = actual->ownership == ARRAY_OWNED;
    VarCell *cell = newVarCell(cellType(formal, owns));
    if (!cell)
        return nullptr;
    cell->data.p = actual->payload.p;
    cell->data2.elementType = actual->payload2.elementType;
    cell->count = actual->count;
    cell->shape = owns ? actual->shape : copyShape(actual->shape);
    if (owns)
        actual->ownership = ARRAY_VIEW;
    return cell;
}

VarCell *newNullCell(const TypeInfo *formal) {
    VarCell *cell = newVarCell(cellType(formal, false));
    if (cell)
        cell->data2.elementType = DT_NULL;
    return cell;
}

VarCell *newConvertedCell(const TypeInfo *formal, const Value *actual) {
    Value *copy = copyArrayValue(actual, formal->dataType);
    if (!copy)
        return newNullCell(formal);
    VarCell *cell = newSharedCell(formal, copy);
    deleteValue(copy);
    return cell;
}

VarCell *newAssumedCell(TypeInfo *formal, Value *actual) {
    if (hasElements(formal, actual))
        return newSharedCell(formal, actual);
    bool isArray = isArrayLike(static_cast<int>(actual->type)) && actual->payload.p;
    return isArray ? newConvertedCell(formal, actual) : newNullCell(formal);
}

// The elements become the callee's, with the pointer that it has for them.
void takeElements(VarCell *cell, Value *actual) {
    cell->data.p = actual->payload.p;
    if (actual->ownership != ARRAY_OWNED)
        return;
    actual->ownership = ARRAY_OWNS_SHAPE;
    cell->argumentMark = ARRAY_ARGUMENT;
}

bool isShapedByActual(const TypeInfo *formal) {
    const ArrayInfo *shape = formal->arrayLink;
    return shape && (formal->kind == KIND_P_ARRAY || shape->shapeKind == SHAPE_ASSUMED);
}

bool needsConversion(const TypeInfo *formal, const Value *actual) {
    int type = actual->payload2.elementType;
    return isShapedByActual(formal) && actual->payload.p && type != formal->dataType &&
           type != DT_NULL;
}

VarCell *newPointerCell(TypeInfo *formal, Value *actual) {
    VarCell *cell = newVarCell(formal->dataType);
    if (!cell || !initCell(cell, formal, formal->kind))
        return cell;
    if (!isArrayLike(static_cast<int>(actual->type))) {
        assignPointerToCArray(cell, actual);
        return cell;
    }
    Value *converted =
        needsConversion(formal, actual) ? copyArrayValue(actual, formal->dataType) : nullptr;
    Value *source = converted ? converted : actual;
    takeElements(cell, source);
    if (isShapedByActual(formal))
        adoptExtents(cell, formal->arrayLink->bounds, source);
    if (converted)
        deleteValue(converted);
    return cell;
}

}  // namespace

VarCell *newArrayArgument(TypeInfo *formal, Value *actual) {
    return takesArrayCell(formal) ? newAssumedCell(formal, actual) : newPointerCell(formal, actual);
}

VarCell *newArrayArgument(TypeInfo *formal, VarCell *actual) {
    Value view{};
    view.kind = NODE_VALUE;
    view.type = actual->type;
    view.payload = actual->data;
    view.payload2.elementType = actual->data2.elementType;
    view.shape = actual->shape;
    view.count = actual->count;
    if (!hasElements(formal, &view))
        return newAssumedCell(formal, &view);
    VarCell *link = newVarCell(DT_LINK);
    if (link)
        link->data.p = actual;
    return link;
}

// ---- Results ------------------------------------------------------------------------------------

namespace {

// The shape that the function declares; its bounds may be expressions of its formals.
ShapeList declaredResult(const FuncInfo *function) {
    ArrayInfo *info = function->owner->arrayLink;
    if (!info || info->shapeKind != SHAPE_DEFERRED)
        return info ? declaredShape(info) : nullptr;
    runNested(compileChain(info->bounds, nullptr, false));
    uint32_t count;
    return evalArrayBounds(info->bounds, info->fortranOrder, count, false);
}

Value *newDeclaredResult(const FuncInfo *function, const Value *value) {
    Value *result = newArrayValue(function->returnType, declaredResult(function));
    if (!result)
        return nullptr;
    size_t bytes = size_t{result->count} * elementSize(function->returnType);
    memset(result->payload.p, 0, bytes);
    if (value)
        assignElements(result->payload.p, result->count, function->returnType, value);
    return result;
}

bool isFinished(const FuncInfo *function, const Value *value) {
    return value->ownership == ARRAY_OWNED && value->payload2.elementType == function->returnType;
}

Value *arrayResult(const FuncInfo *function, Value *value) {
    bool isShaped = value && isArrayLike(static_cast<int>(value->type)) &&
                    value->type != DT_P_CARRAY && value->payload.p;
    if (isShaped && isFinished(function, value)) {
        value->type = DT_ARRAY;
        value->payload2.castFlag = 0;
        return value;
    }
    const ArrayInfo *declared = function->owner->arrayLink;
    Value *result = nullptr;
    if (isShaped)
        result = copyArrayValue(value, function->returnType);
    else if (!declared || declared->shapeKind == SHAPE_ASSUMED)
        runError("cannot determine the shape of array in return statement");
    else
        result = newDeclaredResult(function, value);
    if (value)
        deleteValue(value);
    return result;
}

// The pointer goes on without the variable that it was read from, whose shape it used.
Value *pointerResult(const FuncInfo *function, Value *value) {
    int type = function->returnKind == KIND_P_ARRAY ? DT_P_ARRAY : DT_P_CARRAY;
    Value *result = newZeroValue(type);
    if (result && value) {
        bool isArray = isArrayLike(static_cast<int>(value->type));
        result->payload.p =
            isPointer(static_cast<int>(value->type)) || isArray ? value->payload.p : nullptr;
        result->shape =
            isArray ? copyShape(value->shape)
                    : (function->owner->arrayLink ? declaredShape(function->owner->arrayLink)
                                                  : nullptr);
        result->count = isArray ? value->count : 0;
        result->ownership = ARRAY_OWNS_SHAPE;
    }
    if (result)
        result->payload2.elementType = function->returnType;
    if (value)
        deleteValue(value);
    return result;
}

}  // namespace

void takeLocalArray(const FuncInfo *function, TypeInfo *variable, Value *value) {
    bool isLocal = variable->kind == KIND_ARRAY && !variable->storageCell &&
                   variable->level > function->parameterLevel;
    VarCell *cell = isLocal ? findVarCellLink(variable) : nullptr;
    bool isTaken = cell && cell->type == DT_ARRAY && cell->data.p && value->type == DT_ARRAY &&
                   cell->data.p == value->payload.p && value->ownership == ARRAY_VIEW;
    if (!isTaken)
        return;
    value->ownership = ARRAY_OWNED;
    cell->data.p = nullptr;
    cell->shape = nullptr;
    cell->count = 0;
}

Value *arrayReturnValue(const FuncInfo *function, Value *value) {
    bool isPointer = function->returnKind == KIND_P_C_ARRAY || function->returnKind == KIND_P_ARRAY;
    return isPointer ? pointerResult(function, value) : arrayResult(function, value);
}

}  // namespace zy
