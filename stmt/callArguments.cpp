// How the arguments of a call become the variables of the function. Each is evaluated before the
// call and converted to its formal when the call begins, the first one first.

#include "stmt/callArguments.h"

#include "decl/funcInfo.h"
#include "expr/context.h"
#include "expr/direct.h"
#include "expr/nodes.h"
#include "expr/objects.h"
#include "expr/operators.h"
#include "expr/scope.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "numeric/assign.h"
#include "numeric/convert.h"
#include "stmt/arrayArguments.h"
#include "stmt/functionName.h"
#include "stmt/textArguments.h"

namespace zy {

// A parameter list of `void` alone is no parameter.
bool hasParameters(const FuncInfo *function) {
    const TypeInfo *first = function->parameters;
    return first && !(first->dataType == DT_VOID && first->kind < KIND_P_FUNCTION);
}

bool isByReference(const TypeInfo *formal) {
    return formal->kind == KIND_REFERENCE || formal->kind == KIND_BY_REFERENCE;
}

namespace {

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

// The frame of a call may have the slot's cell from its last use.
void passNumber(ScopeFrame *frame, int slot, int type, const Value *value) {
    SlotChunk *first = frame->chunks[0];
    VarCell *cell = first && slot < SLOTS_PER_CHUNK ? first->cells[slot] : nullptr;
    if (!cell)
        cell = newVarCell(type);
    fillSlot(frame, slot, cell);
    cell->type = type;
    if (!value)
        cell->data = {};
    else if (static_cast<int>(value->type) == type) [[likely]]
        cell->data = value->payload;
    else
        storeInCell(cell, value);
}

// A cell for a formal with the value, converted as an assignment converts it.
VarCell *newArgument(TypeInfo *formal, Value *value) {
    VarCell *cell = newVarCell(formal->dataType);
    initCell(cell, formal, isByReference(formal) ? int{KIND_SIMPLE} : formal->kind);
    if (value && !passText(cell, value) && !passElements(cell, value))
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

// A formal with the value that was computed for it, NULL for none.
void passValue(ScopeFrame *frame, int slot, TypeInfo *formal, Value *value) {
    if (isNumberFormal(formal))
        passNumber(frame, slot, formal->dataType, value);
    else if (value && isArrayFormal(formal))
        setSlot(frame, slot, newArrayArgument(formal, value));
    else
        setSlot(frame, slot, newArgument(formal, value));
}

void passArgument(ScopeFrame *frame, int slot, TypeInfo *formal, ExprNode *cell) {
    TypeInfo *variable = takesArrayCell(formal) ? variableOf(cell->item) : nullptr;
    if (isByReference(formal)) {
        setSlot(frame, slot, newReference(formal, cell));
    } else if (variable) {
        setSlot(frame, slot, newArrayArgument(formal, findVarCell(variable)));
    } else {
        bool popped;
        Value *value = valueOfArgument(cell, popped);
        passValue(frame, slot, formal, value);
        if (value && popped)
            deleteValue(value);
    }
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

// Arguments that are computed here, the last one first.
void passComputed(ScopeFrame *frame, int slot, TypeInfo *formal, ExprNode *actual) {
    if (formal->next && actual->next)
        passComputed(frame, slot + 1, formal->next, actual->next);
    noteDirectSteps(actual->item);
    Value value;
    actual->number(actual->item, &value);
    passValue(frame, slot, formal, &value);
}

}  // namespace

// Other arguments lie on the stack, the first on top.
ExprNode *passArguments(ScopeFrame *frame, TypeInfo *callee, ExprNode *actual) {
    int slot = 0;
    TypeInfo *formal = callee->functionLink->parameters;
    if (callee->flags & FLAG_MEMBER_FUNCTION) {
        formal = passThis(frame, formal);
        slot = 1;
    }
    bool computed = actual && actual->number && formal;
    if (computed)
        passComputed(frame, slot, formal, actual);
    for (; formal; formal = formal->next, slot++) {
        if (!actual) {
            warnOfMissing(callee);
            passValue(frame, slot, formal, nullptr);
            continue;
        }
        if (!computed)
            passArgument(frame, slot, formal, actual);
        actual = actual->next;
    }
    return actual;
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
void dropActuals(ExprNode *actual) {
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

}  // namespace zy
