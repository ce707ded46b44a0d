// Operators that store: `=`, the compound assignments, increments and decrements. The store itself
// is assignValue; a number that goes into a variable of its own type is stored here.

#include <cmath>

#include "expr/arrayRoutines.h"
#include "expr/calls.h"
#include "expr/compoundFamilies.h"
#include "expr/elementOperators.h"
#include "expr/evaluator.h"
#include "expr/nodeClasses.h"
#include "expr/operators.h"
#include "expr/routines.h"
#include "expr/scalarFamilies.h"
#include "expr/scope.h"
#include "expr/select.h"
#include "expr/selection.h"
#include "expr/typeQueries.h"

#include "numeric/convert.h"
#include "numeric/shape.h"

namespace zy {

bool isPlainTarget(const ExprNode *target) {
    const TypeInfo *symbol = variableOf(target);
    return symbol && symbol->kind == KIND_SIMPLE && symbol->level != SYSTEM_LEVEL &&
           isReal(symbol->dataType);
}

namespace {

// The cell of a plain target, if the value goes into it unchanged.
VarCell *plainCell(TypeInfo *symbol, const Value *value) {
    VarCell *cell = findVarCell(symbol);
    return cell->type == value->type && cell->type == static_cast<uint32_t>(symbol->dataType)
               ? cell
               : nullptr;
}

}  // namespace

// ---- = ------------------------------------------------------------------------------------------

namespace {

void pushCopyOf(const Value *constant) {
    if (Value *copy = copyRecord(constant))
        pushValue(copy);
    else
        endChain();
}

// An array as a whole: the result is the target as it then is, a view.
void assignArray(ExprNode *node) {
    assignValue(node->left, node->right);
    if (!standsInPlace(node->right) && currentContext->stack)
        deleteValue(popValue());
    fetchVariable(node->left->payload.symbol, 0);
}

// The assigned value is the result. What was popped the store puts back; a constant it can't.
void assignAny(ExprNode *node) {
    bool constant = standsInPlace(node->right);
    assignValue(node->left, node->right);
    int target = constant ? treeType(node->left) : DT_VOID;
    if (constant && target != DT_ARRAY && target != DT_P_ARRAY)
        pushCopyOf(operandInPlace(node->right));
}

}  // namespace

// Numbers of another type are not cast before they are stored, since the store has its own rules
// for special values. The value of the assignment is the number that the target then has.
void assignConverted(ExprNode *node) {
    assignAny(node);
    int type = treeType(node->left);
    Value *value = currentContext->stack;
    if (!value || static_cast<int>(value->type) == type || !isScalarNumeric(value->type))
        return;
    if (TypeInfo *symbol = variableOf(node->left)) {
        deleteValue(popValue());
        fetchVariable(symbol, 0);
    } else {
        convertScalar(value, type);
    }
}

namespace {

bool isConverting(const ExprNode *node) {
    int target = treeType(node->left), source = treeType(node->right);
    return target != source && isScalarNumeric(target) && isScalarNumeric(source);
}

}  // namespace

// A number into the type of its target, for the pairs in which the store has no rule of its own.
bool convertPlain(Value *value, uint32_t type) {
    if (value->type == type)
        return true;
    if (value->type != DT_INT && value->type != DT_DOUBLE && value->type != DT_FLOAT)
        return false;
    double number = readDouble(value);
    switch (type) {
        case DT_DOUBLE: setScalar(value, number); return true;
        case DT_FLOAT: setScalar(value, static_cast<float>(number)); return true;
        case DT_INT:
            if (std::isnan(number))
                return false;
            setScalar(value, truncateToInt32(number));
            return true;
        default: return false;
    }
}

namespace {

void assignPlain(ExprNode *node) {
    Value *value = topValue();
    if (!value)
        return;
    TypeInfo *symbol = node->left->payload.symbol;
    VarCell *cell = findVarCell(symbol);
    if (cell->type == static_cast<uint32_t>(symbol->dataType) && convertPlain(value, cell->type))
        cell->data = value->payload;
    else
        assignConverted(node);
}

void assignPlainConstant(ExprNode *node) {
    Value *value = copyRecord(operandInPlace(node->right));
    if (!value)
        return;
    TypeInfo *symbol = node->left->payload.symbol;
    VarCell *cell = findVarCell(symbol);
    if (cell->type == static_cast<uint32_t>(symbol->dataType) && convertPlain(value, cell->type)) {
        cell->data = value->payload;
        pushValue(value);
    } else {
        recycleValue(value);
        assignConverted(node);
    }
}

}  // namespace

void assignGeneral(ExprNode *node) {
    if (isConverting(node))
        assignConverted(node);
    else
        assignAny(node);
}

void assignOperator(ExprNode *node) {
    bool constant = standsInPlace(node->right);
    if (isPlainTarget(node->left) && isReal(treeType(node->right)))
        node->routine = constant ? assignPlainConstant : assignPlain;
    else if (isElementwiseAssignment(node))
        node->routine = elementwiseAssignment;
    else if (variableOf(node->left) && isComputational(treeType(node->left)))
        node->routine = assignArray;
    else if (NodeRoutine routine = elementAssignRoutine(node))
        node->routine = routine;
    else if (NodeRoutine member = isReal(treeType(node->right)) ? memberAssignment(node) : nullptr)
        node->routine = member;
    else
        node->routine = isConverting(node) ? assignConverted : assignAny;
    node->routine(node);
}

// ---- Compound -----------------------------------------------------------------------------------

void setInteger(Value *value, int type, uint64_t bits) {
    Payload &payload = value->payload;
    value->type = type;
    switch (type) {
        case DT_CHAR: payload.sc = static_cast<int8_t>(bits); break;
        case DT_UCHAR: payload.uc = static_cast<uint8_t>(bits); break;
        case DT_SHORT: payload.s = static_cast<int16_t>(bits); break;
        case DT_USHORT: payload.us = static_cast<uint16_t>(bits); break;
        case DT_INT:
        case DT_UINT: payload.u = static_cast<uint32_t>(bits); break;
        default: payload.ull = bits; break;
    }
}

Value *compoundOther(ExprNode *node, Value *left, Value *right) {
    if (isPointer(left->type) && isIntegral(right->type)) {
        if (node->op == OP_ASSIGN_ADD)
            return pointerAdd(node, left, right, OP_POINTER_ADD);
        if (node->op == OP_ASSIGN_SUBTRACT)
            return pointerAdd(node, left, right, OP_POINTER_SUBTRACT);
    }
    ExprNode plain{};
    plain.kind = NODE_OPERATOR;
    plain.op = selectBinary(plainOperator(node->op), left->type, right->type);
    plain.left = left;
    plain.right = right;
    plain.routine = plain.op == NO_OPERATOR ? undefinedOperation : operatorRoutine(plain.op);
    const Value *below = currentContext->stack;
    plain.routine(&plain);
    return currentContext->stack == below ? nullptr : popValue();
}

void storeCompound(ExprNode *node, Value *result) {
    assignValue(node->third, result);
    pushValue(result);
}

void storePlainCompound(ExprNode *node, Value *result) {
    VarCell *cell = plainCell(node->left->payload.symbol, result);
    if (!cell) [[unlikely]] {
        storeCompound(node, result);
        return;
    }
    cell->data = result->payload;
    pushValue(result);
}

// ---- Increments ---------------------------------------------------------------------------------

namespace {

// Adds 1 or -1 to the number itself, or to the first part of a pair.
bool stepNumber(Value *value, int step) {
    Payload &payload = value->payload;
    auto wide = static_cast<uint64_t>(static_cast<int64_t>(step));
    switch (value->type) {
        case DT_CHAR: payload.sc = static_cast<int8_t>(payload.sc + step); return true;
        case DT_UCHAR: payload.uc = static_cast<uint8_t>(payload.uc + step); return true;
        case DT_SHORT: payload.s = static_cast<int16_t>(payload.s + step); return true;
        case DT_USHORT: payload.us = static_cast<uint16_t>(payload.us + step); return true;
        case DT_INT:
        case DT_UINT: payload.u += static_cast<uint32_t>(step); return true;
        case DT_LLONG:
        case DT_ULLONG: payload.ull += wide; return true;
        case DT_FLOAT: payload.f += static_cast<float>(step); return true;
        case DT_DOUBLE:
        case DT_DCOMPLEX:
        case DT_DDUAL: payload.d += step; return true;
        case DT_COMPLEX:
        case DT_DUAL: payload.pair[0] += static_cast<float>(step); return true;
        default: return false;
    }
}

Value *stepValue(const Value *old, int step) {
    if (isPointer(old->type)) {
        ExprNode one{}, node{};
        one.kind = NODE_VALUE;
        one.type = DT_INT;
        one.payload.i = 1;
        return pointerAdd(&node, old, &one, step > 0 ? OP_POINTER_ADD : OP_POINTER_SUBTRACT);
    }
    Value *fresh = copyRecord(old);
    if (fresh && !stepNumber(fresh, step)) {
        runError("undefined operation");
        recycleValue(fresh);
        return nullptr;
    }
    return fresh;
}

bool isPostfix(int code) { return code == OP_POSTFIX_INCREMENT || code == OP_POSTFIX_DECREMENT; }
int stepOfCode(int code) {
    return code == OP_PREFIX_INCREMENT || code == OP_POSTFIX_INCREMENT ? 1 : -1;
}

void incrementAny(ExprNode *node) {
    Operand old(node->left);
    if (!old)
        return;
    Value *fresh = stepOfCode(node->op) > 0 ? incrementValue(old.get()) : decrementValue(old.get());
    if (!fresh)
        return;
    assignValue(node->right, fresh);
    Value *record = isPostfix(node->op) ? old.takeRecord() : nullptr;
    pushValue(record ? record : fresh);
    if (record)
        recycleValue(fresh);
}

template <int step, bool postfix>
void incrementPlain(ExprNode *node) {
    Value *value = currentContext->stack;
    VarCell *cell = value ? plainCell(node->left->payload.symbol, value) : nullptr;
    if (!cell) [[unlikely]] {
        incrementAny(node);
        return;
    }
    Value fresh;
    fresh.type = value->type;
    fresh.payload = value->payload;
    stepNumber(&fresh, step);
    cell->data = fresh.payload;
    if (!postfix)
        value->payload = fresh.payload;
}

template <MemberForm form>
void incrementMember(ExprNode *node) {
    Value *value = topValue();
    if (!value)
        return;
    Value fresh;
    fresh.type = value->type;
    fresh.payload = value->payload;
    popValue();
    bool done =
        stepNumber(&fresh, stepOfCode(node->op)) && storeInMember<form>(node->right, &fresh);
    pushValue(value);
    if (!done) [[unlikely]]
        incrementAny(node);
    else if (!isPostfix(node->op))
        value->payload = fresh.payload;
}

NodeRoutine otherIncrement(const ExprNode *node) {
    switch (memberForm(node->right)) {
        case MemberForm::OWN: return incrementMember<MemberForm::OWN>;
        case MemberForm::STACKED: return incrementMember<MemberForm::STACKED>;
        default: return incrementAny;
    }
}

NodeRoutine plainIncrement(int code) {
    switch (code) {
        case OP_PREFIX_INCREMENT: return incrementPlain<1, false>;
        case OP_PREFIX_DECREMENT: return incrementPlain<-1, false>;
        case OP_POSTFIX_INCREMENT: return incrementPlain<1, true>;
        default: return incrementPlain<-1, true>;
    }
}

}  // namespace

Value *incrementValue(const Value *old) { return stepValue(old, 1); }
Value *decrementValue(const Value *old) { return stepValue(old, -1); }

void incrementOperator(ExprNode *node) {
    if (isComputational(treeType(node->left)))
        node->routine = arrayIncrement;
    else
        node->routine = isPlainTarget(node->left) ? plainIncrement(node->op) : otherIncrement(node);
    node->routine(node);
}

}  // namespace zy
