#include "decl/scopeLists.h"

#include <initializer_list>

#include "expr/scope.h"
#include "stmt/parseStack.h"

namespace zy {

TypeInfo *findInList(TypeInfo *list, const NameEntry *name) {
    while (list && list->name != name)
        list = list->next;
    return list;
}

bool isInList(const TypeInfo *list, const TypeInfo *symbol) {
    while (list && list != symbol)
        list = list->next;
    return list != nullptr;
}

namespace {

StmtNode *blockOfList(TypeInfo **list) {
    for (StmtNode *block : {currentBlock, globalBlock})
        if (block && list == &block->symbols())
            return block;
    return nullptr;
}

}  // namespace

void appendSymbol(TypeInfo **list, TypeInfo *symbol) {
    TypeInfo **tail = list;
    symbol->index = 0;
    for (; *tail; tail = &(*tail)->next)
        symbol->index = static_cast<uint16_t>((*tail)->index + 1);
    *tail = symbol;
    symbol->next = nullptr;
    if (StmtNode *block = blockOfList(list))
        block->symbolCount++;
    if (symbol->level <= FILE_LEVEL && symbol->name)
        symbol->name->symbol = symbol;
}

void prependGlobal(TypeInfo *symbol) {
    symbol->index = static_cast<uint16_t>(baseFrame ? baseFrame->slotCount : 0);
    symbol->next = systemSymbols;
    systemSymbols = symbol;
    if (symbol->name)
        symbol->name->symbol = symbol;
}

void withdrawSymbol(TypeInfo **list, TypeInfo *symbol) {
    removeSymbol(symbol, list);
    if (StmtNode *block = blockOfList(list))
        block->symbolCount--;
}

}  // namespace zy
