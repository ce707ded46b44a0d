// The store walks through the variable as the reader of the list walked through its type: the
// counts tell how far each array and struct is filled. Where a value has the element's type already
// its bytes are copied; all else converts as an assignment does.

#include "numeric/initList.h"

#include <algorithm>
#include <cstring>

#include "decl/arrayInfo.h"
#include "decl/initialiserList.h"
#include "expr/evaluator.h"
#include "expr/memberAccess.h"
#include "expr/objects.h"
#include "expr/operands.h"
#include "expr/scope.h"
#include "numeric/arrayValue.h"
#include "numeric/assign.h"
#include "numeric/convert.h"

namespace zy {

namespace {

// The elements of a variable or member.
struct Elements {
    char *address;
    int type;
    size_t size;  // of one, in bytes
    uint64_t count;
    uint64_t rowLength;
    const StructInfo *info;         // of structs
    const ShapeNode *fortranShape;  // of a column-major array, NULL for all others

    char *at(uint64_t index) const;
};

// Column-major elements lie by their strides; the index counts in row-major order.
char *Elements::at(uint64_t index) const {
    if (!fortranShape) [[likely]]
        return address + index * size;
    uint64_t offset = 0, group = count;
    for (const ShapeNode *node = fortranShape; node; node = node->next) {
        group /= static_cast<uint32_t>(node->extent.limit - node->extent.lower);
        offset += index / group * node->extent.stride;
        index %= group;
    }
    return address + offset * size;
}

// Whether a Value of the type holds an object's bytes in its payload.
bool isCopied(int type, size_t size) {
    return type >= 0 && isScalarNumeric(type) && size <= sizeof(Payload);
}

bool isFixedArray(const TypeInfo *member) {
    return member->kind == KIND_C_ARRAY || member->kind == KIND_ARRAY;
}

void storeConverted(void *address, int type, const Value *value) {
    if (type == DT_P_FUNCTION)
        storeFunctionPointer(address, value);
    else
        storeScalar(address, type, value, StorePlace::VARIABLE);
}

class ListStore {
public:
    explicit ListStore(const ExprNode *list) : value(list->left), count(list->right) {}
    void storeElements(const Elements &elements);
    void storeStruct(char *address, const StructInfo *info);
    void dropRest();

private:
    int takeCount();
    Operand takeValue();
    void storeStructs(const Elements &elements, int given);
    void storeScalars(const Elements &elements, int given);
    uint64_t storeAny(const Elements &elements, uint64_t index);
    void storeMember(char *object, const TypeInfo *member);

    const ExprNode *value, *count;  // the next cells
};

int ListStore::takeCount() {
    if (!count)
        return 0;
    int number = count->item->payload.i;
    count = count->next;
    return number;
}

// Of a list without a chain each value has one of its own.
Operand ListStore::takeValue() {
    const ExprNode *cell = value;
    value = cell->next;
    if (cell->link)
        runNested(static_cast<ExprNode *>(cell->link));
    return Operand(cell->item, Operand::CONTENTS);
}

void ListStore::dropRest() {
    while (value)
        takeValue();
}

// ---- Arrays -----------------------------------------------------------------------------------

void ListStore::storeElements(const Elements &elements) {
    int given = takeCount();
    if (elements.type == DT_STRUCT)
        storeStructs(elements, given);
    else
        storeScalars(elements, given);
}

// Objects that the list passes over are made without arguments.
void constructFrom(const Elements &elements, uint64_t first, uint64_t end) {
    if (hasLife(elements.info) && first < end)
        constructObjects(elements.at(first), static_cast<uint32_t>(end - first), elements.info);
}

void ListStore::storeStructs(const Elements &elements, int given) {
    uint64_t index = 0;
    for (; given > 0; given--) {
        int passedOver = count ? count->item->payload.i : 0;
        if (passedOver < 0) {
            takeCount();
            uint64_t next = index + static_cast<uint64_t>(-static_cast<int64_t>(passedOver));
            constructFrom(elements, index, std::min(next, elements.count));
            index = next;
        } else if (index < elements.count) {
            storeStruct(elements.at(index++), elements.info);
        }
    }
    constructFrom(elements, index, elements.count);
}

void ListStore::storeScalars(const Elements &elements, int given) {
    bool copied = isCopied(elements.type, elements.size);
    uint64_t index = 0;
    for (; given > 0 && value; given--) {
        const ExprNode *item = value->item;
        bool isPlain = copied && item->kind == NODE_VALUE &&
                       item->type == static_cast<uint32_t>(elements.type);
        if (isPlain && index < elements.count) {
            memcpy(elements.at(index++), &item->payload, elements.size);
            value = value->next;
        } else {
            index = storeAny(elements, index);
        }
    }
}

// The characters of a text as far as the row has room, with the NUL at their end.
void storeText(const Elements &elements, uint64_t index, const Value *text) {
    if (isNullAddress(text->payload.p))
        return;
    size_t unit = elements.size, length = text->count;
    if (unit == 1 && (length == 0 || text->type == DT_STRING))
        length = strlen(text->payload.text) + 1;
    length = std::min<size_t>(length, elements.rowLength);
    const auto *source = static_cast<const char *>(text->payload.p);
    for (size_t i = 0; i < length; i++)
        memcpy(elements.at(index + i), source + i * unit, unit);
}

// One value at an index; the index behind it.
uint64_t ListStore::storeAny(const Elements &elements, uint64_t index) {
    const Operand given = takeValue();
    if (!given)
        return index;
    int type = static_cast<int>(given->type);
    if (type == DT_VOID)
        return index + given->payload.ull;
    if (index >= elements.count)
        return index;
    if (isRowText(elements.type, type)) {
        storeText(elements, index, given.get());
        return index + elements.rowLength;
    }
    if (type == DT_ARRAY || type == DT_P_ARRAY) {
        auto number =
            static_cast<uint32_t>(std::min<uint64_t>(given->count, elements.count - index));
        copyElements(elements.at(index), elements.type, given->payload.p,
                     given->payload2.elementType, number);
        return elements.count;
    }
    if (type == elements.type && isCopied(type, elements.size))
        memcpy(elements.at(index), &given->payload, elements.size);
    else
        storeConverted(elements.at(index), elements.type, given.get());
    return index + 1;
}

// ---- Structs ----------------------------------------------------------------------------------

void ListStore::storeStruct(char *address, const StructInfo *info) {
    int given = takeCount();
    if (given == WHOLE_OBJECT || given == CONSTRUCTED_OBJECT) {
        const Operand object = takeValue();
        bool isElsewhere = given == WHOLE_OBJECT && object && !isNullAddress(object->payload.p);
        if (isElsewhere)
            copyObject(address, object->payload.p, info);
        return;
    }
    const TypeInfo *member = firstListMember(info);
    for (; member && given > 0; given--) {
        storeMember(address, member);
        member = nextListMember(info, member);
    }
    constructMembers(address, info, member);
}

Elements elementsOfMember(char *object, const TypeInfo *member) {
    Elements elements{};
    elements.address = object + member->level;
    elements.type = member->dataType;
    elements.info = member->structLink;
    elements.size = static_cast<size_t>(elementSizeOf(member));
    elements.count = 1;
    for (const ExprNode *cell = member->arrayLink->bounds; cell && cell->next;
         cell = cell->next->next) {
        elements.rowLength = static_cast<uint32_t>(cell->next->item->payload.i) -
                             static_cast<uint32_t>(cell->item->payload.i);
        elements.count *= elements.rowLength;
    }
    return elements;
}

void ListStore::storeMember(char *object, const TypeInfo *member) {
    if (isFixedArray(member)) {
        storeElements(elementsOfMember(object, member));
        return;
    }
    char *address = object + member->level;
    if (member->kind == KIND_SIMPLE && member->dataType == DT_STRUCT) {
        storeStruct(address, member->structLink);
        return;
    }
    if (!value)
        return;
    const Operand given = takeValue();
    if (!given)
        return;
    if (member->bitField) {
        writeBitField(address, given.get(), pointerTo(member->dataType), member->bitWidth,
                      member->bitOffset);
        return;
    }
    bool isPointerToArray = member->kind == KIND_P_C_ARRAY || member->kind == KIND_P_ARRAY;
    storeConverted(address, isPointerToArray ? +DT_P_VOID : +dataTypeOf(member), given.get());
}

}  // namespace

// ---- Variables --------------------------------------------------------------------------------

namespace {

// A declaration that runs again finds what it left.
void clearElements(const Elements &elements) {
    releaseElements(elements.address, static_cast<uint32_t>(elements.count), elements.type);
    memset(elements.address, 0, elements.count * elements.size);
}

Elements elementsOfVariable(const VarCell *cell, const TypeInfo *symbol) {
    Elements elements{};
    elements.address = static_cast<char *>(cell->data.p);
    elements.type = symbol->dataType;
    elements.info = symbol->structLink;
    elements.size = static_cast<size_t>(elementSizeOf(symbol));
    elements.count = elements.address ? cell->count : 0;
    elements.fortranShape = isFortranOrdered(cell->shape) ? cell->shape : nullptr;
    for (const ShapeNode *node = cell->shape; node; node = node->next)
        elements.rowLength =
            static_cast<uint32_t>(node->extent.limit) - static_cast<uint32_t>(node->extent.lower);
    return elements;
}

}  // namespace

void assignInitList(const ExprNode *list, TypeInfo *symbol) {
    const VarCell *cell = findVarCell(symbol);
    ListStore store(list);
    if (!cell->data.p) {
        store.dropRest();
        return;
    }
    if (!isFixedArray(symbol)) {
        const StructInfo *info = symbol->structLink;
        releaseObject(cell->data.p, info);
        memset(cell->data.p, 0, info->size);
        store.storeStruct(static_cast<char *>(cell->data.p), info);
    } else {
        Elements elements = elementsOfVariable(cell, symbol);
        clearElements(elements);
        store.storeElements(elements);
    }
    store.dropRest();
}

}  // namespace zy
