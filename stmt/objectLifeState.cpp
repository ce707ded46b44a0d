#include "stmt/objectLifeState.h"

namespace zy {

std::vector<TypeInfo *> staticObjects;
std::unordered_map<void *, uint32_t> heapObjects;

}  // namespace zy
