// record header: the system variables: script-visible variables whose names begin with `_` and whose change has an
// effect outside. They live in the base frame, each in a slot of its own.
#pragma once

#include "decl/typeInfo.h"
#include "expr/scope.h"

namespace zy {

enum SystemSlot {
    SLOT_WARNING = 39,
    SLOT_FORMATF = 40,
    SLOT_ERRNO = 42,
    SLOT_HOME = 44,
    SLOT_PATH = 47,
    SLOT_CWD = 48,
    SLOT_FPATH = 60,
    SLOT_LPATH = 61,
    SLOT_IPATH = 63,
    SLOT_CWDN = 67,
    SLOT_PROMPT = 68,
    SLOT_STATUS = 73,  // the last one with a start value
    SLOT_ARGC = 74,
    SLOT_ARGV = 75,
    SLOT_FUNC = 76,
};

// Makes the base frame with a cell for each system symbol, and gives the cells their start values.
void createSystemVariables();
void initSystemVariable(int slot, Symbol *symbol);

// To be called when a script has stored a new value: what this variable stands for follows.
void onSystemVariableSet(int slot, Symbol *symbol);         // string variables
void onIntegerSystemVariableSet(int slot, Symbol *symbol);  // int variables

// Lengthens a list of folders, unless it holds the text already.
void appendToPathVariable(int slot, const char *text);

// The name of the variable in a slot from SLOT_WARNING to SLOT_STATUS, else NULL.
const char *systemVariableName(int slot);

// The cell in a slot of the base frame.
VarCell *systemCell(int slot);

// Sets a string variable, or the cell of one, without that effect. NULL is a value.
void setSystemText(int slot, const char *text);
void setCellText(VarCell *cell, const char *text);

}  // namespace zy
