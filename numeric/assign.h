// record header: assignment through lvalues. A target is a tree; the value has a type of its own,
// which each target converts to in its way.
#pragma once

#include "expr/scope.h"
#include "expr/value.h"

namespace zy {

// Stores a value, read by operandOf, through any lvalue. A value that was popped goes back on the
// stack if the node that runs is `=`.
void assignValue(ExprNode *target, ExprNode *value);

// Where a scalar is stored decides the words of a warning, and what a NaN leaves in an integer.
enum class StorePlace { VARIABLE, ELEMENT };

// Stores at an address as an object of that scalar, text or pointer type. False, with nothing
// stored, for a type that isn't one.
bool storeScalar(void *address, int type, const Value *value, StorePlace place);
// The same into a variable's cell, by the cell's type.
bool storeInCell(VarCell *cell, const Value *value);
// What a pointer to function in memory is: the declaration that it points to.
void storeFunctionPointer(void *address, const Value *value);
// By the pointed-to type of a pointer's data type; a message for one that can't be stored through.
void storeByPointerType(void *address, const Value *value, int pointerType);
// Room for what is stored through a NULL pointer, which the variable then points to; after a
// warning. NULL for a pointer that isn't NULL, or points to nothing that has a size.
void *allocateFor(TypeInfo *symbol);
// A variable's value through a pointer.
void storeCellByPointer(void *address, const VarCell *cell, int pointerType);

}  // namespace zy
