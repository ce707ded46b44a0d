// Addresses of what a script declares, for the host.

#include "decl/funcInfo.h"
#include "embed/kernel.h"
#include "expr/evaluator.h"
#include "expr/nodes.h"
#include "expr/scope.h"

namespace zy {

namespace {

bool hasAddress(const Symbol *symbol) {
    bool isType = symbol->storage == STORAGE_TYPEDEF || symbol->dataType == DT_TAG ||
                  symbol->dataType == DT_ENUM;
    return symbol->storageCell && !isType && !(symbol->qualifiers & QUALIFIER_BUILTIN);
}

void *evaluatedAddress(Symbol *symbol) {
    ExprNode *leaf = newSymbolNode(symbol);
    Value *pointer = addressOf(leaf);
    deleteNode(leaf);
    void *address = pointer ? pointer->payload.p : nullptr;
    if (pointer)
        recycleValue(pointer);
    return address;
}

// The data of a variable, the handle of a function; NULL for what has no address.
void *addressOfSymbol(Symbol *symbol) {
    if (symbol->dataType == DT_CONSTANT)
        return symbol->constant ? &symbol->constant->payload : nullptr;
    if (!hasAddress(symbol))
        return nullptr;
    if (symbol->kind == KIND_FUNCTION)
        return symbol->functionLink && symbol->functionLink->body ? symbol : nullptr;
    int type = dataTypeOf(symbol);
    if (type == DT_CARRAY || type == DT_ARRAY || type == DT_P_ARRAY)
        return findVarCell(symbol)->data.p;
    return evaluatedAddress(symbol);
}

}  // namespace

}  // namespace zy

void *Zy_GlobalSymbolAddrByName_kernel(void *, const char *name) {
    zy::NameEntry *entry = name ? zy::lookupName(name) : nullptr;
    return entry && entry->symbol ? zy::addressOfSymbol(entry->symbol) : nullptr;
}
