// Process-wide signals.
#pragma once

namespace zy::platform {

using SignalHandler = void (*)(int);

extern const int memoryFaultSignal;         // 11 here
extern const int illegalInstructionSignal;  // 4 here

// Installs a handler; false if the system refuses. The handler in force before it goes to
// *previous, unless that is NULL.
bool installHandler(int signal, SignalHandler handler, SignalHandler *previous);

// Takes `handler` off, if it is still the one in force, and gives the signal back to `previous`, or
// to the system's default if the library that `previous` stood in is no longer loaded.
void withdrawHandler(int signal, SignalHandler handler, SignalHandler previous);

}  // namespace zy::platform
