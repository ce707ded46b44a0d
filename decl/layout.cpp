#include "decl/layout.h"

#include <algorithm>
#include <cstring>

#include "decl/aggregates.h"
#include "decl/arrayInfo.h"
#include "expr/objects.h"
#include "front/names.h"
#include "instance/langState.h"
#include "instance/report.h"

namespace zy {

bool isPad(const TypeInfo *member) {
    return member->bitField && strcmp(member->name->text, "__bitfieldpad") == 0;
}

bool isEnumerator(const TypeInfo *member) {
    return (member->qualifiers & QUALIFIER_BUILTIN) && member->structLink && member->constant;
}

namespace {

bool isArrayKind(const TypeInfo *member) {
    return member->kind == KIND_C_ARRAY || member->kind == KIND_ARRAY;
}

bool isFunctionKind(const TypeInfo *member) { return member->kind >= KIND_FUNCTION; }

// The product of the extents; 0 if one isn't known.
int64_t elementCount(const ArrayInfo *array) {
    int64_t count = array && array->bounds ? 1 : 0;
    for (const ExprNode *cell = array ? array->bounds : nullptr; cell && cell->next;
         cell = cell->next->next) {
        int64_t lower = cell->item->payload.i, limit = cell->next->item->payload.i;
        count *= limit == OPEN_LIMIT || limit < lower ? 0 : limit - lower;
        if (count > INT32_MAX)
            return 0;
    }
    return count;
}

int elementSize(const TypeInfo *member) {
    if (member->dataType != DT_STRUCT)
        return sizeofType(member->dataType);
    return member->structLink ? static_cast<int>(member->structLink->size) : 0;
}

int aggregateAlign(const StructInfo *info) {
    int align = 1;
    for (const TypeInfo *member = info ? info->members : nullptr; member; member = member->next)
        if (takesRoom(member, AGGREGATE_STRUCT))
            align = std::max(align, memberAlign(member));
    return align;
}

}  // namespace

bool takesRoom(const TypeInfo *member, AggregateKind aggregateKind) {
    bool isShared = member->storage == STORAGE_STATIC && aggregateKind == AGGREGATE_STRUCT;
    return member->storage != STORAGE_TYPEDEF && !isEnumerator(member) && !isShared &&
           member->kind != KIND_FUNCTION;
}

int memberAlign(const TypeInfo *member) {
    if (isFunctionKind(member))
        return sizeof(void *);
    if (member->dataType == DT_STRUCT)
        return aggregateAlign(member->structLink);
    return sizeofType(member->dataType);
}

int memberSize(const TypeInfo *member) {
    if (isFunctionKind(member))
        return sizeof(void *);
    int size = elementSize(member);
    if (!isArrayKind(member))
        return member->kind == KIND_P_C_ARRAY || member->kind == KIND_P_ARRAY ? sizeof(void *)
                                                                              : size;
    int64_t bytes = size * elementCount(member->arrayLink);
    if (bytes == 0 || bytes > INT32_MAX) {
        parseError("null dimension for array field '%s'", member->name->text);
        return 0;
    }
    return static_cast<int>(bytes);
}

namespace {

uint32_t roundUp(uint32_t offset, uint32_t align) { return (offset + align - 1) / align * align; }

class Layout {
public:
    explicit Layout(StructInfo *aggregate) : info(aggregate) {}
    void run();

private:
    TypeInfo *placeBitFields(TypeInfo *first);
    void completeFunction(TypeInfo *member);
    void placeInStruct(TypeInfo *member);
    void placeInUnion(TypeInfo *member);

    StructInfo *info;
    uint32_t offset = 0;
    uint32_t align = 1;
};

// The bit-fields of one unit, an object of their declared type. The first that isn't in it.
TypeInfo *Layout::placeBitFields(TypeInfo *first) {
    int unit = sizeofType(first->dataType), used = 0;
    offset = roundUp(offset, static_cast<uint32_t>(unit));
    align = std::max(align, static_cast<uint32_t>(unit));
    TypeInfo *field = first;
    bool ends = false;
    while (field && field->bitField && !ends) {
        if (sizeofType(field->dataType) != unit || used + field->bitWidth > unit * 8)
            break;
        ends = field->bitWidth == 0;
        field->bitOffset = static_cast<uint8_t>(used);
        field->level = static_cast<int>(offset);
        used += field->bitWidth;
        field->flags |= FLAG_MEMBER;
        field = field->next;
    }
    offset += static_cast<uint32_t>(unit);
    return field;
}

void Layout::completeFunction(TypeInfo *member) {
    if (!member->structLink)
        member->structLink = info;
    addThis(member, info);
    if (member->name == info->tag->name && !(member->flags & FLAG_CONSTRUCTOR)) {
        const char *name = plainTagName(info->tag);
        parseError("constructor %s::%s() with return type", name, name);
    }
}

uint32_t packed(int align) {
    int limit = e_lang->packAlignment;
    return static_cast<uint32_t>(std::max(1, limit && limit < align ? limit : align));
}

void Layout::placeInStruct(TypeInfo *member) {
    uint32_t own = packed(memberAlign(member));
    align = std::max(align, own);
    offset = roundUp(offset, own);
    member->level = static_cast<int>(offset);
    offset += static_cast<uint32_t>(memberSize(member));
}

void Layout::placeInUnion(TypeInfo *member) {
    align = std::max(align, packed(memberAlign(member)));
    member->level = 0;
    offset = std::max(offset, static_cast<uint32_t>(memberSize(member)));
}

// The texts of a union can't be told from its other members.
bool holdsTexts(const StructInfo *info) {
    for (const TypeInfo *member = info->members; member; member = member->next) {
        if (!takesRoom(member, AGGREGATE_STRUCT) || isFunctionKind(member))
            continue;
        bool isNested = member->dataType == DT_STRUCT && member->structLink;
        if (member->dataType == DT_STRING || (isNested && member->structLink->ownsTexts))
            return true;
    }
    return false;
}

bool holdsObjects(const StructInfo *info) {
    for (const TypeInfo *member = info->members; member; member = member->next)
        if (livesAsMember(member))
            return true;
    return false;
}

void Layout::run() {
    bool isUnion = info->aggregateKind == AGGREGATE_UNION;
    for (TypeInfo *member = info->members; member;) {
        member->flags |= FLAG_MEMBER;
        if (member->kind == KIND_FUNCTION && member->storage != STORAGE_TYPEDEF)
            completeFunction(member);
        bool isStatic = member->storage == STORAGE_STATIC;
        if (member->bitField && isStatic)
            parseError("static member of bitfield for %s", member->name->text);
        if (takesRoom(member, static_cast<AggregateKind>(info->aggregateKind))) {
            if (isUnion) {
                placeInUnion(member);
            } else if (member->bitField) {
                member = placeBitFields(member);
                continue;
            } else {
                placeInStruct(member);
            }
        }
        member = member->next;
    }
    info->ownsTexts = !isUnion && holdsTexts(info);
    info->ownsObjects = !isUnion && holdsObjects(info);
    info->size = std::max(1u, roundUp(offset, align));
    info->declaredSize = info->size;
}

}  // namespace

void layOutMembers(StructInfo *info) { Layout(info).run(); }

}  // namespace zy
