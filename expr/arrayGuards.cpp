// The dimensions of array expressions, as far as declarations tell them. What isn't fixed before
// the script runs passes here and is tested when it runs.

#include <algorithm>

#include "expr/guards.h"
#include "expr/nodeClasses.h"
#include "expr/typeQueries.h"
#include "instance/report.h"

namespace zy {

// ---- Shapes -------------------------------------------------------------------------------------

namespace {

// Of a variable or member, and of a function whose result is an array.
ShapeKnowledge declaredKnowledge(const TypeInfo *info) {
    if (!isArray(dataTypeOf(info)) && info->kind != KIND_FUNCTION)
        return SHAPE_KNOWN;
    if (!info->arrayLink || info->arrayLink->rank == 0)
        return SHAPE_RANK_UNKNOWN;
    return info->arrayLink->shapeKind == SHAPE_FIXED ? SHAPE_KNOWN : SHAPE_RANK_KNOWN;
}

const ArrayInfo *declaredShape(const ExprNode *tree) {
    bool declares =
        variableOf(tree) || (isOperator(tree) && (isMember(tree->op) || tree->op == OP_CALL));
    const TypeInfo *declaration = declares ? declarationOf(tree) : nullptr;
    return declaration ? declaration->arrayLink : nullptr;
}

bool readBounds(const ArrayInfo *shape, Bounds &bounds) {
    for (const ExprNode *cell = shape->bounds; cell && cell->next; cell = cell->next->next)
        bounds.push_back({cell->item, cell->next->item});
    return true;
}

int subscriptCount(const ExprNode *node) {
    int count = 0;
    for (const ExprNode *cell = node->right; cell && cell->kind == NODE_LIST; cell = cell->next)
        count++;
    return count ? count : 1;
}

bool isProduct(int op) {
    return op == OP_MATRIX_PRODUCT || inRange(op, OP_MATRIX_BY_VECTOR, OP_VECTOR_BY_VECTOR);
}

// The operand whose shape the result has; NULL where the shape is made of two.
const ExprNode *shapeOperand(const ExprNode *node) {
    int op = node->op;
    bool arrayIsRight = inRange(op, OP_SCALAR_OR_ARRAY, OP_SCALAR_MULTIPLY_ARRAY) ||
                        op == OP_COMMA || op == OP_LINEARSOLVER;
    if (arrayIsRight)
        return node->right;
    if (op == OP_CONDITIONAL)
        return treeType(node->right) >= treeType(node->third) ? node->right : node->third;
    bool arrayIsLeft = inRange(op, OP_NEGATE_ARRAY, OP_ARRAYS_SUBTRACT) || isAssigning(op) ||
                       op == OP_CAST || op == OP_NEW;
    return arrayIsLeft ? node->left : nullptr;
}

// Two vectors make a matrix, or a vector where one of them is a number; of a code that is chosen
// when the arrays are there, the rank isn't known.
void vectorBounds(int op, const Dimension &left, const Dimension &right, Bounds &bounds) {
    switch (op) {
        case OP_VECTOR_BY_NUMBER: bounds = {left}; break;
        case OP_NUMBER_BY_VECTOR: bounds = {right}; break;
        default: bounds = {left, right};
    }
}

// A vector on the left of a product with a matrix is a row, one on the right a column.
bool productBounds(const ExprNode *node, Bounds &bounds) {
    Bounds left, right;
    if (!boundsOf(node->left, left) || !boundsOf(node->right, right))
        return false;
    if (left.empty() || right.empty())
        return true;
    if (right.size() == 1 && left.size() == 1)
        vectorBounds(node->op, left.front(), right.front(), bounds);
    else if (right.size() == 1)
        bounds = {left.front()};
    else if (left.size() == 1)
        bounds = {right.back()};
    else
        bounds = {left.front(), right.back()};
    return true;
}

bool dropFirst(const ExprNode *array, int count, Bounds &bounds) {
    if (!boundsOf(array, bounds))
        return false;
    bounds.erase(bounds.begin(), bounds.begin() + std::min<long>(count, bounds.size()));
    return true;
}

bool operatorBounds(const ExprNode *node, Bounds &bounds) {
    int op = node->op;
    if (isProduct(op))
        return productBounds(node, bounds);
    if (op == OP_SHAPE) {
        bounds = {{nullptr, nullptr}};
        return true;
    }
    if (op == OP_TRANSPOSE) {
        bool found = boundsOf(node->left, bounds);
        std::reverse(bounds.begin(), bounds.end());
        return found;
    }
    if (isSubscript(op))
        return dropFirst(node->left, subscriptCount(node), bounds);
    if (op == OP_INDIRECTION)
        return dropFirst(node->left, 1, bounds);
    if (op == OP_ADDRESS || isPointerSum(op))
        return boundsOf(
            isPointer(arrayElementTypeOf(node->left)) || !node->right ? node->left : node->right,
            bounds);
    if (const ExprNode *operand = shapeOperand(node))
        return boundsOf(operand, bounds);
    parseError("cannot obtain array bounds");
    return false;
}

}  // namespace

bool boundsOf(const ExprNode *tree, Bounds &bounds) {
    if (const ArrayInfo *shape = declaredShape(tree))
        return readBounds(shape, bounds);
    if (isOperator(tree) && !isMember(tree->op) && tree->op != OP_CALL)
        return operatorBounds(tree, bounds);
    if (tree && isArray(treeType(tree)))
        return true;  // declared without any
    parseError("cannot obtain array bounds");
    return false;
}

namespace {

ShapeKnowledge productKnowledge(const ExprNode *product) {
    Bounds left, right;
    bool known = boundsOf(product->left, left) && boundsOf(product->right, right);
    return known && left.size() == 2 && right.size() == 2 ? SHAPE_RANK_KNOWN : SHAPE_RANK_UNKNOWN;
}

}  // namespace

ShapeKnowledge arrayShapeKind(const ExprNode *tree) {
    if (!tree)
        return SHAPE_KNOWN;
    if (const TypeInfo *variable = variableOf(tree))
        return declaredKnowledge(variable);
    if (!isOperator(tree))
        return SHAPE_KNOWN;
    if (isMember(tree->op) || tree->op == OP_CALL) {
        const TypeInfo *declaration = declarationOf(tree);
        return declaration && isArray(treeType(tree)) ? declaredKnowledge(declaration)
                                                      : SHAPE_KNOWN;
    }
    if (isSubscript(tree->op) || tree->op == OP_CAST || tree->op == OP_NEW)
        return arrayShapeKind(tree->left);
    ShapeKnowledge kind = std::max(
        {arrayShapeKind(tree->left), arrayShapeKind(tree->right), arrayShapeKind(tree->third)});
    // Of vectors whose extents show later, the product may be a vector or a matrix.
    bool isOpenProduct = tree->op == OP_MATRIX_PRODUCT && kind == SHAPE_RANK_KNOWN;
    return isOpenProduct ? productKnowledge(tree) : kind;
}

// ---- Comparison of extents ----------------------------------------------------------------------

namespace {

struct Shape {
    Bounds bounds;
    ShapeKnowledge knowledge = SHAPE_KNOWN;
    int rank() const { return static_cast<int>(bounds.size()); }
    bool isKnown() const { return knowledge == SHAPE_KNOWN; }
};

bool shapeOf(const ExprNode *tree, Shape &shape) {
    shape.knowledge = arrayShapeKind(tree);
    return boundsOf(tree, shape.bounds);
}

long long boundValue(const ExprNode *bound) {
    const Value *constant = constantOf(bound);
    return constant ? constant->payload.i : 0;
}

// 0 for a dimension that is open.
long long extentOf(const Dimension &dimension) {
    return boundValue(dimension.limit) - boundValue(dimension.lower);
}

bool isOpen(const Dimension &dimension) {
    return boundValue(dimension.limit) == 0 && boundValue(dimension.lower) == 0;
}

bool areEqual(const Dimension &first, const Dimension &second) {
    return extentOf(first) == extentOf(second) || extentOf(first) == 0 || extentOf(second) == 0;
}

bool areSameShape(const Shape &left, const Shape &right) {
    if (left.rank() != right.rank())
        return left.knowledge == SHAPE_RANK_UNKNOWN || right.knowledge == SHAPE_RANK_UNKNOWN;
    if (!left.isKnown() || !right.isKnown())
        return true;
    for (int i = 0; i < left.rank(); i++)
        if (!areEqual(left.bounds[i], right.bounds[i]))
            return false;
    return true;
}

}  // namespace

void checkSameShape(const ExprNode *left, const ExprNode *right, bool warnOnly) {
    Shape leftShape, rightShape;
    if (constantOf(right) || !shapeOf(left, leftShape) || !shapeOf(right, rightShape) ||
        areSameShape(leftShape, rightShape))
        return;
    if (warnOnly)
        parseWarning("array dimensions do not match ");
    else
        parseError("array dimensions do not match ");
}

// ---- Matrix operations --------------------------------------------------------------------------

namespace {

void refuseDimensions() { parseError("array dimensions do not match for matrix operations "); }

bool agreeOrOpen(const Dimension &first, const Dimension &second) {
    return isOpen(first) || isOpen(second) || extentOf(first) == extentOf(second);
}

bool areElementwise(const Shape &left, const Shape &right) {
    if (left.rank() != right.rank())
        return left.knowledge == SHAPE_RANK_UNKNOWN || right.knowledge == SHAPE_RANK_UNKNOWN;
    for (int i = 0; left.isKnown() && right.isKnown() && i < left.rank(); i++) {
        bool skipped = i == 0 && (isOpen(left.bounds[0]) || isOpen(right.bounds[0]));
        if (!skipped && extentOf(left.bounds[i]) != extentOf(right.bounds[i]))
            return false;
    }
    return true;
}

// A transposed vector is a row, though its shape is the same.
bool isRow(const ExprNode *tree) { return isOperator(tree) && tree->op == OP_TRANSPOSE; }

// Two vectors: a row by a column, a number by a row, a column by a number, or a column by a row.
int vectorProduct(const ExprNode *leftTree, const Shape &left, const Shape &right) {
    if (isRow(leftTree)) {
        bool known = left.isKnown() && right.isKnown();
        if (known && !agreeOrOpen(left.bounds[0], right.bounds[0]))
            refuseDimensions();
        return OP_DOT_PRODUCT;
    }
    if (!left.isKnown() || !right.isKnown())
        return OP_MATRIX_PRODUCT;
    bool one = extentOf(left.bounds[0]) == 1, rightOne = extentOf(right.bounds[0]) == 1;
    if (one)
        return rightOne ? OP_DOT_PRODUCT : OP_NUMBER_BY_VECTOR;
    return rightOne ? OP_VECTOR_BY_NUMBER : OP_VECTOR_BY_VECTOR;
}

int productCode(const ExprNode *leftTree, const Shape &left, const Shape &right) {
    if (left.rank() > 2 || right.rank() > 2) {
        parseError("array dimension is larger than 2  in array multiplication");
        return OP_MATRIX_PRODUCT;
    }
    if (left.rank() == 0 || right.rank() == 0)
        return OP_MATRIX_PRODUCT;
    if (left.rank() == 1 && right.rank() == 1)
        return vectorProduct(leftTree, left, right);
    bool known = left.isKnown() && right.isKnown();
    const Dimension &row = left.rank() == 2 ? left.bounds[1] : left.bounds[0];
    if (known && !agreeOrOpen(row, right.bounds[0]))
        refuseDimensions();
    if (left.rank() == 1)
        return OP_VECTOR_BY_MATRIX;
    return right.rank() == 1 ? OP_MATRIX_BY_VECTOR : OP_MATRIX_PRODUCT;
}

bool isSquare(const Shape &shape) {
    if (shape.rank() != 2)
        return false;
    const Dimension &first = shape.bounds[0], &second = shape.bounds[1];
    return extentOf(first) == extentOf(second) || (isOpen(first) && extentOf(second) == 1);
}

void checkInverse(const Shape &shape) {
    if (shape.isKnown() && !isSquare(shape))
        parseError("the array dimension is not NxN for an inverse() operation ");
}

void checkSolver(const Shape &left, const Shape &right) {
    if (!left.isKnown() || !right.isKnown())
        return;
    bool fits = isSquare(left) && right.rank() == 1 &&
                extentOf(left.bounds[1]) == extentOf(right.bounds[0]);
    if (!fits)
        parseError("the array dimension is not (NxN)N = N for an inverse() operation ");
}

}  // namespace

int checkArrayOperands(const ExprNode *left, const ExprNode *right, int code) {
    Shape leftShape, rightShape;
    if (!shapeOf(left, leftShape))
        return code;
    bool hasRight = isArray(treeType(right));
    if (hasRight && !shapeOf(right, rightShape))
        return code;
    bool isElementwise = inRange(code, OP_ARRAYS_OR, OP_ARRAYS_SUBTRACT) || code == OP_ATAN2_ARRAY;
    if (isElementwise) {
        if (!areElementwise(leftShape, rightShape))
            refuseDimensions();
        return code;
    }
    switch (code) {
        case OP_MATRIX_PRODUCT: return productCode(left, leftShape, rightShape);
        case OP_TRANSPOSE:
            if (leftShape.rank() > 2)
                parseError("the array dimension is larger than 2  in transpose()");
            break;
        case OP_INVERSE: checkInverse(leftShape); break;
        case OP_LINEARSOLVER: checkSolver(leftShape, rightShape); break;
        case OP_ARRAY_POWER_SCALAR:
            if (leftShape.isKnown() && !isSquare(leftShape))
                parseError("not NxN 2-dim array for the first arg of array type of function pow()");
            break;
        default: parseWarning("checking dimension of array operations undefined ");
    }
    return code;
}

// ---- Two declarations ---------------------------------------------------------------------------

namespace {

bool isComputationalKind(int kind) {
    return kind == KIND_ARRAY || kind == KIND_ASSUMED_ARRAY || kind == KIND_P_ARRAY;
}

int kindOfResult(const TypeInfo *info) {
    bool isFunction = info->kind == KIND_FUNCTION && info->functionLink;
    return isFunction ? info->functionLink->returnKind : info->kind;
}

bool areSameBounds(const ArrayInfo *fresh, const ArrayInfo *old) {
    const ExprNode *first = fresh->bounds, *second = old->bounds;
    for (; first && second; first = first->next, second = second->next)
        if (boundValue(first->item) != boundValue(second->item))
            return false;
    return !first && !second;
}

}  // namespace

void compareArrayTypes(const TypeInfo *fresh, const TypeInfo *old) {
    if (isComputationalKind(kindOfResult(fresh)) != isComputationalKind(kindOfResult(old))) {
        parseError(
            "change from C array to computational array or from computational array to C array");
        return;
    }
    const ArrayInfo *shape = fresh->arrayLink, *oldShape = old->arrayLink;
    if (!shape || !oldShape)
        return;
    if (shape->rank != oldShape->rank)
        parseError("array ranks do not match");
    else if (shape->shapeKind != oldShape->shapeKind)
        parseError("array types do not match");
    else if (shape->fortranOrder != oldShape->fortranOrder)
        parseError("C and Fortran array types do not match");
    else if (!areSameBounds(shape, oldShape))
        parseError("array dimensions do not match");
}

}  // namespace zy
