// The services that evaluate texts and reach variables.

#include <cstdarg>
#include <cstdlib>
#include <cstring>

#include "embed/evalText.h"
#include "embed/hostTypes.h"
#include "embed/kernel.h"
#include "expr/calls.h"
#include "expr/guards.h"
#include "expr/nodes.h"
#include "expr/readers.h"
#include "expr/scope.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "numeric/assign.h"
#include "numeric/convert.h"
#include "numeric/shape.h"
#include "rtlib/valueText.h"

namespace zy {

namespace {

// ---- Values to the host -------------------------------------------------------------------------

// Evaluates; the value, to be released, or NULL if there is none (an abort leaves none).
Value *evaluate(const char *expr, int &status) {
    e_lang->abortedRun = 0;
    status = expr ? evalText(expr, TEXT_OF_HOST) : -1;
    errorFlag = 0;
    if (!expr || e_lang->abortedRun)
        return nullptr;
    return currentContext->stack ? popValue() : nullptr;
}

template <class Number>
void put(void *result, Number number) {
    memcpy(result, &number, sizeof number);
}

// The small integers go through a double; the low bytes are stored.
void putSmallInteger(void *result, int type, const Value *value) {
    double number = readDouble(value);
    bool isUnsigned = type == DT_UCHAR || type == DT_USHORT || type == DT_UINT;
    int64_t bits = isUnsigned ? truncateToInt64(number) : truncateToInt32(number);
    memcpy(result, &bits, static_cast<size_t>(sizeofType(type)));  // low bytes first here
}

// The text replaces an old one of the host.
void putText(void *result, const Value *value) {
    char *old;
    memcpy(&old, result, sizeof old);
    free(old);
    bool isText = value->type == DT_STRING || value->type == DT_P_CHAR;
    put(result, isText ? copyString(value->payload.text) : copyString(valueToText(value).c_str()));
}

void putNumber(void *result, int type, const Value *value) {
    switch (type) {
        case DT_LLONG: put(result, readSigned64(value)); break;
        case DT_ULLONG: put(result, readUnsigned64(value)); break;
        case DT_FLOAT: put(result, static_cast<float>(readDouble(value))); break;
        case DT_DOUBLE: put(result, readDouble(value)); break;
        case DT_COMPLEX:
        case DT_DUAL: put(result, readComplex(value)); break;
        case DT_DCOMPLEX:
        case DT_DDUAL: put(result, readDoubleComplex(value)); break;
        default: putSmallInteger(result, type, value);
    }
}

void storeForHost(void *result, int type, const Value *value) {
    if (value->type == DT_ARRAY || value->type == DT_P_ARRAY) {
        int element = isPointer(type) ? dereference(type) : type;
        memcpy(result, value->payload.p, static_cast<size_t>(elementSize(element)) * value->count);
    } else if (isPointer(type)) {
        put(result, value->payload.p);
    } else if (type >= 0 && isScalarNumeric(type)) {
        putNumber(result, type, value);
    } else if (type == DT_STRING) {
        putText(result, value);
    } else {
        plainError("unsupported data type for Zy_ExprCalc()");
    }
}

// ---- Values from the host -----------------------------------------------------------------------

bool isAggregateCode(int code) {
    return code == ZY_TYPE_STRUCT || code == ZY_TYPE_CLASS || code == ZY_TYPE_UNION;
}

// A copy of the object of a tag; NULL after a message.
Value *objectFrom(const char *tag, const void *data) {
    NameEntry *name = tag ? lookupName(tag) : nullptr;
    Symbol *symbol = name ? name->symbol : nullptr;
    StructInfo *info = symbol ? symbol->structLink : nullptr;
    void *copy = info && data ? allocOrFail(info->size) : nullptr;
    if (!copy) {
        plainError("invalid argument following struct/class/union type");
        return nullptr;
    }
    memcpy(copy, data, info->size);
    Value *value = newZeroValue(DT_STRUCT);
    value->payload.p = copy;
    value->payload2.structInfo = info;
    value->owned = 1;
    return value;
}

// The host's array: its data isn't copied.
Value *arrayFrom(int type, va_list list) {
    int element = va_arg(list, int);
    void *data = va_arg(list, void *);
    int rank = va_arg(list, int);
    Value *value = newZeroValue(type);
    ShapeNode **end = &value->shape;
    for (int i = 0; i < rank; i++) {
        *end = newShapeNode(0, va_arg(list, int));
        end = &(*end)->next;
    }
    value->payload.p = data;
    value->payload2.elementType = fromHostType(element);
    value->count = setRowStrides(value->shape);
    value->ownership = ARRAY_OWNS_SHAPE;
    return value;
}

bool isPointerCode(int code) {
    if (code == ZY_TYPE_P_ENUM || code == ZY_TYPE_PP_VOID + 11 || code == ZY_TYPE_PP_ENUM)
        return false;
    return code >= ZY_TYPE_NULLPTR && fromHostType(code) != DT_UNDEFINED;
}

Value *pointerFrom(int code, void *pointer) {
    int type = fromHostType(code);
    Value *value = newZeroValue(code == ZY_TYPE_P_FUNCTION && !pointer ? DT_NULL : type);
    value->payload.p = pointer;
    return value;
}

Value *numberFrom(int type, va_list list) {
    Value *value = newZeroValue(type);
    switch (type) {
        case DT_CHAR:
        case DT_UCHAR: value->payload.c = static_cast<char>(va_arg(list, int)); break;
        case DT_SHORT:
        case DT_USHORT: value->payload.s = static_cast<short>(va_arg(list, int)); break;
        case DT_INT:
        case DT_UINT: value->payload.i = va_arg(list, int); break;
        case DT_FLOAT: value->payload.f = static_cast<float>(va_arg(list, double)); break;
        case DT_DOUBLE: value->payload.d = va_arg(list, double); break;
        default: value->payload.ll = va_arg(list, long long);
    }
    return value;
}

// NULL after a message.
Value *valueFromHost(int code, va_list list) {
    if (code >= ZY_TYPE_CHAR && code <= ZY_TYPE_DOUBLE)
        return numberFrom(fromHostType(code), list);
    if (isAggregateCode(code)) {
        const char *tag = va_arg(list, char *);
        return objectFrom(tag, va_arg(list, void *));
    }
    if (code == ZY_TYPE_CARRAY || code == ZY_TYPE_ARRAY)
        return arrayFrom(fromHostType(code), list);
    if (isPointerCode(code))
        return pointerFrom(code, va_arg(list, void *));
    plainError("unknown data type in Zy_SetVar()");
    return nullptr;
}

// ---- Zy_SetVar ----------------------------------------------------------------------------------

Symbol *visibleSymbol(const char *name) {
    NameEntry *entry = name ? lookupName(name) : nullptr;
    ClassContext *classRecord = nullptr;
    return entry ? lookupSymbolRun(currentContext, currentContext->statement, entry, &classRecord)
                 : nullptr;
}

int assignChecked(ExprNode *target, Value *value) {
    checkAssignment(target, value);
    bool refused = errorFlag != 0;
    errorFlag = 0;
    if (refused)
        return -1;
    ExprNode *chain = currentContext->chain;
    currentContext->chain = nullptr;
    assignValue(target, value);
    currentContext->chain = chain;
    return 0;
}

int setVariable(const char *name, int type, va_list list) {
    Symbol *symbol = visibleSymbol(name);
    if (!symbol) {
        plainError("'%s' is not a valid variable in Zy space", name ? name : "");
        return -1;
    }
    ExprNode *target = newSymbolNode(symbol);
    int result = -1;
    bool isFunction = symbol->kind == KIND_FUNCTION;
    if (isFunction || isLvalue(target, false) != LVALUE_YES) {
        plainError("'%s' is invalid lvalue in Zy_SetVar()", name);
    } else if (Value *value = valueFromHost(type, list)) {
        result = assignChecked(target, value);
        deleteValue(value);
    }
    deleteNode(target);
    return result;
}

}  // namespace

}  // namespace zy

using namespace zy;

int Zy_ExprCalc_kernel(void *, const char *expr, int type, void *result) {
    int status;
    Value *value = evaluate(expr, status);
    if (status == -1 || !result) {
        if (value)
            deleteValue(value);
        return status == -1 ? -1 : 0;
    }
    if (!value)
        value = newZeroValue(fromHostType(type));
    storeForHost(result, fromHostType(type), value);
    deleteValue(value);
    return 0;
}

int Zy_ExprEval_kernel(void *, const char *expr) {
    int status;
    Value *value = evaluate(expr, status);
    if (value)
        deleteValue(value);
    return e_lang->abortedRun ? 1 : status;
}

int Zy_ExprParse_kernel(void *, const char *expr) {
    if (!expr)
        return -1;
    ExprNode *tree = parseText(expr);
    bool wellFormed = tree != nullptr;
    deleteNode(tree);
    errorFlag = 0;
    return wellFormed ? 0 : -1;
}

ZyValueHandle Zy_ExprValue_kernel(void *, const char *expr, void **address) {
    int status;
    Value *value = evaluate(expr, status);
    if (!value)
        return nullptr;
    bool isData = value->type == DT_STRUCT || value->type == DT_CARRAY || value->type == DT_ARRAY ||
                  value->type == DT_FUNCTION;
    if (address)
        *address = isData ? value->payload.p : &value->payload;
    return reinterpret_cast<ZyValueHandle>(value);
}

int Zy_DeleteExprValue_kernel(void *, ZyValueHandle value) {
    if (!value)
        return 0;
    deleteValue(reinterpret_cast<Value *>(value));
    return -1;
}

int Zy_vSetVar(void *, const char *name, int type, va_list list) {
    return setVariable(name, type, list);
}

int Zy_DeclareVar_kernel(void *, char *declaration) {
    return declaration ? declareText(declaration, "declaration code passed is larger than %d bytes")
                       : -1;
}

int Zy_DeclareTypedef_kernel(void *, const char *name) {
    for (TypeInfo *symbol = systemSymbols; name && symbol; symbol = symbol->next)
        if (symbol->name && strcmp(symbol->name->text, name) == 0) {
            symbol->storage = STORAGE_TYPEDEF;
            return 0;
        }
    return -1;
}

int Zy_InitGlobalVar_kernel(void *, int on) {
    e_lang->initGlobals = on;
    return 0;
}
