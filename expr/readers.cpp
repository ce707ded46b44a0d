// The readers' rows for the less common types.

#include "expr/readers.h"

#include "instance/report.h"
#include "numeric/convert.h"
#include "numeric/specialValues.h"

namespace zy {

namespace {

// A pair with a second part isn't a real number.
double realOfPair(double first, double second) { return second == 0 ? first : wideNaN; }

bool realPart(const Value *value, double &number) {
    const Payload &payload = value->payload;
    switch (value->type) {
        case DT_FLOAT: number = payload.f; return true;
        case DT_DOUBLE:
        case DT_LDOUBLE: number = payload.d; return true;
        case DT_COMPLEX:
        case DT_DUAL: number = realOfPair(payload.pair[0], payload.pair[1]); return true;
        case DT_DCOMPLEX:
        case DT_DDUAL: number = realOfPair(payload.d, value->payload2.d); return true;
        default: return false;
    }
}

// Integers by their own type, extended to 64 bits; addresses.
bool integerBits(const Value *value, uint64_t &bits) {
    const Payload &payload = value->payload;
    switch (value->type) {
        case DT_CHAR: bits = static_cast<uint64_t>(int64_t{payload.sc}); return true;
        case DT_UCHAR: bits = payload.uc; return true;
        case DT_SHORT: bits = static_cast<uint64_t>(int64_t{payload.s}); return true;
        case DT_USHORT: bits = payload.us; return true;
        case DT_INT: bits = static_cast<uint64_t>(int64_t{payload.i}); return true;
        case DT_UINT: bits = payload.u; return true;
        case DT_LLONG:
        case DT_ULLONG: bits = payload.ull; return true;
        default:
            if (!isPointer(value->type) && value->type != DT_STRING && value->type != DT_NAME)
                return false;
            bits = reinterpret_cast<uintptr_t>(pointerOf(value));
            return true;
    }
}

bool isSignedInteger(int type) {
    return type == DT_CHAR || type == DT_SHORT || type == DT_INT || type == DT_LLONG;
}

}  // namespace

double readDoubleSlow(const Value *value) {
    double number = 0;
    uint64_t bits = 0;
    if (realPart(value, number))
        return number;
    if (!integerBits(value, bits))
        runWarningAlways("unsupported data type for casting to double data");
    if (isSignedInteger(value->type))
        return static_cast<double>(static_cast<int64_t>(bits));
    return static_cast<double>(bits);
}

int64_t readSigned64Slow(const Value *value) {
    double number = 0;
    uint64_t bits = 0;
    if (realPart(value, number))
        return truncateToInt64(number);
    if (!integerBits(value, bits))
        runWarningAlways("unsupported data type for casting to long int data");
    return static_cast<int64_t>(bits);
}

uint64_t readUnsigned64Slow(const Value *value) {
    double number = 0;
    uint64_t bits = 0;
    if (realPart(value, number))
        return truncateToUint64(number);
    if (!integerBits(value, bits))
        runWarningAlways("unsupported data type for casting to unsigned long int data");
    return bits;
}

bool logicalValueSlow(const Value *value) { return readDouble(value) != 0; }

}  // namespace zy
