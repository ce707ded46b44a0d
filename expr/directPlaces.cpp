#include "expr/directPlaces.h"

#include "decl/arrayInfo.h"
#include "expr/directOperands.h"
#include "expr/evaluator.h"
#include "expr/memberAccess.h"
#include "expr/nodeClasses.h"
#include "expr/nodes.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
#include "numeric/convert.h"
#include "numeric/shape.h"

namespace zy {

// Pointers to functions, as elements.
template <>
struct Scalar<TypeInfo *> {
    static constexpr DataType type = DT_P_FUNCTION;
};

// ---- Places: find() gives NULL for what the chain has a message for -----------------------------

namespace {

inline VarCell *anyCell(ExprNode *leaf) {
    VarCell *cell = leaf->count ? localCell(leaf, ANY_TYPE) : leaf->payload.symbol->storageCell;
    return cell && cell->type != DT_LINK ? cell : findVarCell(leaf->payload.symbol);
}

void *loseSubscripts(int count, int first, int second) {
    lostSubscripts = {count, {first, second}};
    return nullptr;
}

template <class T, class Index>
struct VectorPlace {
    static void *find(ExprNode *node) {
        int subscript = Index::of(node->right->item);
        const VarCell *cell = anyCell(node->left);
        const ShapeNode *shape = cell->shape;
        if (!shape || shape->next || cell->data2.elementType != Scalar<T>::type || !cell->data.p)
            return loseSubscripts(1, subscript, 0);
        const ExtentRec &extent = shape->extent;
        bool fits =
            subscript >= extent.lower && (subscript < extent.limit || extent.limit == extent.lower);
        if (!fits) [[unlikely]]
            return loseSubscripts(1, subscript, 0);
        return static_cast<T *>(cell->data.p) + (int64_t{subscript} - extent.lower);
    }
};

inline bool isWithin(const ExtentRec &extent, int subscript) {
    return subscript >= extent.lower && subscript < extent.limit;
}

// The last subscript is evaluated first.
template <class T, class Index>
struct MatrixPlace {
    static void *find(ExprNode *node) {
        int column = Index::of(node->right->next->item), row = Index::of(node->right->item);
        const VarCell *cell = anyCell(node->left);
        const ShapeNode *first = cell->shape, *second = first ? first->next : nullptr;
        if (!second || second->next || cell->data2.elementType != Scalar<T>::type ||
            !cell->data.p || !isWithin(first->extent, row) || !isWithin(second->extent, column))
            return loseSubscripts(2, row, column);
        int64_t offset = (int64_t{row} - first->extent.lower) * first->extent.stride;
        offset += (int64_t{column} - second->extent.lower) * second->extent.stride;
        return static_cast<T *>(cell->data.p) + offset;
    }
};

template <class T, class Index>
struct PointerPlace {
    static void *find(ExprNode *node) {
        int subscript = Index::of(node->right->item);
        ExprNode *leaf = node->left;
        const VarCell *cell = anyCell(leaf);
        bool isPointer = cell->type == static_cast<uint32_t>(leaf->payload.symbol->dataType);
        if (!isPointer || isNullAddress(cell->data.p)) [[unlikely]]
            return loseSubscripts(1, subscript, 0);
        auto distance = static_cast<intptr_t>(subscript) * static_cast<intptr_t>(sizeof(T));
        return reinterpret_cast<char *>(reinterpret_cast<intptr_t>(cell->data.p) + distance);
    }
};

template <class T>
struct TargetOfPointer {
    static void *find(ExprNode *node) {
        ExprNode *leaf = node->left;
        const VarCell *cell = anyCell(leaf);
        bool isPointer = cell->type == static_cast<uint32_t>(leaf->payload.symbol->dataType);
        return isPointer && !isNullAddress(cell->data.p) ? cell->data.p : nullptr;
    }
};

// The index beside the member's object keeps the offset (expr/memberAccess.h).
template <class T>
struct MemberPlace {
    static void *find(ExprNode *node) {
        ExprNode *leaf = node->left;
        while (leaf->kind == NODE_OPERATOR)
            leaf = leaf->left;
        const VarCell *cell = anyCell(leaf);
        bool isObject = cell->type == DT_P_STRUCT || cell->type == DT_STRUCT;
        if (!isObject || isNullAddress(cell->data.p)) [[unlikely]]
            return nullptr;
        return static_cast<char *>(cell->data.p) + node->right->payload2.bits;
    }
};

template <class T, class Place>
Register<T> readNode(ExprNode *node) {
    const void *address = Place::find(node);
    if (!address) [[unlikely]]
        return numberOf<T>(readPlaceSlowly(node));
    T number;
    memcpy(&number, address, sizeof number);
    return number;
}

// ---- Choice -------------------------------------------------------------------------------------

void tellPlace(ExprNode *leaf) { leaf->count = placeInFrames(leaf->payload.symbol); }

bool isUsable(const TypeInfo *symbol) {
    return symbol && symbol->level != SYSTEM_LEVEL && symbol->level != TYPE_ONLY_LEVEL &&
           symbol->context <= CONTEXT_PARAMETER;
}

enum class PlaceKind { NONE, VECTOR, MATRIX, POINTER, INDIRECT, MEMBER };

PlaceKind kindOfElement(ExprNode *node) {
    const TypeInfo *symbol = variableOf(node->left);
    const ExprNode *list = node->right;
    if (!isUsable(symbol) || !list || (list->next && list->next->next))
        return PlaceKind::NONE;
    int given = list->next ? 2 : 1;
    if (symbol->kind == KIND_SIMPLE && isPointer(symbol->dataType))
        return given == 1 ? PlaceKind::POINTER : PlaceKind::NONE;
    bool isArrayKind = symbol->kind >= KIND_C_ARRAY && symbol->kind <= KIND_P_ARRAY;
    if (!isArrayKind || node->op != OP_SUBSCRIPT || !symbol->arrayLink ||
        symbol->arrayLink->rank != given)
        return PlaceKind::NONE;
    return given == 1 ? PlaceKind::VECTOR : PlaceKind::MATRIX;
}

PlaceKind kindOfMember(ExprNode *node) {
    if (!plainMember(node) || !findsOwnObject(node))
        return PlaceKind::NONE;
    const ExprNode *leaf = node->left;
    while (isOperator(leaf))
        leaf = leaf->left;
    return isUsable(variableOf(leaf)) ? PlaceKind::MEMBER : PlaceKind::NONE;
}

PlaceKind kindOf(ExprNode *node) {
    if (!isOperator(node))
        return PlaceKind::NONE;
    if (isSubscript(node->op))
        return kindOfElement(node);
    if (node->op == OP_MEMBER || node->op == OP_ARROW)
        return kindOfMember(node);
    const TypeInfo *pointer = node->op == OP_INDIRECTION ? variableOf(node->left) : nullptr;
    bool isPlain = isUsable(pointer) && pointer->kind == KIND_SIMPLE;
    return isPlain && isPointer(pointer->dataType) ? PlaceKind::INDIRECT : PlaceKind::NONE;
}

void tellPlaces(ExprNode *node) {
    ExprNode *leaf = node->left;
    while (leaf->kind == NODE_OPERATOR)
        leaf = leaf->left;
    tellPlace(leaf);
}

// Calls choose with the class of the node's place, for elements of type T; gives no form if its
// subscripts aren't ints that are direct.
template <class T, class Choose>
DirectForm withPlace(ExprNode *node, PlaceKind kind, int depth, Choose choose) {
    if (kind == PlaceKind::INDIRECT)
        return choose.template operator()<TargetOfPointer<T>>();
    if (kind == PlaceKind::MEMBER)
        return choose.template operator()<MemberPlace<T>>();
    Stand stand = standOf<int>(node->right->item, depth);
    if (stand == NOWHERE)
        return {};
    if (kind == PlaceKind::MATRIX) {
        Stand second = standOf<int>(node->right->next->item, depth);
        if (second == NOWHERE)
            return {};
        return withStand<int>(stand == second ? stand : TREE, [&]<class Index>() {
            return choose.template operator()<MatrixPlace<T, Index>>();
        });
    }
    return withStand<int>(stand, [&]<class Index>() {
        return kind == PlaceKind::VECTOR ? choose.template operator()<VectorPlace<T, Index>>()
                                         : choose.template operator()<PointerPlace<T, Index>>();
    });
}

}  // namespace

DirectForm makeDirectPlaceRead(ExprNode *node, int depth) {
    PlaceKind kind = kindOf(node);
    int type = kind == PlaceKind::NONE ? NO_TYPE : treeType(node);
    if (!isNumber(type))
        return {};
    tellPlaces(node);
    return withType(type, [&]<class T>() {
        return withPlace<T>(node, kind, depth, [&]<class Place>() {
            return DirectForm{adopt(node, readNode<T, Place>, type)};
        });
    });
}

int makeDirectTarget(ExprNode *node, int depth) {
    PlaceKind kind = kindOf(node);
    int type = kind == PlaceKind::NONE ? NO_TYPE : treeType(node);
    if (!isNumber(type))
        return NO_TYPE;
    tellPlaces(node);
    DirectForm form = withType(type, [&]<class T>() {
        return withPlace<T>(node, kind, depth, [&]<class Place>() {
            node->place = Place::find;
            return DirectForm{type};
        });
    });
    return form.type;
}

bool makeDirectFunctionRead(ExprNode *node) {
    PlaceKind kind = kindOf(node);
    bool isElement = kind == PlaceKind::VECTOR || kind == PlaceKind::MATRIX;
    if (!isElement || treeType(node) != DT_P_FUNCTION)
        return false;
    tellPlaces(node);
    DirectForm form = withPlace<TypeInfo *>(node, kind, 0, [&]<class Place>() {
        node->place = Place::find;
        return DirectForm{DT_P_FUNCTION};
    });
    return static_cast<bool>(form);
}

void pushFunctionElement(ExprNode *node) {
    ExprNode *element = node->left;
    const void *address = element->place(element);
    if (!address) [[unlikely]] {
        if (Value *value = readPlaceSlowly(element))
            pushValue(value);
        return;
    }
    Value *value = pushNewValue();
    if (!value)
        return;
    value->type = DT_P_FUNCTION;
    memcpy(&value->payload.symbol, address, sizeof value->payload.symbol);
}

bool isPure(const ExprNode *tree) {
    if (!tree || tree->kind == NODE_VALUE)
        return true;
    if (tree->kind == NODE_LIST)
        return isPure(tree->item) && isPure(tree->next);
    if (tree->kind != NODE_OPERATOR)
        return true;
    return !isAssigning(tree->op) && tree->op != OP_CALL && isPure(tree->left) &&
           isPure(tree->right) && isPure(tree->third);
}

// ---- The slow way -------------------------------------------------------------------------------

namespace {

// The node with the subscripts that were found: they aren't evaluated again.
ExprNode *frozenCopy(const ExprNode *node) {
    ExprNode *copy = copyNode(node);
    if (!isSubscript(node->op))
        return copy;
    int i = 0;
    for (ExprNode *cell = copy->right; cell && i < lostSubscripts.count; cell = cell->next, i++) {
        deleteNode(cell->item);
        cell->item = newIntNode(lostSubscripts.values[i]);
    }
    return copy;
}

// A chain of the ordinary kind, run now.
void runCopy(ExprNode *(*compile)(ExprNode *tree), ExprNode *copy) {
    bool saved = makesDirect;
    makesDirect = false;
    ExprNode *chain = compile(copy);
    makesDirect = saved;
    if (chain)
        runNested(chain);
}

}  // namespace

Value *readPlaceSlowly(ExprNode *target) {
    ExprNode *copy = frozenCopy(target);
    runCopy([](ExprNode *tree) { return compileChain(tree, nullptr, true); }, copy);
    Value *value = popValue();
    deleteNode(copy);
    return value;
}

void storeInPlaceSlowly(ExprNode *target, const Value &number) {
    ExprNode *copy = frozenCopy(target);
    runCopy([](ExprNode *tree) { return threadAssignTarget(tree, nullptr); }, copy);
    Value constant = number;
    constant.link = nullptr;
    assignValue(copy, &constant);
    deleteNode(copy);
}

}  // namespace zy
