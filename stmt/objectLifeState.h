// Cells of stmt/objectLife.cpp; stmt/objectLifeState.cpp defines them.
#pragma once

#include <vector>

#include "decl/typeInfo.h"

namespace zy {

// Static locals and members that have been constructed, in that order.
extern std::vector<TypeInfo *> staticObjects;

}  // namespace zy
