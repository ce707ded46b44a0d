// Declarations of names outside the declaration parser.

#include "expr/scope.h"

namespace zy {

namespace {

Symbol *addPredefined(const char *text, int dataType) {
    NameEntry *name = lookupName(text);
    if (!name)
        name = addName(text);
    TypeInfo *symbol = name ? newTypeInfo() : nullptr;
    if (!symbol)
        return nullptr;
    symbol->name = name;
    symbol->level = SYSTEM_LEVEL;
    symbol->storage = STORAGE_GLOBAL;
    symbol->dataType = dataType;
    symbol->next = systemSymbols;
    systemSymbols = symbol;
    name->symbol = symbol;
    return symbol;
}

}  // namespace

Symbol *addPredefinedConstant(const char *name, Value *value) {
    Symbol *symbol = addPredefined(name, DT_CONSTANT);
    if (symbol)
        symbol->constant = value;
    return symbol;
}

Symbol *addSystemVariable(const char *name, int dataType, int slot) {
    Symbol *symbol = addPredefined(name, dataType);
    if (symbol)
        symbol->index = slot;
    return symbol;
}

void releaseScopes() {
    while (TypeInfo *symbol = systemSymbols) {
        systemSymbols = symbol->next;
        releaseTypeInfo(symbol);
    }
    if (baseFrame) {
        releaseFrame(baseFrame);
        baseFrame = nullptr;
    }
}

}  // namespace zy
