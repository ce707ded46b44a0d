// Texts as results of operators.
#pragma once

#include <string>

#include "expr/value.h"

namespace zy {

// Stores a text in a string_t variable, as an assignment would.
void assignText(ExprNode *target, const char *text);
// Pushes the text that an operator gives; a string_t's is new, and is stored in the variable too.
void pushText(ExprNode *target, bool isString, char *text);

}  // namespace zy
