// Threading. A chain is built from its end: each step puts nodes in front of what follows, so an
// operator comes first here and its operands are put before it, the one that runs first last.
//
// What threading adds to a tree hangs on it and is released with it: the copy of a target that is
// read and written (`third` or `right` of its operator), the address of an argument passed by
// reference (`fourth` of the argument), and the heads of what runs on demand (`fourth`).

#include "expr/thread.h"

#include <initializer_list>

#include "decl/arrayInfo.h"
#include "decl/funcInfo.h"
#include "expr/nodeClasses.h"
#include "expr/nodes.h"
#include "expr/routineChoice.h"
#include "expr/typeQueries.h"
#include "instance/report.h"

namespace zy {

namespace {

ExprNode *emit(ExprNode *node, ExprNode *next) {
    node->next = next;
    node->routine = routineFor(node);
    return node;
}

ExprNode *compileRead(ExprNode *tree, ExprNode *next) { return compileChain(tree, next, false); }
ExprNode *compileKept(ExprNode *tree, ExprNode *next) { return compileChain(tree, next, true); }

// The last item runs first.
ExprNode *compileList(ExprNode *list, ExprNode *next, bool keepConstants) {
    for (ExprNode *cell = list; cell; cell = cell->next)
        next = compileChain(cell->item, next, keepConstants);
    return next;
}

// Variables and the names of types are always evaluated, since operandOf() takes them from the
// stack.
ExprNode *compileOperand(ExprNode *leaf, ExprNode *next, bool keepConstants) {
    bool isEvaluated = leaf->type == DT_NAME || leaf->type == DT_TAG;
    return isEvaluated || keepConstants ? emit(leaf, next) : next;
}

// ---- The plain orders
// ----------------------------------------------------------------------------

ExprNode *threadAll(ExprNode *node, ExprNode *next) {
    next = emit(node, next);
    for (ExprNode *operand : {node->left, node->right, node->third, node->fourth})
        next = compileRead(operand, next);
    return next;
}

ExprNode *threadAlone(ExprNode *node, ExprNode *next) { return emit(node, next); }

ExprNode *threadLeft(ExprNode *node, ExprNode *next) {
    return compileRead(node->left, emit(node, next));
}

ExprNode *threadKeptLeft(ExprNode *node, ExprNode *next) {
    return compileKept(node->left, emit(node, next));
}

// A built-in without arguments has room for two that an evaluator of another kind puts there.
ExprNode *threadWithoutArguments(ExprNode *node, ExprNode *next) {
    return compileRead(node->fourth, compileRead(node->third, emit(node, next)));
}

// The one operator that runs from left to right.
ExprNode *threadComma(ExprNode *node, ExprNode *next) {
    return compileRead(node->left, compileRead(node->right, emit(node, next)));
}

ExprNode *threadSubscript(ExprNode *node, ExprNode *next) {
    next = emit(node, next);
    if (isOperator(node->left))
        next = compileRead(node->left, next);
    return compileKept(node->right, next);
}

// ---- On demand
// -----------------------------------------------------------------------------------

void keepBranches(ExprNode *node, ExprNode *first, ExprNode *second) {
    if (!node->fourth) {
        node->fourth = newOperatorNode(0);
        if (!node->fourth)
            return;
        node->fourth->kind = NODE_BRANCHES;
    }
    node->fourth->left = first;
    node->fourth->right = second;
}

ExprNode *threadShortCircuit(ExprNode *node, ExprNode *next) {
    keepBranches(node, compileRead(node->right, nullptr), nullptr);
    return threadLeft(node, next);
}

ExprNode *threadConditional(ExprNode *node, ExprNode *next) {
    ExprNode *first = compileKept(node->right, nullptr);
    keepBranches(node, first, compileKept(node->third, nullptr));
    return threadLeft(node, next);
}

// ---- Casts and new
// -------------------------------------------------------------------------------

ExprNode *boundsOfType(const ExprNode *leaf) {
    const TypeInfo *type = variableOf(leaf);
    bool runTime = type && type->arrayLink && type->arrayLink->shapeKind == SHAPE_DEFERRED;
    return runTime ? type->arrayLink->bounds : nullptr;
}

bool hasRunTimeShape(const ExprNode *target) {
    const TypeInfo *variable = variableOf(target);
    if (variable)
        return variable->level != TYPE_ONLY_LEVEL &&
               (variable->kind == KIND_P_ARRAY || variable->kind == KIND_ASSUMED_ARRAY ||
                variable->kind == KIND_ASSUMED_C_ARRAY);
    if (!isOperator(target) || !isArray(treeType(target)))
        return false;
    const TypeInfo *declaration = declarationOf(target);
    return declaration && declaration->arrayLink &&
           declaration->arrayLink->shapeKind != SHAPE_FIXED;
}

// What supplies the shape of the target runs before the operand.
ExprNode *threadCast(ExprNode *node, ExprNode *next) {
    next = compileRead(node->right, emit(node, next));
    if (ExprNode *bounds = boundsOfType(node->left))
        return compileRead(bounds, next);
    return hasRunTimeShape(node->left) ? compileRead(node->left, next) : next;
}

ExprNode *threadNew(ExprNode *node, ExprNode *next) {
    next = emit(node, next);
    if (isOperator(node->left))
        return compileRead(node->left, next);
    ExprNode *bounds = boundsOfType(node->left);
    return compileRead(bounds ? bounds : node->right, next);
}

ExprNode *threadArrayBounds(ExprNode *node, ExprNode *next) {
    const TypeInfo *array = variableOf(node->left);
    ExprNode *bounds = array && array->arrayLink ? array->arrayLink->bounds : nullptr;
    return compileRead(bounds, emit(node, next));
}

// ---- Assignment
// ----------------------------------------------------------------------------------

ExprNode *copyOnce(ExprNode *&field, const ExprNode *target) {
    if (!field)
        field = copyNode(target);
    return field;
}

ExprNode *threadAssign(ExprNode *node, ExprNode *next) {
    return compileRead(node->right, threadAssignTarget(node->left, emit(node, next)));
}

// The target is read and then written, so its subscripts run twice: those of the copy first.
ExprNode *threadCompound(ExprNode *node, ExprNode *next) {
    next = compileRead(node->right, compileRead(node->left, emit(node, next)));
    return threadAssignTarget(copyOnce(node->third, node->left), next);
}

ExprNode *threadIncrement(ExprNode *node, ExprNode *next) {
    next = threadLeft(node, next);
    return threadAssignTarget(copyOnce(node->right, node->left), next);
}

ExprNode *threadAddress(ExprNode *node, ExprNode *next) {
    if (node->right)
        parseError("address operation evaluation order error");
    const ExprNode *operand = node->left;
    bool isAddressable =
        variableOf(operand) ||
        (isOperator(operand) &&
         (isSubscript(operand->op) || isMember(operand->op) || isMotionElement(operand->op) ||
          operand->op == OP_INDIRECTION || isPart(operand->op)));
    if (!isAddressable)
        parseError("invalid operand for address op & ");
    return threadAssignTarget(node->left, emit(node, next));
}

// ---- Calls
// ---------------------------------------------------------------------------------------

bool isReference(const TypeInfo *formal) {
    return formal->kind == KIND_REFERENCE || formal->kind == KIND_BY_REFERENCE;
}

bool takesCell(const TypeInfo *formal) {
    return isReference(formal) || formal->kind == KIND_ASSUMED_C_ARRAY ||
           formal->kind == KIND_ASSUMED_ARRAY;
}

// A plain variable is not read for such a formal: the call takes its cell. Of another lvalue the
// value runs first and its address second, over a copy with subscripts of its own.
ExprNode *threadArgument(ExprNode *actual, const TypeInfo *formal, ExprNode *next) {
    if (formal && takesCell(formal) && variableOf(actual))
        return next;
    bool byAddress = formal && isReference(formal) && isOperator(actual) &&
                     isLvalue(actual, false) == LVALUE_YES;
    if (byAddress) {
        if (!actual->fourth)
            actual->fourth = newOperatorNode(OP_ADDRESS, copyNode(actual));
        next = compileRead(actual->fourth, next);
    }
    return compileRead(actual, next);
}

const TypeInfo *firstFormal(const FuncInfo *function) {
    const TypeInfo *formal = function ? function->parameters : nullptr;
    bool hasThis = formal && function->owner && (function->owner->flags & FLAG_MEMBER_FUNCTION);
    return hasThis ? formal->next : formal;
}

// The arguments, last first, then what gives the function, then the call.
ExprNode *threadCall(ExprNode *node, ExprNode *next) {
    next = emit(node, next);
    if (isOperator(node->left))
        next = compileRead(node->left, next);
    const TypeInfo *formal = firstFormal(calledFunction(node));
    for (ExprNode *cell = node->right; cell; cell = cell->next) {
        next = threadArgument(cell->item, formal, next);
        if (formal)
            formal = formal->next;
    }
    return next;
}

// ---- Output
// --------------------------------------------------------------------------------------

// The arguments are evaluated as they are printed.
ExprNode *threadPrint(ExprNode *node, ExprNode *next) {
    threadArguments(node->left);
    return emit(node, next);
}

ExprNode *threadPrintTo(ExprNode *node, ExprNode *next) {
    threadArguments(node->right);
    return threadLeft(node, next);
}

// A string is assigned to, so what leads to it runs first and lies below all else; of any other
// destination the value is.
ExprNode *threadDestination(ExprNode *destination, ExprNode *next) {
    if (treeType(destination) != DT_STRING)
        return compileRead(destination, next);
    if (isLvalue(destination, false) != LVALUE_YES)
        parseError("invalid lvalue of assignment operation");
    return threadAssignTarget(destination, next);
}

ExprNode *threadPrintInto(ExprNode *node, ExprNode *next) {
    threadArguments(node->right);
    return threadDestination(node->left, emit(node, next));
}

ExprNode *threadPrintListInto(ExprNode *node, ExprNode *next) {
    next = compileRead(node->third, compileRead(node->right, emit(node, next)));
    return threadDestination(node->left, next);
}

// ---- Dispatch
// ------------------------------------------------------------------------------------

struct ThreadRow {
    int first, last;
    ExprNode *(*thread)(ExprNode *node, ExprNode *next);
};
// Of lvalues `left` alone is listed: their `fourth` may hold their address as an argument.
constexpr ThreadRow threadRows[] = {
    {OP_OR, OP_OR, threadShortCircuit},
    {OP_AND, OP_AND, threadShortCircuit},
    {OP_GETPID, OP_GETPPID, threadWithoutArguments},
    {OP_FORK, OP_FORK, threadWithoutArguments},
    {OP_VSPRINTF, OP_VSPRINTF, threadPrintListInto},
    {OP_PRINTF, OP_PRINTF, threadPrint},
    {OP_SPRINTF, OP_SPRINTF, threadPrintInto},
    {OP_FPRINTF, OP_FPRINTF, threadPrintTo},
    {OP_RAND, OP_RAND, threadWithoutArguments},
    {OP_CLOCK, OP_CLOCK, threadWithoutArguments},
    {OP_SIZEOF, OP_SIZEOF, threadKeptLeft},
    {OP_REAL_FLOAT, OP_IMAG_FLOAT, threadLeft},
    {OP_REAL_DOUBLE, OP_IMAG_DOUBLE, threadLeft},
    {OP_DLERROR, OP_DLERROR, threadWithoutArguments},
    {OP_TMPFILE, OP_TMPFILE, threadWithoutArguments},
    {OP_VA_START, OP_VA_START, threadWithoutArguments},
    {OP_INDIRECTION, OP_INDIRECTION, threadLeft},
    {OP_REAL_ARRAY, OP_IMAG_ARRAY, threadLeft},
    {OP_PRINT_LIST, OP_PRINT_LIST, threadPrint},
    {OP_CAST, OP_CAST, threadCast},
    {OP_NEW, OP_NEW, threadNew},
    {OP_ASSIGN, OP_ASSIGN, threadAssign},
    {OP_ASSIGN_ADD, OP_ASSIGN_SHIFT_RIGHT, threadCompound},
    {OP_STREVAL, OP_STREVAL, threadLeft},
    {OP_COMMA, OP_COMMA, threadComma},
    {OP_PREFIX_INCREMENT, OP_POSTFIX_DECREMENT, threadIncrement},
    {OP_CONDITIONAL, OP_CONDITIONAL, threadConditional},
    {OP_SUBSCRIPT_POINTER, OP_SUBSCRIPT_PART6, threadSubscript},
    {OP_MOTION_ELEMENT1, OP_MOTION_ELEMENT7, threadSubscript},
    {OP_ADDRESS, OP_ADDRESS, threadAddress},
    {OP_MEMBER, OP_ARROW, threadLeft},
    {OP_CALL, OP_CALL, threadCall},
    {OP_ARRAY_BOUNDS, OP_ARRAY_BOUNDS, threadArrayBounds},
    {OP_ELEMENT_DESTRUCTORS, OP_ELEMENT_DESTRUCTORS, threadAlone},
};

ExprNode *compileOperator(ExprNode *node, ExprNode *next) {
    for (const ThreadRow &row : threadRows)
        if (inRange(node->op, row.first, row.last))
            return row.thread(node, next);
    return threadAll(node, next);
}

}  // namespace

ExprNode *compileChain(ExprNode *tree, ExprNode *next, bool keepConstants) {
    if (!tree)
        return next;
    switch (tree->kind) {
        case NODE_OPERATOR: return compileOperator(tree, next);
        case NODE_VALUE: return compileOperand(tree, next, keepConstants);
        case NODE_LIST: return compileList(tree, next, keepConstants);
        default: return next;
    }
}

ExprNode *threadAssignTarget(ExprNode *target, ExprNode *next) {
    if (!isOperator(target))
        return next;
    int op = target->op;
    if (isSubscript(op) || isMotionElement(op)) {
        next = compileKept(target->right, next);
        return isOperator(target->left) ? compileRead(target->left, next) : next;
    }
    if (isPart(op))
        return threadAssignTarget(target->left, next);
    return op == OP_INDIRECTION || isMember(op) ? compileKept(target->left, next) : next;
}

void threadArguments(ExprNode *list) {
    for (ExprNode *cell = list; cell; cell = cell->next)
        cell->link = compileRead(cell->item, nullptr);
}

BranchChains branchChainsOf(const ExprNode *node) {
    return {node->fourth->left, node->fourth->right};
}

ExprNode *referenceAddressOf(const ExprNode *actual) {
    bool hasAddress = isOperator(actual) && actual->fourth &&
                      actual->fourth->kind == NODE_OPERATOR && actual->fourth->op == OP_ADDRESS;
    return hasAddress ? actual->fourth : nullptr;
}

}  // namespace zy
