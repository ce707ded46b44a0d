// The function half of the declaration parser: parameter lists, and the entry into a body.
#pragma once

#include "decl/funcInfo.h"

namespace zy {

// With the ( consumed: reads the parameter list, the ) behind it and what closes the declarator.
// `typeInfo` gets kind 11 and its FuncInfo, whose formals stand at `level` + 1. starLevel is the
// pending function level: 1 means that the declarator (*f(a))(b) is still open.
void parseFunctionDeclarator(TypeInfo *typeInfo, int returnType, int level, int &starLevel);

// If a { follows and no error was found: enters the body of the function, true. Otherwise the token
// is pushed back.
bool functionPrologue(FuncInfo *function, TypeInfo *classTag);

// Each script has a main of its own: main and WinMain of file scope get the name of the source.
void renameMainFunction(TypeInfo *typeInfo);

}  // namespace zy
