// The C library has asked the processor when the process started. Asking it again, as the
// compiler's own test does in each copy of the library that is loaded, takes as long as loading it:
// on a virtual machine the host has to answer.

#include "platform/processor.h"

#if __has_include(<sys/platform/x86.h>)
#define _Bool bool  // a word of C, which clang has in C alone
#include <sys/platform/x86.h>
#undef _Bool
#endif

#if defined(CPU_FEATURE_ACTIVE)
#define ZY_PROCESSOR_HAS(leaf, name) CPU_FEATURE_ACTIVE(leaf)
#elif defined(__x86_64__)
#define ZY_PROCESSOR_HAS(leaf, name) __builtin_cpu_supports(name)
#else
#define ZY_PROCESSOR_HAS(leaf, name) false
#endif

namespace zy::platform {

bool hasVectors256() { return ZY_PROCESSOR_HAS(AVX2, "avx2"); }
bool hasVectors512() { return ZY_PROCESSOR_HAS(AVX512F, "avx512f"); }

}  // namespace zy::platform
