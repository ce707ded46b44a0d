// Cells of the expression parser; expr/parserState.cpp defines them.
#pragma once

#include "expr/value.h"

namespace zy {

extern ExprNode *keptTexts;       // list cells with the texts of literals
extern bool parserRunMode;        // of the innermost parse: see parseExpression()
extern bool nestedFaultReported;  // calls of the parser on the host's stack

}  // namespace zy
