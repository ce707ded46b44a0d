// Calls of script functions. A call doesn't recurse in the host: it makes a context and a frame,
// parks the caller, and the statement loop goes on in the body; the return pushes the result on the
// caller's stack, whose chain goes on where it stopped. So only memory bounds the depth of calls.

#include "stmt/calls.h"

#include <cstdlib>
#include <cstring>

#include "decl/funcInfo.h"
#include "expr/context.h"
#include "expr/direct.h"
#include "expr/events.h"
#include "expr/nodes.h"
#include "expr/objects.h"
#include "expr/routines.h"
#include "expr/scope.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "numeric/assign.h"
#include "numeric/convert.h"
#include "stmt/arms.h"
#include "stmt/arrayArguments.h"
#include "stmt/callArguments.h"
#include "stmt/callPlan.h"
#include "stmt/functionName.h"
#include "stmt/textArguments.h"

namespace zy {

namespace {

// ---- Objects of member functions ----------------------------------------------------------------

// The end of a call on an object. What a constructor made belongs to its result.
void leaveObject() {
    const ClassContext *record = classContext;
    void *object = record->object;
    uint8_t ownership = record->ownership;
    StructInfo *info = record->thisFormal ? record->thisFormal->structLink : nullptr;
    popClassContext();
    if (ownership == OBJECT_TEMPORARY) {
        endTemporaryObject(object, info);
    } else if (ownership == OWNED_PART) {
        releaseObject(object, info);
        free(object);
    }
}

// A constructor that no object was named for makes one.
bool makeObject(const TypeInfo *constructor) {
    StructInfo *info = constructor->structLink;
    ClassContext *record = claimClassContext();
    if (!record)
        return false;
    record->thisFormal = constructor->functionLink->parameters;
    record->member = const_cast<TypeInfo *>(constructor);
    record->noFree = 0;
    record->ownership = OBJECT_MADE;
    record->object = info && info->size ? allocOrFail(info->size) : nullptr;
    if (record->object)
        memset(record->object, 0, info->size);
    return true;
}

// ---- The callee ---------------------------------------------------------------------------------

int failCall(int resultType) {
    pushValue(newZeroValue(resultType));
    return -1;
}

bool isMemberFunction(const TypeInfo *callee) { return callee->flags & FLAG_MEMBER_FUNCTION; }

// A member function's record was made before the call.
int failMember(const TypeInfo *callee, int resultType) {
    if (isMemberFunction(callee)) {
        if (classContext->ownership == OBJECT_MADE)
            free(classContext->object);
        leaveObject();
    }
    return failCall(resultType);
}

// A call through a variable or a parameter: the function that its cell designates.
TypeInfo *pointedFunction(TypeInfo *pointer) {
    const auto *own = static_cast<const FuncInfo *>(findVarCell(pointer)->data.p);
    TypeInfo *target = own ? own->owner : nullptr;
    if (!target)
        runError("pointer to function '%s' is NULL", pointer->name ? pointer->name->text : "");
    return target;
}

// The function that the node calls; NULL after a message.
TypeInfo *calleeOf(ExprNode *node) {
    if (TypeInfo *symbol = variableOf(node->left))
        return symbol->kind == KIND_FUNCTION ? symbol : pointedFunction(symbol);
    Value *value = popValue();
    if (!value)
        return nullptr;
    auto *symbol = static_cast<TypeInfo *>(value->payload.p);
    recycleValue(value);
    if (!symbol)
        runError("pointer to function '%s' is NULL", "");
    return symbol;
}

bool isWithin(const StmtNode *body, const StmtNode *block) {
    for (const StmtNode *at = body->enclosingBlock(); at; at = at->enclosingBlock())
        if (at == block)
            return true;
    return false;
}

bool isFrameAround(const ScopeFrame *frame, const StmtNode *body) {
    return isWithin(body, frame->isFunction ? static_cast<const FuncInfo *>(frame->owner)->body
                                            : static_cast<const StmtNode *>(frame->owner));
}

// A function that is defined in a block may be called through a pointer from anywhere: its names
// are those of the latest activation that it was defined in.
ScopeFrame *framesAround(const StmtNode *body) {
    for (const ExecContext *context = currentContext; context; context = context->caller)
        for (ScopeFrame *frame = context->frames; frame && frame->level > FILE_LEVEL;
             frame = frame->outer)
            if (isFrameAround(frame, body))
                return frame;
    return nullptr;
}

// Where names of the enclosing scopes are found: a function of file level sees file level.
ScopeFrame *framesOfDefinition(const TypeInfo *callee, ScopeFrame *callers) {
    bool isLocal = callee->level > FILE_LEVEL && !isMemberFunction(callee);
    if (ScopeFrame *frame = isLocal ? framesAround(callee->functionLink->body) : nullptr)
        return frame;
    int level = isLocal ? +FILE_LEVEL : callee->level;
    ScopeFrame *frame = callers;
    while (frame && frame->level > level)
        frame = frame->outer;
    return frame;
}

// The frame of the parameters. Gives the arguments that are left for `...`.
ExprNode *enterParameters(ExecContext *context, const CallPlan *plan, TypeInfo *callee,
                          ExprNode *actual) {
    ScopeFrame *frame =
        plan->takesNumbers ? newNumberFrame(context) : newScopeFrame(callee->functionLink, true);
    ExprNode *rest = passArguments(frame, callee, actual);
    frame->outer = context->frames;
    context->frames = frame;
    return rest;
}

int refuseUndefined(const TypeInfo *callee, ExprNode *node) {
    if (isMemberFunction(callee))
        runError("member function '::%s()' not defined", shownName(callee));
    else if (strcmp(shownName(callee), "main") == 0)
        runError("function main() not defined");
    else
        runError("function '%s()' not defined", shownName(callee));
    dropActuals(node->right);
    return failMember(callee, callee->functionLink->returnType);
}

int enterFunction(TypeInfo *callee, ExprNode *node) {
    FuncInfo *function = callee->functionLink;
    CallPlan *plan = function->body ? callPlanOf(function) : nullptr;
    if (!plan) [[unlikely]]
        return refuseUndefined(callee, node);
    if ((callee->flags & FLAG_CONSTRUCTOR) && classContext->object)
        constructMembers(classContext->object, callee->structLink, callee->structLink->members);
    ExecContext *caller = currentContext, *context = newCallContext(function);
    if (!context) [[unlikely]]
        return failMember(callee, function->returnType);
    context->frames = framesOfDefinition(callee, caller->frames);
    setFunctionName(plan);
    ExprNode *rest = node->right;
    if (plan->hasParameters)
        rest = enterParameters(context, plan, callee, rest);
    if (function->variadic)
        context->varArgs = collectVarArgs(rest);
    else if (rest)
        dropActuals(rest);
    caller->state = 7;
    // The evaluator steps to the node behind the one that runs; the caller is already there.
    caller->chain = node->next;
    currentContext = context;
    beginActivation(context, plan);
    return 0;
}

}  // namespace

int callFunction(ExprNode *node) {
    TypeInfo *callee = calleeOf(node);
    bool isMaking = callee && (callee->flags & FLAG_CONSTRUCTOR) && variableOf(node->left);
    if (!callee || !callee->functionLink || (isMaking && !makeObject(callee))) {
        dropActuals(node->right);
        return failCall(DT_INT);
    }
    return enterFunction(callee, node);
}

void callPrepared(ExprNode *node) { enterFunction(variableOf(node->left), node); }

void callOperator(ExprNode *node) { callFunction(node); }

// ---- The way back -------------------------------------------------------------------------------

namespace {

// Parameters passed by copy go back to where they came from.
void writeBack(const FuncInfo *function, const ScopeFrame *frame) {
    int slot = 0;
    for (const TypeInfo *formal = function->parameters; formal; formal = formal->next, slot++) {
        VarCell *cell = isByReference(formal) ? slotOf(frame, slot) : nullptr;
        if (!cell || cell->type != DT_LINK || !cell->reference)
            continue;
        auto *copy = static_cast<VarCell *>(cell->data.p);
        storeCellByPointer(cell->reference, copy, static_cast<int>(cell->flags));
        killEntry(copy);
        cell->reference = nullptr;
    }
}

void releaseParameters(ExecContext *context, const CallPlan *plan) {
    if (plan->takesNumbers) {
        keepNumberFrame(context);
    } else if (plan->hasParameters) {
        writeBack(context->function, context->frames);
        popFrame();
    }
}

// The context's end; its caller becomes current.
void releaseCall(ExecContext *context, CallPlan *plan) {
    ExecContext *caller = context->caller;
    endActivation(context, plan);
    releaseContext(context);
    currentContext = caller;
    setFunctionName(caller->function ? callPlanOf(caller->function) : nullptr);
}

// The value of a return, which the caller owns; NULL for none.
Value *operandOfReturn(const StmtNode *statement) {
    ExprNode *tree = statement->operandA.tree;
    if (!tree)
        return nullptr;
    if (statement->operandE.compute) {
        noteDirectSteps(tree);
        Value *value = newValue();
        if (value)
            statement->operandE.compute(tree, value);
        return value;
    }
    bool popped;
    Value *value = operandOf(tree, popped);
    return value && !popped ? copyNode(value) : value;
}

// The same converted to what the function gives.
Value *returnedValue(const StmtNode *statement, const FuncInfo *function) {
    Value *value = operandOfReturn(statement);
    if (returnsArray(function)) {
        if (TypeInfo *variable = value ? variableOf(statement->operandA.tree) : nullptr)
            takeLocalArray(function, variable, value);
        return arrayReturnValue(function, value);
    }
    int returnType = function->returnType;
    if (!value)
        return nullptr;
    if (value->type == DT_STRUCT && !value->owned)
        ownObject(value);
    if (value->type != static_cast<uint32_t>(returnType))
        convertScalar(value, returnType);
    return value;
}

// Of an array one without elements.
Value *zeroResult(const FuncInfo *function) {
    if (!returnsArray(function))
        return newZeroValue(function->returnType);
    Value *array = newZeroValue(DT_ARRAY);
    array->payload2.elementType = function->returnType;
    return array;
}

// A constructor gives the object that it ran on.
Value *constructedObject() {
    Value *value = newZeroValue(DT_STRUCT);
    value->payload.p = classContext->object;
    value->payload2.structInfo = classContext->thisFormal->structLink;
    value->owned = classContext->ownership == OBJECT_MADE;
    value->noFree = classContext->noFree;
    return value;
}

Value *resultOf(const FuncInfo *function, const StmtNode *statement) {
    const TypeInfo *owner = function->owner;
    if (function->returnType == DT_VOID)
        return newZeroValue(DT_VOID);
    Value *value = owner && (owner->flags & FLAG_CONSTRUCTOR) ? constructedObject()
                                                              : returnedValue(statement, function);
    return value ? value : zeroResult(function);
}

bool runsOnObject(const FuncInfo *function) {
    return classContext && classContext->thisFormal && classContext->member == function->owner;
}

bool isInBlock(const ExecContext *context) {
    const ScopeFrame *frame = context->frames;
    return frame && !frame->isFunction && frame->level > context->function->parameterLevel;
}

// What a function leaves behind on every road out of it, once its blocks are gone.
void endCall(ExecContext *context, CallPlan *plan) {
    releaseParameters(context, plan);
    if (context->stack)
        leaveForeachs(context, {});
    if (runsOnObject(context->function))
        leaveObject();
    releaseCall(context, plan);
}

}  // namespace

void returnFromFunction() {
    ExecContext *context = currentContext, *caller = context->caller;
    FuncInfo *function = context->function;
    CallPlan *plan = callPlanOf(function);
    Value *value = resultOf(function, context->statement);
    value->next = caller->stack;
    caller->stack = value;
    while (isInBlock(context))
        popFrame();
    if (!plan->takesNumbers)
        keepReturnedText(function, context->frames, value);
    endCall(context, plan);
    caller->state = 1;
}

void leaveFunction(bool withDestructors) {
    if (wantsEvent(EVENT_FUNCTION_EXIT))
        deliverEvent(EVENT_FUNCTION_EXIT);
    ExecContext *context = currentContext;
    while (isInBlock(context)) {
        if (withDestructors)
            runDestructors(static_cast<StmtNode *>(context->frames->owner)->operandC.symbols);
        popFrame();
    }
    if (withDestructors)
        runDestructors(context->function->parameters);
    if (runsOnObject(context->function) && classContext->ownership == OBJECT_MADE)
        classContext->ownership = OWNED_PART;  // no result takes what the constructor made
    endCall(context, callPlanOf(context->function));
}

}  // namespace zy
