// Stores into members that are numbers: the forms of `=`, of the compound assignments and of the
// increments that write one word. What they can't do the general forms do, with the stack as it
// was.

#include <cstring>

#include "expr/compoundFamilies.h"
#include "expr/memberAccess.h"
#include "expr/operands.h"
#include "numeric/assign.h"

namespace zy {

namespace {

void storeWord(char *place, const Value *value) {
    switch (value->type) {
        case DT_CHAR:
        case DT_UCHAR: *place = value->payload.c; break;
        case DT_SHORT:
        case DT_USHORT: memcpy(place, &value->payload, sizeof(short)); break;
        case DT_INT:
        case DT_UINT:
        case DT_FLOAT: memcpy(place, &value->payload, sizeof(int)); break;
        default: memcpy(place, &value->payload, sizeof(double)); break;
    }
}

inline uint32_t typeOf(ExprNode *target) {
    return static_cast<uint32_t>(static_cast<const TypeInfo *>(target->right->link)->dataType);
}

}  // namespace

// The object of a stacked form lies on top of the stack, and is taken from there. False, with the
// stack as it was, for what the general store must do.
template <MemberForm form>
bool storeInMember(ExprNode *target, const Value *value) {
    constexpr bool isOwn = form == MemberForm::OWN;
    Value *holder = currentContext->stack;
    if (!isOwn && !holder)
        return false;
    char *place = isOwn ? placeOfOwn(target) : placeIn(holder, target);
    if (!place || value->type != typeOf(target)) [[unlikely]]
        return false;
    storeWord(place, value);
    if constexpr (!isOwn)
        recycleValue(popValue());
    return true;
}
template bool storeInMember<MemberForm::OWN>(ExprNode *, const Value *);
template bool storeInMember<MemberForm::STACKED>(ExprNode *, const Value *);

template <MemberForm form>
void storeMemberCompound(ExprNode *node, Value *result) {
    if (storeInMember<form>(node->third, result))
        pushValue(result);
    else
        storeCompound(node, result);
}
template void storeMemberCompound<MemberForm::OWN>(ExprNode *, Value *);
template void storeMemberCompound<MemberForm::STACKED>(ExprNode *, Value *);

namespace {

template <MemberForm form>
void assignStacked(ExprNode *node) {
    Value *value = currentContext->stack;
    if (form == MemberForm::STACKED && value)
        value = value->next;
    bool done =
        value && convertPlain(value, typeOf(node->left)) && storeInMember<form>(node->left, value);
    if (!done) [[unlikely]]
        assignConverted(node);
}

template <MemberForm form>
void assignConstant(ExprNode *node) {
    Value *value = copyRecord(operandInPlace(node->right));
    if (!value)
        return;
    if (convertPlain(value, typeOf(node->left)) && storeInMember<form>(node->left, value)) {
        pushValue(value);
        return;
    }
    recycleValue(value);
    assignConverted(node);
}

template <MemberForm form>
NodeRoutine assignment(const ExprNode *node) {
    return standsInPlace(node->right) ? assignConstant<form> : assignStacked<form>;
}

}  // namespace

MemberForm memberForm(ExprNode *target) {
    if (!plainMember(target))
        return MemberForm::NONE;
    return findsOwnObject(target) ? MemberForm::OWN : MemberForm::STACKED;
}

NodeRoutine memberAssignment(ExprNode *node) {
    switch (memberForm(node->left)) {
        case MemberForm::OWN: return assignment<MemberForm::OWN>(node);
        case MemberForm::STACKED: return assignment<MemberForm::STACKED>(node);
        default: return nullptr;
    }
}

}  // namespace zy
