// How the makers of direct trees look at operands: internal to expr/direct*.cpp.
#pragma once

#include "expr/directFamilies.h"

namespace zy {

constexpr int NO_TYPE = -1;
// Direct evaluation recurses, so a deeper tree goes through the stack in pieces.
constexpr int DEPTH_MAX = 48;

// The form of a tree that lies that deep in its root.
DirectForm makeDirectAt(ExprNode *tree, int depth);
// The variable of a leaf whose cell can only hold its number, NULL for others. The leaf is told
// where the cell is found.
const TypeInfo *plainVariable(ExprNode *leaf);

constexpr bool isReal4or8(int type) { return type == DT_FLOAT || type == DT_DOUBLE; }
constexpr bool isInteger(int type) { return type >= 0 && isIntegral(type); }

inline int adopt(ExprNode *node, DirectInteger function, int type) {
    node->integer = function;
    return type;
}
inline int adopt(ExprNode *node, DirectReal function, int type) {
    node->real = function;
    return type;
}

// Calls choose.template operator()<T>() for the C++ type of a number type.
template <class Choose>
auto withType(int type, Choose choose) {
    switch (type) {
        case DT_CHAR: return choose.template operator()<signed char>();
        case DT_UCHAR: return choose.template operator()<unsigned char>();
        case DT_SHORT: return choose.template operator()<short>();
        case DT_USHORT: return choose.template operator()<unsigned short>();
        case DT_UINT: return choose.template operator()<unsigned>();
        case DT_LLONG: return choose.template operator()<long long>();
        case DT_ULLONG: return choose.template operator()<unsigned long long>();
        case DT_FLOAT: return choose.template operator()<float>();
        case DT_DOUBLE: return choose.template operator()<double>();
        default: return choose.template operator()<int>();
    }
}

inline bool isNumber(int type) { return isInteger(type) || isReal4or8(type); }

// ---- Operands -----------------------------------------------------------------------------------

// Where an operand stands.
enum Stand { CONSTANT, VARIABLE, TREE, INTEGER_TREE, NOWHERE };

// Whether reading a number of that type as a T keeps to what its register holds.
template <class T>
bool reads(int type) {
    if (std::is_floating_point_v<T>)
        return isReal4or8(type) || (isInteger(type) && type != DT_ULLONG);
    constexpr bool isUnsigned = std::is_unsigned_v<T>;
    if (sizeof(T) == 8)
        return isInteger(type);
    if (sizeof(T) == 4)
        return isInteger(type) && type <= (isUnsigned ? DT_UINT : DT_INT);
    return type == Scalar<T>::type;
}

// Where an operand whose form is known stands for an operation on T. Each operand is made once: a
// second time would double with each level of a tree.
template <class T>
Stand standFor(ExprNode *operand, const DirectForm &form) {
    if (!form || !reads<T>(form.type))
        return NOWHERE;
    if (form.type == Scalar<T>::type && plainVariable(operand))
        return VARIABLE;
    if (form.type == Scalar<T>::type && operand->kind == NODE_VALUE && operand->type != DT_NAME &&
        operand->type != DT_CONSTANT)
        return CONSTANT;
    return std::is_floating_point_v<T> && isInteger(form.type) ? INTEGER_TREE : TREE;
}

template <class T>
Stand standOf(ExprNode *operand, int depth) {
    return standFor<T>(operand, operand ? makeDirectAt(operand, depth) : DirectForm{});
}

// The types whose code is worth an instance for each pair of places.
template <class T>
constexpr bool isHot = std::is_same_v<T, int> || std::is_same_v<T, double>;

template <class T, class Choose>
auto withStand(Stand stand, Choose choose) {
    if constexpr (std::is_floating_point_v<T>)
        if (stand == INTEGER_TREE)
            return choose.template operator()<InIntegerTree<T>>();
    if constexpr (isHot<T>) {
        if (stand == CONSTANT)
            return choose.template operator()<InConstant<T>>();
        if (stand == VARIABLE)
            return choose.template operator()<InVariable<T>>();
    }
    return choose.template operator()<InTree<T>>();
}

}  // namespace zy
