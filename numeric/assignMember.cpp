#include "numeric/assignMember.h"

#include <cstring>

#include "decl/structInfo.h"
#include "expr/memberAccess.h"
#include "expr/nodeClasses.h"
#include "expr/nodes.h"
#include "expr/objects.h"
#include "expr/scope.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "numeric/arrayStorage.h"
#include "numeric/assign.h"
#include "numeric/assignSource.h"

namespace zy {

bool storeObject(void *object, const Value *value, const StructInfo *info) {
    bool fits = value->type == DT_STRUCT && info && value->payload2.structInfo &&
                value->payload2.structInfo->size == info->size;
    if (!fits || !object)
        return false;
    copyObject(object, value->payload.p, info);
    return true;
}

bool liesInUnion(const ExprNode *tree) {
    while (isOperator(tree)) {
        const TypeInfo *member = isMember(tree->op) ? memberOf(tree) : nullptr;
        if (member && member->context == CONTEXT_UNION_MEMBER)
            return true;
        if (tree->op == OP_ARROW)
            return false;
        tree = tree->left;
    }
    return false;
}

void storeUnionText(void *place, const Value *value) {
    bool isText = value->type == DT_STRING || value->type == DT_P_CHAR;
    char *text = isText ? copyString(value->payload.text) : nullptr;
    if (text)
        text = keepText(text);
    memcpy(place, &text, sizeof text);
}

void storeUnionObject(void *place, const Value *value, const StructInfo *info) {
    if (value->type != DT_STRUCT || !info || !place || place == value->payload.p)
        return;
    memset(place, 0, info->size);
    copyObject(place, value->payload.p, info);
    keepTextsOf(place, info);
}

namespace {

bool holdsTexts(const TypeInfo *member) {
    return member->dataType == DT_STRING ||
           (member->dataType == DT_STRUCT && member->structLink && member->structLink->ownsTexts);
}

// True if it is done.
bool storeInUnion(const ExprNode *target, const TypeInfo *member, void *place, const Value *value) {
    if (member->kind != KIND_SIMPLE || !holdsTexts(member) || !liesInUnion(target))
        return false;
    if (member->dataType == DT_STRING)
        storeUnionText(place, value);
    else
        storeUnionObject(place, value, member->structLink);
    return true;
}

void storeAt(const TypeInfo *member, void *place, const Value *value) {
    int type = dataTypeOf(member);
    bool done = true;
    if (member->bitField)
        writeBitField(place, value, bandAbove(type), member->bitWidth, member->bitOffset);
    else if (type == DT_STRUCT)
        done = storeObject(place, value, member->structLink);
    else if (isArray(type))
        assignArrayMember(member, place, value);
    else if (type == DT_P_FUNCTION)
        memcpy(place, &value->payload.p, sizeof(void *));
    else
        done = storeScalar(place, type, value, StorePlace::VARIABLE);
    if (!done)
        runError("undefined operation");
}

void storeShared(TypeInfo *member, const Value *value) {
    VarCell *cell = member->storageCell ? findVarCell(member) : missingCell(member);
    if (!storeInCell(cell, value))
        runError("undefined operation");
}

}  // namespace

void assignMember(ExprNode *target, ExprNode *valueNode) {
    MemberObject object(target);
    TypeInfo *member = memberOfNode(target);
    Source source(valueNode);
    if (!member || !source)
        return;
    if (!liesInObject(member))
        storeShared(member, source.get());
    else if (!object.place)
        warnOfNoObject();
    else if (!storeInUnion(target, member, object.place, source.get()))
        storeAt(member, object.place, source.get());
}

}  // namespace zy
