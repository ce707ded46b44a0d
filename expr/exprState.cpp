// State of the expressions' room: the contexts and frames of the running program.

#include "expr/scope.h"
#include "expr/value.h"

namespace zy {

ExecContext *currentContext;
ExecContext *evalContext;
ClassContext *classContext;
ScopeFrame *baseFrame;
TypeInfo *systemSymbols;

}  // namespace zy
