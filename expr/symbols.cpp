// Declarations of names outside the declaration parser: predefined names, and the removal and test
// of names by scripts.

#include <cstdlib>
#include <cstring>

#include "decl/funcInfo.h"
#include "expr/scope.h"
#include "instance/report.h"
#include "stmt/parseStack.h"

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

// ---- Removal ----------------------------------------------------------------------------------

namespace {

void unlinkSymbol(TypeInfo *symbol, TypeInfo **head) {
    while (*head && *head != symbol)
        head = &(*head)->next;
    if (!*head)
        return;
    *head = symbol->next;
    // The hooks of system variables know them by their slots, which therefore stay.
    if (symbol->level != SYSTEM_LEVEL)
        for (TypeInfo *later = *head; later; later = later->next)
            later->index--;
}

// The record stays for chains that name it.
void retire(TypeInfo *symbol) {
    symbol->next = removedSymbols;
    removedSymbols = symbol;
}

}  // namespace

void removeSymbol(TypeInfo *symbol, TypeInfo **head) {
    unlinkSymbol(symbol, head);
    bool isGlobal = symbol->level <= FILE_LEVEL && symbol->name;
    if (isGlobal && symbol->name->symbol == symbol)
        symbol->name->symbol = nullptr;
    retire(symbol);
}

void releaseRemovedSymbols() {
    TypeInfo **link = &removedSymbols;
    while (TypeInfo *symbol = *link) {
        if (symbol->level == SYSTEM_LEVEL) {
            link = &symbol->next;
            continue;
        }
        *link = symbol->next;
        releaseTypeInfo(symbol);
    }
}

namespace {

const char *functionName(const TypeInfo *function) {
    auto number = reinterpret_cast<uintptr_t>(function);
    if (number <= 100 || number == UINTPTR_MAX)
        return nullptr;
    const FuncInfo *info = function->functionLink;
    return info && info->body && function->name ? function->name->text : nullptr;
}

// The name that an argument of remvar() or isvar() gives; NULL for none.
const char *nameArgument(const Value *value) {
    switch (value->type) {
        case DT_P_FUNCTION:
        case DT_FUNCTION: return functionName(value->payload.symbol);
        case DT_STRING:
        case DT_P_CHAR:
        case DT_P_UCHAR:
        case DT_P_VOID: return value->payload.text;
        default: return nullptr;
    }
}

void takeText(Value *value) {
    if (value->type != DT_STRING)
        return;
    free(value->payload.text);
    value->payload.text = nullptr;
}

void removeGlobal(TypeInfo *symbol) {
    if (symbol->level == SYSTEM_LEVEL) {
        removeSymbol(symbol, &systemSymbols);
    } else if (globalBlock) {
        removeSymbol(symbol, &globalBlock->symbols());
        globalBlock->symbolCount--;
    }
}

int removeNamed(const char *text) {
    if (!text) {
        runWarning("remvar() removing null variable ");
        return -1;
    }
    NameEntry *name = lookupName(text);
    if (!name) {
        runWarning("'%s' in remvar() is undefined ", text);
        return 1;
    }
    if (!name->symbol) {
        runWarning("variable '%s' in remvar() is not a global or top level variable ", text);
        return 1;
    }
    removeGlobal(name->symbol);
    return 0;
}

enum VariableClass {
    NO_VARIABLE = 0,
    SYSTEM_CONSTANT = 1,
    SYSTEM_VARIABLE = 2,
    FILE_VARIABLE = 3,
    FILE_FUNCTION = 4,
};

VariableClass classOf(const char *text) {
    const NameEntry *name = text ? lookupName(text) : nullptr;
    const TypeInfo *symbol = name ? name->symbol : nullptr;
    if (!symbol)
        return NO_VARIABLE;
    if (symbol->level == SYSTEM_LEVEL)
        return symbol->dataType == DT_CONSTANT ? SYSTEM_CONSTANT : SYSTEM_VARIABLE;
    if (symbol->level == FILE_LEVEL)
        return symbol->kind == KIND_FUNCTION ? FILE_FUNCTION : FILE_VARIABLE;
    return NO_VARIABLE;
}

}  // namespace

int remvar(Value *value) {
    int status = removeNamed(nameArgument(value));
    takeText(value);
    return status;
}

int isvar(Value *value) {
    VariableClass found = classOf(nameArgument(value));
    takeText(value);
    return found;
}

void releaseScopes() {
    if (baseFrame)
        releaseFrame(baseFrame);
    baseFrame = nullptr;
    releaseScratchCell();
    releaseClassContext();
    releaseTypeInfoList(systemSymbols);
    releaseTypeInfoList(removedSymbols);
    releaseRetiredTags();
    systemSymbols = removedSymbols = nullptr;
}

}  // namespace zy
