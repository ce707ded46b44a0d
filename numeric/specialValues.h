// record header: the special values of real arithmetic. Whenever a result must be NaN it is this
// one, whose sign bit is clear, converted where the target is wider.
#pragma once

#include <bit>
#include <cstdint>

namespace zy {

constexpr float canonicalNaN = std::bit_cast<float>(uint32_t{0x7FFFFFFF});
constexpr float canonicalInf = std::bit_cast<float>(uint32_t{0x7F800000});
constexpr double wideNaN = std::bit_cast<double>(uint64_t{0x7FFFFFFFE0000000});
constexpr double wideInf = std::bit_cast<double>(uint64_t{0x7FF0000000000000});

}  // namespace zy
