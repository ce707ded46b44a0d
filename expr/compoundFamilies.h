// The compound assignments: the value of left op right, computed by the types that both have when
// they meet, then stored. The variable is read through `left` and written through `third`, a copy
// of it, so that each has subscripts of its own on the stack.
#pragma once

#include "expr/arrayRoutines.h"
#include "expr/nodeClasses.h"
#include "expr/operators.h"
#include "expr/scalarFamilies.h"
#include "expr/typeQueries.h"
#include "numeric/convert.h"

namespace zy {

// Whether storing into the target is writing one word: a number of its own, no system variable,
// whose change has effects.
bool isPlainTarget(const ExprNode *target);
// Store what was computed; it stays on the stack as the value of the expression.
void storeCompound(ExprNode *node, Value *result);
void storePlainCompound(ExprNode *node, Value *result);

// The same for members that are numbers (expr/memberStores.cpp), by where the object comes from.
enum class MemberForm { NONE, OWN, STACKED };
MemberForm memberForm(ExprNode *target);
template <MemberForm form>
bool storeInMember(ExprNode *target, const Value *value);
template <MemberForm form>
void storeMemberCompound(ExprNode *node, Value *result);
NodeRoutine memberAssignment(ExprNode *node);  // NULL for a target that is none
// A number into the type of its target; false if the store has rules of its own.
bool convertPlain(Value *value, uint32_t type);
void assignConverted(ExprNode *node);

// + - * / of two numbers: in the wider type, as the plain operators.
template <class Operation>
struct ArithmeticCompound {
    template <class T, class Result = T>
    static void in(Value *result, const Value *left, const Value *right) {
        BinaryFamily<Operation, T, Result>::run(result, left, right);
    }
    static void run(Value *result, const Value *left, const Value *right) {
        auto less = left->type < right->type ? left->type : right->type;
        auto more = left->type < right->type ? right->type : left->type;
        if (more < DT_UINT)
            return in<int>(result, left, right);
        if (more == DT_DOUBLE)
            return in<double>(result, left, right);
        switch (more) {
            case DT_UINT: return in<unsigned>(result, left, right);
            case DT_LLONG:
                return less == DT_UINT ? in<unsigned long long, long long>(result, left, right)
                                       : in<long long>(result, left, right);
            case DT_ULLONG: return in<unsigned long long>(result, left, right);
            default: return in<float>(result, left, right);
        }
    }
};

// The others compute in 64 bits and keep the type of the left operand.
void setInteger(Value *value, int type, uint64_t bits);
inline bool isUnsigned(int type) {
    return type == DT_UCHAR || type == DT_USHORT || type == DT_UINT || type == DT_ULLONG;
}

template <class Operation>
struct BitCompound {
    static void run(Value *result, const Value *left, const Value *right) {
        auto bits = Operation::of(readUnsigned64(left), readUnsigned64(right));
        setInteger(result, left->type, bits);
    }
};

struct ModuloCompound {
    static void run(Value *result, const Value *left, const Value *right) {
        uint64_t bits;
        if (left->type == DT_ULLONG)
            bits = Modulo::of(readUnsigned64(left), readUnsigned64(right));
        else if (left->type == DT_UINT)
            bits = Modulo::of(left->payload.u, static_cast<uint32_t>(readSigned64(right)));
        else
            bits = static_cast<uint64_t>(Modulo::of(readSigned64(left), readSigned64(right)));
        setInteger(result, left->type, bits);
    }
};

// The count is reduced to the width, 32 or 64, so that a negative one doesn't turn the direction.
template <class Direction>
struct ShiftCompound {
    static void run(Value *result, const Value *left, const Value *right) {
        bool wide = left->type == DT_LLONG || left->type == DT_ULLONG;
        int count = static_cast<int>(readSigned64(right) & (wide ? 63 : 31));
        uint64_t bits = isUnsigned(left->type)
                            ? Direction::of(readUnsigned64(left), count)
                            : static_cast<uint64_t>(Direction::of(readSigned64(left), count));
        setInteger(result, left->type, bits);
    }
};

// What isn't two real numbers: pointers, and what the plain operator of the pair's types computes.
// NULL after a message for a pair that has no such operator.
Value *compoundOther(ExprNode *node, Value *left, Value *right);

template <class Family>
Value *compoundValue(ExprNode *node) {
    Operand left(node->left), right(node->right);
    if (!left || !right)
        return nullptr;
    if (left->type > DT_DOUBLE || right->type > DT_DOUBLE) [[unlikely]] {
        left.releaseContents();
        right.releaseContents();
        return compoundOther(node, left.get(), right.get());
    }
    Value *result = left.takeRecord();
    if (!result)
        result = newZeroValue(DT_INT);
    if (result)
        Family::run(result, left.get(), right.get());
    return result;
}

template <class Family, auto store>
void compoundForm(ExprNode *node) {
    if (Value *result = compoundValue<Family>(node))
        store(node, result);
}

template <class Family>
void compound(ExprNode *node) {
    if (isComputational(treeType(node->left))) {
        node->routine = arrayCompoundAssignment;
        node->routine(node);
        return;
    }
    switch (memberForm(node->third)) {
        case MemberForm::OWN:
            node->routine = compoundForm<Family, storeMemberCompound<MemberForm::OWN>>;
            break;
        case MemberForm::STACKED:
            node->routine = compoundForm<Family, storeMemberCompound<MemberForm::STACKED>>;
            break;
        default:
            node->routine = isPlainTarget(node->left) ? compoundForm<Family, storePlainCompound>
                                                      : compoundForm<Family, storeCompound>;
    }
    node->routine(node);
}

}  // namespace zy
