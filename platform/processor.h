// What the processor can do beyond the least that the library is compiled for.
#pragma once

namespace zy::platform {

// Whether code for these vectors may run: the processor has them, and the system keeps their
// registers. False on other processors.
bool hasVectors256();  // AVX2
bool hasVectors512();  // AVX-512F

}  // namespace zy::platform
