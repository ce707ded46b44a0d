// Initial values. A static one is evaluated while the text is parsed, once, by the real evaluator:
// any expression may stand there. An automatic one is only parsed, and becomes a statement.
#pragma once

#include "decl/typeInfo.h"

namespace zy {

// With the = consumed. Evaluates now and stores the value in the variable's cell.
void parseStaticInitialiser(TypeInfo *symbol);
// With the = consumed. Adds a statement that assigns to the statements that run before the current
// one's successor.
void parseAutoInitialiser(TypeInfo *symbol);

}  // namespace zy
