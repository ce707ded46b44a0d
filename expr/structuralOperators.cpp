// Operators that move values about: cast, comma, sizeof, new, elementtype, streval.

#include <cstdio>
#include <cstring>

#include "decl/arrays.h"
#include "decl/structInfo.h"
#include "expr/calls.h"
#include "expr/evaluator.h"
#include "expr/objects.h"
#include "expr/operators.h"
#include "expr/routines.h"
#include "expr/scalarFamilies.h"
#include "expr/typeQueries.h"

#include "numeric/arrayStorage.h"
#include "numeric/convert.h"
#include "numeric/shape.h"

namespace zy {

// ---- Cast ---------------------------------------------------------------------------------------

namespace {

void castAny(ExprNode *node) {
    if (Value *result = castValue(node->left, node->right))
        pushValue(result);
}

// To a number or a plain pointer, of an operand on the stack.
void castOnStack(ExprNode *node) {
    Value *value = topValue();
    if (value && !convertScalar(value, node->left->payload.symbol->dataType))
        castAny(node);
}

}  // namespace

void castOperator(ExprNode *node) {
    const TypeInfo *target = variableOf(node->left);
    bool simple = target && target->kind == KIND_SIMPLE && isScalarNumeric(target->dataType) &&
                  !standsInPlace(node->right);
    node->routine = simple ? castOnStack : castAny;
    node->routine(node);
}

// ---- Comma --------------------------------------------------------------------------------------

namespace {

// A call of a void function leaves no value to discard, or to keep.
template <bool leftHasValue, bool rightHasValue>
void commaForm(ExprNode *node) {
    Value *result = nullptr;
    if constexpr (rightHasValue) {
        Operand right(node->right);
        if (!right)
            return;
        result = right.takeRecord();
        if (!result)
            result = copyRecord(right.get());
    }
    if constexpr (leftHasValue)
        Operand(node->left, Operand::CONTENTS);
    if (result)
        pushValue(result);
}

}  // namespace

void commaOperator(ExprNode *node) {
    bool right = treeType(node->right) != DT_VOID;
    if (treeType(node->left) != DT_VOID)
        node->routine = right ? commaForm<true, true> : commaForm<true, false>;
    else
        node->routine = right ? commaForm<false, true> : commaForm<false, false>;
    node->routine(node);
}

// ---- sizeof -------------------------------------------------------------------------------------

namespace {

uint64_t sizeOfValue(const ExprNode *tree, const Value *value) {
    const StructInfo *info = structInfoOf(tree);
    const TypeInfo *variable = variableOf(tree);
    bool hasShape = variable && takesShape(variable) && isArrayLike(static_cast<int>(value->type));
    if (value->type == DT_CARRAY || value->type == DT_ARRAY || hasShape) {
        int element = value->payload2.elementType;
        uint64_t size = element == DT_STRUCT && info ? info->size : elementSize(element);
        return size * value->count;
    }
    if (value->type == DT_STRUCT || value->type == DT_TAG)
        return value->payload2.structInfo ? value->payload2.structInfo->size : 0;
    return elementSize(value->type);
}

// The bounds of a type come in pairs, lower limit last in the list and so first on the stack.
// `size` is that of an element.
bool sizeOfBounds(ExprNode *list, uint64_t &size) {
    for (ExprNode *cell = list; cell && cell->next; cell = cell->next->next) {
        Value *first = popValue();
        Value *second = popValue();
        if (!first || !second) {
            endChain();
            return false;
        }
        size *= truncateToUint64(readDouble(second) - readDouble(first));
        recycleValue(first);
        recycleValue(second);
    }
    return true;
}

}  // namespace

void sizeofOperator(ExprNode *node) {
    uint64_t size = 0;
    if (node->left->kind == NODE_LIST) {
        size = node->right ? node->right->payload.ull : 0;
        if (!sizeOfBounds(node->left, size))
            return;
    } else {
        Value *value = popValue();
        if (!value) {
            endChain();
            return;
        }
        size = sizeOfValue(node->left, value);
        deleteValue(value);
    }
    pushScalar<unsigned long long>(size);
}

// ---- new ----------------------------------------------------------------------------------------

namespace {

bool isTypeLeaf(const ExprNode *tree) {
    if (!tree || tree->kind != NODE_VALUE)
        return false;
    return tree->type == DT_TAG ||
           (tree->type == DT_NAME && tree->payload.symbol->level == TYPE_ONLY_LEVEL);
}

// A cleared object; NULL after a message if memory is exhausted.
Value *newObject(int pointerType, StructInfo *info) {
    size_t size = pointerType == DT_P_STRUCT ? (info ? info->size : 0)
                                             : elementSize(dereference(pointerType));
    Value *result = newZeroValue(pointerType);
    if (!result)
        return nullptr;
    if (pointerType == DT_P_STRUCT)
        result->payload2.structInfo = info;
    result->payload.p = allocOrFail(size);
    if (result->payload.p)
        memset(result->payload.p, 0, size);
    else if (size)
        memoryFailed();
    return result;
}

}  // namespace

namespace {

// The object that a constructor made passes to the pointer.
void takeObject(ExprNode *node) {
    Value *value = popValue();
    if (!value || value->type != DT_STRUCT) {
        endChain();
        return;
    }
    if (!value->owned)
        ownObject(value);
    value->type = DT_P_STRUCT;
    value->owned = 0;
    value->payload2.structInfo = structInfoOf(node->left);
    pushValue(value);
}

}  // namespace

// `new T` has the type in `left`; `new T(x)` the value beside it, or in its place.
void newOperator(ExprNode *node) {
    int type = treeType(node);
    StructInfo *info = structInfoOf(node->left);
    if (isArrayLike(type) && isTypeLeaf(node->left)) {
        if (Value *array = newHeapArray(type, node->left->payload.symbol))
            pushValue(array);
        return;
    }
    ExprNode *initial = isTypeLeaf(node->left) ? node->right : node->left;
    if (type == DT_P_STRUCT && initial) {
        takeObject(node);
        return;
    }
    if (!isPointer(type) || isArrayLike(type)) {
        undefinedOperation(node);
        pushScalar(0);
        return;
    }
    Value *result = newObject(type, info);
    if (result && initial) {
        Operand value(initial, Operand::CONTENTS);
        if (value && result->payload.p)
            storeByPointerType(result->payload.p, value.get(), type);
    }
    if (result && !initial && type == DT_P_STRUCT && result->payload.p && info)
        constructMembers(result->payload.p, info, info->members);
    if (result)
        pushValue(result);
}

// ---- elementtype --------------------------------------------------------------------------------

// A formal may take arrays of any type, so the array tells.
void elementTypeOperator(ExprNode *node) {
    int type = 0;
    {
        Operand array(node->left, Operand::CONTENTS);
        if (!array)
            return;
        type = array->payload2.elementType;
    }
    pushScalar(type);
}

// ---- streval ------------------------------------------------------------------------------------

void evaluateText(ExprNode *node) {
    Operand operand(node->left, Operand::CONTENTS);
    if (!operand)
        return;
    const auto *text = static_cast<const char *>(pointerOf(operand.get()));
    if (text) {
        evalText(text, TEXT_OF_SCRIPT);
    } else {
        fputs("Invalid argument for streval()\n", stderr);
        pushScalar(0);
    }
}

}  // namespace zy
