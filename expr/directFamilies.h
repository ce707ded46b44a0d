// The functions of direct nodes, as templates of what is computed and of where the operands stand.
// expr/direct.cpp chooses among them.
#pragma once

#include <cmath>
#include <cstring>

#include "expr/compoundFamilies.h"
#include "expr/directPlaces.h"
#include "expr/scalarFamilies.h"
#include "expr/scope.h"
#include "numeric/assign.h"

namespace zy {

// ---- Numbers in registers, payloads and cells ---------------------------------------------------

template <class T>
using Register = std::conditional_t<std::is_integral_v<T>, int64_t, double>;

template <class R>
R runDirect(ExprNode *tree) {
    if constexpr (std::is_integral_v<R>)
        return tree->integer(tree);
    else
        return tree->real(tree);
}

template <class T>
T numberIn(const Payload &payload) {
    T number;
    memcpy(&number, &payload, sizeof number);
    return number;
}

template <class T>
Value valueOf(T number) {
    Value value;
    value.kind = NODE_VALUE;
    setScalar(&value, number);
    return value;
}

// A cell that is missing, or holds another type than its variable declares, as one of a reference
// can.
template <class T>
[[gnu::noinline]] T readOtherCell(const ExprNode *leaf) {
    const VarCell *cell = findVarCell(leaf->payload.symbol);
    Value value;
    value.type = cell->type;
    value.payload = cell->data;
    value.payload2 = cell->data2;
    return Scalar<T>::read(&value);
}
template <class T>
[[gnu::noinline]] void storeInOtherCell(const ExprNode *leaf, T number) {
    Value value = valueOf(number);
    storeInCell(findVarCell(leaf->payload.symbol), &value);
}

// A local variable's leaf keeps where its cell is found, level and slot in one word; 0: not so. The
// slots of a block are fixed once a statement can name them.
inline uint32_t placeInFrames(const TypeInfo *symbol) {
    bool direct = symbol->index < DIRECT_CHUNKS * SLOTS_PER_CHUNK && !symbol->storageCell;
    if (!direct || symbol->level <= FILE_LEVEL || symbol->level > UINT16_MAX)
        return 0;
    auto level = static_cast<uint32_t>(symbol->level);
    return level << 16 | symbol->index / SLOTS_PER_CHUNK << 8 | symbol->index % SLOTS_PER_CHUNK;
}

// A local variable's cell, NULL if there is none of that type (or of any). It is looked up once in
// each frame: the leaf, which is in no chain, keeps it with the key of the innermost frame.
constexpr int ANY_TYPE = -1;
VarCell *findLocalCell(ExprNode *leaf, int type);

inline VarCell *localCell(ExprNode *leaf, int type) {
    if (currentContext->frames->key == leaf->frameKey) [[likely]]
        return reinterpret_cast<VarCell *>(leaf->next);
    return findLocalCell(leaf, type);
}

// The variable's cell if it is one of that type, NULL for what findVarCell() has to look at. In
// line wherever a node reads a variable: a call would cost more than what it does.
[[gnu::always_inline]] inline VarCell *plainCell(ExprNode *leaf, int type) {
    if (leaf->count)
        return localCell(leaf, type);
    VarCell *cell = leaf->payload.symbol->storageCell;
    return cell && cell->type == static_cast<uint32_t>(type) ? cell : nullptr;
}

// The number of a record that is released, 0 for none.
template <class T>
T numberOf(Value *value) {
    T number = value ? Scalar<T>::read(value) : T{};
    if (value)
        deleteValue(value);
    return number;
}

template <class T>
[[gnu::always_inline]] inline T readVariable(ExprNode *leaf) {
    const VarCell *cell = plainCell(leaf, Scalar<T>::type);
    return cell ? numberIn<T>(cell->data) : readOtherCell<T>(leaf);
}
// ---- Where an operand of type T stands ----------------------------------------------------------

template <class T>
struct InConstant {
    static T of(ExprNode *leaf) { return numberIn<T>(leaf->payload); }
};
template <class T>
struct InVariable {
    static T of(ExprNode *leaf) { return readVariable<T>(leaf); }
};
template <class T>
struct InTree {
    static T of(ExprNode *tree) { return static_cast<T>(runDirect<Register<T>>(tree)); }
};
// A real operand that is an integer.
template <class T>
struct InIntegerTree {
    static T of(ExprNode *tree) {
        return static_cast<T>(static_cast<double>(runDirect<int64_t>(tree)));
    }
};

// ---- Leaves -------------------------------------------------------------------------------------

template <class T>
Register<T> constantLeaf(ExprNode *leaf) {
    return numberIn<T>(operandInPlace(leaf)->payload);
}
template <class T>
Register<T> namedConstantLeaf(ExprNode *leaf) {
    return numberIn<T>(leaf->payload.symbol->constant->payload);
}
template <class T>
Register<T> variableLeaf(ExprNode *leaf) {
    return InVariable<T>::of(leaf);
}

// ---- Operators: the right operand runs first, as in a chain -------------------------------------

template <class Operation, class T, class Result, class Left, class Right>
Register<Result> binaryNode(ExprNode *node) {
    T b = Right::of(node->right);
    T a = Left::of(node->left);
    return static_cast<Result>(Operation::of(a, b));
}
template <class Operation, class T, class Left, class Right>
Register<T> shiftNode(ExprNode *node) {
    int count = Right::of(node->right);
    return Operation::of(T{Left::of(node->left)}, count);
}
template <class Operation, class T, class Result, class Operand>
Register<Result> unaryNode(ExprNode *node) {
    return static_cast<Result>(Operation::of(Operand::of(node->left)));
}

template <class R>
int64_t notNode(ExprNode *node) {
    return runDirect<R>(node->left) == 0;
}
template <class Left, class Right>
int64_t andNode(ExprNode *node) {
    return runDirect<Left>(node->left) != 0 && runDirect<Right>(node->right) != 0;
}
template <class Left, class Right>
int64_t orNode(ExprNode *node) {
    return runDirect<Left>(node->left) != 0 || runDirect<Right>(node->right) != 0;
}
template <class Condition, class R>
R conditionalNode(ExprNode *node) {
    return runDirect<R>(runDirect<Condition>(node->left) != 0 ? node->right : node->third);
}
template <class Left, class R>
R commaNode(ExprNode *node) {
    runDirect<Left>(node->left);
    return runDirect<R>(node->right);
}

// ---- Casts --------------------------------------------------------------------------------------

// From one number type to another by the rules of the cast.
template <class From, class To>
Register<To> castNode(ExprNode *node) {
    Value value = valueOf(static_cast<From>(runDirect<Register<From>>(node->right)));
    convertScalar(&value, Scalar<To>::type);
    return numberIn<To>(value.payload);
}

// ---- Stores -------------------------------------------------------------------------------------

// Where a target's number of type T lies; find() gives NULL where the slow ways have to look.
struct VariableTarget {
    template <class T>
    static void *find(ExprNode *leaf) {
        VarCell *cell = plainCell(leaf, Scalar<T>::type);
        return cell ? &cell->data : nullptr;
    }
    template <class T>
    static T readSlowly(ExprNode *leaf) {
        return readOtherCell<T>(leaf);
    }
    template <class T>
    static void storeSlowly(ExprNode *leaf, T number) {
        storeInOtherCell(leaf, number);
    }
};
// An element, a member, what a pointer points to.
struct PlaceTarget {
    template <class T>
    static void *find(ExprNode *target) {
        return target->place(target);
    }
    template <class T>
    static T readSlowly(ExprNode *target) {
        return numberOf<T>(readPlaceSlowly(target));
    }
    template <class T>
    static void storeSlowly(ExprNode *target, T number) {
        storeInPlaceSlowly(target, valueOf(number));
    }
};

template <class Target, class T>
void store(ExprNode *target, T number) {
    if (void *address = Target::template find<T>(target)) [[likely]]
        memcpy(address, &number, sizeof number);
    else
        Target::storeSlowly(target, number);
}

// Replaces the number by what compute() makes of it, and gives that.
template <class Target, class T, class Compute>
T update(ExprNode *target, Compute compute) {
    void *address = Target::template find<T>(target);
    if (!address) [[unlikely]] {
        T number = compute(Target::template readSlowly<T>(target));
        Target::storeSlowly(target, number);
        return number;
    }
    T number;
    memcpy(&number, address, sizeof number);
    number = compute(number);
    memcpy(address, &number, sizeof number);
    return number;
}

template <class Target, class T, class Source>
Register<T> assignNode(ExprNode *node) {
    T number = Source::of(node->right);
    store<Target>(node->left, number);
    return number;
}

// A real number into an int; the store has rules of its own for what is no number.
template <class Target>
int64_t assignRealToInt(ExprNode *node) {
    double number = InTree<double>::of(node->right);
    if (std::isnan(number)) [[unlikely]]
        Target::storeSlowly(node->left, number);
    else
        store<Target>(node->left, truncateToInt32(number));
    return update<Target, int>(node->left, [](int stored) { return stored; });
}

// The target and the other operand have types that the family's result, of the target's type,
// follows from.
template <class Target, class Family, class T, class Operand, class Source>
Register<T> compoundNode(ExprNode *node) {
    Value right = valueOf<Operand>(Source::of(node->right));
    return update<Target, T>(node->left, [&right](T number) {
        Value left = valueOf(number);
        Family::run(&left, &left, &right);
        return numberIn<T>(left.payload);
    });
}

template <class Target, class T, int step, bool postfix>
Register<T> incrementNode(ExprNode *node) {
    T old{};
    T fresh = update<Target, T>(node->left, [&old](T number) {
        old = number;
        return step > 0 ? Add::of(number, T{1}) : Subtract::of(number, T{1});
    });
    return postfix ? old : fresh;
}

// ---- Uses of a whole tree -----------------------------------------------------------------------

template <class T>
void pushNumber(ExprNode *node) {
    auto number = static_cast<T>(runDirect<Register<T>>(node->left));
    if (Value *value = pushNewValue())
        setScalar(value, number);
}

template <class T>
void giveNumber(ExprNode *tree, Value *result) {
    result->kind = NODE_VALUE;
    setScalar(result, static_cast<T>(runDirect<Register<T>>(tree)));
}

template <auto function>
void forEffect(ExprNode *tree) {
    function(tree);
}

}  // namespace zy
