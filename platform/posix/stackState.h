// The bounds of the stack that was asked about last; the threads of an instance may change.
#pragma once

namespace zy::platform {

extern const char *stackMark, *stackEnd;  // what lies between the two is not low

}  // namespace zy::platform
