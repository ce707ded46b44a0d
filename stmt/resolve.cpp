#include "stmt/resolve.h"

#include <cstring>

#include "decl/funcInfo.h"
#include "decl/structInfo.h"
#include "expr/scope.h"
#include "front/lexerState.h"
#include "front/names.h"
#include "instance/report.h"

namespace zy {

namespace {

// Tags that the parser has named itself are shown by the name that the script knows.
const char *shownTag(const char *name) {
    constexpr char prefix[] = "_zy_";
    return strncmp(name, prefix, sizeof prefix - 1) == 0 ? name + sizeof prefix - 1 : name;
}

bool isUnresolvedFunction(const TypeInfo *symbol) {
    return symbol->kind == KIND_FUNCTION && symbol->used && symbol->functionLink &&
           !symbol->functionLink->body;
}

void reportMissing(const TypeInfo *symbol) {
    const char *name = symbol->name->text;
    if (symbol->storage == STORAGE_EXTERN)
        plainError("extern function '%s()' not defined", name);
    else
        plainError("function '%s()' not defined", name);
    parseOk = 0;
    errorFlag = 1;
}

// In a block or function: the definition may still come.
void warnOfMissing(const TypeInfo *symbol) {
    bool inSource = fileMode || stringMode;
    if (!inSource || warningsAt(3))
        parseWarning("function %s() not defined before ", symbol->name->text);
}

void warnOfUndefined(const TypeInfo *symbol) {
    const char *name = symbol->name->text;
    const StructInfo *tag = symbol->structLink;
    if (symbol->dataType == DT_TAG && tag && tag->size == 0 && warningsAt(4))
        plainWarning("struct '%s' not defined", shownTag(name));
    else if (symbol->dataType == DT_ENUM && tag && !tag->members && warningsAt(1))
        plainWarning("enum '%s' not defined", shownTag(name));
    else if (symbol->storage == STORAGE_EXTERN && symbol->kind != KIND_FUNCTION &&
             !symbol->storageCell && warningsAt(4))
        plainWarning("extern variable '%s' not defined", name);
}

}  // namespace

bool resolveFunctions(TypeInfo *&list, bool isGlobal) {
    for (TypeInfo *symbol = list; symbol;) {
        TypeInfo *next = symbol->next;
        if (!symbol->name) {
            symbol = next;
            continue;
        }
        if (!isUnresolvedFunction(symbol)) {
            warnOfUndefined(symbol);
        } else if (!isGlobal) {
            warnOfMissing(symbol);
        } else {
            if (continueWithFunctionFile(symbol))
                return true;
            reportMissing(symbol);
        }
        symbol = next;
    }
    return false;
}

}  // namespace zy
