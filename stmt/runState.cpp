// State of the statement loop.

#include "stmt/execute.h"

namespace zy {

bool stepMode;
bool runEnded;
bool runCut;
int endingDepth;
bool hasEndStatus;
int endStatus;
bool exitRequested;
int runDepth;
JumpRecord *pendingJump;
ExecContext *pendingTarget;
int pendingJumpDepth;

const ScopeFrame *functionNameFrame;
VarCell *functionNameCell;

}  // namespace zy
