// record header: formatted output of script values.
#pragma once

#include "expr/value.h"

namespace zy {

// Writes the arguments, list cells of an argument list, to a stream; NULL is standard output. Each
// is evaluated when its turn comes. The number of characters written, -1 on failure.
int printfEngine(void *stream, ExprNode *arguments);

}  // namespace zy
