// Readers: a scalar Value of any type as a number of a wanted width. An operator's code says what
// it computes in; its operands still come in the types they have. The common types are read inline.
#pragma once

#include <climits>
#include <cstdint>

#include "expr/value.h"

namespace zy {

// Real to integer as the processor truncates: a number out of range, and NaN, give the smallest.
inline int32_t truncateToInt32(double number) {
    bool fits = number > INT32_MIN - 1.0 && number < INT32_MAX + 1.0;
    return fits ? static_cast<int32_t>(number) : INT32_MIN;
}
inline int64_t truncateToInt64(double number) {
    bool fits = number >= -0x1p63 && number < 0x1p63;
    return fits ? static_cast<int64_t>(number) : INT64_MIN;
}
// Unsigned: from 2 to the power 63 on by way of the difference to it.
inline uint64_t truncateToUint64(double number) {
    constexpr uint64_t topBit = uint64_t{1} << 63;
    if (number >= 0x1p63)
        return static_cast<uint64_t>(truncateToInt64(number - 0x1p63)) + topBit;
    return static_cast<uint64_t>(truncateToInt64(number));
}

// The other types. A type that is no scalar reads as 0, after a warning.
double readDoubleSlow(const Value *value);
int64_t readSigned64Slow(const Value *value);
uint64_t readUnsigned64Slow(const Value *value);

// As a double. A complex or dual number with a second part other than 0 is NaN; a pointer is its
// address.
inline double readDouble(const Value *value) {
    switch (value->type) {
        case DT_INT: return value->payload.i;
        case DT_DOUBLE: return value->payload.d;
        case DT_FLOAT: return value->payload.f;
        default: return readDoubleSlow(value);
    }
}

inline int64_t readSigned64(const Value *value) {
    switch (value->type) {
        case DT_INT: return value->payload.i;
        case DT_LLONG: return value->payload.ll;
        default: return readSigned64Slow(value);
    }
}

inline uint64_t readUnsigned64(const Value *value) {
    switch (value->type) {
        case DT_INT: return static_cast<uint64_t>(static_cast<int64_t>(value->payload.i));
        case DT_ULLONG: return value->payload.ull;
        default: return readUnsigned64Slow(value);
    }
}

// As an int: the real value truncated.
inline int32_t readInt32(const Value *value) {
    return value->type == DT_INT ? value->payload.i : truncateToInt32(readDouble(value));
}
// As an unsigned int: the low 32 bits of the truncated value, so that a negative int wraps around.
inline uint32_t readUint32(const Value *value) {
    if (value->type == DT_UINT || value->type == DT_INT)
        return value->payload.u;
    return static_cast<uint32_t>(truncateToInt64(readDouble(value)));
}

// As a float: narrowed from double.
inline float readFloat(const Value *value) {
    return value->type == DT_FLOAT ? value->payload.f : static_cast<float>(readDouble(value));
}

// Whether a value counts as true: it isn't equal to 0, so NaN is true. A text or pointer counts by
// its address, and a pointer to a function without a body is false.
bool logicalValueSlow(const Value *value);
inline bool logicalValue(const Value *value) {
    return value->type == DT_INT ? value->payload.i != 0 : logicalValueSlow(value);
}

}  // namespace zy
