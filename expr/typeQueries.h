// open header: Questions about an expression tree, asked while it is parsed: the static type of its
// value, in the three senses that arrays make of it, and whether it can be assigned to. None
// changes the tree, and NULL is an expression without a value.
#pragma once

#include "expr/value.h"

namespace zy {

struct FuncInfo;

// Arrays as arrays: DT_CARRAY, DT_P_CARRAY, DT_ARRAY, DT_P_ARRAY.
DataType treeType(const ExprNode *tree);
// A C array as the pointer to its element, with a level for each dimension not subscripted yet; a
// computational array as its element.
DataType treeDataType(const ExprNode *tree);
// What arithmetic sees: a computational array stays one, a C array is a pointer to its element.
DataType arrayElementTypeOf(const ExprNode *tree);

// Of a tree of array type the type that its declaration gives an element.
DataType elementTypeOf(const ExprNode *tree);

// Any answer but LVALUE_NOT lets the expression stand on the left of `=`.
enum LvalueAnswer : int {
    LVALUE_NOT = 0,
    LVALUE_YES = 1,
    LVALUE_CONST = 2,      // a constant, after a message if forAssign
    LVALUE_UNDEFINED = 3,  // of unknown type
};
// forAssign: constants are refused with a message.
int isLvalue(const ExprNode *tree, bool forAssign);

// The variable that an operand names, NULL for any other node.
inline TypeInfo *variableOf(const ExprNode *node) {
    bool isVariable = node && node->kind == NODE_VALUE && node->type == DT_NAME;
    return isVariable ? node->payload.symbol : nullptr;
}
// The declaration behind a tree: of the variable, member or function that gives its value. NULL if
// there is none, as for a constant or a sum.
TypeInfo *declarationOf(const ExprNode *tree);
// What a call node calls; NULL if no prototype tells it.
const FuncInfo *calledFunction(const ExprNode *call);
// The aggregate whose object, or a pointer to whose object, the tree gives. NULL for other trees.
StructInfo *structInfoOf(const ExprNode *tree);
// The member that a node `.`, `->` or `::` names by its index.
TypeInfo *memberOf(const ExprNode *node);

// A constant operand: its value, NULL for all other nodes.
const Value *constantOf(const ExprNode *tree);
// A literal 0 of type int stands for a pointer.
bool isZeroConstant(const ExprNode *tree);

}  // namespace zy
