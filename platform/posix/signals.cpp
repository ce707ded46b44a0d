#include "platform/signals.h"

#include <dlfcn.h>

#include <csignal>

namespace zy::platform {

const int memoryFaultSignal = SIGSEGV;
const int illegalInstructionSignal = SIGILL;

bool installHandler(int signal, SignalHandler handler, SignalHandler *previous) {
    SignalHandler old = std::signal(signal, handler);
    if (previous)
        *previous = old;
    return old != SIG_ERR;
}

void withdrawHandler(int signal, SignalHandler handler, SignalHandler previous) {
    struct sigaction current;
    if (sigaction(signal, nullptr, &current) != 0 || current.sa_handler != handler)
        return;  // an instance started later owns it
    Dl_info where;
    bool stillThere = previous == SIG_IGN || dladdr(reinterpret_cast<void *>(previous), &where);
    std::signal(signal, stillThere ? previous : SIG_DFL);
}

}  // namespace zy::platform
