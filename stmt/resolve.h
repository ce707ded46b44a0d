// The check of names at the end of a list of declarations: functions that are used and have no
// body, variables and tags that were never defined.
#pragma once

#include "decl/typeInfo.h"

namespace zy {

// isGlobal: the list of file level, for whose functions function files are looked for. True if one
// was found: the parser goes on with it.
bool resolveFunctions(TypeInfo *&list, bool isGlobal);

}  // namespace zy
