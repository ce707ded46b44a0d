#include "platform/stack.h"

#include <pthread.h>

#include <algorithm>

#include "platform/posix/stackState.h"

namespace zy::platform {

namespace {

constexpr size_t RESERVE = 256 * 1024;  // for the C library, and for hosts that are called back

// True if the address is in the part of the thread's stack that is kept free.
bool isInReserve([[maybe_unused]] const char *address) {
#ifdef __linux__
    pthread_attr_t attributes;
    void *base;
    size_t size;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0)
        return false;
    bool known = pthread_attr_getstack(&attributes, &base, &size) == 0;
    pthread_attr_destroy(&attributes);
    if (!known)
        return false;
    const char *start = static_cast<const char *>(base);
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
