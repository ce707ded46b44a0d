// Conversions of a single value. A Value is converted in its own record; what stands in the tree is
// copied first.

#include "numeric/convert.h"

#include <cmath>
#include <cstdlib>

#include "decl/funcInfo.h"
#include "expr/nodeClasses.h"
#include "expr/operands.h"
#include "expr/readers.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "numeric/arrayCast.h"
#include "numeric/shape.h"
#include "numeric/specialValues.h"

namespace zy {

void *pointerOf(const Value *value) {
    bool isFunction =
        value->type == DT_P_FUNCTION || value->type == DT_FUNCTION || value->type == DT_NAME;
    auto number = reinterpret_cast<uintptr_t>(value->payload.p);
    // Small numbers and the number of all ones stand for the handling of a signal.
    if (!isFunction || number <= 100 || number == UINTPTR_MAX)
        return value->payload.p;
    const FuncInfo *function = value->payload.symbol->functionLink;
    return function && function->body ? value->payload.symbol : nullptr;
}

// ---- Pairs --------------------------------------------------------------------------------------

namespace {

bool isNarrowPair(int type) { return type == DT_COMPLEX || type == DT_DUAL; }
bool isWidePair(int type) { return type == DT_DCOMPLEX || type == DT_DDUAL; }

}  // namespace

DoublePair readDoubleComplex(const Value *value) {
    if (isNarrowPair(value->type))
        return {value->payload.pair[0], value->payload.pair[1]};
    if (isWidePair(value->type))
        return {value->payload.d, value->payload2.d};
    double number = readDouble(value);
    if (std::isnan(number))
        return {wideNaN, wideNaN};
    if (std::isinf(number))
        return {wideInf, wideInf};
    return {number, 0};
}

FloatPair readComplex(const Value *value) {
    DoublePair pair = readDoubleComplex(value);
    return {static_cast<float>(pair.first), static_cast<float>(pair.second)};
}

// ---- Numbers ------------------------------------------------------------------------------------

namespace {

// Integers of 64 bits and addresses give their low bytes to an integer; all else is truncated.
bool givesLowBytes(int type) { return type == DT_LLONG || type == DT_ULLONG || isPointer(type); }

int64_t signedNumber(const Value *value) {
    return givesLowBytes(value->type) ? readSigned64(value) : truncateToInt32(readDouble(value));
}
uint64_t unsignedNumber(const Value *value) {
    return givesLowBytes(value->type) ? readUnsigned64(value)
                                      : static_cast<uint64_t>(truncateToInt64(readDouble(value)));
}

void setPair(Value *value, FloatPair pair) {
    value->payload.pair[0] = pair.first;
    value->payload.pair[1] = pair.second;
}
void setPair(Value *value, DoublePair pair) {
    value->payload.d = pair.first;
    value->payload2.d = pair.second;
}

void convertNumber(Value *value, int type) {
    Payload &payload = value->payload;
    switch (type) {
        case DT_CHAR: payload.sc = static_cast<int8_t>(signedNumber(value)); break;
        case DT_UCHAR: payload.uc = static_cast<uint8_t>(unsignedNumber(value)); break;
        case DT_SHORT: payload.s = static_cast<int16_t>(signedNumber(value)); break;
        case DT_USHORT: payload.us = static_cast<uint16_t>(unsignedNumber(value)); break;
        case DT_INT: payload.i = static_cast<int32_t>(signedNumber(value)); break;
        case DT_UINT: payload.u = static_cast<uint32_t>(unsignedNumber(value)); break;
        case DT_LLONG: payload.ll = readSigned64(value); break;
        case DT_ULLONG: payload.ull = readUnsigned64(value); break;
        case DT_FLOAT: payload.f = static_cast<float>(readDouble(value)); break;
        case DT_DOUBLE:
        case DT_LDOUBLE: payload.d = readDouble(value); break;
        case DT_COMPLEX:
        case DT_DUAL: setPair(value, readComplex(value)); break;
        case DT_DCOMPLEX:
        case DT_DDUAL: setPair(value, readDoubleComplex(value)); break;
        default: break;
    }
    value->type = type;
}

bool isClassLike(int type) {
    return type == DT_STRUCT || type == DT_P_STRUCT || type == DT_PP_STRUCT ||
           type == DT_PPP_STRUCT;
}

bool hasPointer(const Value *value) {
    int type = value->type;
    return isPointer(type) || type == DT_STRING || type == DT_NAME || isArrayLike(type);
}

// The address alone, without what an array's value has of its own.
void reduceToAddress(Value *value) {
    void *address = pointerOf(value);
    if (isArrayLike(value->type))
        releaseArrayValue(value);
    value->payload.p = address;
    value->type = DT_P_VOID;
}

// A text keeps its type as a pointer to its characters: it owns them.
bool convertToPointer(Value *value, int type) {
    if (value->type == DT_STRING && type == DT_P_CHAR)
        return true;
    if (hasPointer(value)) {
        reduceToAddress(value);
    } else if (isScalarNumeric(value->type)) {
        value->payload.bits = readUnsigned64(value);
    } else {
        return false;
    }
    value->type = type;
    return true;
}

bool convertToText(Value *value) {
    if (value->type == DT_STRING)
        return true;
    if (!hasPointer(value))
        return false;
    char *text = copyString(static_cast<const char *>(pointerOf(value)));
    if (isArrayLike(value->type))
        releaseArrayValue(value);
    value->payload.text = text;
    value->type = DT_STRING;
    return true;
}

}  // namespace

bool convertScalar(Value *value, int type) {
    int found = value->type;
    if (found == type)
        return true;
    if (isScalarNumeric(type) && isComputational(found))
        return takeFirstElement(value) && convertScalar(value, type);
    if (isScalarNumeric(type)) {
        if (!isScalarNumeric(found) && !isPointer(found))
            return false;
        if (isArrayLike(found))
            reduceToAddress(value);
        convertNumber(value, type);
        return true;
    }
    if (type == DT_STRING)
        return convertToText(value);
    // Functions stay what a call can find its way with.
    if (type == DT_P_FUNCTION && (found == DT_NAME || found == DT_FUNCTION)) {
        value->type = type;
        return true;
    }
    return isPointer(type) && !isArrayLike(type) && !isClassLike(type) &&
           convertToPointer(value, type);
}

// ---- The cast -----------------------------------------------------------------------------------

namespace {

// A record that the cast may change: the popped one, or a copy of the constant.
Value *ownRecord(Operand &operand) {
    Value *popped = operand.takeRecord();
    return popped ? popped : copyRecord(operand.get());
}

// A class or a pointer to one: the address with the layout of the target's class.
bool convertToClass(Value *value, int type, StructInfo *info) {
    bool wasClass = isClassLike(value->type);
    uint8_t noFree = wasClass && value->noFree;
    if (wasClass && value->type != DT_STRUCT)
        value->type = type;
    else if (value->type != DT_STRUCT && !convertToPointer(value, type))
        return false;
    value->type = type;
    value->payload2.structInfo = info;
    value->owned = 0;
    value->noFree = noFree;
    return true;
}

// A result without a value, after the message; what the operand owned is released.
void refuseCast(Value *value, int type) {
    runError("casting %s to %s", dataTypeText(value->type), dataTypeText(type));
    if (value->type == DT_STRING)
        free(value->payload.text);
    else if (isArrayLike(value->type))
        releaseArrayValue(value);
    value->type = type;
    value->payload.bits = value->payload2.bits = 0;
    value->shape = nullptr;
    value->count = 0;
    value->ownership = ARRAY_VIEW;
}

}  // namespace

Value *castValue(ExprNode *target, ExprNode *operandNode) {
    int type = treeType(target);
    if (treeType(operandNode) == DT_VOID)
        return newZeroValue(type);
    Operand operand(operandNode, Operand::CONTENTS);
    if (!operand || type == DT_VOID)
        return operand ? newZeroValue(DT_VOID) : nullptr;
    Value *value = ownRecord(operand);
    if (!value)
        return nullptr;
    if (isArrayLike(type) && hasCastElements(target))
        return castToArray(target, type, value);
    bool done = isClassLike(type) ? convertToClass(value, type, structInfoOf(target))
                                  : convertScalar(value, type);
    if (!done)
        refuseCast(value, type);
    return value;
}

}  // namespace zy
