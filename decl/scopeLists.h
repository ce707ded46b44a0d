// Lists of declarations in their order: those of a block, a parameter list, a member list.
#pragma once

#include "decl/typeInfo.h"

namespace zy {

TypeInfo *findInList(TypeInfo *list, const NameEntry *name);
bool isInList(const TypeInfo *list, const TypeInfo *symbol);

// Appends a record and gives it its index. A block whose list it is counts it, and at file scope
// the name is bound to it.
void appendSymbol(TypeInfo **list, TypeInfo *symbol);
// The system list, whose newest record stands first.
void prependGlobal(TypeInfo *symbol);
// Takes back an append; the record is retired with the program.
void withdrawSymbol(TypeInfo **list, TypeInfo *symbol);

}  // namespace zy
