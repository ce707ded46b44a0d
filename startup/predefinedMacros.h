// record header: the macros that every parse starts with.
#pragma once

namespace zy {

struct PredefinedMacro {
    const char *name;
    const char *value;
    bool onlyRestricted;  // defined in the restricted shell alone
};

constexpr int PREDEFINED_MACROS = 10;
extern const PredefinedMacro predefinedMacros[PREDEFINED_MACROS];

}  // namespace zy
