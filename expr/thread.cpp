// Threading. A chain is built from its end: an operator is put in front of what follows, and then
// its operands are put before it, the one that runs first last. What is still to be put there waits
// on a list, so that a sum of ten thousand terms costs no stack.
//
// What threading adds to a tree hangs on it and is released with it: the copy of a target that is
// read and written (`third` or `right` of its operator), the address of an argument passed by
// reference (`fourth` of the argument), and the heads of what runs on demand (`fourth`).

#include "expr/thread.h"

#include <algorithm>
#include <vector>

#include "decl/arrayInfo.h"
#include "decl/funcInfo.h"
#include "expr/arrayRoutines.h"
#include "expr/directCalls.h"
#include "expr/directPlaces.h"
#include "expr/memberAccess.h"
#include "expr/nodeClasses.h"
#include "expr/nodes.h"
#include "expr/routineChoice.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "numeric/elementProgram.h"
#include "numeric/subscripts.h"

namespace zy {

namespace {

class ChainBuilder {
public:
    explicit ChainBuilder(ExprNode *next) : head(next) {}

    // Puts a node in front of the chain.
    void emit(ExprNode *node) {
        emitReady(node);
        node->routine = routineFor(node);
    }
    // What stands in it already.
    ExprNode *rest() const { return head; }
    // One that has its routine.
    void emitReady(ExprNode *node) {
        node->next = head;
        head = node;
    }
    // Trees to put in front next, the nearest to the chain first. Their constants are read where
    // they stand, or run as nodes.
    void read(ExprNode *tree) { waiting.push_back({tree, false}); }
    void keep(ExprNode *tree) { waiting.push_back({tree, true}); }
    // Subscripts but those that are read where they stand.
    void subscripts(ExprNode *list);
    // The subscripts and pointers of an assignment's target.
    void target(const ExprNode *tree);

    ExprNode *finish();

private:
    struct Waiting {
        ExprNode *tree;
        bool keepConstants;
    };
    void put(Waiting next);

    ExprNode *head;
    std::vector<Waiting> waiting;  // the next one is the last
};

using Threading = void (*)(ChainBuilder &chain, ExprNode *node);

// ---- The plain orders ---------------------------------------------------------------------------

void threadOperands(ChainBuilder &chain, ExprNode *node) {
    chain.read(node->left);
    chain.read(node->right);
    chain.read(node->third);
    chain.read(node->fourth);
}

void threadAll(ChainBuilder &chain, ExprNode *node) {
    chain.emit(node);
    threadOperands(chain, node);
}

void threadAlone(ChainBuilder &chain, ExprNode *node) { chain.emit(node); }

void threadLeft(ChainBuilder &chain, ExprNode *node) {
    chain.emit(node);
    chain.read(node->left);
}

void threadKeptLeft(ChainBuilder &chain, ExprNode *node) {
    chain.emit(node);
    chain.keep(node->left);
}

// A built-in without arguments: only what was added to it runs.
void threadWithoutArguments(ChainBuilder &chain, ExprNode *node) {
    chain.emit(node);
    chain.read(node->third);
    chain.read(node->fourth);
}

// The one operator that runs from left to right.
void threadComma(ChainBuilder &chain, ExprNode *node) {
    chain.emit(node);
    chain.read(node->right);
    chain.read(node->left);
}

void threadSubscript(ChainBuilder &chain, ExprNode *node) {
    chain.emit(node);
    if (isOperator(node->left))
        chain.read(node->left);
    chain.subscripts(node->right);
}

// A node that finds its object by itself stands alone.
void threadMember(ChainBuilder &chain, ExprNode *node) {
    chain.emit(node);
    if (!findsOwnObject(node))
        chain.read(node->left);
}

// ---- On demand ----------------------------------------------------------------------------------

// What stands at the end of a branch, in front of what the chain goes on with.
ExprNode *branchEnd(ExprNode *&place, NodeRoutine routine, ExprNode *node, ExprNode *next) {
    if (!place && (place = newOperatorNode(0)))
        place->kind = NODE_BRANCHES;
    if (!place)
        return next;
    place->left = nullptr;
    place->right = node;
    place->routine = routine;
    place->next = next;
    return place;
}

void threadShortCircuit(ChainBuilder &chain, ExprNode *node) {
    ExprNode *branches = branchesOf(node), *rest = chain.rest();
    if (!branches)
        return;
    ExprNode *end = branchEnd(branches->third, endShortCircuit, node, rest);
    branches->left = compileChain(node->right, end, false);
    branches->right = rest;
    threadLeft(chain, node);
}

void threadConditional(ChainBuilder &chain, ExprNode *node) {
    ExprNode *branches = branchesOf(node), *rest = chain.rest();
    if (!branches)
        return;
    bool isOfOneType = treeType(node->right) == treeType(node->third);
    auto endOf = [&](ExprNode *&place, NodeRoutine routine) {
        return isOfOneType ? rest : branchEnd(place, routine, node, rest);
    };
    branches->left = compileChain(node->right, endOf(branches->third, endFirstBranch), true);
    branches->right = compileChain(node->third, endOf(branches->fourth, endSecondBranch), true);
    threadLeft(chain, node);
}

// ---- Casts and new ------------------------------------------------------------------------------

ExprNode *boundsOfType(const ExprNode *leaf) {
    const TypeInfo *type = variableOf(leaf);
    bool runTime = type && type->level == TYPE_ONLY_LEVEL && type->arrayLink &&
                   type->arrayLink->shapeKind == SHAPE_DEFERRED;
    return runTime ? type->arrayLink->bounds : nullptr;
}

}  // namespace

bool hasRunTimeShape(const ExprNode *target) {
    const TypeInfo *variable = variableOf(target);
    if (variable)
        return variable->level != TYPE_ONLY_LEVEL && variable->arrayLink &&
               (variable->kind == KIND_P_ARRAY || variable->arrayLink->shapeKind != SHAPE_FIXED);
    if (!isOperator(target) || !isArray(treeType(target)))
        return false;
    const TypeInfo *declaration = declarationOf(target);
    return declaration && declaration->arrayLink &&
           declaration->arrayLink->shapeKind != SHAPE_FIXED;
}

namespace {

// va_arg() reads its argument as the type that its result is made to point to.
void tellWantedType(ExprNode *operand, const ExprNode *target) {
    if (isOperator(operand) && operand->op == OP_VA_ARG && !operand->right)
        operand->right = zeroCell(bandBelow(treeType(target)));
}

// What supplies the shape of the target runs before the operand.
void threadCast(ChainBuilder &chain, ExprNode *node) {
    tellWantedType(node->right, node->left);
    chain.emit(node);
    chain.read(node->right);
    if (ExprNode *bounds = boundsOfType(node->left))
        chain.read(bounds);
    else if (hasRunTimeShape(node->left))
        chain.read(node->left);
}

void threadNew(ChainBuilder &chain, ExprNode *node) {
    chain.emit(node);
    ExprNode *bounds = boundsOfType(node->left);
    chain.read(isOperator(node->left) ? node->left : bounds ? bounds : node->right);
}

void threadArrayBounds(ChainBuilder &chain, ExprNode *node) {
    const TypeInfo *array = variableOf(node->left);
    chain.emit(node);
    chain.read(array && array->arrayLink ? array->arrayLink->bounds : nullptr);
}

// ---- Assignment ---------------------------------------------------------------------------------

const ExprNode *copyOnce(ExprNode *&field, const ExprNode *target) {
    if (!field)
        field = copyNode(target);
    return field;
}

void readLeaves(ChainBuilder &chain, ExprNode *expression) {
    ProgramLeaves leaves;
    collectLeaves(expression, leaves);
    for (int i = 0; i < leaves.count; i++)
        chain.read(leaves.nodes[i]);
}

// Element-wise operators on arrays run as one: those between the topmost and the leaves don't stand
// in the chain.
void threadElementwise(ChainBuilder &chain, ExprNode *node) {
    chain.emit(node);
    if (isElementwise(node->op))
        readLeaves(chain, node);
    else
        threadOperands(chain, node);
}

void threadAssign(ChainBuilder &chain, ExprNode *node) {
    if (isElementwiseAssignment(node)) {
        chain.emit(node);
        readLeaves(chain, node->right);
        return;
    }
    chain.emit(node);
    chain.target(node->left);
    chain.read(node->right);
}

// The target is read and then written, so its subscripts run twice: those of the copy first.
void threadCompound(ChainBuilder &chain, ExprNode *node) {
    chain.emit(node);
    chain.read(node->left);
    chain.read(node->right);
    chain.target(copyOnce(node->third, node->left));
}

void threadIncrement(ChainBuilder &chain, ExprNode *node) {
    threadLeft(chain, node);
    chain.target(copyOnce(node->right, node->left));
}

bool isAddressable(const ExprNode *operand) {
    if (!isOperator(operand))
        return variableOf(operand);
    int op = operand->op;
    return isSubscript(op) || isMember(op) || isMotionElement(op) || isPart(op) ||
           op == OP_INDIRECTION;
}

void threadAddress(ChainBuilder &chain, ExprNode *node) {
    if (node->right)
        parseError("address operation evaluation order error");
    if (!isAddressable(node->left))
        parseError("invalid operand for address op & ");
    chain.emit(node);
    chain.target(node->left);
}

// ---- Calls --------------------------------------------------------------------------------------

bool isReference(const TypeInfo *formal) {
    return formal->kind == KIND_REFERENCE || formal->kind == KIND_BY_REFERENCE;
}

bool takesCell(const TypeInfo *formal) {
    return isReference(formal) || formal->kind == KIND_ASSUMED_C_ARRAY ||
           formal->kind == KIND_ASSUMED_ARRAY;
}

// A plain variable is not read for such a formal: the call takes its cell. Of another lvalue the
// value runs first and its address second, over a copy with subscripts of its own.
void threadArgument(ChainBuilder &chain, ExprNode *actual, const TypeInfo *formal) {
    if (formal && takesCell(formal) && variableOf(actual))
        return;
    bool byAddress = formal && isReference(formal) && isOperator(actual) &&
                     isLvalue(actual, false) == LVALUE_YES;
    if (byAddress) {
        if (!actual->fourth)
            actual->fourth = newOperatorNode(OP_ADDRESS, copyNode(actual));
        chain.read(actual->fourth);
    }
    chain.read(actual);
}

const TypeInfo *firstFormal(const FuncInfo *function) {
    const TypeInfo *formal = function ? function->parameters : nullptr;
    bool hasThis = formal && function->owner && (function->owner->flags & FLAG_MEMBER_FUNCTION);
    return hasThis ? formal->next : formal;
}

bool takesNumber(const TypeInfo *formal) {
    return formal->kind == KIND_SIMPLE && isReal(formal->dataType);
}

// Whether what gives the function may run before the arguments: it is a function or a pointer, or
// an element or target of one.
bool isPlainCallee(const ExprNode *callee) {
    if (!isOperator(callee))
        return true;
    bool isElement = isSubscript(callee->op) || callee->op == OP_INDIRECTION;
    return isElement && !isOperator(callee->left) && isPure(callee->right);
}

// Numbers for formals that take numbers are computed by the call itself, if all of them are such:
// then the order in which they run is the same.
bool takeDirectArguments(ExprNode *node) {
    const FuncInfo *function = calledFunction(node);
    const TypeInfo *formal = firstFormal(function);
    // A member function has its object before them.
    bool direct = formal && formal == function->parameters && isPlainCallee(node->left);
    for (ExprNode *cell = node->right; cell; cell = cell->next) {
        direct = direct && formal && takesNumber(formal);
        cell->number = direct ? makeDirectNumber(cell->item) : nullptr;
        direct = direct && cell->number;
        formal = formal ? formal->next : nullptr;
    }
    for (ExprNode *cell = node->right; cell && !direct; cell = cell->next)
        cell->number = nullptr;
    return direct;
}

// The arguments, last first, then what gives the function.
void threadBeforeCall(ChainBuilder &chain, ExprNode *node) {
    if (isOperator(node->left))
        chain.read(node->left);
    if (takeDirectArguments(node))
        return;
    const TypeInfo *formal = firstFormal(calledFunction(node));
    for (ExprNode *cell = node->right; cell; cell = cell->next) {
        threadArgument(chain, cell->item, formal);
        if (formal)
            formal = formal->next;
    }
}

void threadCall(ChainBuilder &chain, ExprNode *node) {
    chain.emit(node);
    threadBeforeCall(chain, node);
}

// A tree that is computed by one node, in front of which the call in it may have to run.
void threadDirect(ChainBuilder &chain, ExprNode *direct) {
    ExprNode *call = direct->right;
    chain.emitReady(direct);
    if (!call)
        return;
    chain.emitReady(call->fourth);
    threadBeforeCall(chain, call);
}

// ---- Output -------------------------------------------------------------------------------------

// The arguments are evaluated as they are printed.
void threadPrint(ChainBuilder &chain, ExprNode *node) {
    threadArguments(node->left);
    chain.emit(node);
}

void threadPrintTo(ChainBuilder &chain, ExprNode *node) {
    threadArguments(node->right);
    threadLeft(chain, node);
}

// A string is assigned to, so what leads to it runs first and lies below all else; of any other
// destination the value is.
void threadDestination(ChainBuilder &chain, ExprNode *destination) {
    if (treeType(destination) != DT_STRING) {
        chain.read(destination);
        return;
    }
    if (isLvalue(destination, false) != LVALUE_YES)
        parseError("invalid lvalue of assignment operation");
    chain.target(destination);
}

void threadPrintInto(ChainBuilder &chain, ExprNode *node) {
    threadArguments(node->right);
    chain.emit(node);
    threadDestination(chain, node->left);
}

void threadPrintListInto(ChainBuilder &chain, ExprNode *node) {
    chain.emit(node);
    chain.read(node->right);
    chain.read(node->third);
    threadDestination(chain, node->left);
}

// ---- Dispatch -----------------------------------------------------------------------------------

struct ThreadRow {
    int first, last;
    Threading thread;
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
    {OP_NEGATE_ARRAY, OP_ARRAYS_SUBTRACT, threadElementwise},
    {OP_ASSIGN, OP_ASSIGN, threadAssign},
    {OP_ASSIGN_ADD, OP_ASSIGN_SHIFT_RIGHT, threadCompound},
    {OP_STREVAL, OP_STREVAL, threadLeft},
    {OP_COMMA, OP_COMMA, threadComma},
    {OP_PREFIX_INCREMENT, OP_POSTFIX_DECREMENT, threadIncrement},
    {OP_CONDITIONAL, OP_CONDITIONAL, threadConditional},
    {OP_SUBSCRIPT_POINTER, OP_SUBSCRIPT_PART6, threadSubscript},
    {OP_MOTION_ELEMENT1, OP_MOTION_ELEMENT7, threadSubscript},
    {OP_ADDRESS, OP_ADDRESS, threadAddress},
    {OP_MEMBER, OP_ARROW, threadMember},
    {OP_CALL, OP_CALL, threadCall},
    {OP_ARRAY_BOUNDS, OP_ARRAY_BOUNDS, threadArrayBounds},
    {OP_ELEMENT_DESTRUCTORS, OP_ELEMENT_DESTRUCTORS, threadAlone},
};

Threading threadingOf(int op) {
    for (const ThreadRow &row : threadRows)
        if (inRange(op, row.first, row.last))
            return row.thread;
    return threadAll;
}

void ChainBuilder::subscripts(ExprNode *list) {
    for (ExprNode *cell = list; cell; cell = cell->next)
        if (!standsAsSubscript(cell->item))
            keep(cell->item);
}

void ChainBuilder::target(const ExprNode *tree) {
    if (!isOperator(tree))
        return;
    int op = tree->op;
    if (isSubscript(op) || isMotionElement(op)) {
        if (isOperator(tree->left))
            read(tree->left);
        subscripts(tree->right);
    } else if (isPart(op)) {
        target(tree->left);
    } else if (op == OP_INDIRECTION || (isMember(op) && !findsOwnObject(tree))) {
        keep(tree->left);
    }
}

// operandOf() takes variables and the names of types from the stack.
bool isEvaluated(const ExprNode *leaf) { return leaf->type == DT_NAME || leaf->type == DT_TAG; }

// Of a list the last item runs first.
void ChainBuilder::put(Waiting next) {
    ExprNode *tree = next.tree;
    if (!tree)
        return;
    size_t mark = waiting.size();
    if (tree->kind == NODE_OPERATOR) {
        if (ExprNode *direct = directNode(tree))
            threadDirect(*this, direct);
        else
            threadingOf(tree->op)(*this, tree);
    } else if (tree->kind == NODE_LIST)
        for (ExprNode *cell = tree; cell; cell = cell->next)
            waiting.push_back({cell->item, next.keepConstants});
    else if (tree->kind == NODE_VALUE && (next.keepConstants || isEvaluated(tree)))
        emit(tree);
    std::reverse(waiting.begin() + mark, waiting.end());
}

ExprNode *ChainBuilder::finish() {
    std::reverse(waiting.begin(), waiting.end());
    while (!waiting.empty()) {
        Waiting next = waiting.back();
        waiting.pop_back();
        put(next);
    }
    return head;
}

}  // namespace

ExprNode *compileChain(ExprNode *tree, ExprNode *next, bool keepConstants) {
    ChainBuilder chain(next);
    keepConstants ? chain.keep(tree) : chain.read(tree);
    return chain.finish();
}

ExprNode *threadAssignTarget(ExprNode *target, ExprNode *next) {
    ChainBuilder chain(next);
    chain.target(target);
    return chain.finish();
}

void threadArguments(ExprNode *list) {
    for (ExprNode *cell = list; cell; cell = cell->next)
        cell->link = compileChain(cell->item, nullptr, false);
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
