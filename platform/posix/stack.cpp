#include "platform/stack.h"

#include <pthread.h>
#include <sys/auxv.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>

#include "platform/posix/stackState.h"

namespace zy::platform {

namespace {

constexpr size_t RESERVE = 256 * 1024;  // for the C library, and for hosts that are called back

#ifdef __linux__
// The first thread's stack begins below the program's file name and grows to the limit. Asking for
// its attributes would read the process's whole map.
bool stackOfFirstThread(const char *&start, size_t &size) {
    auto top = static_cast<uintptr_t>(getauxval(AT_EXECFN));
    rlimit limit;
    if (gettid() != getpid() || top == 0 || getrlimit(RLIMIT_STACK, &limit) != 0 ||
        limit.rlim_cur == RLIM_INFINITY || limit.rlim_cur >= top)
        return false;
    size = limit.rlim_cur;
    start = reinterpret_cast<const char *>(top - size);
    return true;
}

bool stackOfThisThread(const char *&start, size_t &size) {
    pthread_attr_t attributes;
    void *base;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0)
        return false;
    bool known = pthread_attr_getstack(&attributes, &base, &size) == 0;
    pthread_attr_destroy(&attributes);
    start = static_cast<const char *>(base);
    return known;
}
#endif

// True if the address is in the part of the thread's stack that is kept free.
bool isInReserve([[maybe_unused]] const char *address) {
#ifdef __linux__
    const char *start;
    size_t size;
    if (!stackOfFirstThread(start, size) && !stackOfThisThread(start, size))
        return false;
    stackMark = start + std::min(RESERVE, size / 4);
    stackEnd = start + size;
    return address >= start && address < stackMark;
#else
    return false;
#endif
}

}  // namespace

bool stackIsLow() {
    auto *here = static_cast<const char *>(__builtin_frame_address(0));
    return (here < stackMark || here >= stackEnd) && isInReserve(here);
}

}  // namespace zy::platform
