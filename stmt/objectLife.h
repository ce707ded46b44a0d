// The life of objects: construction, and destruction on every road out of a scope. A variable's
// cell knows whether its object lives, so that a road which skips the declaration destroys nothing,
// and none destroys twice.
#pragma once

#include "stmt/stmtNode.h"

namespace zy {

struct FuncInfo;

// Those of a block that is left; of the outermost one of a function the parameters too.
void destroyInBlock(const StmtNode *block, const FuncInfo *function);
// The end of a function's body destroys its parameters.
void noteParameters(StmtNode *body, const FuncInfo *function);
// Whether a return at this place of the text leaves objects behind.
bool returnDestroys(const FuncInfo *function);
// Puts their destruction in front of the value of a return. A variable that is itself the value is
// not destroyed: it passes to the caller.
void addDestruction(StmtNode *returnStatement);
// Objects of static duration, when the program has ended.
void destroyStaticObjects();
void forgetStaticObjects();

}  // namespace zy
