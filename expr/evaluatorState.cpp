#include "expr/evaluatorState.h"

namespace zy {

int stepCounter;

}  // namespace zy
