// Stands in for what the selection and threading call and others write: the expression parser, the
// evaluator's choice of routines, its readers.

#include "expr/operators.h"
#include "expr/parser.h"
#include "expr/readers.h"
#include "expr/routineChoice.h"

namespace zy {

__attribute__((weak)) ExprNode *parseConditionalBranch() { return nullptr; }

__attribute__((weak)) NodeRoutine routineFor(ExprNode *node) {
    return node->kind == NODE_OPERATOR ? operatorRoutine(node->op) : undefinedOperation;
}

__attribute__((weak)) double readDoubleSlow(const Value *) { return 0; }

}  // namespace zy
