// A function that is called before anything is known of it. It stands at file scope from then on;
// at the end of the parse its body must have been found.

#include "decl/funcInfo.h"
#include "expr/parserParts.h"
#include "stmt/parseStack.h"

namespace zy {

void makeImplicitFunction(NameEntry *name) {
    TypeInfo *symbol = globalBlock ? newTypeInfo() : nullptr;
    if (!symbol)
        return;
    symbol->name = name;
    symbol->kind = KIND_FUNCTION;
    symbol->used = 1;
    symbol->functionLink = newFuncInfo(symbol);
    if (symbol->functionLink) {
        symbol->functionLink->returnType = DT_INT;
        symbol->functionLink->parameterLevel = FILE_LEVEL + 1;
    }
    TypeInfo **end = &globalBlock->symbols();
    for (; *end; end = &(*end)->next)
        symbol->index = static_cast<uint16_t>((*end)->index + 1);
    *end = symbol;
    globalBlock->symbolCount++;
    name->symbol = symbol;
    allocateStorage(symbol);
}

}  // namespace zy
