// record header: debug events, delivered to the callback of the host while it has one armed.
#pragma once

#include "instance/langState.h"

namespace zy {

enum DebugEvent : int {
    EVENT_FUNCTION_ENTRY = 1,
    EVENT_FUNCTION_EXIT = 2,
    EVENT_BLOCK_ENTRY = 4,
    EVENT_BLOCK_EXIT = 8,
    EVENT_STATEMENT = 16,
    EVENT_STEP = 32,  // of the evaluator
    EVENT_ABORT = 64,
    EVENT_IN_NATIVE_CALLS = 256,  // no event: keeps events on inside native calls
};

// Whether the host asked for that event and takes events now.
inline bool wantsEvent(DebugEvent event) {
    return e_lang->callbackActive && (e_lang->callbackMask & event);
}

inline bool wantsEvents() { return e_lang->callbackActive; }

// Calls the host's function with where the current context stands. No event arises inside it.
void deliverEvent(DebugEvent event);

}  // namespace zy
