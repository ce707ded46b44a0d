// Objects that are declared: the calls that construct them, and what is refused. That an object
// lives, and so is to be destroyed, is noted in its variable's cell when it is constructed.
#pragma once

#include "decl/typeInfo.h"

namespace zy {

struct ExprNode;

// A variable of a class with a constructor or destructor, or an array of such objects.
bool isLivingObject(const TypeInfo *symbol);

// Whether an object can be made without an initialiser; a message if not. The same for those among
// the members of an aggregate that a list doesn't name, from that one on.
bool checkConstruction(const TypeInfo *symbol);
bool checkMemberConstruction(const StructInfo *info, const TypeInfo *first);

// Constructs the object now, or when the declaration runs.
void constructAtParse(TypeInfo *symbol);
void constructAtRun(TypeInfo *symbol);

// An initialiser that is a call of the object's constructor is run on the variable itself: the call
// is rewritten, in place. An object that lives gets the value by a statement of its own, so that it
// is known to live; true if that was added, with the assignment taken.
bool initialiseObjectAtRun(TypeInfo *symbol, ExprNode *assignment);
// That an object which a list initialises lives is noted when its declaration runs.
void noteLifeAtRun(TypeInfo *symbol);
// The same while parsing; true if the variable has its value. The tree stays the caller's.
bool constructByCall(TypeInfo *symbol, ExprNode *tree);

}  // namespace zy
