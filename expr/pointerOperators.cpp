// Operators on addresses: arithmetic, indirection, `&`, and references to elements of a variable.

#include <cstdlib>
#include <cstring>

#include "expr/elementOperators.h"
#include "expr/evaluator.h"
#include "expr/memberAccess.h"
#include "expr/nodeClasses.h"
#include "expr/nodes.h"
#include "expr/objects.h"
#include "expr/operators.h"
#include "expr/routines.h"
#include "expr/scalarFamilies.h"
#include "expr/scope.h"
#include "expr/typeQueries.h"
#include "numeric/arrayStorage.h"
#include "numeric/arrayValue.h"
#include "numeric/convert.h"
#include "numeric/shape.h"
#include "numeric/subscripts.h"

namespace zy {

namespace {

// A pointer into the text of a string_t that was cast is what is left of the text; NULL for others.
Value *restOfText(Operand &text, const Value *number, int code) {
    if (text->type != DT_STRING || !text->payload.text)
        return nullptr;
    int64_t distance = truncateToInt64(readDouble(number));
    if (code == OP_POINTER_SUBTRACT)
        distance = -distance;
    size_t length = strlen(text->payload.text);
    bool isInside = distance >= 0 && static_cast<uint64_t>(distance) <= length;
    Value *record = isInside ? text.takeRecord() : nullptr;
    if (record)
        memmove(record->payload.text, record->payload.text + distance,
                length - static_cast<size_t>(distance) + 1);
    return record;
}

// What is pointed into stays for as long as the program is there.
void keepTarget(Operand &operand) {
    bool isText = operand->type == DT_STRING;
    bool isOwned = isArray(operand->type) && operand->ownership == ARRAY_OWNED &&
                   operand->payload2.elementType != DT_STRING;
    if (Value *record = isText || isOwned ? operand.takeRecord() : nullptr) {
        keepText(record->payload.text);
        recycleValue(record);
    }
}

}  // namespace

void pointerArithmetic(ExprNode *node) {
    Value *result = nullptr;
    {
        Operand left(node->left), right(node->right);
        if (!left || !right)
            return;
        result = restOfText(left, right.get(), node->op);
        if (!result) {
            result = pointerAdd(node, left.get(), right.get(), node->op);
            keepTarget(left);
            keepTarget(right);
        }
    }
    if (result)
        pushValue(result);
}

void pointerDifferenceOperator(ExprNode *node) {
    int difference = 0;
    {
        Operand left(node->left, Operand::CONTENTS), right(node->right, Operand::CONTENTS);
        if (!left || !right)
            return;
        difference = pointerDifference(node, left.get(), right.get());
    }
    pushScalar(difference);
}

// ---- Indirection --------------------------------------------------------------------------------

namespace {

template <class T>
T load(const void *address) {
    T object;
    memcpy(&object, address, sizeof object);
    return object;
}

// A text that was cast to a pointer still owns its characters.
void loadFirstCharacter(Value *value) {
    char *text = value->payload.text;
    setScalar(value, load<signed char>(text));
    free(text);
}

// The common targets, read into the pointer's own record. False for all others.
bool loadTarget(Value *pointer) {
    const void *address = pointer->payload.p;
    if (isNullAddress(address))
        return false;
    switch (pointer->type) {
        case DT_P_CHAR: setScalar(pointer, load<signed char>(address)); return true;
        case DT_P_UCHAR: setScalar(pointer, load<unsigned char>(address)); return true;
        case DT_P_INT: setScalar(pointer, load<int>(address)); return true;
        case DT_P_DOUBLE: setScalar(pointer, load<double>(address)); return true;
        case DT_STRING: loadFirstCharacter(pointer); return true;
        default: return false;
    }
}

}  // namespace

namespace {

// An array whose shape or elements end with it leaves its own to what was read from it.
Value *derefOwned(const ExprNode *node, Operand &array) {
    Value *result = derefArray(array.get());
    bool isView = result && isArrayLike(static_cast<int>(result->type));
    if (isView && array->ownership == ARRAY_OWNS_SHAPE) {
        result->shape = copyShape(result->shape);
        result->ownership = ARRAY_OWNS_SHAPE;
    } else if (isView && array->ownership == ARRAY_OWNED) {
        Value *copy = copyArrayValue(result, result->payload2.elementType);
        if (copy)
            copy->type = result->type;
        recycleValue(result);
        result = copy;
    }
    if (result && result->type == DT_STRUCT) {
        result->payload2.structInfo = structInfoOf(node);
        if (array->ownership == ARRAY_OWNED)
            ownPart(result);
    }
    if (Value *record = array.takeRecord())
        deleteValue(record);
    return result;
}

}  // namespace

void indirection(ExprNode *node) {
    Value *result = nullptr;
    {
        Operand pointer(node->left);
        if (!pointer)
            return;
        if (!standsInPlace(node->left) && loadTarget(pointer.get()))
            result = pointer.takeRecord();
        else if (isArrayLike(static_cast<int>(pointer->type)))
            result = derefOwned(node, pointer);
        else
            result = derefValue(pointer.get());
    }
    if (result)
        pushValue(result);
}

// ---- Address ------------------------------------------------------------------------------------

namespace {

// An object is the address of its bytes; all else stands in the variable's cell.
Value *addressOfVariable(TypeInfo *symbol) {
    fetchVariable(symbol, 0);
    Value *value = popValue();
    if (!value)
        return nullptr;
    if (value->type == DT_CARRAY) {
        Value *pointer = pointerToArray(value);
        deleteValue(value);
        return pointer;
    }
    bool pointsAlready = value->type == DT_ARRAY || value->type == DT_STRUCT;
    if (value->type == DT_STRING)
        free(value->payload.text);
    value->type = pointerTo(value->type);
    if (!pointsAlready)
        value->payload.p = &findVarCell(symbol)->data;
    return value;
}

Value *addressOfFunction(TypeInfo *symbol) {
    Value *value = newZeroValue(DT_P_FUNCTION);
    if (value)
        value->payload.symbol = symbol;
    return value;
}

}  // namespace

namespace {

Value *addressOfReference(ExprNode *node) {
    Element element;
    if (!findElement(node, ElementUse::ADDRESS, element))
        return nullptr;
    Value *address = addressOfElement(node, element);
    releaseElement(element);
    return address;
}

}  // namespace

Value *addressOf(ExprNode *inner) {
    if (TypeInfo *symbol = variableOf(inner))
        return symbol->kind == KIND_FUNCTION ? addressOfFunction(symbol)
                                             : addressOfVariable(symbol);
    if (inner->kind == NODE_OPERATOR && inner->op == OP_INDIRECTION)
        return popValue();
    if (inner->kind == NODE_OPERATOR && isSubscript(inner->op))
        return addressOfReference(inner);
    if (isOperator(inner) && isMember(inner->op))
        if (Value *address = memberAddress(inner))
            return address;
    runError("unsupported data type for address operation &");
    return nullptr;
}

// The operand isn't run: only what its place is computed from has been.
void addressOperator(ExprNode *node) {
    Value *address = nullptr;
    if (node->left)
        address = addressOf(node->left);
    else
        runError("something is wrong in address operation &");
    if (!address)
        address = newZeroValue(DT_P_VOID);
    if (address)
        pushValue(address);
}

// ---- Elements -----------------------------------------------------------------------------------

void arrayReference(ExprNode *node) {
    node->routine = elementRoutine(node);
    node->routine(node);
}

}  // namespace zy
