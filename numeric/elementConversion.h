// Elements of one type as another: one routine for each pair of types, so that a loop converts
// without asking for a type.
#pragma once

#include <cstddef>
#include <type_traits>

#include "expr/readers.h"

namespace zy {

using ConvertKernel = void (*)(void *destination, const void *source, size_t count);

// NULL for a pair that isn't two element types.
ConvertKernel conversionKernel(int target, int sourceType);

// A real number as an integer: signed ones by way of 32 bits, unsigned ones by way of 64.
template <class T>
T truncateTo(double number) {
    if constexpr (std::is_same_v<T, unsigned long long>)
        return truncateToUint64(number);
    else if constexpr (std::is_signed_v<T> && sizeof(T) <= sizeof(int32_t))
        return static_cast<T>(truncateToInt32(number));
    else
        return static_cast<T>(truncateToInt64(number));
}

}  // namespace zy
