// ZY_INDEPENDENT before a loop: no turn depends on another, where the compiler can't see it.
#pragma once

#if defined(__GNUC__) && !defined(__clang__)
#define ZY_INDEPENDENT _Pragma("GCC ivdep")
#else
#define ZY_INDEPENDENT
#endif
