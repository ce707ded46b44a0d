// The macros that every parse starts with.
#pragma once

namespace zy {

struct PredefinedMacro {
    const char *name;
    const char *value;
    bool onlyRestricted;  // defined in the restricted shell alone
};

extern const PredefinedMacro predefinedMacros[];
extern const int predefinedMacroCount;

}  // namespace zy
