// Initial values: the choice between a list and an expression, and what is done with either, now or
// when the declaration runs.

#include "decl/initialiser.h"

#include <cstring>

#include "decl/construction.h"
#include "decl/funcInfo.h"
#include "decl/initialiserList.h"
#include "expr/evaluator.h"
#include "expr/guards.h"
#include "expr/nodes.h"
#include "expr/objects.h"
#include "expr/operators.h"
#include "expr/parser.h"
#include "expr/scope.h"
#include "expr/select.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
#include "front/lexer.h"
#include "instance/report.h"
#include "numeric/assign.h"
#include "numeric/convert.h"
#include "numeric/initList.h"
#include "numeric/shape.h"
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
    if (!takes) {
        parseError("initializer starting with '{'");
        skipBraceList();
    }
    return takes;
}

bool isArrayVariable(const TypeInfo *symbol) {
    return symbol->kind == KIND_C_ARRAY || symbol->kind == KIND_ARRAY;
}

bool isObject(const TypeInfo *symbol) {
    return symbol->dataType == DT_STRUCT &&
           (symbol->kind == KIND_SIMPLE || isArrayVariable(symbol));
}

bool hasConstructor(const TypeInfo *symbol) {
    return isObject(symbol) && symbol->structLink && symbol->structLink->constructor;
}

// A text literal for a computational array of characters, where a list would stand.
bool textFollows(const TypeInfo *symbol) {
    int type = symbol->dataType;
    bool isText = symbol->kind == KIND_ARRAY && (type == DT_CHAR || type == DT_UCHAR);
    return isText && lineBuffer[linePos] == '"';
}

// A statement that gives the variable a list; `code` says who runs its values.
void prepareList(StmtNode *statement, TypeInfo *symbol, int code) {
    statement->operandA.tree = newSymbolNode(symbol);
    statement->operandB.tree = newOperatorNode(code);
}

// The list behind the =, in the statement.
bool readList(TypeInfo *symbol, StmtNode *statement) {
    if (isObject(symbol) && !hasConstructor(symbol))
        return parseStructList(symbol, statement, symbol->kind != KIND_SIMPLE);
    return parseBraceList(symbol, statement);
}

// A list told the size of an array that has storage already, but no elements.
void completeStorage(TypeInfo *symbol) {
    VarCell *cell = symbol->storageCell;
    if (!cell || !isArrayVariable(symbol) || cell->data.p)
        return;
    releaseShape(cell->shape);
    initCell(cell, symbol, symbol->kind);
}

// The chain of a list's values. Long lists have none: each value is evaluated when it is stored.
// Neither have objects that are constructed in the order of their elements.
ExprNode *threadList(const ExprNode *list, const TypeInfo *symbol) {
    int count = hasConstructor(symbol) ? CHAINED_VALUES_MAX + 1 : 0;
    for (const ExprNode *cell = list->left; cell; cell = cell->next)
        count++;
    if (count <= CHAINED_VALUES_MAX)
        return compileChain(list->left, nullptr, false);
    threadArguments(list->left);
    return nullptr;
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

const TypeInfo *calledSymbol(const ExprNode *tree) {
    bool isCall = tree->kind == NODE_OPERATOR && tree->op == OP_CALL && tree->left &&
                  tree->left->kind == NODE_VALUE && tree->left->type == DT_NAME;
    return isCall ? tree->left->payload.symbol : nullptr;
}

void refuseValue(const ExprNode *tree) {
    runStatus = RUN_CLEAN;
    parseOk = 0;
    parseError("invalid initializer");
    const TypeInfo *function = tree ? calledSymbol(tree) : nullptr;
    const FuncInfo *called = function ? function->functionLink : nullptr;
    if (called && (!called->body || called->isOpen))
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

// ---- Lists, now ---------------------------------------------------------------------------------

namespace {

void refuseValues(const ExprNode *values) {
    while (values && !calledSymbol(values->item))
        values = values->next;
    refuseValue(values ? values->item : nullptr);
}

void evaluateList(const ExprNode *list, TypeInfo *symbol) {
    ParseTimeRun run;
    if (ExprNode *chain = threadList(list, symbol))
        runNested(chain);
    if (runStatus != RUN_CLEAN)
        refuseValues(list->left);
    else
        assignInitList(list, symbol);
}

// An array of characters that no list follows takes any text, as there is one now.
bool isTextArray(const TypeInfo *symbol) {
    bool isNarrow = symbol->dataType == DT_CHAR || symbol->dataType == DT_UCHAR;
    return isArrayVariable(symbol) && isNarrow && symbol->arrayLink->rank == 1;
}

ExprNode *keptText(const Value *value) {
    ExprNode *leaf = newZeroValue(DT_P_CHAR);
    const char *text = isNullAddress(value->payload.p) ? "" : value->payload.text;
    size_t length = value->type == DT_CARRAY ? strnlen(text, value->count) : strlen(text);
    auto *copy = static_cast<char *>(allocOrFail(length + 1));
    if (copy) {
        memcpy(copy, text, length);
        copy[length] = '\0';
        leaf->payload.text = keepText(copy);
        leaf->count = static_cast<uint32_t>(length + 1);
    }
    return leaf;
}

// What a text expression gives, in place of its tree. NULL after a message.
ExprNode *textNow(ExprNode *tree) {
    if (!tree || constantOf(tree) || !isRowText(DT_CHAR, treeDataType(tree)) || errorFlag)
        return tree;
    ParseTimeRun run;
    if (ExprNode *chain = compileChain(tree, nullptr, false))
        runNested(chain);
    ExprNode *text = nullptr;
    if (runStatus != RUN_CLEAN)
        refuseValue(tree);
    else if (Value *value = popValue()) {
        text = keptText(value);
        deleteValue(value);
    }
    deleteNode(tree);
    return text;
}

bool readStaticList(TypeInfo *symbol, StmtNode *statement) {
    if (braceFollows() || !isTextArray(symbol))
        return readList(symbol, statement);
    ExprNode *tree = textNow(parseAssignmentExpression(false));
    return tree && makeTextList(symbol, statement, tree);
}

void parseStaticList(TypeInfo *symbol) {
    StmtNode statement{};
    prepareList(&statement, symbol, 0);
    bool isRead = readStaticList(symbol, &statement);
    completeStorage(symbol);
    if (isRead && !errorFlag)
        evaluateList(statement.operandB.tree, symbol);
    if (isLivingObject(symbol) && !errorFlag)
        beginLife(symbol);
    deleteNode(statement.operandA.tree);
    deleteNode(statement.operandB.tree);
}

}  // namespace

void parseStaticInitialiser(TypeInfo *symbol) {
    if (isTypedef(symbol) || isRestrictedPointer(symbol))
        return;
    peekAndExpand();
    if (braceFollows() || symbol->kind == KIND_C_ARRAY || textFollows(symbol)) {
        if (takesList(symbol))
            parseStaticList(symbol);
        return;
    }
    ExprNode *tree = parseAssignmentExpression(false);
    if (!tree) {
        parseError("invalid rvalue for initialization of global/external/static/ variable");
        return;
    }
    ExprNode *leaf = newSymbolNode(symbol);
    checkAssignment(leaf, tree);
    if (!errorFlag && !constructByCall(symbol, tree))
        evaluateInto(leaf, tree);
    deleteNode(tree);
    deleteNode(leaf);
}

// ---- When the declaration runs ----------------------------------------------------------------

namespace {

void parseAutoList(TypeInfo *symbol) {
    StmtNode *statement = appendPending(pendingBefore, STMT_INITIALISE);
    if (!statement)
        return;
    prepareList(statement, symbol, OP_PRINT_LIST);
    bool isRead = readList(symbol, statement);
    completeStorage(symbol);
    if (isRead && !errorFlag)
        statement->chain = threadList(statement->operandB.tree, symbol);
}

}  // namespace

void parseAutoInitialiser(TypeInfo *symbol) {
    bool isLocalExtern = symbol->storage == STORAGE_EXTERN && e_lang->runInitialisers;
    if (isLocalExtern)
        parseError("initialize local extern '%s'", symbol->name->text);
    if (isLocalExtern || isTypedef(symbol))
        return;
    peekAndExpand();
    if (braceFollows() || symbol->kind == KIND_C_ARRAY || textFollows(symbol)) {
        if (takesList(symbol))
            parseAutoList(symbol);
        noteLifeAtRun(symbol);
        return;
    }
    ExprNode *tree = parseAssignmentExpression(false);
    if (!tree) {
        parseError("invalid rvalue for initialization");
        return;
    }
    ExprNode *assignment = bindOperator(newOperatorNode(OP_ASSIGN, newSymbolNode(symbol), tree));
    if (!errorFlag && initialiseObjectAtRun(symbol, assignment))
        return;
    StmtNode *statement = appendPending(pendingBefore, STMT_EXPRESSION);
    statement->operandA.tree = assignment;
    if (!errorFlag)
        statement->chain = compileChain(assignment, nullptr, false);
}

}  // namespace zy
