// Texts that a host, or streval, evaluates in the middle of everything. They go through the one
// line buffer and the normal parser, whose place is saved around them.
#pragma once

#include "expr/value.h"

namespace zy {

// Parses a text that is one whole expression. NULL, after the parser's messages, if it isn't one;
// errorFlag then may be set.
ExprNode *parseText(const char *text);

// Parses declarations into the global list, whatever scope is running; `tooLong` is the message for
// a text that doesn't fit, with the limit. 0 or -1; errorFlag is clear afterwards.
int declareText(const char *declaration, const char *tooLong);

}  // namespace zy
