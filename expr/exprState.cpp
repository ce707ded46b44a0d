// State of the expressions' room: the records, contexts and frames of the running program.

#include "expr/context.h"
#include "expr/directCalls.h"
#include "expr/directPlaces.h"
#include "expr/freeBlocks.h"
#include "expr/recordPool.h"
#include "expr/scope.h"
#include "expr/value.h"

namespace zy {

Value *valueFreeList;
RecordPool<ExprNode, 256> valueRecords;
int recordCount;

ExecContext *currentContext;
ExecContext *evalContext;
ExecContext *baseContext;
ExecContext *allContexts;
ExecContext *readyQueue;

ClassContext *classContext;
ScopeFrame *baseFrame;
TypeInfo *systemSymbols;
TypeInfo *removedSymbols;
VarCell scratchCell;

FreeBlocks freeCells;
FreeBlocks freeShapes;
FreeBlocks freeFrames;
FreeBlocks freeContexts;
uint64_t frameKeys;

bool makesDirect = true;
const ExprNode *madeCall;
LostSubscripts lostSubscripts;

}  // namespace zy
