#include "expr/memberAccess.h"

#include <cstring>

#include "decl/funcInfo.h"
#include "decl/layout.h"
#include "decl/structInfo.h"
#include "expr/nodeClasses.h"
#include "expr/objects.h"
#include "expr/operands.h"
#include "expr/routines.h"
#include "expr/scalarFamilies.h"
#include "expr/scope.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "numeric/arrayStorage.h"
#include "numeric/arrayValue.h"
#include "numeric/convert.h"

namespace zy {

// ---- Where a member lies ------------------------------------------------------------------------

bool liesInObject(const TypeInfo *member) { return takesRoom(member, AGGREGATE_STRUCT); }

namespace {

bool holdsObject(const TypeInfo *variable) {
    bool isPlain = variable->kind <= KIND_BY_REFERENCE && variable->kind >= KIND_SIMPLE;
    return isPlain && (variable->dataType == DT_STRUCT || variable->dataType == DT_P_STRUCT) &&
           variable->storage != STORAGE_TYPEDEF && variable->level != TYPE_ONLY_LEVEL;
}

// An object inside another: its members lie at a fixed distance from the outer one's beginning.
bool isPartOfObject(const ExprNode *tree) {
    if (!isOperator(tree) || !isMember(tree->op))
        return false;
    const TypeInfo *member = memberOf(tree);
    return member && member->kind == KIND_SIMPLE && member->dataType == DT_STRUCT &&
           liesInObject(member);
}

int offsetOf(const ExprNode *node) {
    const TypeInfo *member = memberOf(node);
    int own = member && liesInObject(member) ? member->level : 0;
    return own + (findsOwnObject(node) && isPartOfObject(node->left) ? offsetOf(node->left) : 0);
}

// The index in `right` keeps what was found: nothing else uses these fields of a constant.
inline uint64_t offsetAt(const ExprNode *node) { return node->right->payload2.bits; }
inline bool isOwn(const ExprNode *node) { return node->right->count != 0; }

const ExprNode *leafOf(const ExprNode *node) {
    const ExprNode *tree = node->left;
    while (tree->kind == NODE_OPERATOR)
        tree = tree->left;
    return tree;
}

inline VarCell *ownCell(const ExprNode *node) { return findVarCell(leafOf(node)->payload.symbol); }

inline bool holdsAddress(const VarCell *cell) {
    return cell->type == DT_STRUCT || cell->type == DT_P_STRUCT;
}

}  // namespace

bool findsOwnObject(const ExprNode *node) {
    if (node->op == OP_SCOPE)
        return true;
    if (const TypeInfo *variable = variableOf(node->left))
        return holdsObject(variable);
    return isPartOfObject(node->left) && node->left->op != OP_SCOPE && findsOwnObject(node->left);
}

TypeInfo *memberOfNode(ExprNode *node) {
    if (!node->right->link) {
        node->right->link = memberOf(node);
        node->right->payload2.bits = static_cast<uint64_t>(offsetOf(node));
        node->right->count = findsOwnObject(node);
    }
    return static_cast<TypeInfo *>(node->right->link);
}

MemberObject::MemberObject(ExprNode *node) {
    memberOfNode(node);
    if (node->op == OP_SCOPE)
        return;
    if (isOwn(node)) {
        const VarCell *cell = ownCell(node);
        object = holdsAddress(cell) ? cell->data.p : nullptr;
        noFree = cell->noFree;
    } else if ((holder = popValue())) {
        bool isClass = holder->type == DT_STRUCT || holder->type == DT_P_STRUCT;
        object = isClass || isArray(static_cast<int>(holder->type)) ? holder->payload.p : nullptr;
        noFree = isClass && holder->noFree;
    } else {
        endChain();
    }
    if (!isNullAddress(object))
        place = static_cast<char *>(object) + offsetAt(node);
}

void *MemberObject::objectOfMember(const ExprNode *node) const {
    const TypeInfo *member = static_cast<const TypeInfo *>(node->right->link);
    return place && liesInObject(member) ? place - member->level : place;
}

uint8_t MemberObject::ownership() const {
    if (!isTemporary())
        return OBJECT_OF_OTHERS;
    return holder->owned == OWNED_PART ? OWNED_PART : uint8_t{OBJECT_TEMPORARY};
}

MemberObject::~MemberObject() {
    if (isTemporary() && holder->owned != OWNED_PART) {
        endTemporaryObject(object, holder->payload2.structInfo);
        holder->owned = 0;
    }
    if (holder)
        deleteValue(holder);
}

char *placeOfOwn(ExprNode *node) {
    const VarCell *cell = ownCell(node);
    bool exists = holdsAddress(cell) && !isNullAddress(cell->data.p);
    return exists ? static_cast<char *>(cell->data.p) + offsetAt(node) : nullptr;
}

char *placeIn(const Value *holder, ExprNode *node) {
    bool isPlain = holder->type == DT_P_STRUCT || (holder->type == DT_STRUCT && !holder->owned);
    bool exists = isPlain && !isNullAddress(holder->payload.p);
    return exists ? static_cast<char *>(holder->payload.p) + offsetAt(node) : nullptr;
}

const TypeInfo *plainMember(ExprNode *node) {
    if (!isOperator(node) || !isMember(node->op) || node->op == OP_SCOPE)
        return nullptr;
    const TypeInfo *member = memberOfNode(node);
    bool isPlain = member && liesInObject(member) && !member->bitField &&
                   member->kind == KIND_SIMPLE && isReal(member->dataType);
    return isPlain ? member : nullptr;
}

void warnOfNoObject() { runWarning("access member of struct/class with NULL pointer"); }

// ---- Bit-fields ---------------------------------------------------------------------------------

namespace {

uint64_t loadUnit(const void *address, int size) {
    uint64_t unit = 0;
    memcpy(&unit, address, static_cast<size_t>(size));
    return unit;
}

uint64_t fieldMask(int width) { return width >= 64 ? ~uint64_t{0} : (uint64_t{1} << width) - 1; }

// 0 after a message for what no bit-field can be.
int unitSize(int pointerType) {
    if (pointerType >= DT_P_CHAR && pointerType <= DT_P_ULLONG)
        return sizeofType(dereference(pointerType));
    runError("unsupported data type for bit-field");
    return 0;
}

bool isUnsignedUnit(int pointerType) { return (pointerType - DT_P_CHAR) % 2 == 1; }

}  // namespace

void readBitField(Value *value, const void *address, int pointerType, int width, int offset) {
    int size = unitSize(pointerType);
    value->kind = NODE_VALUE;
    value->type = size ? dereference(pointerType) : DT_INT;
    value->payload.bits = 0;
    if (size == 0)
        return;
    uint64_t bits = (loadUnit(address, size) >> offset) & fieldMask(width);
    bool isNegative = !isUnsignedUnit(pointerType) && width > 0 && ((bits >> (width - 1)) & 1);
    value->payload.bits = isNegative ? bits | ~fieldMask(width) : bits;
}

void writeBitField(void *address, const Value *value, int pointerType, int width, int offset) {
    int size = unitSize(pointerType);
    if (size == 0)
        return;
    uint64_t bits =
        value->type == DT_ULLONG ? value->payload.ull : static_cast<uint64_t>(readSigned64(value));
    uint64_t mask = fieldMask(width) << offset;
    uint64_t unit = (loadUnit(address, size) & ~mask) | ((bits << offset) & mask);
    memcpy(address, &unit, static_cast<size_t>(size));
}

// ---- Reading ------------------------------------------------------------------------------------

namespace {

bool isClassPointer(int type) {
    return type == DT_P_STRUCT || type == DT_PP_STRUCT || type == DT_PPP_STRUCT;
}

void pushObject(const TypeInfo *member, void *place) {
    Value *value = pushNewValue();
    if (!value)
        return;
    value->type = member->dataType;
    if (member->dataType == DT_STRUCT)
        value->payload.p = place;
    else
        memcpy(&value->payload.p, place, sizeof(void *));
    value->payload2.structInfo = member->structLink;
    value->owned = 0;
    // An object within another is no heap block of its own.
    value->noFree = member->dataType == DT_STRUCT;
}

void pushField(const TypeInfo *member, const void *place) {
    if (Value *value = pushNewValue())
        readBitField(value, place, bandAbove(member->dataType), member->bitWidth,
                     member->bitOffset);
}

void pushZeroOf(const TypeInfo *member) {
    Value *zero = newZeroValue(dataTypeOf(member));
    if (!zero)
        return;
    if (isClassPointer(member->dataType) || member->dataType == DT_STRUCT)
        zero->payload2.structInfo = member->structLink;
    pushValue(zero);
}

void pushArray(const TypeInfo *member, void *place) {
    if (Value *view = viewArrayMember(member, place))
        pushValue(view);
}

void pushLoaded(const TypeInfo *member, const void *place) {
    Value *value = newValue();
    if (value && loadValue(value, place, dataTypeOf(member))) {
        pushValue(value);
        return;
    }
    if (value)
        recycleValue(value);
    pushZeroOf(member);
}

}  // namespace

void pushMemberAt(TypeInfo *member, void *place) {
    int type = dataTypeOf(member);
    if (member->bitField)
        pushField(member, place);
    else if (member->kind == KIND_SIMPLE && (type == DT_STRUCT || isClassPointer(type)))
        pushObject(member, place);
    else if (isArray(type))
        pushArray(member, place);
    else
        pushLoaded(member, place);
}

namespace {

void pushShared(TypeInfo *member) {
    if (isEnumerator(member)) {
        if (Value *constant = copyRecord(member->constant))
            pushValue(constant);
    } else if (member->dataType == DT_TAG) {
        if (Value *value = newZeroValue(DT_TAG)) {
            value->payload2.structInfo = member->structLink;
            pushValue(value);
        }
    } else if (member->storageCell) {
        fetchVariable(member, 0);
    } else {
        missingCell(member);
        pushZeroOf(member);
    }
}

// A view of an array gets elements of its own.
void ownElements(Value *view) {
    Value *copy = copyArrayValue(view, view->payload2.elementType);
    if (!copy)
        return;
    copy->type = view->type;
    popValue();
    deleteValue(view);
    pushValue(copy);
}

// The same for objects: the elements end without their texts, which stay.
void ownObjects(Value *view, const StructInfo *info) {
    auto *block =
        info ? static_cast<char *>(allocOrFail(size_t{view->count} * info->size)) : nullptr;
    if (!block)
        return;
    memset(block, 0, size_t{view->count} * info->size);
    const auto *source = static_cast<const char *>(view->payload.p);
    for (uint32_t i = 0; i < view->count; i++) {
        size_t offset = size_t{i} * info->size;
        copyObject(block + offset, source + offset, info);
        keepTextsOf(block + offset, info);
    }
    view->payload.p = block;
    view->shape = copyShape(view->shape);
    view->ownership = ARRAY_OWNED;
}

// What was read from a temporary object outlives it.
void keepTopValue(const TypeInfo *member) {
    Value *top = currentContext->stack;
    if (top && top->type == DT_STRUCT && !top->owned) {
        ownPart(top);
    } else if (top && (top->type == DT_CARRAY || top->type == DT_ARRAY)) {
        if (top->payload2.elementType == DT_STRUCT)
            ownObjects(top, member->structLink);
        else
            ownElements(top);
    }
}

// `A::f()` within the class runs on the object of the function that calls it.
void *objectInside(const StructInfo *info) {
    const ClassContext *record = classContext;
    bool isInside = record && record->thisFormal && record->thisFormal->structLink == info;
    return isInside ? record->object : nullptr;
}

// A member function in front of its call: the object waits on classContext.
void pushFunction(ExprNode *node, TypeInfo *member, MemberObject &object) {
    const StructInfo *info = member->functionLink->parameters->structLink;
    void *target = node->op == OP_SCOPE ? objectInside(info) : object.objectOfMember(node);
    if (!target && member->storage != STORAGE_STATIC)
        warnOfNoObject();
    ClassContext *record = claimClassContext();
    Value *value = record ? newZeroValue(DT_FUNCTION) : nullptr;
    if (!value)
        return;
    record->object = target;
    record->thisFormal = member->functionLink->parameters;
    record->member = member;
    record->noFree = object.noFree;
    record->ownership = object.ownership();
    if (object.isTemporary())
        object.releaseTemporary();
    value->payload.symbol = member;
    pushValue(value);
}

bool isCalled(const ExprNode *node) {
    const ExprNode *next = node->next;
    return next && next->kind == NODE_OPERATOR && next->op == OP_CALL && next->left == node;
}

void readMember(ExprNode *node) {
    MemberObject object(node);
    TypeInfo *member = memberOfNode(node);
    if (member && member->kind == KIND_FUNCTION && isCalled(node)) {
        pushFunction(node, member, object);
    } else if (!member) {
        undefinedOperation(node);
        pushScalar(0);
    } else if (!liesInObject(member)) {
        pushShared(member);
    } else if (!object.place) {
        warnOfNoObject();
        pushZeroOf(member);
    } else {
        pushMemberAt(member, object.place);
        if (object.isTemporary())
            keepTopValue(member);
    }
}

// ---- The common members -------------------------------------------------------------------------

struct PointerMember {};  // to an object of a class

template <class T>
inline void loadWord(Value *value, const ExprNode *node, const char *object) {
    const char *place = object + offsetAt(node);
    if constexpr (std::is_same_v<T, PointerMember>) {
        memcpy(&value->payload.p, place, sizeof(void *));
        value->type = DT_P_STRUCT;
        value->payload2.structInfo = static_cast<TypeInfo *>(node->right->link)->structLink;
        value->owned = 0;
        value->noFree = 0;
    } else {
        T number;
        memcpy(&number, place, sizeof number);
        setScalar(value, number);
    }
}

template <class T>
void readOfVariable(ExprNode *node) {
    const VarCell *cell = ownCell(node);
    if (!holdsAddress(cell) || isNullAddress(cell->data.p)) [[unlikely]] {
        readMember(node);
        return;
    }
    const char *object = static_cast<const char *>(cell->data.p);
    if (Value *value = pushNewValue())
        loadWord<T>(value, node, object);
}

template <class T>
void readOfStacked(ExprNode *node) {
    Value *value = topValue();
    if (!value)
        return;
    bool isPlain = value->type == DT_P_STRUCT || (value->type == DT_STRUCT && !value->owned);
    if (!isPlain || isNullAddress(value->payload.p)) [[unlikely]] {
        readMember(node);
        return;
    }
    loadWord<T>(value, node, static_cast<const char *>(value->payload.p));
}

struct MemberRoutines {
    NodeRoutine ofVariable, ofStacked;
};
template <class T>
constexpr MemberRoutines routinesOf() {
    return {readOfVariable<T>, readOfStacked<T>};
}

MemberRoutines memberRoutines(const TypeInfo *member) {
    bool isWord =
        member && liesInObject(member) && !member->bitField && member->kind == KIND_SIMPLE;
    switch (isWord ? member->dataType : DT_UNDEFINED) {
        case DT_CHAR: return routinesOf<signed char>();
        case DT_UCHAR: return routinesOf<unsigned char>();
        case DT_SHORT: return routinesOf<short>();
        case DT_USHORT: return routinesOf<unsigned short>();
        case DT_INT: return routinesOf<int>();
        case DT_UINT: return routinesOf<unsigned>();
        case DT_LLONG: return routinesOf<long long>();
        case DT_ULLONG: return routinesOf<unsigned long long>();
        case DT_FLOAT: return routinesOf<float>();
        case DT_DOUBLE: return routinesOf<double>();
        case DT_P_STRUCT: return routinesOf<PointerMember>();
        default: return {readMember, readMember};
    }
}

}  // namespace

void memberOperator(ExprNode *node) {
    MemberRoutines routines = memberRoutines(memberOfNode(node));
    node->routine = isOwn(node) ? routines.ofVariable : routines.ofStacked;
    node->routine(node);
}

// ---- Address ------------------------------------------------------------------------------------

namespace {

Value *addressOfArray(const TypeInfo *member, void *place) {
    Value *view = viewArrayMember(member, place);
    Value *pointer = view ? pointerToArray(view) : nullptr;
    if (view)
        deleteValue(view);
    return pointer;
}

}  // namespace

Value *memberAddress(ExprNode *node) {
    MemberObject object(node);
    TypeInfo *member = memberOfNode(node);
    if (!member)
        return nullptr;
    void *place = object.place;
    if (!liesInObject(member)) {
        if (member->dataType == DT_TAG || isEnumerator(member))
            return nullptr;
        VarCell *cell = member->storageCell ? findVarCell(member) : missingCell(member);
        bool pointsAlready = cell->type == DT_STRUCT || isArray(static_cast<int>(cell->type));
        place = pointsAlready ? cell->data.p : &cell->data;
    } else if (!place) {
        warnOfNoObject();
    }
    if (place && liesInObject(member) && isArray(dataTypeOf(member)))
        return addressOfArray(member, place);
    Value *value = newZeroValue(bandAbove(dataTypeOf(member)));
    if (!value)
        return nullptr;
    value->payload.p = place;
    if (member->dataType == DT_STRUCT || isClassPointer(member->dataType)) {
        value->payload2.structInfo = member->structLink;
        value->noFree = 1;
    }
    return value;
}

}  // namespace zy
