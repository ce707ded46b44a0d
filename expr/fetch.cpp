// Reading: variables into Values, and what stands at an address.

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "decl/funcInfo.h"
#include "decl/structInfo.h"
#include "expr/scope.h"
#include "instance/report.h"
#include "numeric/arrayValue.h"
#include "numeric/convert.h"
#include "numeric/shape.h"

namespace zy {

namespace {

// Bytes of what a Value keeps in place of a type; 0 for a type that no Value holds by width.
int payloadWidth(int type) {
    bool inPlace = isScalarNumeric(type) && type != DT_LDOUBLE;
    return inPlace || isPointer(type) ? sizeofType(type) : 0;
}

bool isClassLike(int type) {
    return type == DT_STRUCT || type == DT_P_STRUCT || type == DT_PP_STRUCT ||
           type == DT_PPP_STRUCT || type == DT_TAG;
}

// A Value of the wide types continues in its second word.
void loadWords(Value *value, const void *address, int width) {
    constexpr int word = sizeof(Payload);
    memcpy(&value->payload, address, width < word ? width : word);
    if (width > word)
        memcpy(&value->payload2, static_cast<const char *>(address) + word, width - word);
}

}  // namespace

bool loadValue(Value *value, const void *address, int type) {
    if (!address) {
        runWarning("get value from NULL address");
        return false;
    }
    if (type == DT_STRING) {
        char *text;
        memcpy(&text, address, sizeof text);
        value->payload.text = copyString(text);
    } else {
        int width = payloadWidth(type);
        if (width == 0)
            return false;
        loadWords(value, address, width);
    }
    value->kind = NODE_VALUE;
    value->type = type;
    return true;
}

namespace {

bool refuseElement(int type) {
    if (type == DT_VECT || type == DT_TRANS)
        runError("unimplemented vect and trans array ");
    else if (type == DT_FRAME)
        runError("unimplemented frame array ");
    else
        runWarning("unsupported data type");
    return false;
}

}  // namespace

bool loadElement(Value *value, const void *address, int type) {
    if (address && type != DT_STRING && payloadWidth(type) == 0)
        return refuseElement(type);
    return loadValue(value, address, type);
}

bool storeElement(void *address, const Value *value) {
    if (value->type == DT_STRING) {
        char *old;
        memcpy(&old, address, sizeof old);
        char *text = copyString(value->payload.text);
        free(old);
        memcpy(address, &text, sizeof text);
        return true;
    }
    int width = payloadWidth(value->type);
    if (width == 0)
        return refuseElement(value->type);
    constexpr int word = sizeof(Payload);
    memcpy(address, &value->payload, width < word ? width : word);
    if (width > word)
        memcpy(static_cast<char *>(address) + word, &value->payload2, width - word);
    return true;
}

// ---- Variables --------------------------------------------------------------------------------

namespace {

// An array of a formal whose shape comes from the argument has the type of its declaration.
int arrayValueType(const TypeInfo *symbol, int cellType) {
    if (symbol->kind == KIND_ASSUMED_ARRAY)
        return DT_ARRAY;
    return symbol->kind == KIND_ASSUMED_C_ARRAY ? DT_CARRAY : cellType;
}

void viewArray(Value *value, const TypeInfo *symbol, const VarCell *cell) {
    value->type = arrayValueType(symbol, cell->type);
    value->payload.p = cell->data.p;
    value->payload2.elementType = cell->data2.elementType;
    value->payload2.castFlag = 0;
    value->shape = cell->shape;
    value->count = cell->count;
    value->ownership = static_cast<uint8_t>(cell->argumentMark);
}

void viewObject(Value *value, const TypeInfo *symbol, const VarCell *cell) {
    value->payload.p = cell->data.p;
    value->payload2.structInfo = symbol->structLink;
    value->owned = 0;
    value->noFree = cell->noFree;
}

// The function that a cell designates.
void readFunction(Value *value, const VarCell *cell) {
    const auto *function = static_cast<const FuncInfo *>(cell->data.p);
    value->payload.symbol = function ? function->owner : nullptr;
}

void refreshErrno(const TypeInfo *symbol, VarCell *cell) {
    if (symbol->level == SYSTEM_LEVEL && symbol->index == ERRNO_SLOT)
        cell->data.i = errno;
}

// False after a message for a cell that holds nothing a Value can.
bool readCell(Value *value, TypeInfo *symbol, VarCell *cell) {
    int type = cell->type;
    value->kind = NODE_VALUE;
    value->type = type;
    if (isArrayLike(type)) {
        viewArray(value, symbol, cell);
    } else if (isClassLike(type)) {
        viewObject(value, symbol, cell);
    } else if (type == DT_FUNCTION || type == DT_P_FUNCTION) {
        readFunction(value, cell);
    } else if (type == DT_STRING) {
        value->payload.text = copyString(cell->data.text);
    } else if (payloadWidth(type) != 0) {
        if (type == DT_INT)
            refreshErrno(symbol, cell);
        value->payload = cell->data;
        value->payload2.bits = cell->data2.bits;
    } else {
        runError(
            "using unsupported variable type (maybe your application program corrupted "
            "internal data structure");
        return false;
    }
    return true;
}

// A reference may hold another type than its variable declares.
void applyDeclaredType(Value *value, const TypeInfo *symbol) {
    int declared = dataTypeOf(symbol);
    int found = value->type;
    if (declared == found || found == DT_FUNCTION || found == DT_P_FUNCTION)
        return;
    if (declared == DT_STRING && found == DT_P_CHAR)
        return;
    if (!convertScalar(value, declared))
        runError("unsupported reference type");
}

void pushZero(int type) {
    if (Value *zero = newZeroValue(type))
        pushValue(zero);
}

}  // namespace

void fetchVariable(TypeInfo *symbol, int) {
    VarCell *cell = findVarCell(symbol);
    Value *value = newValue();
    if (value && readCell(value, symbol, cell)) {
        applyDeclaredType(value, symbol);
        pushValue(value);
        return;
    }
    if (value)
        recycleValue(value);
    pushZero(symbol->dataType);
}

// ---- Through a pointer ------------------------------------------------------------------------

namespace {

// An object, or a pointer to one, keeps what is known of the class.
void loadClassTarget(Value *value, const Value *pointer, int target) {
    value->kind = NODE_VALUE;
    value->type = target;
    if (target == DT_STRUCT)
        value->payload.p = pointer->payload.p;
    else
        memcpy(&value->payload.p, pointer->payload.p, sizeof(void *));
    value->payload2.structInfo = pointer->payload2.structInfo;
    value->owned = 0;
    value->noFree = pointer->noFree;
}

// False for a pointer whose target has no value of its own.
bool loadTarget(Value *value, const Value *pointer, int target) {
    if (isClassLike(pointer->type))
        loadClassTarget(value, pointer, target);
    else if (target == DT_FUNCTION)  // a function designator is the pointer again
        value->payload = pointer->payload;
    else if (target != DT_VOID)
        return loadValue(value, pointer->payload.p, target);
    return true;
}

}  // namespace

Value *derefValue(Value *pointer) {
    if (isArrayLike(pointer->type))
        return derefArray(pointer);
    if (!isPointer(pointer->type)) {
        runError("unsupported data type for indirection operation *");
        return newZeroValue(DT_INT);
    }
    int target = dereference(pointer->type);
    Value *value = newZeroValue(target);
    if (!value)
        return nullptr;
    if (isNullAddress(pointer->payload.p))
        runWarning("Pointer operation *ptr where ptr = NULL, 0 is assigned to *ptr");
    else if (!loadTarget(value, pointer, target))
        runError("unsupported data type for indirection operation *");
    return value;
}

}  // namespace zy
