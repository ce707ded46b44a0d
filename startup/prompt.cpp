#include "startup/prompt.h"

#include "expr/evaluator.h"
#include "expr/nodeClasses.h"
#include "expr/nodes.h"
#include "expr/operators.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
#include "extern/include/embedzy.h"
#include "numeric/convert.h"
#include "startup/startupState.h"
#include "startup/systemVariables.h"
#include "startup/userData.h"
#include "stmt/stmtNode.h"

namespace zy {

namespace {

ExprNode *variableLeaf(const char *name) {
    NameEntry *entry = lookupName(name);
    return entry && entry->symbol ? newSymbolNode(entry->symbol) : nullptr;
}

ExprNode *textConstant(const char *text) {
    ExprNode *constant = newZeroValue(DT_STRING);
    if (constant)
        constant->payload.text = copyString(text);
    return constant;
}

}  // namespace

void makePromptExpression(VarCell *promptCell) {
    freePrompt();
    if (e_lang->restricted) {
        setCellText(promptCell, isAdministrator() ? "safezy# " : "safezy> ");
        return;
    }
    ExprNode *folder = variableLeaf("_cwd");
    if (!folder)
        return;
    ExprNode *parts = nullptr;
    appendListCell(parts, folder);
    appendListCell(parts, textConstant(isAdministrator() ? "# " : "> "));
    promptExpression = newOperatorNode(OP_STRADD, parts, nullptr);
}

void keepPromptExpression() {
    freePrompt();
    const StmtNode *statement = currentContext->statement;
    const ExprNode *tree =
        statement && statement->kind == STMT_EXPRESSION ? statement->operandA.tree : nullptr;
    const TypeInfo *target =
        tree && isOperator(tree) && tree->op == OP_ASSIGN ? variableOf(tree->left) : nullptr;
    if (target && target->level == SYSTEM_LEVEL && target->index == SLOT_PROMPT)
        promptExpression = copyNode(tree->right);
}

void evalPrompt() {
    if (!promptExpression)
        return;
    runNested(compileChain(promptExpression, nullptr, true));
    Value *value = popValue();
    if (!value)
        return;
    setCellText(systemCell(SLOT_PROMPT), static_cast<const char *>(pointerOf(value)));
    deleteValue(value);
}

}  // namespace zy

void freePrompt() {
    zy::deleteNode(zy::promptExpression);
    zy::promptExpression = nullptr;
}

// A hosted instance has no console whose prompt could change.
void nullPrompt() { freePrompt(); }
