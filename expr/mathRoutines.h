// Functions of real numbers that write through a pointer or take an integer beside the number, and
// those that aren't array functions.
#pragma once

#include "expr/scalarFamilies.h"
#include "numeric/mathFunctions.h"

namespace zy {

struct Magnitude {
    static double of(double x) { return std::fabs(x); }
};
struct Remainder {
    static double of(double x, double y) { return std::fmod(x, y); }
};

template <class T>
void ldexpOperator(ExprNode *node) {
    Operand number(node->left), exponent(node->right);
    if (number && exponent)
        pushScalar(static_cast<T>(
            std::ldexp(readDouble(number.get()), static_cast<int>(readSigned64(exponent.get())))));
}

template <class T>
void frexpOperator(ExprNode *node) {
    Operand number(node->left), target(node->right);
    if (!number || !target)
        return;
    int exponent = 0;
    double fraction = std::frexp(readDouble(number.get()), &exponent);
    if (auto *place = static_cast<int *>(target->payload.p))
        *place = exponent;
    pushScalar(static_cast<T>(fraction));
}

template <class T>
void modfOperator(ExprNode *node) {
    Operand number(node->left), target(node->right);
    if (!number || !target)
        return;
    double whole = 0, value = readDouble(number.get());
    double fraction = std::modf(value, &whole);
    if (std::isnan(value))
        fraction = whole = wideNaN;
    if (auto *place = static_cast<T *>(target->payload.p))
        *place = static_cast<T>(whole);
    pushScalar(static_cast<T>(fraction));
}

}  // namespace zy
