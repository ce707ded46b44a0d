// State of the start-up room.

#include "instance/langState.h"
#include "startup/startup.h"

namespace zy {

char homeFolder[SOURCE_LINE_MAX];

}  // namespace zy
