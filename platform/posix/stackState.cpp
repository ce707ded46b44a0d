#include "platform/posix/stackState.h"

namespace zy::platform {

const char *stackMark, *stackEnd;

}  // namespace zy::platform
