#include "decl/construction.h"

#include "decl/aggregates.h"
#include "decl/arrayInfo.h"
#include "decl/funcInfo.h"
#include "expr/evaluator.h"
#include "expr/members.h"
#include "expr/nodes.h"
#include "expr/objects.h"
#include "expr/operators.h"
#include "expr/scope.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "stmt/parseStack.h"
#include "stmt/parser.h"

namespace zy {

bool isLivingObject(const TypeInfo *symbol) {
    return symbol->dataType == DT_STRUCT && symbol->structLink && hasLife(symbol->structLink) &&
           (symbol->kind == KIND_SIMPLE || symbol->kind == KIND_C_ARRAY ||
            symbol->kind == KIND_ARRAY);
}

namespace {

// The constructor that makes the object, or those that make its members, have to do without
// arguments.
bool checkDefault(const StructInfo *info, const char *object, bool isDeferredArray) {
    const TypeInfo *constructor = info->constructor;
    if (!constructor) {
        for (const TypeInfo *member = info->members; member; member = member->next)
            if (info->ownsObjects && livesAsMember(member) &&
                !checkDefault(member->structLink, object, isDeferredArray))
                return false;
        return true;
    }
    const char *type = plainTagName(info->tag), *name = constructor->name->text;
    if (takesArguments(constructor) && isDeferredArray)
        parseError(
            "the constructor %s::%s() of the deferred-shape array of struct/class has argument",
            type, name);
    else if (takesArguments(constructor))
        parseError("%s not initialized by constructor %s::%s() with argument", object, type, name);
    else if (isHiddenMember(info, constructor))
        parseError("access private member of constructor %s:%s()", type, name);
    return !errorFlag;
}

}  // namespace

bool checkConstruction(const TypeInfo *symbol) {
    bool isDeferredArray = symbol->arrayLink && symbol->arrayLink->shapeKind != SHAPE_FIXED;
    const char *object = symbol->name ? symbol->name->text : plainTagName(symbol->structLink->tag);
    return checkDefault(symbol->structLink, object, isDeferredArray);
}

bool checkMemberConstruction(const StructInfo *info, const TypeInfo *first) {
    for (const TypeInfo *member = first; info->ownsObjects && member; member = member->next)
        if (livesAsMember(member) && !checkConstruction(member))
            return false;
    return true;
}

namespace {

void noteLivingObject(const TypeInfo *symbol) {
    if (symbol->level > FILE_LEVEL && symbol->storage != STORAGE_STATIC)
        currentBlock->hasObjects = 1;
}

// While the text is parsed nothing else of it runs.
void runNow(TypeInfo *symbol, ExprNode *chain) {
    unsigned char status = runStatus, wasExecuting = executing;
    runStatus = RUN_CLEAN;
    if (chain)
        runNested(chain);
    else
        constructVariable(symbol);
    executing = wasExecuting;
    if (runStatus == RUN_ERROR)
        parseError("execute constructor '::%s()' failed", plainTagName(symbol->structLink->tag));
    if (runStatus == RUN_CLEAN)
        runStatus = status;
}

}  // namespace

void constructAtParse(TypeInfo *symbol) {
    if (symbol->kind == KIND_C_ARRAY && !symbol->arrayLink) {
        parseError("dimension missing for array ::%s", symbol->name->text);
        return;
    }
    allocateStorage(symbol);
    runNow(symbol, nullptr);
}

void constructAtRun(TypeInfo *symbol) {
    noteLivingObject(symbol);
    StmtNode *statement = appendPending(pendingBefore, STMT_CONSTRUCT);
    statement->operandC.symbols = symbol;
}

// ---- Initialisers -----------------------------------------------------------------------------

namespace {

// A call of the constructor of the variable's class becomes the call on the variable.
bool callOnVariable(TypeInfo *symbol, ExprNode *tree) {
    TypeInfo *constructor = symbol->structLink->constructor;
    bool isCall = constructor && tree->kind == NODE_OPERATOR && tree->op == OP_CALL &&
                  variableOf(tree->left) == constructor && symbol->kind == KIND_SIMPLE;
    if (!isCall)
        return false;
    int index = memberIndex(symbol->structLink, constructor);
    deleteNode(tree->left);
    tree->left = newOperatorNode(OP_MEMBER, newSymbolNode(symbol), newIntNode(index));
    return true;
}

}  // namespace

bool initialiseObjectAtRun(TypeInfo *symbol, ExprNode *assignment) {
    if (!isLivingObject(symbol) || symbol->kind != KIND_SIMPLE)
        return false;
    noteLivingObject(symbol);
    ExprNode *tree = assignment->right;
    assignment->right = nullptr;
    deleteNode(assignment);
    bool isCall = callOnVariable(symbol, tree);
    StmtNode *statement = appendPending(pendingBefore, STMT_CONSTRUCT);
    statement->operandA.tree = isCall ? nullptr : newSymbolNode(symbol);
    statement->operandB.tree = tree;
    statement->operandC.symbols = symbol;
    if (!errorFlag)
        statement->chain = compileChain(tree, nullptr, false);
    return true;
}

void noteLifeAtRun(TypeInfo *symbol) {
    if (!isLivingObject(symbol))
        return;
    noteLivingObject(symbol);
    StmtNode *statement = appendPending(pendingBefore, STMT_CONSTRUCT);
    statement->operandA.tree = newSymbolNode(symbol);
    statement->operandC.symbols = symbol;
}

bool constructByCall(TypeInfo *symbol, ExprNode *tree) {
    if (!isLivingObject(symbol))
        return false;
    beginLife(symbol);
    if (!callOnVariable(symbol, tree))
        return false;
    runNow(symbol, compileChain(tree, nullptr, false));
    return true;
}

}  // namespace zy
