#include "numeric/subscripts.h"

#include <cstdio>
#include <cstring>

#include "decl/structInfo.h"
#include "expr/nodeClasses.h"
#include "expr/objects.h"
#include "expr/readers.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "numeric/arrayStorage.h"
#include "numeric/arrayValue.h"
#include "numeric/assign.h"
#include "numeric/assignMember.h"
#include "numeric/convert.h"

namespace zy {

int popSubscript(ExprNode *item) {
    bool popped;
    Value *value = operandOf(item, popped);
    if (!value)
        return 0;
    int subscript = readInt32(value);
    if (popped)
        deleteValue(value);
    return subscript;
}

// ---- Positions ----------------------------------------------------------------------------------

int64_t clampSubscript(const ExtentRec &extent, int subscript, bool isFirst, bool mayBeEnd) {
    int64_t position = int64_t{subscript} - extent.lower;
    if (position < 0) {
        runWarning("subscript value %d less than lower limit %d", subscript, extent.lower);
        return 0;
    }
    int64_t count = int64_t{extent.limit} - extent.lower;
    bool isOpen = count == 0 && isFirst;
    if (position < count || isOpen || (position == count && mayBeEnd))
        return position;
    runWarning("subscript value %d greater than upper limit %d", subscript, extent.limit - 1);
    return count > 0 ? count - 1 : 0;
}

int64_t subscriptOffset(const ShapeNode *shape, int unsubscripted, ExprNode *&list, bool mayBeEnd) {
    int dimensions = -unsubscripted;
    for (const ShapeNode *node = shape; node; node = node->next)
        dimensions++;
    int64_t offset = 0;
    for (int i = 0; i < dimensions && list; i++) {
        bool isLast = i == dimensions - 1;
        int subscript = readSubscript(list->item);
        offset += shape->extent.stride *
                  subscriptPosition(shape->extent, subscript, i == 0, mayBeEnd && isLast);
        list = list->next;
        shape = shape->next;
    }
    return offset;
}

// ---- Elements -----------------------------------------------------------------------------------

namespace {

int lengthOf(const ShapeNode *shape) {
    int length = 0;
    for (; shape; shape = shape->next)
        length++;
    return length;
}

int lengthOf(const ExprNode *list) {
    int length = 0;
    for (; list; list = list->next)
        length++;
    return length;
}

// Bytes of an object of a type that a subscript steps over.
int64_t stepOf(const ExprNode *node, int type) {
    if (type != DT_STRUCT)
        return elementSize(type);
    const StructInfo *info = structInfoOf(node);
    return info ? info->size : 0;
}

// What is subscripted: an array with a shape, or a pointer.
struct Base {
    void *data;
    int type;         // of the pointer
    int elementType;  // of the array
    ShapeNode *shape;
    bool isArray;
    bool isComputed;  // a sum or an address: it points into an array, at any place
};

Base baseOfCell(const VarCell *cell) {
    bool isArray = isArrayLike(static_cast<int>(cell->type));
    return {cell->data.p,
            static_cast<int>(cell->type),
            cell->data2.elementType,
            isArray ? cell->shape : nullptr,
            isArray,
            false};
}

// The text of a string_t that was cast to a pointer keeps its type.
Base baseOfValue(const Value *value) {
    bool isArray = isArrayLike(static_cast<int>(value->type));
    return {value->payload.p,
            value->type == DT_STRING ? +DT_P_CHAR : static_cast<int>(value->type),
            value->payload2.elementType,
            isArray ? value->shape : nullptr,
            isArray,
            false};
}

bool findBase(ExprNode *left, Element &element, Base &base) {
    if (TypeInfo *symbol = variableOf(left)) {
        base = baseOfCell(findVarCell(symbol));
    } else if (left->kind == NODE_OPERATOR) {
        element.array = popValue();
        if (!element.array)
            return false;
        base = baseOfValue(element.array);
        base.isComputed = isPointerSum(left->op) || left->op == OP_ADDRESS;
    } else {
        base = baseOfValue(left->type == DT_CONSTANT ? left->payload.value : left);
    }
    return true;
}

bool refuseNull(ElementUse use) {
    if (use == ElementUse::WRITE)
        runError("assignment by indirection through a NULL pointer");
    else
        runError("indirection through a NULL pointer");
    return false;
}

bool refuseReference() {
    runError("undefined array reference operation");
    return false;
}

// Subscripts that nothing takes any more.
void dropSubscripts(const ExprNode *list) {
    for (; list; list = list->next)
        readSubscript(list->item);
}

void *pointerAt(const void *address) {
    void *pointer;
    memcpy(&pointer, address, sizeof pointer);
    return pointer;
}

// Each further subscript follows a level of pointer. `pointer` has that type.
bool followPointers(const ExprNode *node, void *pointer, int type, ExprNode *&list, ElementUse use,
                    Element &element) {
    while (list) {
        int64_t subscript = readSubscript(list->item);
        list = list->next;
        bool onlyComputes = use == ElementUse::ADDRESS && !list;
        if (!isPointer(type) || isArrayLike(type) || type == DT_NULL || type == DT_P_VOID)
            return refuseReference();
        if (isNullAddress(pointer) && !onlyComputes)
            return refuseNull(use);
        type = bandBelow(type);
        int64_t distance = subscript * stepOf(node, type);
        element.address = reinterpret_cast<void *>(reinterpret_cast<intptr_t>(pointer) + distance);
        element.type = type;
        if (list)
            pointer = pointerAt(element.address);
    }
    return true;
}

void selectPart(const Base &base, int subscripted, Element &element) {
    element.type = DT_CARRAY;
    element.elementType = base.elementType;
    element.shape = base.shape;
    for (int i = 0; i < subscripted; i++)
        element.shape = element.shape->next;
    element.count = shapeCount(element.shape);
}

// The address of the element, or the part, that as many subscripts select as the array has
// dimensions.
bool findInArray(const ExprNode *node, const Base &base, ExprNode *&list, ElementUse use,
                 Element &element) {
    int rank = lengthOf(base.shape), given = lengthOf(list);
    int rest = rank > given ? rank - given : 0;
    const ShapeNode *shape = base.shape;
    int64_t offset = 0;
    if (!shape || base.isComputed) {
        offset = int64_t{readSubscript(list->item)} * (shape ? shape->extent.stride : 1);
        shape = shape ? shape->next : nullptr;
        list = list->next;
    }
    offset += subscriptOffset(shape, rest, list, use == ElementUse::ADDRESS);
    if (!base.data)
        return refuseNull(use);
    element.address = static_cast<char *>(base.data) + offset * stepOf(node, base.elementType);
    element.type = base.elementType;
    if (rest > 0)
        selectPart(base, given, element);
    return !list ||
           followPointers(node, pointerAt(element.address), base.elementType, list, use, element);
}

}  // namespace

bool findElement(ExprNode *node, ElementUse use, Element &element) {
    element = {};
    ExprNode *list = node->right;
    Base base;
    if (!findBase(node->left, element, base))
        return false;
    bool found =
        list && (base.isArray ? findInArray(node, base, list, use, element)
                              : followPointers(node, base.data, base.type, list, use, element));
    if (found)
        return true;
    dropSubscripts(list);
    releaseElement(element);
    return false;
}

// ---- Reading ------------------------------------------------------------------------------------

namespace {

bool isPointerToClass(int type) {
    return type == DT_P_STRUCT || type == DT_PP_STRUCT || type == DT_PPP_STRUCT;
}

// A part lives as long as its array; of one that is released it is a copy.
Value *readPart(const Element &element) {
    Value *part = newZeroValue(DT_CARRAY);
    if (!part)
        return nullptr;
    part->payload.p = element.address;
    part->payload2.elementType = element.elementType;
    part->shape = element.shape;
    part->count = element.count;
    bool ends = element.array && element.array->ownership != ARRAY_VIEW;
    if (!ends)
        return part;
    Value *copy = copyArrayValue(part, element.elementType);
    recycleValue(part);
    if (copy)
        copy->type = DT_CARRAY;
    return copy;
}

void viewObject(Value *value, const ExprNode *node, void *address) {
    value->type = DT_STRUCT;
    value->payload.p = address;
    value->payload2.structInfo = structInfoOf(node);
    value->owned = 0;
    value->noFree = 1;
}

}  // namespace

Value *readElement(const ExprNode *node, const Element &element) {
    if (element.type == DT_CARRAY)
        return readPart(element);
    Value *value = newZeroValue(element.type);
    if (!value)
        return nullptr;
    if (element.type == DT_STRUCT) {
        viewObject(value, node, element.address);
        if (element.array && element.array->ownership == ARRAY_OWNED)
            ownPart(value);
        return value;
    }
    if (!loadElement(value, element.address, element.type)) {
        value->payload.bits = value->payload2.bits = 0;
        return value;
    }
    if (isPointerToClass(element.type)) {
        value->payload2.structInfo = structInfoOf(node);
        value->owned = value->noFree = 0;
    }
    return value;
}

// ---- Storing ------------------------------------------------------------------------------------

namespace {

void storeInUnion(const ExprNode *node, const Element &element, const Value *value) {
    if (element.type == DT_STRING)
        storeUnionText(element.address, value);
    else
        storeUnionObject(element.address, value, structInfoOf(node));
}

}  // namespace

void storeInElement(const ExprNode *node, const Element &element, const Value *value) {
    int type = element.type;
    bool isMotion = type >= DT_VECT && type <= DT_EVENT && type != DT_QUATERNION;
    bool done = true;
    bool isSimple = type != DT_STRING && type != DT_STRUCT;
    if (!isSimple && liesInUnion(node))
        storeInUnion(node, element, value);
    else if (type == DT_STRUCT)
        done = storeObject(element.address, value, structInfoOf(node));
    else if (isMotion)
        fputs("TO BE IMPLEMENTED FOR ELEMENT UPDATE for vect, trans, frame \n", stderr);
    else if (type == DT_P_FUNCTION)
        storeFunctionPointer(element.address, value);
    else
        done = storeScalar(element.address, type, value, StorePlace::ELEMENT);
    if (!done)
        runError("use array element of unsupported data type");
}

// ---- Address ------------------------------------------------------------------------------------

namespace {

Value *addressOfPart(const Element &element) {
    Value part{};
    part.type = DT_CARRAY;
    part.payload.p = element.address;
    part.payload2.elementType = element.elementType;
    part.shape = element.shape;
    part.count = element.count;
    return pointerToArray(&part);
}

}  // namespace

Value *addressOfElement(const ExprNode *node, const Element &element) {
    if (element.type == DT_CARRAY)
        return addressOfPart(element);
    Value *pointer = newZeroValue(bandAbove(element.type));
    if (!pointer)
        return nullptr;
    pointer->payload.p = element.address;
    if (isPointerToClass(static_cast<int>(pointer->type)))
        pointer->payload2.structInfo = structInfoOf(node);
    return pointer;
}

}  // namespace zy
