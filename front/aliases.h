// Aliases: words that stand for a command text when they begin a line of the console. The table has
// the shape of the keyword table.
#pragma once

#include "front/names.h"

namespace zy {

struct ExprNode;
using Value = ExprNode;

struct AliasEntry {
    AliasEntry *next;
    uint16_t hash;
    char *name;   // owned
    char *value;  // owned; may be NULL
};

extern AliasEntry *aliasTable[BUCKET_COUNT];

AliasEntry *lookupAlias(const char *name);          // NULL if there is none
int setAlias(const char *name, const char *value);  // 1: replaced, 0: new
int removeAlias(const char *name);                  // 1: unknown, 0: removed
int listAliases();                                  // on standard output; the count
void releaseAliases();

// The built-in alias(name, value): removes the alias without a value. -1 without a name.
int aliasFunction(Value *name, Value *replacement);

// Replaces the word at the start of lineBuffer as long as it is an alias.
void expandAlias();

}  // namespace zy
