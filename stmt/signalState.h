// Cells about signals. The exported ones (in embedzy.h) are written by the native functions that
// give scripts the signal interfaces, and read by longjmp.
#pragma once

#include "platform/signals.h"

namespace zy {

// The fault handlers in force before this instance installed its own.
extern platform::SignalHandler handlerBeforeFault, handlerBeforeIllegal;

}  // namespace zy
