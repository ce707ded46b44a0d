// The process environment, reached only through the two functions of e_lang: all instances of the
// process share one list of what they have set.
#pragma once

#include <string>

#include "instance/langState.h"

namespace zy {

inline const char *readEnvironment(const char *name) { return e_lang->getenvFn(name); }

// A NULL value removes the variable. 0 or -1.
inline int writeEnvironment(const char *name, const char *value) {
    return e_lang->putenvFn((std::string(name) + "=" + (value ? value : "")).c_str());
}

}  // namespace zy
