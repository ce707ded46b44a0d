// The routine of a node of a chain. An operator's stands in its row and goes by the operator's
// code, an operand's pushes it and goes by what the operand is.

#include "expr/routineChoice.h"

#include "expr/operandRoutines.h"
#include "expr/operators.h"

namespace zy {

namespace {

NodeRoutine operandRoutine(const ExprNode *leaf) {
    if (leaf->type == DT_TAG)
        return pushTag;
    if (leaf->type != DT_NAME)
        return pushConstant;
    const TypeInfo *symbol = leaf->payload.symbol;
    if (symbol->qualifiers & QUALIFIER_BUILTIN)
        return pushNamedConstant;
    return symbol->kind == KIND_FUNCTION ? pushFunctionName : pushVariable;
}

}  // namespace

NodeRoutine routineFor(ExprNode *node) {
    switch (node->kind) {
        case NODE_OPERATOR: return operatorRoutine(node->op);
        case NODE_VALUE: return operandRoutine(node);
        case NODE_LIST: return passOver;
        default: return refuseNode;
    }
}

}  // namespace zy
