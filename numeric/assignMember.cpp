#include "numeric/assignMember.h"

#include <cstring>

#include "decl/structInfo.h"
#include "expr/memberAccess.h"
#include "expr/nodes.h"
#include "expr/objects.h"
#include "expr/scope.h"
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

namespace {

// What a union holds may be no text, so the old one isn't released; the new one lives as literals
// do.
void storeUnionText(void *place, const Value *value) {
    bool isText = value->type == DT_STRING || value->type == DT_P_CHAR;
    char *text = isText ? copyString(value->payload.text) : nullptr;
    if (text)
        text = keepText(text);
    memcpy(place, &text, sizeof text);
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
    else if (type == DT_STRING && member->context == CONTEXT_UNION_MEMBER)
        storeUnionText(place, value);
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
    else
        storeAt(member, object.place, source.get());
}

}  // namespace zy
