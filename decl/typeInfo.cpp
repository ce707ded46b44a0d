// Records of declarations and who releases what: a TypeInfo owns its ArrayInfo and FuncInfo, a tag
// its StructInfo.

#include "decl/typeInfo.h"

#include "decl/declState.h"
#include "decl/structInfo.h"
#include "expr/nodes.h"
#include "expr/scope.h"
#include "instance/report.h"

namespace zy {

TypeInfo *newTypeInfo() {
    TypeInfo *info = takeRecord(typeRecords);
    if (!info) {
        reportOutOfMemory();
        return nullptr;
    }
    *info = TypeInfo{};
    info->level = FILE_LEVEL;
    info->dataType = DT_INT;
    return info;
}

void releaseTypeRecords() { releasePool(typeRecords); }

namespace {

bool ownsAggregate(const TypeInfo *info) {
    bool isTag = info->dataType == DT_TAG || info->dataType == DT_ENUM;
    return isTag && info->structLink && info->structLink->tag == info;
}

// The members of an enum are declarations of its block.
void releaseTagOf(const TypeInfo *info) {
    if (!ownsAggregate(info))
        return;
    if (info->structLink->aggregateKind == AGGREGATE_ENUM)
        info->structLink->members = nullptr;
    deleteNode(info->structLink);
}

bool ownsStaticCell(const TypeInfo *info) {
    bool isMember = info->context == CONTEXT_MEMBER || info->context == CONTEXT_UNION_MEMBER;
    return info->storage == STORAGE_STATIC && info->storageCell &&
           (isMember || info->level > FILE_LEVEL);
}

}  // namespace

namespace {

void releaseBodyOf(const TypeInfo *info) {
    bool isFunction = info->kind == KIND_FUNCTION && info->dataType != DT_CONSTANT;
    if (isFunction && info->functionLink && info->functionLink->owner == info)
        releaseFunctionBody(info->functionLink);
}

void releaseCellOf(TypeInfo *info) {
    if (ownsStaticCell(info))
        killEntry(info->storageCell);
    info->storageCell = nullptr;
}

void releaseRecord(TypeInfo *info) {
    releaseTagOf(info);
    deleteNode(info->arrayLink);
    deleteNode(info->pointerFunction);
    releaseBodyOf(info);
    deleteNode(info->functionLink);  // or the constant
    releaseCellOf(info);
    giveRecord(typeRecords, info);
}

}  // namespace

void releaseTypeInfo(TypeInfo *info) {
    if (ownsAggregate(info) && info->dataType == DT_TAG) {
        info->next = retiredTags;
        retiredTags = info;
    } else {
        releaseRecord(info);
    }
}

// ---- Retired tags -------------------------------------------------------------------------------

namespace {

// All objects that a class keeps: those of its static members, and those in its functions.
void releaseObjectsOf(const StructInfo *info) {
    for (TypeInfo *member = info->members; member; member = member->next) {
        if (ownsAggregate(member) && member->dataType == DT_TAG)
            releaseObjectsOf(member->structLink);
        releaseBodyOf(member);
        releaseCellOf(member);
    }
}

}  // namespace

void releaseRetiredTags() {
    // The bodies of functions may retire further tags, and so may the members.
    while (retiredTags) {
        TypeInfo *empty = nullptr;
        while (TypeInfo *tag = retiredTags) {
            retiredTags = tag->next;
            releaseObjectsOf(tag->structLink);
            tag->next = empty;
            empty = tag;
        }
        while (TypeInfo *tag = empty) {
            empty = tag->next;
            releaseRecord(tag);
        }
    }
}

void releaseTypeInfoList(TypeInfo *list) {
    while (list) {
        TypeInfo *next = list->next;
        releaseTypeInfo(list);
        list = next;
    }
}

DataType dataTypeOf(const TypeInfo *info) {
    if (!info)
        return DT_UNDEFINED;
    switch (info->kind) {
        case KIND_C_ARRAY:
        case KIND_ASSUMED_C_ARRAY: return DT_CARRAY;
        case KIND_ARRAY:
        case KIND_ASSUMED_ARRAY: return DT_ARRAY;
        case KIND_P_C_ARRAY: return DT_P_CARRAY;
        case KIND_P_ARRAY: return DT_P_ARRAY;
        case KIND_FUNCTION: return DT_FUNCTION;
        case KIND_P_FUNCTION: return DT_P_FUNCTION;
        case KIND_PP_FUNCTION: return DT_PP_FUNCTION;
        case KIND_PPP_FUNCTION: return DT_PPP_FUNCTION;
        default: return static_cast<DataType>(info->dataType);
    }
}

}  // namespace zy
