// The function half of the declaration parser: parameter lists, what a further declaration may
// change, and the entry into a body.
#pragma once

#include "decl/funcInfo.h"

namespace zy {

// With the ( consumed: reads the parameter list, the ) behind it and what closes the declarator.
// `info` gets kind 11 and its FuncInfo, whose formals stand one level above `level`; its kind at
// entry tells what the function returns. starLevel is the pending function level: 1 means that the
// declarator (*f(a))(b) is still open; it is 0 afterwards.
void parseFunctionDeclarator(TypeInfo *info, int returnType, int level, int &starLevel);

// A function is declared again by `fresh`, which is taken: compares the two and merges what the new
// declaration adds. The existing record; NULL after a message.
TypeInfo *redeclareFunction(TypeInfo *existing, TypeInfo *fresh);

// Reports what a further prototype of the same function changes.
void compareFunctions(const FuncInfo *fresh, const FuncInfo *old);

// If a { follows and no error was found: enters the body of the function, true. Otherwise the token
// is pushed back.
bool functionPrologue(TypeInfo *function, bool isTypedef);

// Each script has a main of its own: main and WinMain of file scope get the name of the source.
void renameMainFunction(TypeInfo *info);
// The name to print: main for such a function.
const char *functionText(const TypeInfo *info);

}  // namespace zy
