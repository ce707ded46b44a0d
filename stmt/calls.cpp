// Calls of script functions. A call doesn't recurse in the host: it makes a context and a frame,
// parks the caller, and the statement loop goes on in the body; the return pushes the result on the
// caller's stack, whose chain goes on where it stopped. So only memory bounds the depth of calls.

#include "stmt/calls.h"

#include <cstring>

#include "decl/funcInfo.h"
#include "expr/context.h"
#include "expr/direct.h"
#include "expr/nodes.h"
#include "expr/objects.h"
#include "expr/operators.h"
#include "expr/readers.h"
#include "expr/routines.h"
#include "expr/scope.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
#include "front/names.h"
#include "instance/report.h"
#include "numeric/assign.h"
#include "numeric/convert.h"
#include "stmt/arms.h"
#include "stmt/arrayArguments.h"
#include "stmt/execute.h"
#include "stmt/textArguments.h"

namespace zy {

namespace {

// The function's name as scripts know it.
const char *shownName(const TypeInfo *symbol) {
    const char *name = symbol->name ? symbol->name->text : "";
    return strncmp(name, "___", 3) == 0 ? "main" : name;
}

// The value of __func__: the name itself, which lives as long as the instance.
void setFunctionName(const char *name) {
    constexpr int functionNameSlot = 76;
    if (functionNameFrame != baseFrame) {
        functionNameFrame = baseFrame;
        functionNameCell = baseFrame ? slotOf(baseFrame, functionNameSlot) : nullptr;
    }
    if (functionNameCell)
        functionNameCell->data.text = const_cast<char *>(name);
}

// A parameter list of `void` alone is no parameter.
bool hasParameters(const FuncInfo *function) {
    const TypeInfo *first = function->parameters;
    return first && !(first->dataType == DT_VOID && first->kind < KIND_P_FUNCTION);
}

// ---- Objects of member functions ----------------------------------------------------------------

// The end of a call on an object. What a constructor made belongs to its result.
void leaveObject() {
    const ClassContext *record = classContext;
    void *object = record->object;
    bool isTemporary = record->ownership == OBJECT_TEMPORARY;
    StructInfo *info = record->thisFormal ? record->thisFormal->structLink : nullptr;
    popClassContext();
    if (isTemporary)
        endTemporaryObject(object, info);
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

// ---- Arguments ----------------------------------------------------------------------------------

// An argument's value: computed here for one that is direct, else as operandOf() finds it.
Value *valueOfArgument(ExprNode *cell, bool &popped) {
    if (!cell->number)
        return operandOf(cell->item, popped);
    noteDirectSteps(cell->item);
    Value *value = newValue();
    popped = value != nullptr;
    if (value)
        cell->number(cell->item, value);
    return value;
}

bool isByReference(const TypeInfo *formal) {
    return formal->kind == KIND_REFERENCE || formal->kind == KIND_BY_REFERENCE;
}

VarCell *newNumberArgument(int type, const Value *value) {
    VarCell *cell = newVarCell(type);
    if (!cell || !value)
        return cell;
    if (static_cast<int>(value->type) == type)
        cell->data = value->payload;
    else
        storeInCell(cell, value);
    return cell;
}

// A cell for a formal with the value, converted as an assignment converts it.
VarCell *newArgument(TypeInfo *formal, Value *value) {
    if (formal->kind == KIND_SIMPLE && isReal(formal->dataType))
        return newNumberArgument(formal->dataType, value);
    VarCell *cell = newVarCell(formal->dataType);
    initCell(cell, formal, isByReference(formal) ? int{KIND_SIMPLE} : formal->kind);
    if (value && !passText(cell, value))
        storeInCell(cell, value);
    if (cell->type == DT_STRUCT && hasLife(formal->structLink))
        cell->flags |= CELL_LIVES;
    return cell;
}

VarCell *newLink(VarCell *target) {
    VarCell *cell = newVarCell(DT_LINK);
    cell->data.p = target;
    return cell;
}

// An lvalue that is no plain variable has its address on the stack, over its value. The parameter
// is a copy, stored through the address at the return.
VarCell *newReference(TypeInfo *formal, ExprNode *cell) {
    ExprNode *actual = cell->item;
    if (TypeInfo *variable = variableOf(actual))
        return newLink(findVarCell(variable));
    Value *address = referenceAddressOf(actual) ? popValue() : nullptr;
    bool popped;
    Value *value = valueOfArgument(cell, popped);
    VarCell *copy = newArgument(formal, value);
    if (value && popped)
        deleteValue(value);
    if (!address)
        return copy;
    VarCell *link = newLink(copy);
    link->reference = static_cast<VarCell *>(address->payload.p);
    link->flags = address->type;
    recycleValue(address);
    return link;
}

VarCell *newFormal(TypeInfo *formal, ExprNode *cell) {
    if (isByReference(formal))
        return newReference(formal, cell);
    bool isArray = isArrayFormal(formal);
    TypeInfo *variable = isArray && takesArrayCell(formal) ? variableOf(cell->item) : nullptr;
    if (variable)
        return newArrayArgument(formal, findVarCell(variable));
    bool popped;
    Value *value = valueOfArgument(cell, popped);
    VarCell *argument =
        isArray && value ? newArrayArgument(formal, value) : newArgument(formal, value);
    if (value && popped)
        deleteValue(value);
    return argument;
}

void warnOfMissing(const TypeInfo *callee) {
    runWarning(
        "less parameters are passed to procedure `%s', default zeros are used for missing ones at "
        "the end",
        shownName(callee));
}

// The hidden formal of a member function: the object of the record on top.
TypeInfo *passThis(ScopeFrame *frame, TypeInfo *formal) {
    VarCell *cell = newVarCell(DT_P_STRUCT);
    cell->data.p = classContext->object;
    cell->noFree = classContext->noFree;
    setSlot(frame, 0, cell);
    return formal->next;
}

// Arguments that are computed here, the last one first. Whether each formal got one.
bool passNumbers(ScopeFrame *frame, TypeInfo *formal, ExprNode *actual, int slot) {
    if (!formal || !actual)
        return !formal;
    bool complete = passNumbers(frame, formal->next, actual->next, slot + 1);
    noteDirectSteps(actual->item);
    Value value;
    actual->number(actual->item, &value);
    fillSlot(frame, slot, newArgument(formal, &value));
    return complete;
}

// Other arguments lie on the stack, the first on top.
void passArguments(ScopeFrame *frame, TypeInfo *callee, ExprNode *actual) {
    int slot = 0;
    TypeInfo *first = callee->functionLink->parameters;
    if (callee->flags & FLAG_MEMBER_FUNCTION) {
        first = passThis(frame, first);
        slot = 1;
    }
    bool computed = actual && actual->number;
    if (computed && passNumbers(frame, first, actual, slot))
        return;
    for (TypeInfo *formal = first; formal; formal = formal->next, slot++) {
        if (!actual)
            warnOfMissing(callee);
        if (!actual || !computed)
            setSlot(frame, slot, actual ? newFormal(formal, actual) : newArgument(formal, nullptr));
        actual = actual ? actual->next : nullptr;
    }
}

// What goes to `...`, kept with the callee's context.
ExprNode *collectVarArgs(ExprNode *actual) {
    ExprNode *list = nullptr;
    for (; actual; actual = actual->next) {
        bool popped;
        Value *value = valueOfArgument(actual, popped);
        if (!value)
            continue;
        Value *own = popped ? value : copyNode(value);
        if (own->type == DT_STRUCT && !own->owned)
            ownObject(own);
        bool isTemporary = popped && actual->item->kind == NODE_OPERATOR;
        if (own->type == DT_STRING && isTemporary) {
            own->type = DT_P_CHAR;
            own->owned = VAR_ARG_TEXT;
        } else if (own->type == DT_P_CHAR) {
            own->owned = 0;
        }
        appendListCell(list, own);
    }
    return list;
}

// Arguments beyond the formals that nothing takes.
void dropArguments(ExprNode *actual) {
    for (; actual; actual = actual->next) {
        Value *address = referenceAddressOf(actual->item) ? popValue() : nullptr;
        if (address)
            recycleValue(address);
        bool popped;
        Value *value = valueOfArgument(actual, popped);
        if (value && popped)
            deleteValue(value);
    }
}

const TypeInfo *firstFormal(const FuncInfo *function) {
    if (!hasParameters(function))
        return nullptr;
    bool isMember = function->owner && (function->owner->flags & FLAG_MEMBER_FUNCTION);
    return isMember ? function->parameters->next : function->parameters;
}

ExprNode *afterFormals(ExprNode *actual, const FuncInfo *function) {
    for (const TypeInfo *formal = firstFormal(function); formal && actual; formal = formal->next)
        actual = actual->next;
    return actual;
}

// Where names of the enclosing scopes are found: a function of file level sees file level, one
// that is defined in a block the frames of its caller.
ScopeFrame *framesOfDefinition(const TypeInfo *callee, ScopeFrame *callers) {
    ScopeFrame *frame = callers;
    while (frame && frame->level > callee->level)
        frame = frame->outer;
    return frame;
}

}  // namespace

namespace {

int enterFunction(TypeInfo *callee, ExprNode *node) {
    FuncInfo *function = callee->functionLink;
    if (!function->body) {
        if (isMemberFunction(callee))
            runError("member function '::%s()' not defined", shownName(callee));
        else if (strcmp(shownName(callee), "main") == 0)
            runError("function main() not defined");
        else
            runError("function '%s()' not defined", shownName(callee));
        dropArguments(node->right);
        return failMember(callee, function->returnType);
    }
    ExecContext *caller = currentContext, *context = newContext();
    if (!context)
        return failMember(callee, function->returnType);
    context->isCall = 1;
    context->state = 1;
    context->caller = caller;
    context->function = function;
    context->level = function->parameterLevel;
    context->statement = function->body;
    context->frames = framesOfDefinition(callee, caller->frames);
    setFunctionName(shownName(callee));
    if (hasParameters(function)) {
        ScopeFrame *frame = newScopeFrame(function, true);
        passArguments(frame, callee, node->right);
        frame->outer = context->frames;
        context->frames = frame;
    }
    ExprNode *rest = afterFormals(node->right, function);
    if (function->variadic)
        context->varArgs = collectVarArgs(rest);
    else
        dropArguments(rest);
    caller->state = 7;
    // The evaluator steps to the node behind the one that runs; the caller is already there.
    caller->chain = node->next;
    currentContext = context;
    saveStatementPhases(context, function->body);
    return 0;
}

}  // namespace

int callFunction(ExprNode *node) {
    TypeInfo *callee = calleeOf(node);
    bool isMaking = callee && (callee->flags & FLAG_CONSTRUCTOR) && variableOf(node->left);
    if (!callee || !callee->functionLink || (isMaking && !makeObject(callee))) {
        dropArguments(node->right);
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

void releaseParameters(ExecContext *context) {
    if (!hasParameters(context->function))
        return;
    writeBack(context->function, context->frames);
    popFrame();
}

// The context's end; its caller becomes current.
void releaseCall(ExecContext *context) {
    ExecContext *caller = context->caller;
    restoreStatementPhases(context, context->function->body);
    releaseContext(context);
    currentContext = caller;
    setFunctionName(caller->function ? shownName(caller->function->owner) : "");
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

// The frames of the function's blocks, from the innermost outward.
void releaseBlocks(ExecContext *context) {
    while (context->frames && !context->frames->isFunction &&
           context->frames->level > context->function->parameterLevel)
        popFrame();
}

}  // namespace

void returnFromFunction() {
    ExecContext *context = currentContext, *caller = context->caller;
    FuncInfo *function = context->function;
    Value *value = resultOf(function, context->statement);
    value->next = caller->stack;
    caller->stack = value;
    releaseBlocks(context);
    keepReturnedText(function, context->frames, value);
    releaseParameters(context);
    leaveForeachs(context, {});
    if (runsOnObject(function))
        leaveObject();
    releaseCall(context);
    caller->state = 1;
}

void leaveFunction(bool withDestructors) {
    ExecContext *context = currentContext;
    while (context->frames && !context->frames->isFunction &&
           context->frames->level > context->function->parameterLevel) {
        if (withDestructors)
            runDestructors(static_cast<StmtNode *>(context->frames->owner)->operandC.symbols);
        popFrame();
    }
    if (withDestructors)
        runDestructors(context->function->parameters);
    releaseParameters(context);
    leaveForeachs(context, {});
    if (runsOnObject(context->function))
        leaveObject();
    releaseCall(context);
}

}  // namespace zy
