#include "startup/prompt.h"

#include "expr/operators.h"
#include "extern/include/embedzy.h"
#include "startup/startupState.h"
#include "startup/systemVariables.h"
#include "startup/userData.h"

namespace zy {

namespace {

ExprNode *variableLeaf(const char *name) {
    NameEntry *entry = lookupName(name);
    ExprNode *leaf = entry && entry->symbol ? newValue() : nullptr;
    if (!leaf)
        return nullptr;
    leaf->kind = NODE_VALUE;
    leaf->type = DT_NAME;
    leaf->payload.symbol = entry->symbol;
    leaf->payload2.name = entry;
    return leaf;
}

ExprNode *textConstant(const char *text) {
    ExprNode *constant = newZeroValue(DT_STRING);
    if (constant)
        constant->payload.text = copyString(text);
    return constant;
}

void releasePrompt(ExprNode *node) {
    if (!node)
        return;
    if (node->kind == NODE_OPERATOR)
        for (ExprNode *operand : {node->left, node->right, node->third, node->fourth})
            releasePrompt(operand);
    deleteValue(node);
}

}  // namespace

void makePromptExpression(VarCell *promptCell) {
    freePrompt();
    if (e_lang->restricted) {
        setCellText(promptCell, isAdministrator() ? "safezy# " : "safezy> ");
        return;
    }
    ExprNode *folder = variableLeaf("_cwd");
    ExprNode *node = folder ? newValue() : nullptr;
    if (!node)
        return;
    node->kind = NODE_OPERATOR;
    node->op = OP_STRADD;
    node->left = folder;
    node->right = textConstant(isAdministrator() ? "# " : "> ");
    node->third = node->fourth = nullptr;
    promptExpression = node;
}

}  // namespace zy

void freePrompt() {
    zy::releasePrompt(zy::promptExpression);
    zy::promptExpression = nullptr;
}

// A hosted instance has no console whose prompt could change.
void nullPrompt() { freePrompt(); }
