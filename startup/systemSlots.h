// record header: what a store to a system variable calls.
#pragma once

#include "expr/scope.h"

namespace zy {

// The global variables that hosts and scripts declare lie behind these.
constexpr int LAST_SYSTEM_SLOT = 68;

// What the variable stands for follows its new value; startup/systemVariables.cpp has the effects.
void onSystemVariableSet(int slot, Symbol *symbol);         // string variables
void onIntegerSystemVariableSet(int slot, Symbol *symbol);  // int variables

}  // namespace zy
