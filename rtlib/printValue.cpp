// A conversion that doesn't suit the value's type never reaches the C library: integers and reals
// meet in the real conversions, and any other pair prints as if no conversion had been given, with
// the text behind it.

#include "rtlib/printValue.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <initializer_list>
#include <string>

#include "expr/readers.h"
#include "instance/report.h"
#include "numeric/convert.h"
#include "numeric/specialValues.h"
#include "platform/files.h"
#include "rtlib/printAggregate.h"

namespace zy {

namespace {

enum class Source { VALUE, CELL };

enum class Class { INTEGER, REAL, PAIR, TEXT, ADDRESS, STREAM, ARRAY, OBJECT, NOTHING, UNKNOWN };

bool isChar(int type) { return type == DT_CHAR || type == DT_UCHAR; }
bool isTextType(int type) { return type == DT_STRING || type == DT_P_CHAR || type == DT_P_UCHAR; }
bool isText(const Value *value) {
    return isTextType(value->type) ||
           (value->type == DT_CARRAY && isChar(value->payload2.elementType));
}

Class classOf(const Value *value) {
    int type = value->type;
    if (isText(value))
        return Class::TEXT;
    switch (type) {
        case DT_FLOAT:
        case DT_DOUBLE: return Class::REAL;
        case DT_COMPLEX:
        case DT_DUAL:
        case DT_DCOMPLEX:
        case DT_DDUAL: return Class::PAIR;
        case DT_VOID: return Class::NOTHING;
        case DT_P_FILE: return Class::STREAM;
        case DT_NAME:
        case DT_CARRAY: return Class::ADDRESS;
        case DT_ARRAY:
        case DT_P_ARRAY: return Class::ARRAY;
        case DT_STRUCT: return Class::OBJECT;
        default: break;
    }
    if (isIntegral(type))
        return Class::INTEGER;
    return isPointer(type) ? Class::ADDRESS : Class::UNKNOWN;
}

constexpr bool isAny(ConversionKind kind, std::initializer_list<ConversionKind> kinds) {
    for (ConversionKind member : kinds)
        if (kind == member)
            return true;
    return false;
}

bool suits(Class valueClass, ConversionKind kind) {
    switch (valueClass) {
        case Class::INTEGER:
            return isAny(kind, {CONVERT_SIGNED, CONVERT_UNSIGNED, CONVERT_REAL, CONVERT_CHARACTER,
                                CONVERT_ADDRESS, CONVERT_BINARY});
        case Class::REAL: return isAny(kind, {CONVERT_REAL, CONVERT_BINARY});
        case Class::PAIR: return kind == CONVERT_REAL;
        case Class::TEXT: return isAny(kind, {CONVERT_TEXT, CONVERT_ADDRESS});
        case Class::ADDRESS:
        case Class::STREAM:
            return isAny(kind, {CONVERT_SIGNED, CONVERT_UNSIGNED, CONVERT_ADDRESS, CONVERT_TEXT,
                                CONVERT_BINARY});
        default: return false;
    }
}

// ---- Defaults -----------------------------------------------------------------------------------

const char *literalDefault(int type) {
    switch (type) {
        case DT_CHAR:
        case DT_UCHAR: return "%c";
        case DT_SHORT: return "%hd";
        case DT_USHORT: return "%hu";
        case DT_INT: return "%d";
        case DT_UINT: return "%u";
        case DT_LLONG: return "%I64d";
        case DT_ULLONG: return "%I64u";
        case DT_FLOAT:
        case DT_COMPLEX:
        case DT_DUAL: return "%.2f";
        case DT_DOUBLE:
        case DT_DCOMPLEX:
        case DT_DDUAL: return "%.4lf";
        default: return "%p";
    }
}

const char *defaultFormat(const Value *value, Source source) {
    if (isText(value))
        return "%s";
    const char *literal = literalDefault(value->type);
    Class valueClass = classOf(value);
    if (source == Source::CELL || (valueClass != Class::REAL && valueClass != Class::PAIR))
        return literal;
    TypeInfo *symbol = literal[2] == '2' ? e_lang->formatf : e_lang->formatd;
    const char *text = symbol ? findVarCell(symbol)->data.text : nullptr;
    return text ? text : literal;
}

// ---- Numbers ------------------------------------------------------------------------------------

// Digits from the highest bit down; leading zeros only as far as the width reaches.
void printBits(Sink &sink, uint64_t bits, int count, int width) {
    char digits[64];
    int length = 0;
    for (int bit = count - 1; bit >= 0; bit--) {
        bool one = bits >> bit & 1;
        if (one || length > 0 || width > bit || bit == 0)
            digits[length++] = one ? '1' : '0';
    }
    sink.write(digits, length);
}

template <class Signed, class Unsigned>
uint64_t narrowed(uint64_t bits, bool isSigned) {
    return isSigned ? static_cast<uint64_t>(static_cast<Signed>(bits))
                    : static_cast<Unsigned>(bits);
}

void printInteger(Sink &sink, const Conversion &conversion, int type, uint64_t bits) {
    bool wide = type == DT_LLONG || type == DT_ULLONG || conversion.length == LENGTH_64;
    bool isSigned = conversion.kind == CONVERT_SIGNED;
    char letter = conversion.letter;
    if (conversion.byType && !strchr("oxX", letter)) {
        isSigned = type != DT_ULLONG;
        letter = isSigned ? 'd' : 'u';
    }
    if (conversion.length == LENGTH_CHAR)
        bits = narrowed<int8_t, uint8_t>(bits, isSigned);
    else if (conversion.length == LENGTH_SHORT)
        bits = narrowed<int16_t, uint16_t>(bits, isSigned);
    else if (!wide)
        bits = narrowed<int32_t, uint32_t>(bits, isSigned);
    ConversionText text = conversionText(conversion, "ll", letter);
    if (isSigned)
        sink.print(text.text, static_cast<long long>(bits));
    else
        sink.print(text.text, static_cast<unsigned long long>(bits));
}

void printAddress(Sink &sink, const Conversion &conversion, const void *address) {
    sink.print(conversionText(conversion, "", 'p').text, address);
}

void printIntegerValue(Sink &sink, const Conversion &conversion, const Value *value) {
    auto bits = static_cast<uint64_t>(readSigned64(value));
    int type = value->type;
    if (type == DT_ULLONG)
        bits = value->payload.ull;
    switch (conversion.kind) {
        case CONVERT_REAL:
            sink.print(conversionText(conversion, "", conversion.letter).text, readDouble(value));
            break;
        case CONVERT_CHARACTER:
            sink.print(conversionText(conversion, "", 'c').text, static_cast<int>(bits));
            break;
        case CONVERT_ADDRESS: printAddress(sink, conversion, reinterpret_cast<void *>(bits)); break;
        case CONVERT_BINARY: printBits(sink, bits, sizeofType(type) * 8, conversion.width); break;
        default: printInteger(sink, conversion, type, bits);
    }
}

// A double in two words, the one at the lower address first.
void printRealBits(Sink &sink, const Value *value) {
    if (value->type == DT_FLOAT) {
        float number = std::isnan(value->payload.f) ? canonicalNaN : value->payload.f;
        printBits(sink, std::bit_cast<uint32_t>(number), 32, 32);
        return;
    }
    double number = std::isnan(value->payload.d) ? wideNaN : value->payload.d;
    uint32_t words[2];
    memcpy(words, &number, sizeof words);
    for (uint32_t word : words)
        printBits(sink, word, 32, 32);
}

void printReal(Sink &sink, const Conversion &conversion, double number) {
    if (std::isnan(number))
        sink.write("nan");
    else if (std::isinf(number))
        sink.write(number < 0 ? "-inf" : "inf");
    else
        sink.print(conversionText(conversion, "", conversion.letter).text, number);
}

// One infinity, and one that isn't a number, stand for the whole pair. False: no text follows.
bool printPair(Sink &sink, const Conversion &conversion, const Value *value) {
    bool wide = value->type == DT_DCOMPLEX || value->type == DT_DDUAL;
    bool dual = value->type == DT_DUAL || value->type == DT_DDUAL;
    double first = wide ? value->payload.d : value->payload.pair[0];
    double second = wide ? value->payload2.d : value->payload.pair[1];
    if (!std::isfinite(first)) {
        sink.write(dual ? "Dual" : "Complex");
        sink.write(std::isnan(first) ? "NaN" : "Inf");
        return false;
    }
    sink.write(dual ? "dual(" : "complex(");
    printReal(sink, conversion, first);
    sink.write(",");
    printReal(sink, conversion, second);
    sink.write(")");
    return true;
}

// ---- Texts and addresses ------------------------------------------------------------------------

const char *nullText(const Value *value, Source source) {
    if (!isTextType(value->type))
        return "(null)";
    return source == Source::CELL ? "NULL" : "";
}

// What a %s shows; its end lies within limit, as an array need not have one.
void printText(Sink &sink, const Conversion &conversion, const char *text, size_t limit) {
    if (conversion.precision != NOT_GIVEN)
        limit = std::min(limit, static_cast<size_t>(conversion.precision));
    size_t length = strnlen(text, limit);
    if (conversion.width == NOT_GIVEN) {
        sink.write(text, length);
        return;
    }
    Conversion bounded = conversion;
    bounded.precision = static_cast<int>(std::min<size_t>(length, INT_MAX));
    sink.print(conversionText(bounded, "", 's').text, text);
}

bool allowsText(const Value *value) {
    return isText(value) || value->type == DT_P_VOID || value->type == DT_P_CARRAY ||
           value->type == DT_NULL;
}

void printAsText(Sink &sink, const Conversion &conversion, const Value *value, Source source) {
    size_t limit = value->type == DT_CARRAY ? value->count : SIZE_MAX;
    const auto *text = static_cast<const char *>(value->payload.p);
    if (isNullAddress(text)) {
        text = nullText(value, source);
        limit = SIZE_MAX;
    }
    printText(sink, conversion, text, limit);
}

void printAddressValue(Sink &sink, const Conversion &conversion, const Value *value) {
    void *address = pointerOf(value);
    auto bits = reinterpret_cast<uintptr_t>(address);
    if (conversion.kind == CONVERT_ADDRESS)
        printAddress(sink, conversion, address);
    else if (conversion.kind == CONVERT_BINARY)
        printBits(sink, bits, 64, conversion.width);
    else
        printInteger(sink, conversion, DT_ULLONG, bits);
}

std::string bufferText(const platform::StreamBuffer &buffer) {
    return buffer.text ? std::string(buffer.text, buffer.length) : "NULL";
}

void printStream(Sink &sink, const Value *value) {
    auto *stream = static_cast<FILE *>(value->payload.p);
    if (isNullAddress(stream)) {
        sink.write("NULL");
        return;
    }
    platform::StreamFields fields = platform::streamFields(stream);
    sink.write("    {\n");
    sink.print("\t_cnt    = %d\n", fields.count);
    sink.print("\t_ptr    = %s\n", bufferText(fields.position).c_str());
    sink.print("\t_base   = %s\n", bufferText(fields.base).c_str());
    sink.print("\t_flag   = %d\n", fields.flags);
    sink.write("    }");
}

// ---- Dispatch -----------------------------------------------------------------------------------

// False: the text behind the conversion isn't written.
bool convert(Sink &sink, const Conversion &conversion, const Value *value, Source source) {
    if (!hasRoom(conversion)) {
        sink.fail();
        return true;
    }
    if (conversion.kind == CONVERT_TEXT) {
        printAsText(sink, conversion, value, source);
        return true;
    }
    switch (classOf(value)) {
        case Class::INTEGER: printIntegerValue(sink, conversion, value); break;
        case Class::REAL:
            if (conversion.kind == CONVERT_BINARY)
                printRealBits(sink, value);
            else
                printReal(sink, conversion, readDouble(value));
            break;
        case Class::PAIR: return printPair(sink, conversion, value);
        default: printAddressValue(sink, conversion, value);
    }
    return true;
}

// Text before the conversion only a default can have.
const char *writePrefix(Sink &sink, const char *format) {
    const char *percent = strchr(format, '%');
    if (!percent)
        percent = format + strlen(format);
    sink.write(format, percent - format);
    return percent;
}

// The text behind a conversion stands once, behind the last element.
void printElements(Sink &sink, const Conversion *conversion, const Value *array) {
    int type = array->payload2.elementType;
    if (type == DT_STRUCT) {
        runWarning("fprintf(stderr,) unsupported data type");
        return;
    }
    Conversion element;
    if (conversion)
        element = *conversion;
    element.tail = "";
    printArray(sink, conversion ? &element : nullptr, type, array->payload.p, array->shape);
}

// The elements of an array by the conversion, the members of an object by their types.
void printParts(Sink &sink, const Conversion *conversion, const Value *value) {
    void *data = value->payload.p;
    if (value->type == DT_STRUCT)
        printStruct(sink, "", value->payload2.structInfo, isNullAddress(data) ? nullptr : data);
    else if (value->type == DT_P_ARRAY && isNullAddress(data))
        sink.write("NULL\n");
    else
        printElements(sink, conversion, value);
}

// False: what follows in the format that led here isn't written.
bool printDefault(Sink &sink, const Value *value, Source source) {
    Class valueClass = classOf(value);
    if (valueClass == Class::STREAM) {
        printStream(sink, value);
        return true;
    }
    if (valueClass == Class::ARRAY || valueClass == Class::OBJECT) {
        printParts(sink, nullptr, value);
        return true;
    }
    const char *format = writePrefix(sink, defaultFormat(value, source));
    if (!*format)
        return true;
    Conversion conversion = parseConversion(format);
    if (!suits(valueClass, conversion.kind))
        conversion = parseConversion(literalDefault(value->type));
    if (!convert(sink, conversion, value, source))
        return false;
    sink.write(conversion.tail);
    return true;
}

void printGiven(Sink &sink, const Conversion &conversion, const Value *value, Source source) {
    if (conversion.kind == CONVERT_TEXT && !allowsText(value)) {
        runError("print an invalid string");
        sink.fail();
        return;
    }
    if (classOf(value) == Class::ARRAY) {
        printParts(sink, &conversion, value);
        sink.write(conversion.tail);
        return;
    }
    bool tailFollows = suits(classOf(value), conversion.kind)
                           ? convert(sink, conversion, value, source)
                           : printDefault(sink, value, source);
    if (tailFollows)
        sink.write(conversion.tail);
}

// Without a conversion in the default of the type.
int printAny(Sink &sink, const Conversion *conversion, const Value *value, Source source) {
    Class valueClass = classOf(value);
    if (valueClass == Class::NOTHING)
        return 0;
    if (valueClass == Class::UNKNOWN) {
        runWarning("fprintf(stderr,) unsupported data type");
        return 0;
    }
    long long before = sink.count();
    if (conversion)
        printGiven(sink, *conversion, value, source);
    else
        printDefault(sink, value, source);
    return sink.hasFailed() ? PRINT_FAILED : static_cast<int>(sink.count() - before);
}

int printAny(Sink &sink, const char *format, const Value *value, Source source) {
    if (!format)
        return printAny(sink, static_cast<Conversion *>(nullptr), value, source);
    Conversion conversion = parseConversion(format);
    return printAny(sink, &conversion, value, source);
}

}  // namespace

int printConverted(Sink &sink, const Conversion &conversion, const Value *value) {
    return printAny(sink, &conversion, value, Source::VALUE);
}

int printValue(Sink &sink, const char *format, const Value *value) {
    return printAny(sink, format, value, Source::VALUE);
}

int printView(Sink &sink, const Conversion *conversion, const Value *view) {
    return printAny(sink, conversion, view, Source::CELL);
}

int printCell(Sink &sink, const char *format, const VarCell *cell, const StructInfo *info) {
    Value view{};
    view.kind = NODE_VALUE;
    view.type = cell->type;
    view.payload = cell->data;
    view.payload2 = cell->data2;
    if (cell->type == DT_STRUCT)
        view.payload2.structInfo = const_cast<StructInfo *>(info);
    view.shape = cell->shape;
    view.count = cell->count;
    return printAny(sink, format, &view, Source::CELL);
}

const char *textOf(const Value *value, size_t &limit) {
    if (!isText(value) || isNullAddress(value->payload.p))
        return nullptr;
    limit = value->type == DT_CARRAY ? value->count : SIZE_MAX;
    return static_cast<const char *>(value->payload.p);
}

}  // namespace zy
