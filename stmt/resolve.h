// The check of names at the end of a list of declarations: functions that are used and have no
// body, variables and tags that were never defined.
#pragma once

#include "decl/typeInfo.h"

namespace zy {

// isGlobal: the list of file level, for whose functions function files are looked for. True if one
// was found: the parser goes on with it.
bool resolveFunctions(TypeInfo *&list, bool isGlobal);

// Defined by the functions' room: opens the function file of a symbol as the next source, true if
// there is one.
bool continueWithFunctionFile(TypeInfo *symbol);

}  // namespace zy
