// record header: formatted output, the engine behind printf() and its kin. Every text among the
// arguments is a format for those behind it; all else prints in the format that its type has.
//
// The room rtlib/ is what a script gets of the C library.
#pragma once

#include "expr/value.h"

namespace zy {

// Prints list cells, each evaluated when its turn comes. `stream` is a FILE *, NULL for standard
// output. The number of characters written, or -1 if an argument couldn't be printed.
int printfEngine(void *stream, ExprNode *arguments);

}  // namespace zy
