// What can be assigned to, and which constants refuse it.

#include "expr/nodeClasses.h"
#include "expr/typeQueries.h"
#include "front/tokens.h"
#include "instance/report.h"

namespace zy {

namespace {

constexpr int FIRST_FREE_SYSTEM_SLOT = 4;  // the system variables below it are constants

LvalueAnswer constAnswer(bool forAssign) {
    if (forAssign)
        parseError("lvalue is a const object");
    return LVALUE_CONST;
}

bool isSystemConstant(const TypeInfo *variable) {
    return variable->level == SYSTEM_LEVEL && variable->index < FIRST_FREE_SYSTEM_SLOT;
}

// A pointer's own const is a bit apart from that of what it points to.
bool isConstObject(const TypeInfo *variable, bool forAssign) {
    if (forAssign && atDeclaration())
        return false;
    bool pointer = isPointer(dataTypeOf(variable)) && !isComputational(dataTypeOf(variable));
    return variable->qualifiers & (pointer ? QUALIFIER_CONST_POINTER : QUALIFIER_CONST);
}

LvalueAnswer variableAnswer(const TypeInfo *variable, bool forAssign) {
    if (variable->dataType == DT_CONSTANT || variable->kind == KIND_C_ARRAY)
        return LVALUE_NOT;
    if (variable->dataType == DT_UNDEFINED)
        return LVALUE_UNDEFINED;
    if (variable->kind == KIND_FUNCTION)
        return forAssign ? LVALUE_NOT : LVALUE_YES;
    if (isSystemConstant(variable) || isConstObject(variable, forAssign))
        return constAnswer(forAssign);
    return LVALUE_YES;
}

// The variable or member that subscripts, stars and so on start from, at `tree`; NULL for any other
// expression.
const TypeInfo *startOf(const ExprNode *&tree) {
    while (isOperator(tree) && (isSubscript(tree->op) || tree->op == OP_INDIRECTION))
        tree = tree->left;
    return isOperator(tree) && isMember(tree->op) ? memberOf(tree) : variableOf(tree);
}

// Whether what a tree leads to can't be changed. The const of a declaration is that of its
// innermost type: behind all pointers, or of the object itself if there are none. A part of a const
// object is const, what it points to isn't.
bool isConstPlace(const ExprNode *tree) {
    DataType type = treeDataType(tree);
    const ExprNode *start = tree;
    const TypeInfo *declared = startOf(start);
    if (!declared)
        return false;
    bool isInside = declared->dataType == type;
    if (!isPointer(type) && (declared->qualifiers & QUALIFIER_CONST))
        return true;
    if (isPointer(type) && isInside && (declared->qualifiers & QUALIFIER_CONST_POINTER))
        return true;
    if (!isInside || !isOperator(start))
        return false;
    if (start->op != OP_ARROW)
        return isConstPlace(start->left);
    const ExprNode *pointer = start->left;
    const TypeInfo *object = startOf(pointer);
    return object && (object->qualifiers & QUALIFIER_CONST) &&
           treeDataType(start->left) == DT_P_STRUCT;
}

// An element of an array that nothing keeps: a store would be lost, and an address outlive it.
bool isOfTemporaryArray(const ExprNode *tree) {
    const ExprNode *array = tree->left;
    return isSubscript(tree->op) && isOperator(array) && !isMember(array->op) &&
           treeType(array) == DT_ARRAY;
}

LvalueAnswer partAnswer(const ExprNode *tree, bool forAssign) {
    if (isOfTemporaryArray(tree))
        return LVALUE_NOT;
    if (forAssign && !atDeclaration() && isConstPlace(tree))
        return constAnswer(true);
    return LVALUE_YES;
}

LvalueAnswer indirectionAnswer(const ExprNode *tree, bool forAssign) {
    if (treeType(tree->left) == DT_P_FUNCTION)
        return LVALUE_CONST;
    if (treeType(tree) == DT_CARRAY) {
        if (forAssign)
            parseError("using array name as a pointer in lvalue of an assigment");
        return forAssign ? LVALUE_CONST : LVALUE_YES;
    }
    return isPointer(arrayElementTypeOf(tree->left)) ? LVALUE_YES : LVALUE_NOT;
}

LvalueAnswer answerOf(const ExprNode *tree, bool forAssign) {
    if (const TypeInfo *variable = variableOf(tree))
        return variableAnswer(variable, forAssign);
    if (!isOperator(tree))
        return LVALUE_NOT;
    int op = tree->op;
    if (inRange(op, OP_SUBSCRIPT_POINTER, OP_SUBSCRIPT) || isMember(op))
        return partAnswer(tree, forAssign);
    if (isMotionElement(op) || isPart(op))
        return answerOf(tree->left, forAssign);
    return op == OP_INDIRECTION ? indirectionAnswer(tree, forAssign) : LVALUE_NOT;
}

}  // namespace

int isLvalue(const ExprNode *tree, bool forAssign) {
    LvalueAnswer answer = answerOf(tree, forAssign);
    if (answer == LVALUE_YES && forAssign && e_lang->restricted && isPointer(treeType(tree)))
        parseError("lvalue of pointer type is restricted in safe shell");
    return answer;
}

}  // namespace zy
