// The routines that rows of expr/operators.inc name: each runs one operator node of the chain. The
// families are in expr/scalarFamilies.h and expr/compoundFamilies.h.
#pragma once

#include "expr/value.h"

namespace zy {

void undefinedOperation(ExprNode *node);
// A call of a script function; stmt/calls.cpp has it.
void callOperator(ExprNode *node);

// Truth and order of what isn't a number alone (expr/logicOperators.cpp).
void notOperator(ExprNode *node);
void xorOperator(ExprNode *node);
void shortCircuit(ExprNode *node);

// Addresses (expr/pointerOperators.cpp).
void pointerArithmetic(ExprNode *node);
void pointerDifferenceOperator(ExprNode *node);
void indirection(ExprNode *node);
void addressOperator(ExprNode *node);
void arrayReference(ExprNode *node);

// What a return leaves behind (stmt/objectLife.cpp).
void leaveObjects(ExprNode *node);

// `.`, `->` and `::` (expr/memberAccess.cpp).
void memberOperator(ExprNode *node);
// The storage of an array whose declaration runs (numeric/arrayStorage.cpp).
void arrayBoundsOperator(ExprNode *node);

// Stores (expr/storeOperators.cpp).
void assignOperator(ExprNode *node);
void incrementOperator(ExprNode *node);

// The others (expr/structuralOperators.cpp).
void castOperator(ExprNode *node);
void commaOperator(ExprNode *node);
void evalConditional(ExprNode *node);
void newOperator(ExprNode *node);
void sizeofOperator(ExprNode *node);
void elementTypeOperator(ExprNode *node);
void evaluateText(ExprNode *node);

// Formatted output (rtlib/printfOperators.cpp).
void printOperator(ExprNode *node);
void fprintfOperator(ExprNode *node);
void sprintfOperator(ExprNode *node);
void vprintfOperator(ExprNode *node);
void vfprintfOperator(ExprNode *node);
void vsprintfOperator(ExprNode *node);

// Arguments behind `...` (rtlib/variableArguments.cpp).
void vaStartOperator(ExprNode *node);
void vaArgOperator(ExprNode *node);
void vaCountOperator(ExprNode *node);
void vaArrayOperator(ExprNode *node);

// Functions of the script that the system calls (embed/newHandler.cpp).
void setNewHandlerOperator(ExprNode *node);

// The ends of a function and of a run (stmt/longjmp.cpp, embed/atExit.cpp).
void setjmpOperator(ExprNode *node);
void atexitOperator(ExprNode *node);

// Texts and memory, guarded by the size of arrays (rtlib/textOperators.cpp, memoryOperators.cpp).
void strcpyOperator(ExprNode *node);
void strncpyOperator(ExprNode *node);
void strcatOperator(ExprNode *node);
void strncatOperator(ExprNode *node);
void straddOperator(ExprNode *node);
void addStringOperator(ExprNode *node);
void toStringOperator(ExprNode *node);
void strtokOperator(ExprNode *node);
void fgetsOperator(ExprNode *node);
void getsOperator(ExprNode *node);
void strxfrmOperator(ExprNode *node);
void strftimeOperator(ExprNode *node);
void memsetOperator(ExprNode *node);
void memcpyOperator(ExprNode *node);
void freadOperator(ExprNode *node);
void fwriteOperator(ExprNode *node);

}  // namespace zy
