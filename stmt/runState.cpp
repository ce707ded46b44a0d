// State of the statement loop.

#include "stmt/execute.h"

namespace zy {

bool stepMode;
bool runEnded;
bool exitRequested;

const ScopeFrame *functionNameFrame;
VarCell *functionNameCell;

}  // namespace zy
