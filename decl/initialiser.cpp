// Initial values of scalars and pointers.

#include "decl/initialiser.h"

#include "decl/funcInfo.h"
#include "expr/evaluator.h"
#include "expr/guards.h"
#include "expr/nodes.h"
#include "expr/operators.h"
#include "expr/parser.h"
#include "expr/select.h"
#include "expr/thread.h"
#include "front/lexer.h"
#include "instance/report.h"
#include "numeric/assign.h"
#include "stmt/parser.h"

namespace zy {

namespace {

bool isTypedef(const TypeInfo *symbol) {
    if (symbol->storage != STORAGE_TYPEDEF)
        return false;
    parseError("initialize typedefed variable '%s'", symbol->name->text);
    return true;
}

// A pointer of a restricted script must not point where it likes.
bool isRestrictedPointer(const TypeInfo *symbol) {
    if (e_lang->restricted != 1 || symbol->kind == KIND_C_ARRAY || !isPointer(symbol->dataType))
        return false;
    parseError("lvalue of pointer type is restricted in safe shell");
    return true;
}

bool braceFollows() { return lineBuffer[linePos] == '{'; }

// Lists are for arrays and aggregates.
bool takesList(const TypeInfo *symbol) {
    bool takes = symbol->kind == KIND_C_ARRAY || symbol->kind == KIND_ARRAY ||
                 (symbol->kind == KIND_SIMPLE && symbol->dataType == DT_STRUCT);
    if (!takes)
        parseError("initializer starting with '{'");
    return takes;
}

void refuseList(const TypeInfo *symbol) {
    parseError("'%s' cannot be initialized by a list", symbol->name->text);
}

// ---- Now --------------------------------------------------------------------------------------

// Keeps what the evaluator moves while an expression of the text being parsed runs.
class ParseTimeRun {
public:
    ParseTimeRun() : status(runStatus), wasExecuting(executing), stack(currentContext->stack) {
        runStatus = RUN_CLEAN;
    }
    ~ParseTimeRun() {
        while (currentContext->stack && currentContext->stack != stack)
            deleteValue(popValue());
        executing = wasExecuting;
        if (runStatus == RUN_CLEAN)
            runStatus = status;
    }
    // Whether the expression left a value, which a constant doesn't.
    bool hasValue() const { return currentContext->stack != stack; }

private:
    unsigned char status;
    unsigned char wasExecuting;
    Value *stack;
};

const TypeInfo *calledFunction(const ExprNode *tree) {
    bool isCall = tree->kind == NODE_OPERATOR && tree->op == OP_CALL && tree->left &&
                  tree->left->kind == NODE_VALUE && tree->left->type == DT_NAME;
    return isCall ? tree->left->payload.symbol : nullptr;
}

void refuseValue(const ExprNode *tree) {
    runStatus = RUN_CLEAN;
    parseOk = 0;
    parseError("invalid initializer");
    const TypeInfo *function = calledFunction(tree);
    if (function && function->functionLink && !function->functionLink->body)
        parseError("function %s() cannot be used as an initializer for variable of static duration",
                   function->name->text);
}

void evaluateInto(ExprNode *leaf, ExprNode *tree) {
    ParseTimeRun run;
    if (ExprNode *chain = compileChain(tree, nullptr, false))
        runNested(chain);
    if (runStatus != RUN_CLEAN)
        refuseValue(tree);
    else
        assignValue(leaf, tree);
}

}  // namespace

void parseStaticInitialiser(TypeInfo *symbol) {
    if (isTypedef(symbol) || isRestrictedPointer(symbol))
        return;
    peekAndExpand();
    if (braceFollows()) {
        if (takesList(symbol))
            refuseList(symbol);
        return;
    }
    ExprNode *tree = parseAssignmentExpression(false);
    if (!tree) {
        parseError("invalid rvalue for initialization of global/external/static/ variable");
        return;
    }
    ExprNode *leaf = newSymbolNode(symbol);
    checkAssignment(leaf, tree);
    if (!errorFlag)
        evaluateInto(leaf, tree);
    deleteNode(tree);
    deleteNode(leaf);
}

// ---- When the declaration runs ----------------------------------------------------------------

void parseAutoInitialiser(TypeInfo *symbol) {
    bool isLocalExtern = symbol->storage == STORAGE_EXTERN && e_lang->runInitialisers;
    if (isLocalExtern)
        parseError("initialize local extern '%s'", symbol->name->text);
    if (isLocalExtern || isTypedef(symbol))
        return;
    peekNonBlank();
    if (braceFollows() || symbol->kind == KIND_C_ARRAY) {
        if (takesList(symbol))
            refuseList(symbol);
        return;
    }
    ExprNode *tree = parseAssignmentExpression(false);
    if (!tree) {
        parseError("invalid rvalue for initialization");
        return;
    }
    ExprNode *assignment = bindOperator(newOperatorNode(OP_ASSIGN, newSymbolNode(symbol), tree));
    StmtNode *statement = appendPending(pendingBefore, STMT_EXPRESSION);
    statement->operandA.tree = assignment;
    if (!errorFlag)
        statement->chain = compileChain(assignment, nullptr, false);
}

}  // namespace zy
