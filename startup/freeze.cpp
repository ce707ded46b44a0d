#include "expr/nodes.h"
#include "expr/scope.h"
#include "startup/startup.h"

namespace zy {

namespace {

constexpr const char *frozenNames[] = {"_path", "_fpath", "_lpath", "_ppath", "_ipath", "_user",
                                       "_home", "_shell", "_cwd",   "_cwdn",  "_host"};

}  // namespace

void freezeSystemVariables() {
    for (const char *text : frozenNames) {
        NameEntry *name = lookupName(text);
        Symbol *symbol = name ? name->symbol : nullptr;
        if (!symbol || symbol->dataType == DT_CONSTANT)
            continue;
        symbol->dataType = DT_CONSTANT;
        symbol->constant = newZeroValue(DT_STRING);
    }
}

}  // namespace zy
