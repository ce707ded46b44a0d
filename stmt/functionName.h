// The names of running functions: in messages, and as the value of __func__.
#pragma once

#include "decl/typeInfo.h"

namespace zy {

// The function's name as scripts know it.
const char *shownName(const TypeInfo *function);
// Sets __func__: of a member function with its class in front; empty for NULL.
void setFunctionName(const TypeInfo *function);

}  // namespace zy
