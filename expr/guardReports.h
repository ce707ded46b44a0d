// What the guards of expr/ share: messages about a pair of types, and tests of their kinds.
#pragma once

#include "expr/typeQueries.h"

namespace zy {

// "found ... where ... is expected". The first refuses the statement.
void refuseType(int found, int expected);
void warnType(int found, int expected);

// Both aggregates, or pointers to aggregates: they must be of one record.
void checkSameAggregate(const StructInfo *first, const StructInfo *second, bool throughPointer);
// The function or pointer to function that is given must fit the one that is wanted.
void checkSamePrototype(const TypeInfo *target, const ExprNode *source);

// The function whose name the tree is, NULL if it is none.
inline TypeInfo *functionNamedBy(const ExprNode *tree) {
    TypeInfo *variable = variableOf(tree);
    return variable && variable->kind == KIND_FUNCTION ? variable : nullptr;
}

constexpr bool isFunctionType(int type) {
    return type == DT_FUNCTION || type == DT_P_FUNCTION || type == DT_PP_FUNCTION ||
           type == DT_PPP_FUNCTION;
}
constexpr bool isAggregateType(int type) {
    return type == DT_STRUCT || type == DT_P_STRUCT || type == DT_PP_STRUCT ||
           type == DT_PPP_STRUCT;
}
// A frame counts as trans.
constexpr int asPosition(int type) { return type == DT_FRAME ? int{DT_TRANS} : type; }

}  // namespace zy
