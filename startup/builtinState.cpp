// Cells of the built-in symbols.

#include "startup/builtins.h"

namespace zy {

char **environmentCopy;

}  // namespace zy
