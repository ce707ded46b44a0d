#include "embed/hostValues.h"

#include <cstring>
#include <string>

#include "embed/hostArrays.h"
#include "embed/hostTypes.h"
#include "expr/readers.h"
#include "expr/scope.h"
#include "extern/include/embedzy.h"
#include "instance/report.h"
#include "numeric/convert.h"
#include "numeric/shape.h"

namespace zy {

// ---- To the host --------------------------------------------------------------------------------

namespace {

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

}  // namespace

void storeNumber(void *result, int type, const Value *value) {
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

// ---- From the host ------------------------------------------------------------------------------

namespace {

// ---- Values from the host -----------------------------------------------------------------------

bool isAggregateCode(int code) {
    return code == ZY_TYPE_STRUCT || code == ZY_TYPE_CLASS || code == ZY_TYPE_UNION;
}

StructInfo *typeNamed(const char *tag) {
    const NameEntry *name = lookupName(tag);
    const Symbol *symbol = name ? name->symbol : nullptr;
    return symbol && symbol->storage == STORAGE_TYPEDEF ? symbol->structLink : nullptr;
}

// A tag stands under a name of its own where an object has the plain one.
StructInfo *structNamed(const char *tag) {
    StructInfo *info = typeNamed(tag);
    return info ? info : typeNamed(("_zy_" + std::string(tag)).c_str());
}

// A copy of the object of a tag; NULL after a message.
Value *objectFrom(const char *tag, const void *data) {
    StructInfo *info = tag ? structNamed(tag) : nullptr;
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

}  // namespace

namespace {

Value *arrayFrom(int type, HostArguments &arguments) {
    int element = fromHostType(va_arg(arguments.list, int));
    void *data = va_arg(arguments.list, void *);
    int rank = va_arg(arguments.list, int);
    bool hasElements = data && isHostElement(element);
    return hasElements ? arrayFromHost(type, element, data, rank, arguments) : nullptr;
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

}  // namespace

Value *numberFromHost(int type, HostArguments &arguments) {
    Value *value = newZeroValue(type);
    switch (type) {
        case DT_CHAR:
        case DT_UCHAR: value->payload.c = static_cast<char>(va_arg(arguments.list, int)); break;
        case DT_SHORT:
        case DT_USHORT: value->payload.s = static_cast<short>(va_arg(arguments.list, int)); break;
        case DT_INT:
        case DT_UINT: value->payload.i = va_arg(arguments.list, int); break;
        case DT_FLOAT: value->payload.f = static_cast<float>(va_arg(arguments.list, double)); break;
        case DT_DOUBLE: value->payload.d = va_arg(arguments.list, double); break;
        default: value->payload.ll = va_arg(arguments.list, long long);
    }
    return value;
}

Value *valueFromHost(int code, HostArguments &arguments, const char *service) {
    if (code >= ZY_TYPE_CHAR && code <= ZY_TYPE_DOUBLE)
        return numberFromHost(fromHostType(code), arguments);
    if (isAggregateCode(code)) {
        const char *tag = va_arg(arguments.list, char *);
        return objectFrom(tag, va_arg(arguments.list, void *));
    }
    bool isArray = code == ZY_TYPE_CARRAY || code == ZY_TYPE_ARRAY;
    Value *array = isArray ? arrayFrom(fromHostType(code), arguments) : nullptr;
    if (array)
        return array;
    if (isPointerCode(code))
        return pointerFrom(code, va_arg(arguments.list, void *));
    plainError("unknown data type in %s()", service);
    return nullptr;
}

}  // namespace zy
