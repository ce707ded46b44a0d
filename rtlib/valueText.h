// record header: values as source text.
#pragma once

#include <string>

#include "expr/value.h"

namespace zy {

// A scalar or string_t in the form that the language would read back; "" after a warning for any
// other type.
std::string valueToText(const Value *value);

}  // namespace zy
