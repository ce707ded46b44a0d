// The arms of the statements that are words with arguments, of expressions and initial values.

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "decl/arrayInfo.h"
#include "expr/direct.h"
#include "expr/evaluator.h"
#include "expr/objects.h"
#include "expr/readers.h"
#include "expr/scope.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
#include "front/lexerState.h"
#include "instance/report.h"
#include "numeric/arrayStorage.h"
#include "numeric/assign.h"
#include "rtlib/printf.h"
#include "stmt/arms.h"
#include "stmt/calls.h"
#include "stmt/execute.h"

namespace zy {

namespace {

// Of what has no chain only a plain constant does nothing.
inline void runDirectStatement(ExprNode *tree) {
    if (!tree || tree->kind != NODE_OPERATOR || !tree->routine)
        return;
    noteDirectSteps(tree);
    tree->routine(tree);
}

// A temporary object that nothing has taken over ends with its statement.
void dropValue(Value *value) {
    if (value->type == DT_STRUCT && value->owned && value->owned != OWNED_PART) {
        endTemporaryObject(value->payload.p, value->payload2.structInfo);
        value->owned = 0;
    }
    deleteValue(value);
}

}  // namespace

void runExpression(ExecContext *context, StmtNode *statement) {
    if (!statement->chain)
        runDirectStatement(statement->operandA.tree);
    else if (context->stack)
        dropValue(popValue());
    moveTo(context, statement->next);
}

void runConstruct(ExecContext *context, StmtNode *statement) {
    TypeInfo *symbol = statement->operandC.symbols;
    ExprNode *target = statement->operandA.tree, *value = statement->operandB.tree;
    if (!target && !value)
        constructVariable(symbol);
    else if (target && value)
        assignValue(target, value);
    else if (value)
        recycleValue(popValue());  // the constructor ran on the variable itself
    findVarCell(symbol)->flags |= CELL_LIVES;
    moveTo(context, statement->next);
}

void runInitialise(ExecContext *context, StmtNode *statement) {
    assignValue(statement->operandA.tree, statement->operandB.tree);
    moveTo(context, statement->next);
}

// ---- Ends of a run ------------------------------------------------------------------------------

namespace {

int readInt(ExprNode *tree) {
    if (!tree)
        return 0;
    bool popped;
    Value *value = operandOf(tree, popped);
    if (!value)
        return 0;
    int number = static_cast<int>(readSigned64(value));
    if (popped)
        deleteValue(value);
    return number;
}

void setStatus(int status) {
    if (e_lang->status)
        findVarCell(e_lang->status)->data.i = status;
}

// The run ends here; its driver finds the status on the stack.
void endRunWith(int status) {
    endStatus = status;
    hasEndStatus = true;
    endRun();
}

}  // namespace

void runExit(ExecContext *, StmtNode *statement) {
    int status = readInt(statement->operandA.tree);
    setStatus(status);
    leaveFunctions();
    if (!e_lang->embedded) {
        runAtExit();
        exit(status);
    }
    if (e_lang->multiRun)
        runAtExit();
    if (status != 0)
        noteRunError();
    runEnded = true;
    endRunWith(status);
}

void runAbort(ExecContext *, StmtNode *statement) {
    if (const ExprNode *list = statement->operandA.tree)
        printfEngine(nullptr, list->left);
    leaveFunctions();
    freeAtExitList();
    if (!e_lang->embedded) {
        fflush(stdout);
        fputs("Abort\n", stderr);
        exit(1);
    }
    noteRunError();
    runEnded = true;
    endRunWith(-1);
}

void runStop(ExecContext *context, StmtNode *statement) {
    if (const ExprNode *list = statement->operandA.tree)
        printfEngine(nullptr, list->left);
    fflush(stdout);
    fprintf(stderr, "stop at line %d\n", statement->line);
    fputs("\n Please type 'n' to next line;  'c' to continue; 's' to stop: ", stderr);
    char answer[SOURCE_LINE_MAX];
    if (!fgets(answer, sizeof answer, stdin))
        strcpy(answer, "s");
    switch (answer[strspn(answer, " \t")]) {
        case 'c': stepMode = false; break;
        case 's': executing = 0; break;
        default: stepMode = true; break;
    }
    moveTo(context, statement->next);
}

// ---- Library calls ------------------------------------------------------------------------------

void runPerror(ExecContext *context, StmtNode *statement) {
    bool popped;
    if (Value *value = operandOf(statement->operandA.tree, popped)) {
        perror(value->payload.text);
        if (popped)
            deleteValue(value);
    }
    moveTo(context, statement->next);
}

void runClearerr(ExecContext *context, StmtNode *statement) {
    bool popped;
    if (Value *value = operandOf(statement->operandA.tree, popped)) {
        if (value->payload.p)
            clearerr(static_cast<FILE *>(value->payload.p));
        else
            runWarning("The argument of clearerr() is a NULL pointer");
        if (popped)
            recycleValue(value);
    }
    moveTo(context, statement->next);
}

void runSrand(ExecContext *context, StmtNode *statement) {
    bool popped;
    if (Value *value = operandOf(statement->operandA.tree, popped)) {
        srand(static_cast<unsigned>(readSigned64(value)));
        if (popped)
            recycleValue(value);
    }
    moveTo(context, statement->next);
}

// ---- free and delete ----------------------------------------------------------------------------

namespace {

void freePointer(TypeInfo *variable, const Value *value) {
    if (variable) {
        VarCell *cell = findVarCell(variable);
        free(cell->data.p);
        cell->data.p = nullptr;
    } else if (value) {
        free(value->payload.p);
    }
}

}  // namespace

void runFree(ExecContext *context, StmtNode *statement) {
    bool popped;
    Value *value = operandOf(statement->operandA.tree, popped);
    int type = value ? static_cast<int>(value->type) : DT_UNDEFINED;
    if (type == DT_CARRAY || type == DT_ARRAY) {  // ends with what it is part of
        if (popped)
            deleteValue(value);
    } else {
        freePointer(variableOf(statement->operandA.tree), value);
        if (value && popped)
            recycleValue(value);
    }
    moveTo(context, statement->next);
}

namespace {

bool isClassPointer(int type) {
    return type == DT_STRUCT || type == DT_P_STRUCT || type == DT_PP_STRUCT ||
           type == DT_PPP_STRUCT;
}

void deleteVariable(TypeInfo *variable) {
    VarCell *cell = findVarCell(variable);
    bool isClass = isClassPointer(static_cast<int>(cell->type));
    if (!cell->data.p) {
        if (isClass)
            runWarning("The argument of delete (ptr) is a NULL pointer");
        else
            runWarning("The argument of delete(ptr) is a NULL pointer");
        return;
    }
    if (!isClass || !cell->noFree)
        free(cell->data.p);
    cell->data.p = nullptr;
}

void deletePointer(const Value *value) {
    if (!value->payload.p)
        runWarning("The argument of delete() is a NULL pointer");
    else if (!isClassPointer(static_cast<int>(value->type)) || !value->noFree)
        free(value->payload.p);
}

}  // namespace

namespace {

// How many objects a delete names: one without dimensions, 0 for all that there are.
uint32_t deletedCount(const ExprNode *dimensions) {
    if (!dimensions)
        return 1;
    ArrayInfo *info = dimensions->payload.symbol->arrayLink;
    if (!info)
        return 0;
    if (info->shapeKind != SHAPE_DEFERRED)
        return shapeCount(fixedShapeOf(info));
    uint32_t count;
    runNested(compileChain(info->bounds, nullptr, false));
    releaseShape(evalArrayBounds(info->bounds, false, count, true));
    return count;
}

// Here, and not in the block it is of, since an array of objects has its own form of delete.
void destroyTarget(const Value *pointer, const ExprNode *dimensions) {
    const StructInfo *info = pointer->payload2.structInfo;
    bool ownsMore = info && (hasLife(info) || info->ownsTexts);
    if (ownsMore && pointer->payload.p)
        destroyHeapObjects(pointer->payload.p, deletedCount(dimensions), info);
}

}  // namespace

void runDelete(ExecContext *context, StmtNode *statement) {
    bool popped;
    Value *value = operandOf(statement->operandA.tree, popped);
    if (value && value->type == DT_P_STRUCT)
        destroyTarget(value, statement->operandB.tree);
    if (TypeInfo *variable = variableOf(statement->operandA.tree))
        deleteVariable(variable);
    else if (value)
        deletePointer(value);
    if (value && popped)
        recycleValue(value);
    moveTo(context, statement->next);
}

}  // namespace zy
