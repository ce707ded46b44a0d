// Cells of stmt/objectLife.cpp; stmt/objectLifeState.cpp defines them.
#pragma once

#include <unordered_map>
#include <vector>

#include "decl/typeInfo.h"

namespace zy {

// Static locals and members that have been constructed, in that order.
extern std::vector<TypeInfo *> staticObjects;

// How many objects `new` has made at an address, for a delete that doesn't say it.
extern std::unordered_map<void *, uint32_t> heapObjects;

}  // namespace zy
