#include "stmt/resolve.h"

#include <cstring>

#include "decl/funcInfo.h"
#include "decl/functionFiles.h"
#include "decl/structInfo.h"
#include "expr/scope.h"
#include "front/lexerState.h"
#include "front/macros.h"
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
    return symbol->name && symbol->kind == KIND_FUNCTION && symbol->used && symbol->functionLink &&
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

// Opens the file of one of the functions that wait for a body. Those whose files are to come may
// bring others along, so nothing is missing before all have been read.
bool openFunctionFile(const TypeInfo *list) {
    for (const TypeInfo *symbol = list; symbol; symbol = symbol->next)
        if (isUnresolvedFunction(symbol) &&
            continueWithFunctionFile(symbol) == FUNCTION_FILE_OPENED)
            return true;
    return false;
}

// What has been told of: the message would come again at the next text.
void dropMissing(TypeInfo *&list, TypeInfo *symbol) {
    if (!fileMode && !stringMode)
        removeSymbol(symbol, &list);
}

void checkFunction(TypeInfo *&list, TypeInfo *symbol, bool isGlobal) {
    if (!isGlobal) {
        warnOfMissing(symbol);
    } else if (continueWithFunctionFile(symbol) == FUNCTION_FILE_NONE) {
        reportMissing(symbol);
        dropMissing(list, symbol);
    } else {  // its file is wrong
        parseOk = 0;
    }
}

}  // namespace

bool resolveFunctions(TypeInfo *&list, bool isGlobal) {
    if (isGlobal && openFunctionFile(list))
        return true;
    for (TypeInfo *symbol = list, *next = nullptr; symbol; symbol = next) {
        next = symbol->next;
        if (isUnresolvedFunction(symbol))
            checkFunction(list, symbol, isGlobal);
        else if (symbol->name)
            warnOfUndefined(symbol);
    }
    if (isGlobal && !e_lang->globalDef)  // files that the run loads see none of the script's macros
        freeMacros();
    return false;
}

}  // namespace zy
