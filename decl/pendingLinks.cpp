// Stand-ins for what other rooms are about to have; theirs take precedence.

#include "decl/funcInfo.h"
#include "expr/evaluator.h"
#include "expr/guards.h"
#include "expr/parser.h"
#include "expr/select.h"
#include "expr/thread.h"
#include "numeric/assign.h"
#include "stmt/parser.h"

namespace zy {

__attribute__((weak)) ExprNode *parseAssignmentExpression(bool) { return nullptr; }
__attribute__((weak)) ExprNode *bindOperator(ExprNode *node) { return node; }
__attribute__((weak)) ExprNode *compileChain(ExprNode *, ExprNode *, bool) { return nullptr; }
__attribute__((weak)) void checkAssignment(ExprNode *, ExprNode *) {}
__attribute__((weak)) void runNested(ExprNode *) {}
__attribute__((weak)) void assignValue(ExprNode *, ExprNode *) {}
__attribute__((weak)) StmtNode *appendPending(StmtNode *&, StmtKind) { return nullptr; }
__attribute__((weak)) StmtNode *openFunctionBody(FuncInfo *) { return nullptr; }

}  // namespace zy
