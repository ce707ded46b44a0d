// Layout of aggregates: where the members of a finished body lie in an object, as a C compiler for
// the platform places them, since scripts exchange objects with native code.
#pragma once

#include "decl/structInfo.h"

namespace zy {

// Places the members, and sets the aggregate's size. Messages for members that can't be placed.
void layOutMembers(StructInfo *info);

// Bytes that a member takes in an object, and the multiple at which it begins. 0 after a message.
int memberSize(const TypeInfo *member);
int memberAlign(const TypeInfo *member);

// Whether a member has bytes of its own in each object of the struct or union.
bool takesRoom(const TypeInfo *member, AggregateKind aggregateKind);

// A bit-field without a name.
bool isPad(const TypeInfo *member);
// A member that is the name of a value: an enumerator.
bool isEnumerator(const TypeInfo *member);

}  // namespace zy
