#include "expr/objects.h"

#include <cstdlib>
#include <cstring>

#include "decl/funcInfo.h"
#include "decl/layout.h"
#include "expr/nodes.h"
#include "expr/value.h"

namespace zy {

namespace {

// Not a pointer or a function, and in the object itself.
bool isPlace(const TypeInfo *member) {
    bool isHere =
        member->kind == KIND_SIMPLE || member->kind == KIND_C_ARRAY || member->kind == KIND_ARRAY;
    return isHere && takesRoom(member, AGGREGATE_STRUCT);
}

// Calls visit(place of a pointer to text) for each string member of an object.
template <class Visit>
void visitTexts(char *object, const StructInfo *info, Visit visit) {
    for (const TypeInfo *member = info->members; member; member = member->next) {
        bool isNested =
            member->dataType == DT_STRUCT && member->structLink && member->structLink->ownsTexts;
        if (!isPlace(member) || (!isNested && member->dataType != DT_STRING))
            continue;
        char *place = object + member->level, *end = place + memberSize(member);
        for (; place < end; place += isNested ? member->structLink->size : sizeof(char *)) {
            if (isNested)
                visitTexts(place, member->structLink, visit);
            else
                visit(place);
        }
    }
}

}  // namespace

bool takesArguments(const TypeInfo *constructor) {
    const TypeInfo *self =
        constructor->functionLink ? constructor->functionLink->parameters : nullptr;
    return self && self->next;
}

bool livesAsMember(const TypeInfo *member) {
    return member->dataType == DT_STRUCT && isPlace(member) && hasLife(member->structLink);
}

void releaseObject(void *object, const StructInfo *info) {
    if (!object || !info || !info->ownsTexts)
        return;
    visitTexts(static_cast<char *>(object), info, [](char *place) {
        char *text;
        memcpy(&text, place, sizeof text);
        free(text);
        text = nullptr;
        memcpy(place, &text, sizeof text);
    });
}

void copyObject(void *target, const void *source, const StructInfo *info) {
    if (!target || !source || !info || target == source)
        return;
    releaseObject(target, info);
    memmove(target, source, info->size);
    if (!info->ownsTexts)
        return;
    visitTexts(static_cast<char *>(target), info, [](char *place) {
        char *text;
        memcpy(&text, place, sizeof text);
        text = copyString(text);
        memcpy(place, &text, sizeof text);
    });
}

void keepTextsOf(void *object, const StructInfo *info) {
    if (!info->ownsTexts)
        return;
    visitTexts(static_cast<char *>(object), info, [](char *place) {
        char *text;
        memcpy(&text, place, sizeof text);
        keepText(text);
    });
}

void *newObjectCopy(const void *source, const StructInfo *info) {
    void *copy = info && source ? allocOrFail(info->size) : nullptr;
    if (!copy)
        return nullptr;
    memset(copy, 0, info->size);
    copyObject(copy, source, info);
    return copy;
}

void ownObject(Value *value) {
    value->payload.p = newObjectCopy(value->payload.p, value->payload2.structInfo);
    value->owned = value->payload.p != nullptr;
    value->noFree = 0;
}

void ownPart(Value *value) {
    ownObject(value);
    value->owned = value->payload.p ? OWNED_PART : 0;
}

}  // namespace zy
