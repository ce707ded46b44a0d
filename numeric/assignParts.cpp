#include "numeric/assignParts.h"

#include <algorithm>
#include <cstring>

#include "expr/memberAccess.h"
#include "expr/nodeClasses.h"
#include "expr/readers.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "numeric/arrayStorage.h"
#include "numeric/arrayValue.h"
#include "numeric/assign.h"
#include "numeric/assignMember.h"
#include "numeric/assignSource.h"
#include "numeric/convert.h"
#include "numeric/subscripts.h"

namespace zy {

namespace {

bool isPair(int type) { return type >= DT_COMPLEX && type <= DT_DDUAL; }

// Stores one part at an address of that type. False for a type without such a part.
bool storePart(void *address, int type, bool isImag, const Value *value) {
    size_t part = isImag ? 1 : 0;
    switch (type) {
        case DT_COMPLEX:
        case DT_DUAL: {
            auto number = static_cast<float>(readDouble(value));
            memcpy(static_cast<char *>(address) + part * sizeof number, &number, sizeof number);
            return true;
        }
        case DT_DCOMPLEX:
        case DT_DDUAL: {
            double number = readDouble(value);
            memcpy(static_cast<char *>(address) + part * sizeof number, &number, sizeof number);
            return true;
        }
        default:
            return !isImag && type < DT_COMPLEX &&
                   storeScalar(address, type, value, StorePlace::VARIABLE);
    }
}

bool isImagTarget(int code) { return code == OP_IMAG_FLOAT || code == OP_IMAG_DOUBLE; }

void refusePartOfNumber(bool isImag) {
    if (isImag)
        runError(
            "using imag() as lvalue, but its argument is not complex/dual number, assingment "
            "ignored");
    else
        runError("unsupported data type for real() used as  lvalue");
}

void assignPartOfVariable(const Value *value, TypeInfo *symbol, bool isImag) {
    VarCell *cell = findVarCell(symbol);
    if (!storePart(&cell->data, static_cast<int>(cell->type), isImag, value))
        refusePartOfNumber(isImag);
}

void *partAddressForNull(ExprNode *inner) {
    if (TypeInfo *symbol = variableOf(inner))
        if (void *block = allocateFor(symbol))
            return block;
    if (inner->kind == NODE_OPERATOR)
        runWarning(
            "assign value to real or imag (*(ptr op ?)) =... where ptr = NULL, memory should be "
            "allocated for ptr before assignment");
    else
        runError("real or imag (*ptr) =  failed");
    return nullptr;
}

void assignPartThroughPointer(ExprNode *node, ExprNode *valueNode, bool isImag) {
    bool popped;
    Value *pointer = operandOf(node->left, popped);
    Source source(valueNode);
    if (pointer && source) {
        void *address = pointer->payload.p;
        if (isNullAddress(address))
            address = partAddressForNull(node->left);
        int type = dereference(static_cast<int>(pointer->type));
        if (address && !storePart(address, type, isImag, source.get())) {
            if (isImag)
                runWarning(
                    "using imag(c) as lvalue, but c is not a complex or dual number, assingment "
                    "ignored");
            else
                runError("unsupported data type for real() used as  lvalue");
        }
    }
    if (pointer && popped)
        recycleValue(pointer);
}

void assignPartOfElement(ExprNode *node, ExprNode *valueNode, bool isImag) {
    Element element;
    bool found = findElement(node, ElementUse::WRITE, element);
    Source source(valueNode);
    if (!found)
        return;
    if (source && !storePart(element.address, element.type, isImag, source.get())) {
        if (isImag)
            runError(
                "using imag([]) as lvalue, but its argument is not complex/dual number, assingment "
                "ignored");
        else
            runError("unsupported data type for real() used as  lvalue");
    }
    releaseElement(element);
}

VarCell *sharedCell(TypeInfo *member) {
    return member->storageCell ? findVarCell(member) : missingCell(member);
}

// real() of a member that has one part is the member.
void assignPartOfMember(ExprNode *node, ExprNode *valueNode, bool isImag) {
    if (!isImag && !isPair(treeType(node))) {
        assignMember(node, valueNode);
        return;
    }
    MemberObject object(node);
    TypeInfo *member = memberOfNode(node);
    Source source(valueNode);
    if (!member || !source)
        return;
    void *place = object.place;
    if (!liesInObject(member))
        place = &sharedCell(member)->data;
    if (!place)
        warnOfNoObject();
    else if (!storePart(place, dataTypeOf(member), isImag, source.get()))
        refusePartOfNumber(isImag);
}

}  // namespace

void assignPart(ExprNode *target, ExprNode *valueNode) {
    ExprNode *inner = target->left;
    bool isImag = isImagTarget(target->op);
    if (inner->kind == NODE_OPERATOR && inner->op == OP_INDIRECTION) {
        assignPartThroughPointer(inner, valueNode, isImag);
        return;
    }
    if (inner->kind == NODE_OPERATOR && isSubscript(inner->op)) {
        assignPartOfElement(inner, valueNode, isImag);
        return;
    }
    if (inner->kind == NODE_OPERATOR && isMember(inner->op)) {
        assignPartOfMember(inner, valueNode, isImag);
        return;
    }
    Source source(valueNode);
    if (TypeInfo *symbol = variableOf(inner); symbol && source)
        assignPartOfVariable(source.get(), symbol, isImag);
    else if (source)
        runError("undefined operation");
}

// ---- real() and imag() of an array --------------------------------------------------------------

namespace {

// The array whose parts are stored: a variable or an array member.
class ArrayTarget {
public:
    explicit ArrayTarget(ExprNode *node);
    ArrayTarget(const ArrayTarget &) = delete;
    ArrayTarget &operator=(const ArrayTarget &) = delete;
    ~ArrayTarget() { deleteValue(view); }
    const Value *get() const { return view; }

private:
    void viewVariable(TypeInfo *symbol);
    void viewMember(ExprNode *node);

    Value *view = nullptr;  // NULL if there is no array
};

ArrayTarget::ArrayTarget(ExprNode *node) {
    if (TypeInfo *symbol = variableOf(node))
        viewVariable(symbol);
    else if (node->kind == NODE_OPERATOR && isMember(node->op))
        viewMember(node);
}

void ArrayTarget::viewVariable(TypeInfo *symbol) {
    const VarCell *cell = findVarCell(symbol);
    if (!isArrayLike(static_cast<int>(cell->type)) || !cell->data.p)
        return;
    view = newZeroValue(DT_ARRAY);
    if (!view)
        return;
    view->payload = cell->data;
    view->payload2.elementType = cell->data2.elementType;
    view->count = cell->count;
}

void ArrayTarget::viewMember(ExprNode *node) {
    MemberObject object(node);
    TypeInfo *member = memberOfNode(node);
    if (!member || !isArrayLike(dataTypeOf(member)))
        return;
    if (!liesInObject(member))
        viewVariable(member);
    else if (object.place)
        view = viewArrayMember(member, object.place);
    else
        warnOfNoObject();
}

void refusePartOfArray(bool isImag) {
    if (isImag)
        runError(
            "using imag() as lvalue array, but its argument is not complex/dual number array, "
            "assingment ignored");
    else
        runError("unsupported data type for real(array) operation");
}

// One part of each element; a scalar goes into all.
template <class Part>
void storeParts(const Value *array, const Value *value, int partType, size_t part) {
    bool isArray = isArrayLike(static_cast<int>(value->type));
    Value *parts = isArray ? copyArrayValue(value, partType) : nullptr;
    auto number = isArray ? Part{} : static_cast<Part>(readDouble(value));
    uint32_t count = parts ? std::min(array->count, parts->count) : isArray ? 0 : array->count;
    auto *target = static_cast<Part *>(array->payload.p);
    const auto *source = parts ? static_cast<const Part *>(parts->payload.p) : nullptr;
    for (uint32_t i = 0; i < count; i++)
        target[2 * size_t{i} + part] = source ? source[i] : number;
    if (parts)
        deleteValue(parts);
}

}  // namespace

void assignPartOfArray(ExprNode *target, ExprNode *valueNode) {
    ArrayTarget place(target->left);
    Source source(valueNode);
    const Value *array = place.get();
    if (!source)
        return;
    bool isImag = target->op == OP_IMAG_ARRAY;
    int type = array ? array->payload2.elementType : +DT_UNDEFINED;
    if (type == DT_COMPLEX || type == DT_DUAL)
        storeParts<float>(array, source.get(), DT_FLOAT, isImag);
    else if (type == DT_DCOMPLEX || type == DT_DDUAL)
        storeParts<double>(array, source.get(), DT_DOUBLE, isImag);
    else if (isImag || !array || !isReal(type))
        refusePartOfArray(isImag);
    else
        assignElements(array->payload.p, array->count, type, source.get());
}

}  // namespace zy
