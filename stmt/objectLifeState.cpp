#include "stmt/objectLifeState.h"

namespace zy {

std::vector<TypeInfo *> staticObjects;

}  // namespace zy
