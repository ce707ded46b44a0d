// Which trees are direct, and the function of each of their nodes. The rows say what an operator
// computes and in which type; the forms of its operands choose among the instances of a template.

#include "expr/direct.h"

#include <array>

#include "expr/directCalls.h"
#include "expr/directOperands.h"
#include "expr/directPlaces.h"
#include "expr/nodes.h"
#include "expr/operators.h"
#include "expr/typeQueries.h"

namespace zy {

namespace {

// ---- Leaves -------------------------------------------------------------------------------------

// A variable whose cell can only hold its declared type, and whose reading has no side effect.
bool isPlainVariable(const TypeInfo *symbol) {
    return symbol->kind == KIND_SIMPLE && isNumber(symbol->dataType) &&
           symbol->level != SYSTEM_LEVEL && symbol->level != TYPE_ONLY_LEVEL &&
           symbol->context <= CONTEXT_PARAMETER && !(symbol->qualifiers & QUALIFIER_BUILTIN);
}

}  // namespace

const TypeInfo *plainVariable(ExprNode *leaf) {
    const TypeInfo *symbol = variableOf(leaf);
    if (!symbol || !isPlainVariable(symbol))
        return nullptr;
    leaf->count = placeInFrames(symbol);
    return symbol;
}

namespace {

int makeVariable(ExprNode *leaf, int type) {
    return withType(type, [&]<class T>() { return adopt(leaf, variableLeaf<T>, type); });
}

int makeLeaf(ExprNode *leaf) {
    if (const TypeInfo *variable = plainVariable(leaf))
        return makeVariable(leaf, variable->dataType);
    const TypeInfo *symbol = variableOf(leaf);
    if (symbol && (symbol->qualifiers & QUALIFIER_BUILTIN) && symbol->dataType == DT_CONSTANT) {
        int type = static_cast<int>(symbol->constant->type);
        if (!isNumber(type))
            return NO_TYPE;
        return withType(type, [&]<class T>() { return adopt(leaf, namedConstantLeaf<T>, type); });
    }
    if (!standsInPlace(leaf))
        return NO_TYPE;
    int type = static_cast<int>(operandInPlace(leaf)->type);
    if (!isNumber(type))
        return NO_TYPE;
    return withType(type, [&]<class T>() { return adopt(leaf, constantLeaf<T>, type); });
}

using Maker = DirectForm (*)(ExprNode *node, int depth);

template <class Operation, class T, class Result>
DirectForm bindBinary(ExprNode *node, Stand left, Stand right) {
    if (right == NOWHERE || left == NOWHERE)
        return {};
    return withStand<T>(left, [&]<class Left>() {
        return withStand<T>(right, [&]<class Right>() {
            auto function = binaryNode<Operation, T, Result, Left, Right>;
            return DirectForm{adopt(node, function, Scalar<Result>::type)};
        });
    });
}

template <class Operation, class T, class Result = T>
DirectForm makeBinary(ExprNode *node, int depth) {
    Stand right = standOf<T>(node->right, depth), left = standOf<T>(node->left, depth);
    return bindBinary<Operation, T, Result>(node, left, right);
}

// Equality is that of real numbers; where these are ints, that of ints is the same.
template <class Operation>
DirectForm makeEquality(ExprNode *node, int depth) {
    DirectForm right = makeDirectAt(node->right, depth), left = makeDirectAt(node->left, depth);
    Stand ofLeft = standFor<int>(node->left, left), ofRight = standFor<int>(node->right, right);
    if (ofLeft != NOWHERE && ofRight != NOWHERE)
        return bindBinary<Operation, int, int>(node, ofLeft, ofRight);
    ofLeft = standFor<double>(node->left, left);
    ofRight = standFor<double>(node->right, right);
    return bindBinary<Operation, double, int>(node, ofLeft, ofRight);
}

template <class Operation, class T>
DirectForm makeShift(ExprNode *node, int depth) {
    Stand right = standOf<int>(node->right, depth), left = standOf<T>(node->left, depth);
    if (right == NOWHERE || left == NOWHERE)
        return {};
    return {adopt(node, shiftNode<Operation, T, InTree<T>, InTree<int>>, Scalar<T>::type)};
}

template <class Operation, class T, class Result = T>
DirectForm makeUnary(ExprNode *node, int depth) {
    Stand stand = standOf<T>(node->left, depth);
    if (stand == NOWHERE)
        return {};
    return withStand<T>(stand, [&]<class Operand>() {
        auto function = unaryNode<Operation, T, Result, Operand>;
        return DirectForm{adopt(node, function, Scalar<Result>::type)};
    });
}

// ---- Truth --------------------------------------------------------------------------------------

// Calls choose with the register types of two numbers.
template <class Choose>
auto withRegisters(int first, int second, Choose choose) {
    if (isInteger(first))
        return isInteger(second) ? choose.template operator()<int64_t, int64_t>()
                                 : choose.template operator()<int64_t, double>();
    return isInteger(second) ? choose.template operator()<double, int64_t>()
                             : choose.template operator()<double, double>();
}

DirectForm makeNot(ExprNode *node, int depth) {
    DirectForm operand = makeDirectAt(node->left, depth);
    if (!operand)
        return {};
    auto function = isInteger(operand.type) ? notNode<int64_t> : notNode<double>;
    return {adopt(node, function, DT_INT)};
}

DirectForm makeShortCircuit(ExprNode *node, int depth) {
    DirectForm left = makeDirectAt(node->left, depth), right = makeDirectAt(node->right, depth);
    if (!left || !right)
        return {};
    return withRegisters(left.type, right.type, [&]<class L, class R>() {
        auto function = node->op == OP_AND ? andNode<L, R> : orNode<L, R>;
        return DirectForm{adopt(node, function, DT_INT)};
    });
}

// Branches of two types would have to be widened.
DirectForm makeConditional(ExprNode *node, int depth) {
    DirectForm condition = makeDirectAt(node->left, depth);
    DirectForm first = makeDirectAt(node->right, depth), second = makeDirectAt(node->third, depth);
    if (!condition || !first || first.type != second.type)
        return {};
    return withRegisters(condition.type, first.type, [&]<class C, class R>() {
        return DirectForm{adopt(node, conditionalNode<C, R>, first.type)};
    });
}

DirectForm makeComma(ExprNode *node, int depth) {
    DirectForm left = makeDirectAt(node->left, depth), right = makeDirectAt(node->right, depth);
    if (!left || !right)
        return {};
    return withRegisters(left.type, right.type, [&]<class L, class R>() {
        return DirectForm{adopt(node, commaNode<L, R>, right.type), forEffect<commaNode<L, R>>};
    });
}

DirectForm makeCast(ExprNode *node, int depth) {
    const TypeInfo *target = variableOf(node->left);
    DirectForm source = makeDirectAt(node->right, depth);
    if (!source || !target || target->level != TYPE_ONLY_LEVEL || target->kind != KIND_SIMPLE ||
        !isNumber(target->dataType))
        return {};
    return withType(source.type, [&]<class From>() {
        return withType(target->dataType, [&]<class To>() {
            return DirectForm{adopt(node, castNode<From, To>, target->dataType)};
        });
    });
}

// ---- Stores -------------------------------------------------------------------------------------

template <auto function>
DirectForm storing(ExprNode *node, int type) {
    return {adopt(node, function, type), forEffect<function>};
}

// Calls choose with the policy of a target. Gives choose(type) for its type, or no form.
template <class Choose>
DirectForm withTarget(ExprNode *target, int depth, Choose choose) {
    if (const TypeInfo *variable = plainVariable(target))
        return choose.template operator()<VariableTarget>(variable->dataType);
    int type = makeDirectTarget(target, depth);
    return type < 0 ? DirectForm{} : choose.template operator()<PlaceTarget>(type);
}

// Whether a store of that source is a plain conversion of its register.
template <class T>
bool storesPlainly(int source) {
    if (std::is_floating_point_v<T>)
        return reads<T>(source);
    // An unsigned int goes into a shorter signed type by way of a real number.
    bool widens = sizeof(T) == 8 || std::is_unsigned_v<T> || source != DT_UINT;
    return isInteger(source) && widens;
}

template <class Target, class T>
DirectForm makeAssignTo(ExprNode *node, int source) {
    if (!storesPlainly<T>(source))
        return {};
    constexpr int type = Scalar<T>::type;
    Stand stand = std::is_floating_point_v<T> && isInteger(source) ? INTEGER_TREE : TREE;
    if (isHot<T> && source == type) {
        bool inPlace = standsInPlace(node->right) && node->right->type != DT_CONSTANT;
        stand = plainVariable(node->right) ? VARIABLE : inPlace ? CONSTANT : TREE;
    }
    return withStand<T>(
        stand, [&]<class Source>() { return storing<assignNode<Target, T, Source>>(node, type); });
}

DirectForm makeAssign(ExprNode *node, int depth) {
    DirectForm source = makeDirectAt(node->right, depth);
    if (!source)
        return {};
    return withTarget(node->left, depth, [&]<class Target>(int type) {
        if (type == DT_INT && isReal4or8(source.type))
            return storing<assignRealToInt<Target>>(node, DT_INT);
        return withType(type,
                        [&]<class T>() { return makeAssignTo<Target, T>(node, source.type); });
    });
}

// The target's type is that of the result: no conversion follows.
template <class Target, class Family, class T>
DirectForm makeCompoundOf(ExprNode *node, int depth) {
    constexpr int type = Scalar<T>::type;
    if constexpr (sizeof(T) < 4) {
        return {};
    } else {
        DirectForm source = makeDirectAt(node->right, depth);
        if (std::is_floating_point_v<T> && source && reads<T>(source.type) &&
            (type == DT_DOUBLE || source.type != DT_DOUBLE)) {
            Stand stand = standFor<T>(node->right, source);
            return withStand<T>(stand, [&]<class Source>() {
                return storing<compoundNode<Target, Family, T, T, Source>>(node, type);
            });
        }
        if (std::is_integral_v<T> && isInteger(source.type) && source.type <= DT_INT) {
            Stand stand = standFor<int>(node->right, source);
            return withStand<int>(stand, [&]<class Source>() {
                return storing<compoundNode<Target, Family, T, int, Source>>(node, type);
            });
        }
        if (std::is_integral_v<T> && source.type == type)
            return storing<compoundNode<Target, Family, T, T, InTree<T>>>(node, type);
        return {};
    }
}

// A place is found once, where a chain finds it once to read and once to write.
bool findsOnce(const ExprNode *node) {
    return node->left->kind == NODE_VALUE || (isPure(node->left) && isPure(node->right));
}

template <class Family, bool integersAlone>
DirectForm makeCompound(ExprNode *node, int depth) {
    if (!findsOnce(node))
        return {};
    return withTarget(node->left, depth, [&]<class Target>(int target) {
        if (integersAlone && !isInteger(target))
            return DirectForm{};
        return withType(target, [&]<class T>() {
            if constexpr (integersAlone && std::is_floating_point_v<T>)
                return DirectForm{};
            else
                return makeCompoundOf<Target, Family, T>(node, depth);
        });
    });
}

template <int step, bool postfix>
DirectForm makeIncrement(ExprNode *node, int depth) {
    if (node->left->kind != NODE_VALUE && !isPure(node->left))
        return {};
    return withTarget(node->left, depth, [&]<class Target>(int type) {
        return withType(type, [&]<class T>() {
            return storing<incrementNode<Target, T, step, postfix>>(node, Scalar<T>::type);
        });
    });
}

// ---- The operators ------------------------------------------------------------------------------

struct Row {
    int op;
    Maker make;
};

#define COMPARISONS(name, T)                                           \
    {OP_LESS_##name, makeBinary<Less, T, int>},                        \
        {OP_LESS_EQUAL_##name, makeBinary<LessEqual, T, int>},         \
        {OP_GREATER_EQUAL_##name, makeBinary<GreaterEqual, T, int>}, { \
        OP_GREATER_##name, makeBinary<Greater, T, int>                 \
    }
#define ARITHMETIC(name, T)                                                               \
    {OP_ADD_##name, makeBinary<Add, T>}, {OP_MULTIPLY_##name, makeBinary<Multiply, T>}, { \
        OP_DIVIDE_##name, makeBinary<Divide, T>                                           \
    }
#define INTEGERS(name, T)                                                                     \
    ARITHMETIC(name, T), {OP_MODULO_##name, makeBinary<Modulo, T>},                           \
        {OP_BIT_OR_##name, makeBinary<BitOr, T>}, {OP_BIT_XOR_##name, makeBinary<BitXor, T>}, \
        {OP_BIT_AND_##name, makeBinary<BitAnd, T>},                                           \
        {OP_SHIFT_LEFT_##name, makeShift<ShiftLeft, T>},                                      \
        {OP_SHIFT_RIGHT_##name, makeShift<ShiftRight, T>}, {                                  \
        OP_ONES_COMPLEMENT_##name, makeUnary<Complement, T>                                   \
    }

constexpr Row rows[] = {
    INTEGERS(INT, int),
    INTEGERS(UINT, unsigned),
    INTEGERS(LLONG, long long),
    INTEGERS(ULLONG, unsigned long long),
    ARITHMETIC(FLOAT, float),
    ARITHMETIC(DOUBLE, double),
    {OP_SUBTRACT_INT, makeBinary<Subtract, int>},
    {OP_SUBTRACT_UINT, makeBinary<Subtract, unsigned, int>},
    {OP_SUBTRACT_LLONG, makeBinary<Subtract, long long>},
    {OP_SUBTRACT_ULLONG, makeBinary<Subtract, unsigned long long, long long>},
    {OP_SUBTRACT_FLOAT, makeBinary<Subtract, float>},
    {OP_SUBTRACT_DOUBLE, makeBinary<Subtract, double>},
    {OP_NEGATE_INT, makeUnary<Negate, int>},
    {OP_NEGATE_LLONG, makeUnary<Negate, long long>},
    {OP_NEGATE_FLOAT, makeUnary<Negate, float>},
    {OP_NEGATE_DOUBLE, makeUnary<Negate, double>},
    COMPARISONS(CHAR, signed char),
    COMPARISONS(INT, int),
    COMPARISONS(UINT, unsigned),
    COMPARISONS(LLONG, long long),
    COMPARISONS(ULLONG, unsigned long long),
    COMPARISONS(REAL, double),
    {OP_EQUAL_REAL, makeEquality<Equal>},
    {OP_NOT_EQUAL_REAL, makeEquality<NotEqual>},
    {OP_NOT, makeNot},
    {OP_AND, makeShortCircuit},
    {OP_OR, makeShortCircuit},
    {OP_CONDITIONAL, makeConditional},
    {OP_COMMA, makeComma},
    {OP_CAST, makeCast},
    {OP_CALL, makeDirectCall},
    {OP_SUBSCRIPT, makeDirectPlaceRead},
    {OP_SUBSCRIPT_POINTER, makeDirectPlaceRead},
    {OP_MEMBER, makeDirectPlaceRead},
    {OP_ARROW, makeDirectPlaceRead},
    {OP_INDIRECTION, makeDirectPlaceRead},
    {OP_ASSIGN, makeAssign},
    {OP_ASSIGN_ADD, makeCompound<ArithmeticCompound<Add>, false>},
    {OP_ASSIGN_SUBTRACT, makeCompound<ArithmeticCompound<Subtract>, false>},
    {OP_ASSIGN_MULTIPLY, makeCompound<ArithmeticCompound<Multiply>, false>},
    {OP_ASSIGN_DIVIDE, makeCompound<ArithmeticCompound<Divide>, false>},
    {OP_ASSIGN_MODULO, makeCompound<ModuloCompound, true>},
    {OP_ASSIGN_BIT_AND, makeCompound<BitCompound<BitAnd>, true>},
    {OP_ASSIGN_BIT_XOR, makeCompound<BitCompound<BitXor>, true>},
    {OP_ASSIGN_BIT_OR, makeCompound<BitCompound<BitOr>, true>},
    {OP_ASSIGN_SHIFT_LEFT, makeCompound<ShiftCompound<ShiftLeft>, true>},
    {OP_ASSIGN_SHIFT_RIGHT, makeCompound<ShiftCompound<ShiftRight>, true>},
    {OP_PREFIX_INCREMENT, makeIncrement<1, false>},
    {OP_PREFIX_DECREMENT, makeIncrement<-1, false>},
    {OP_POSTFIX_INCREMENT, makeIncrement<1, true>},
    {OP_POSTFIX_DECREMENT, makeIncrement<-1, true>},
};
#undef COMPARISONS
#undef ARITHMETIC
#undef INTEGERS

// The number of an operator's row, from 1 on; 0 for those that have none.
constexpr auto rowNumbers = [] {
    std::array<uint8_t, OPERATOR_COUNT> table{};
    for (size_t i = 0; i < std::size(rows); i++)
        table[rows[i].op] = static_cast<uint8_t>(i + 1);
    return table;
}();
static_assert(std::size(rows) < UINT8_MAX);

}  // namespace

DirectForm makeDirectAt(ExprNode *tree, int depth) {
    if (!tree || depth > DEPTH_MAX)
        return {};
    if (tree->kind == NODE_VALUE)
        return {makeLeaf(tree)};
    bool known = tree->kind == NODE_OPERATOR && tree->op >= 0 && tree->op < OPERATOR_COUNT;
    int number = known ? rowNumbers[tree->op] : 0;
    return number ? rows[number - 1].make(tree, depth + 1) : DirectForm{};
}

VarCell *findLocalCell(ExprNode *leaf, int type) {
    ScopeFrame *innermost = currentContext->frames, *frame = innermost;
    auto level = static_cast<int>(leaf->count >> 16);
    while (frame && frame->level > level)
        frame = frame->outer;
    if (!frame || frame->level != level)
        return nullptr;
    const SlotChunk *chunk = frame->chunks[leaf->count >> 8 & 0xFF];
    VarCell *cell = chunk ? chunk->cells[leaf->count & 0xFF] : nullptr;
    if (!cell || (type != ANY_TYPE && cell->type != static_cast<uint32_t>(type)))
        return nullptr;
    leaf->next = reinterpret_cast<ExprNode *>(cell);
    leaf->frameKey = innermost->key;
    return cell;
}

// ---- Uses ---------------------------------------------------------------------------------------

DirectForm makeDirect(ExprNode *tree) { return makesDirect ? makeDirectAt(tree, 0) : DirectForm{}; }

ExprNode *branchesOf(ExprNode *node) {
    if (!node->fourth && (node->fourth = newOperatorNode(0)))
        node->fourth->kind = NODE_BRANCHES;
    return node->fourth;
}

namespace {

// A tree that is direct by itself, or with the result of a call in front of it.
DirectForm makeDirectWithCall(ExprNode *tree, ExprNode *&call) {
    call = nullptr;
    DirectForm form = makeDirect(tree);
    if (form || !makesDirect || !(call = callInFront(tree)))
        return form;
    madeCall = call;
    form = makeDirectAt(tree, 0);
    madeCall = nullptr;
    return form && nodeOfCall(call) ? form : DirectForm{};
}

}  // namespace

ExprNode *directNode(ExprNode *tree) {
    bool isFree = !tree->fourth || tree->fourth->kind == NODE_BRANCHES;
    if (tree->kind != NODE_OPERATOR || !isFree)
        return nullptr;
    ExprNode *call;
    DirectForm form = makeDirectWithCall(tree, call);
    bool isFunction = !form && makesDirect && makeDirectFunctionRead(tree);
    ExprNode *node = form || isFunction ? branchesOf(tree) : nullptr;
    if (!node)
        return nullptr;
    node->left = tree;
    node->right = form ? call : nullptr;
    node->routine =
        isFunction ? pushFunctionElement
                   : withType(form.type, []<class T>() -> NodeRoutine { return pushNumber<T>; });
    return node;
}

DirectNumber makeDirectNumber(ExprNode *tree) {
    DirectForm form = makeDirect(tree);
    if (!form)
        return nullptr;
    return withType(form.type, []<class T>() -> DirectNumber { return giveNumber<T>; });
}

bool makeDirectStatement(ExprNode *tree) {
    if (!tree || tree->kind != NODE_OPERATOR)
        return false;
    DirectForm form = makeDirect(tree);
    if (form.effect)
        tree->routine = form.effect;
    return form.effect;
}

bool makeDirectCondition(ExprNode *tree) {
    bool isConstant = tree && tree->kind == NODE_VALUE && tree->type != DT_NAME;
    return !isConstant && isInteger(makeDirect(tree).type);
}

}  // namespace zy
