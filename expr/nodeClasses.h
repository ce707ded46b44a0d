// The operators by how they treat their operands: what the type queries, the checks and the
// threading tell apart. A class is a range of codes.
#pragma once

#include "expr/operators.h"

namespace zy {

constexpr bool inRange(int code, int first, int last) { return code >= first && code <= last; }

constexpr bool isSubscript(int op) { return inRange(op, OP_SUBSCRIPT_POINTER, OP_SUBSCRIPT_PART6); }
constexpr bool isMotionElement(int op) {
    return inRange(op, OP_MOTION_ELEMENT1, OP_MOTION_ELEMENT7);
}
constexpr bool isMember(int op) { return inRange(op, OP_MEMBER, OP_ARROW); }
constexpr bool isCompoundAssignment(int op) {
    return inRange(op, OP_ASSIGN_ADD, OP_ASSIGN_SHIFT_RIGHT);
}
constexpr bool isIncrement(int op) {
    return inRange(op, OP_PREFIX_INCREMENT, OP_POSTFIX_DECREMENT);
}
// Their value is that of their left operand.
constexpr bool isAssigning(int op) {
    return op == OP_ASSIGN || isCompoundAssignment(op) || isIncrement(op);
}
constexpr bool isPointerSum(int op) { return op == OP_POINTER_ADD || op == OP_POINTER_SUBTRACT; }
// real() and imag(), which can be assigned to.
constexpr bool isPart(int op) {
    return op == OP_REAL_FLOAT || op == OP_IMAG_FLOAT || op == OP_REAL_DOUBLE ||
           op == OP_IMAG_DOUBLE || op == OP_REAL_ARRAY || op == OP_IMAG_ARRAY;
}

constexpr bool isCArray(int type) { return type == DT_CARRAY || type == DT_P_CARRAY; }
constexpr bool isComputational(int type) { return type == DT_ARRAY || type == DT_P_ARRAY; }

inline bool isOperator(const ExprNode *node) { return node && node->kind == NODE_OPERATOR; }

}  // namespace zy
