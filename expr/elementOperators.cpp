#include "expr/elementOperators.h"

#include <cmath>
#include <cstring>

#include "decl/arrayInfo.h"
#include "decl/structInfo.h"
#include "expr/nodeClasses.h"
#include "expr/scalarFamilies.h"
#include "expr/typeQueries.h"
#include "numeric/convert.h"
#include "numeric/subscripts.h"

namespace zy {

void readAnyElement(ExprNode *node) {
    Element element;
    Value *value = nullptr;
    if (findElement(node, ElementUse::READ, element)) {
        value = readElement(node, element);
        releaseElement(element);
    }
    if (!value)
        value = newZeroValue(treeType(node));
    if (value)
        pushValue(value);
}

// ---- Where a subscript stands -------------------------------------------------------------------

namespace {

// peek() gives false, with nothing changed, for a subscript that isn't a common integer.
struct StackIndex {
    static constexpr bool onStack = true;
    static bool peek(const ExprNode *, const Value *top, int &subscript) {
        if (!top)
            return false;
        subscript = top->payload.i;
        switch (top->type) {
            case DT_INT: return true;
            case DT_UINT: return subscript >= 0;
            case DT_CHAR: subscript = top->payload.sc; return true;
            case DT_UCHAR: subscript = top->payload.uc; return true;
            case DT_SHORT: subscript = top->payload.s; return true;
            default: return false;
        }
    }
};

struct VariableIndex {
    static constexpr bool onStack = false;
    static bool peek(const ExprNode *item, const Value *, int &subscript) {
        const VarCell *cell = findVarCell(item->payload.symbol);
        subscript = cell->data.i;
        return cell->type == DT_INT;
    }
};

struct ConstantIndex {
    static constexpr bool onStack = false;
    static bool peek(const ExprNode *item, const Value *, int &subscript) {
        subscript = item->payload.i;
        return true;
    }
};

// ---- Objects ------------------------------------------------------------------------------------

// Where an element of `size` bytes lies; NULL for what the general way has a message for.
char *findInVector(const VarCell *cell, int subscript, size_t size) {
    const ShapeNode *shape = cell->shape;
    if (!shape || shape->next || cell->data2.elementType != DT_STRUCT || !cell->data.p)
        return nullptr;
    const ExtentRec &extent = shape->extent;
    bool fits =
        subscript >= extent.lower && (subscript < extent.limit || extent.limit == extent.lower);
    int64_t position = int64_t{subscript} - extent.lower;
    return fits ? static_cast<char *>(cell->data.p) + position * static_cast<int64_t>(size)
                : nullptr;
}

char *findBehindPointer(const VarCell *cell, int subscript, size_t size) {
    if (cell->type != DT_P_STRUCT || isNullAddress(cell->data.p))
        return nullptr;
    return static_cast<char *>(cell->data.p) + int64_t{subscript} * static_cast<int64_t>(size);
}

template <class Index, bool behindPointer>
void readObject(ExprNode *node) {
    const TypeInfo *symbol = node->left->payload.symbol;
    const StructInfo *info = symbol->structLink;
    Value *result = currentContext->stack;
    char *object = nullptr;
    if (int subscript; info && Index::peek(node->right->item, result, subscript)) {
        const VarCell *cell = findVarCell(node->left->payload.symbol);
        object = behindPointer ? findBehindPointer(cell, subscript, info->size)
                               : findInVector(cell, subscript, info->size);
    }
    if (object && !Index::onStack)
        result = pushFreeValue();
    if (!object || !result) [[unlikely]] {
        readAnyElement(node);
        return;
    }
    result->type = DT_STRUCT;
    result->payload.p = object;
    result->payload2.structInfo = symbol->structLink;
    result->owned = 0;
    result->noFree = 1;
}

// ---- Where the element is -----------------------------------------------------------------------

// find() gives NULL, with nothing changed, for what the general way has a message for.
template <class T, class Index>
struct VectorPlace {
    using Type = T;
    static constexpr bool onStack = Index::onStack;
    static T *find(const ExprNode *node, const Value *top) {
        const VarCell *cell = findVarCell(node->left->payload.symbol);
        const ShapeNode *shape = cell->shape;
        int subscript;
        if (!Index::peek(node->right->item, top, subscript) || !shape || shape->next ||
            cell->data2.elementType != Scalar<T>::type)
            return nullptr;
        const ExtentRec &extent = shape->extent;
        bool fits =
            subscript >= extent.lower && (subscript < extent.limit || extent.limit == extent.lower);
        if (!fits || !cell->data.p)
            return nullptr;
        return static_cast<T *>(cell->data.p) + (int64_t{subscript} - extent.lower);
    }
};

template <class T, class Index>
struct PointerPlace {
    using Type = T;
    static constexpr bool onStack = Index::onStack;
    static T *find(const ExprNode *node, const Value *top) {
        const TypeInfo *symbol = node->left->payload.symbol;
        const VarCell *cell = findVarCell(node->left->payload.symbol);
        int subscript;
        if (!Index::peek(node->right->item, top, subscript) ||
            cell->type != static_cast<uint32_t>(symbol->dataType) || isNullAddress(cell->data.p))
            return nullptr;
        auto distance = static_cast<intptr_t>(subscript) * static_cast<intptr_t>(sizeof(T));
        return reinterpret_cast<T *>(reinterpret_cast<intptr_t>(cell->data.p) + distance);
    }
};

template <class Place>
void readNumber(ExprNode *node) {
    ExecContext *context = currentContext;
    Value *result = context->stack;
    const auto *address = Place::find(node, result);
    if (address && !Place::onStack)
        result = pushFreeValue();
    if (!address || !result) [[unlikely]] {
        readAnyElement(node);
        return;
    }
    typename Place::Type number;
    memcpy(&number, address, sizeof number);
    setScalar(result, number);
}

// A matrix takes its two subscripts wherever they stand; the guard warns and goes on.
template <class T>
T *findInMatrix(ExprNode *node) {
    const VarCell *cell = findVarCell(node->left->payload.symbol);
    const ShapeNode *first = cell->shape, *second = first ? first->next : nullptr;
    if (!second || second->next || !cell->data.p || cell->data2.elementType != Scalar<T>::type)
        return nullptr;
    int row = readSubscript(node->right->item), column = readSubscript(node->right->next->item);
    int64_t offset = subscriptPosition(first->extent, row, true, false) * first->extent.stride;
    offset += subscriptPosition(second->extent, column, false, false) * second->extent.stride;
    return static_cast<T *>(cell->data.p) + offset;
}

template <class T>
void readMatrix(ExprNode *node) {
    const T *address = findInMatrix<T>(node);
    if (!address) [[unlikely]] {
        readAnyElement(node);
        return;
    }
    T number;
    memcpy(&number, address, sizeof number);
    pushScalar(number);
}

// ---- Stores -------------------------------------------------------------------------------------

// The number as the element's type, for the pairs in which the store has no rule of its own.
template <class T>
bool convertNumber(const Value *value, T &number) {
    if (value->type == Scalar<T>::type)
        return Scalar<T>::readFast(value, number);
    if constexpr (std::is_floating_point_v<T>) {
        switch (value->type) {
            case DT_INT: number = static_cast<T>(value->payload.i); return true;
            case DT_DOUBLE: number = static_cast<T>(value->payload.d); return true;
            case DT_FLOAT: number = static_cast<T>(value->payload.f); return true;
            default: return false;
        }
    } else {
        if (value->type == DT_INT) {
            number = static_cast<T>(value->payload.i);
            return true;
        }
        if (std::is_same_v<T, int> && value->type == DT_DOUBLE && !std::isnan(value->payload.d)) {
            number = static_cast<T>(truncateToInt32(value->payload.d));
            return true;
        }
        return false;
    }
}

// The value lies under the subscript, and stays as the value of the expression.
template <class Place>
void storeNumber(ExprNode *node) {
    ExecContext *context = currentContext;
    Value *top = context->stack;
    auto *address = Place::find(node->left, top);
    Value *value = Place::onStack && top ? top->next : top;
    typename Place::Type number;
    if (!address || !value || !convertNumber(value, number)) [[unlikely]] {
        assignGeneral(node);
        return;
    }
    memcpy(address, &number, sizeof number);
    setScalar(value, number);
    if constexpr (Place::onStack) {
        context->stack = value;
        recycleValue(top);
    }
}

// A constant stands in the tree, and the value of the expression is a record of its own.
template <class Place>
void storeConstant(ExprNode *node) {
    Value *top = currentContext->stack;
    auto *address = Place::find(node->left, top);
    typename Place::Type number;
    if (!address || !convertNumber(operandInPlace(node->right), number)) [[unlikely]] {
        assignGeneral(node);
        return;
    }
    memcpy(address, &number, sizeof number);
    if constexpr (Place::onStack)
        setScalar(top, number);
    else
        pushScalar(number);
}

template <class T>
void storeInMatrix(ExprNode *node) {
    ExprNode *target = node->left;
    const VarCell *cell = findVarCell(target->left->payload.symbol);
    bool isHere = cell->data.p && cell->data2.elementType == Scalar<T>::type;
    // The value lies under what the subscripts have left on the stack.
    Value *value = currentContext->stack;
    for (const ExprNode *item = target->right; item && value; item = item->next)
        if (!standsAsSubscript(item->item))
            value = value->next;
    T number;
    T *address =
        isHere && value && convertNumber(value, number) ? findInMatrix<T>(target) : nullptr;
    if (!address) [[unlikely]] {
        assignGeneral(node);
        return;
    }
    memcpy(address, &number, sizeof number);
    setScalar(value, number);
}

// ---- Choice -------------------------------------------------------------------------------------

struct Routines {
    NodeRoutine read, store, storeConstant;
};
constexpr Routines generalRoutines{readAnyElement, nullptr, nullptr};

template <class Place>
constexpr Routines routinesOf{readNumber<Place>, storeNumber<Place>, storeConstant<Place>};

Routines objectRoutines(const ExprNode *item, bool isPointer) {
    bool constant = item->kind == NODE_VALUE && item->type == DT_INT;
    NodeRoutine read;
    if (constant)
        read = isPointer ? readObject<ConstantIndex, true> : readObject<ConstantIndex, false>;
    else if (isPlainIndex(item))
        read = isPointer ? readObject<VariableIndex, true> : readObject<VariableIndex, false>;
    else
        read = isPointer ? readObject<StackIndex, true> : readObject<StackIndex, false>;
    return {read, nullptr, nullptr};
}

template <class T>
Routines vectorRoutines(const ExprNode *item, bool isPointer) {
    bool constant = item->kind == NODE_VALUE && item->type == DT_INT;
    if (constant)
        return isPointer ? routinesOf<PointerPlace<T, ConstantIndex>>
                         : routinesOf<VectorPlace<T, ConstantIndex>>;
    if (isPlainIndex(item))
        return isPointer ? routinesOf<PointerPlace<T, VariableIndex>>
                         : routinesOf<VectorPlace<T, VariableIndex>>;
    return isPointer ? routinesOf<PointerPlace<T, StackIndex>>
                     : routinesOf<VectorPlace<T, StackIndex>>;
}

enum class Form { NONE, VECTOR, MATRIX, POINTER };

Form formOf(const ExprNode *node) {
    const TypeInfo *symbol = variableOf(node->left);
    const ExprNode *list = node->right;
    if (!symbol || !list || symbol->level == SYSTEM_LEVEL)
        return Form::NONE;
    int given = !list->next ? 1 : !list->next->next ? 2 : 3;
    if (symbol->kind == KIND_SIMPLE && isPointer(symbol->dataType))
        return given == 1 ? Form::POINTER : Form::NONE;
    bool isArrayKind = symbol->kind >= KIND_C_ARRAY && symbol->kind <= KIND_P_ARRAY;
    if (!isArrayKind || node->op != OP_SUBSCRIPT || !symbol->arrayLink ||
        symbol->arrayLink->rank != given)
        return Form::NONE;
    return given == 1 ? Form::VECTOR : given == 2 ? Form::MATRIX : Form::NONE;
}

template <class T>
Routines routinesFor(const ExprNode *node, Form form) {
    if (form == Form::MATRIX)
        return {readMatrix<T>, storeInMatrix<T>, nullptr};
    return vectorRoutines<T>(node->right->item, form == Form::POINTER);
}

Routines chooseRoutines(const ExprNode *node) {
    Form form = formOf(node);
    if (form == Form::NONE)
        return generalRoutines;
    switch (treeType(node)) {
        case DT_CHAR: return routinesFor<signed char>(node, form);
        case DT_UCHAR: return routinesFor<unsigned char>(node, form);
        case DT_SHORT: return routinesFor<short>(node, form);
        case DT_USHORT: return routinesFor<unsigned short>(node, form);
        case DT_INT: return routinesFor<int>(node, form);
        case DT_UINT: return routinesFor<unsigned>(node, form);
        case DT_LLONG: return routinesFor<long long>(node, form);
        case DT_ULLONG: return routinesFor<unsigned long long>(node, form);
        case DT_FLOAT: return routinesFor<float>(node, form);
        case DT_DOUBLE: return routinesFor<double>(node, form);
        case DT_STRUCT:
            return form == Form::MATRIX ? generalRoutines
                                        : objectRoutines(node->right->item, form == Form::POINTER);
        default: return generalRoutines;
    }
}

}  // namespace

NodeRoutine elementRoutine(ExprNode *node) { return chooseRoutines(node).read; }

NodeRoutine elementAssignRoutine(ExprNode *node) {
    if (!isOperator(node->left) || !isSubscript(node->left->op))
        return nullptr;
    Routines routines = chooseRoutines(node->left);
    return standsInPlace(node->right) ? routines.storeConstant : routines.store;
}

}  // namespace zy
