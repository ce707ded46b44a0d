// open header: Checks of expressions against what is wanted of them, made once, while they are
// parsed. A check answers with messages and errorFlag and leaves the tree as it is: conversions
// happen when the operand is read.
#pragma once

#include <vector>

#include "decl/arrayInfo.h"
#include "decl/funcInfo.h"
#include "expr/value.h"

namespace zy {

// Checks that `tree` can stand where a value of type `expected` is wanted, and gives it back. A
// zero constant, with errorFlag set, for NULL. A variable without a known type takes the type.
ExprNode *convertTree(ExprNode *tree, int expected);

void checkCast(const ExprNode *castNode, ExprNode *operand);

// The guard of `=`.
void checkAssignment(ExprNode *left, ExprNode *right);
// The guard of an initialiser: as of an assignment, but a pointer takes constants by the rules of
// convertTree.
void checkInitialiser(ExprNode *left, ExprNode *right);

// One argument of a script function against its formal; position counts from 1.
void checkArgument(ExprNode *actual, TypeInfo *formal, int position);
// The count of the arguments; `given` without the implicit object.
void checkArgumentCount(int given, const FuncInfo *function);
// A list of cells against a prototype, for the host: extra arguments pass.
void checkArguments(ExprNode *list, FuncInfo *function);

// ---- Arrays -----------------------------------------------------------------------------------

// How much of an array's shape is known before the script runs.
enum ShapeKnowledge : int {
    SHAPE_KNOWN = 0,         // all bounds
    SHAPE_RANK_KNOWN = 1,    // assumed or deferred bounds
    SHAPE_RANK_UNKNOWN = 2,  // an assumed shape of any rank
};
// Of an operator what is known of the operand that is known least.
ShapeKnowledge arrayShapeKind(const ExprNode *tree);

struct Dimension {
    const ExprNode *lower, *limit;  // of the declaration
};
using Bounds = std::vector<Dimension>;
// The dimensions of an array expression. False, after a message and with errorFlag set, if they
// can't be told.
bool boundsOf(const ExprNode *tree, Bounds &bounds);

// The dimensions of a matrix operation. The code, or the one that the shapes choose for a product.
int checkArrayOperands(const ExprNode *left, const ExprNode *right, int code);
// The dimensions of an element-wise operation or an assignment.
void checkSameShape(const ExprNode *left, const ExprNode *right, bool warnOnly);
// Two declarations of one array.
void compareArrayTypes(const TypeInfo *fresh, const TypeInfo *old);

}  // namespace zy
