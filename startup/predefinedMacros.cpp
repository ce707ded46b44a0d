#include "startup/predefinedMacros.h"

namespace zy {

const PredefinedMacro predefinedMacros[PREDEFINED_MACROS] = {
    {"_ZY_", "1", false},        {"__STDC__", "1", false}, {"__STDC_VERSION__", "199901", false},
    {"_GLOBALDEF_", "1", false}, {"_SZY_", "1", true},     {"_WIN32_", "1", false},
    {"_WIN64_", "1", false},     {"_M64_", "1", false},    {"__x86_64__", "1", false},
    {"_ZYDLL_", "1", false},
};

}  // namespace zy
