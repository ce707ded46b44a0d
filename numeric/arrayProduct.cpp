// The product of arrays. A vector is a column, or a row where it stands before a matrix; the
// kernels multiply what lies row by row, so operands of another type or order are brought there
// first.

#include <algorithm>
#include <cstring>

#include "expr/operators.h"
#include "instance/report.h"
#include "numeric/arrayOperands.h"
#include "numeric/arrayOperators.h"
#include "numeric/arrayValue.h"
#include "numeric/convert.h"
#include "numeric/elementTypes.h"
#include "numeric/productKernels.h"

namespace zy {

namespace {

ShapeNode *copyDimension(const ShapeNode *node) {
    return newShapeNode(node->extent.lower, node->extent.limit);
}

// ---- Sizes --------------------------------------------------------------------------------------

struct ProductPlan {
    ProductSize size{};
    const ShapeNode *first = nullptr, *second = nullptr;  // dimensions of the result
    size_t rightInner = 0;                                // what `inner` has to agree with
};

// By the ranks that the arrays have now: what the declarations didn't tell shows here.
int productForm(const ShapeNode *left, const ShapeNode *right, int code) {
    int leftRank = rankOf(left), rightRank = rankOf(right);
    if (leftRank == 2)
        return rightRank == 2 ? OP_MATRIX_PRODUCT : OP_MATRIX_BY_VECTOR;
    if (rightRank == 2)
        return OP_VECTOR_BY_MATRIX;
    bool decided = code == OP_VECTOR_BY_NUMBER || code == OP_NUMBER_BY_VECTOR;
    if (decided || code == OP_VECTOR_BY_VECTOR)
        return code;
    if (extentOf(right) == 1)
        return OP_VECTOR_BY_NUMBER;
    return extentOf(left) == 1 ? OP_NUMBER_BY_VECTOR : OP_VECTOR_BY_VECTOR;
}

ProductPlan planFor(const ShapeNode *left, const ShapeNode *right, int code) {
    size_t leftFirst = extentOf(left), rightFirst = extentOf(right);
    switch (productForm(left, right, code)) {
        case OP_MATRIX_BY_VECTOR: {
            size_t inner = extentOf(left->next);
            return {{leftFirst, inner, 1}, left, nullptr, rightFirst};
        }
        case OP_VECTOR_BY_MATRIX:
            return {{1, leftFirst, extentOf(right->next)}, right->next, nullptr, rightFirst};
        case OP_VECTOR_BY_NUMBER: return {{leftFirst, 1, 1}, left, nullptr, 1};
        case OP_NUMBER_BY_VECTOR: return {{1, 1, rightFirst}, right, nullptr, 1};
        case OP_VECTOR_BY_VECTOR: return {{leftFirst, 1, rightFirst}, left, right, 1};
        default: {
            size_t inner = extentOf(left->next), columns = extentOf(right->next);
            return {{leftFirst, inner, columns}, left, right->next, rightFirst};
        }
    }
}

Value *newResult(const ProductPlan &plan, int elementType, bool columnOrder) {
    ShapeList shape = plan.first ? copyDimension(plan.first) : nullptr;
    if (shape && plan.second)
        shape->next = copyDimension(plan.second);
    if (columnOrder)
        setFortranStrides(shape);
    else
        setRowStrides(shape);
    Value *result = newArrayValue(elementType, shape);
    if (result)
        memset(result->payload.p, 0, size_t{result->count} * bytesOf(elementType));
    return result;
}

// ---- Operands in the kernel's form --------------------------------------------------------------

// The elements of a matrix in the type of the product, row by row; where they lie if they are so.
class Factor {
public:
    // `columnOrder`: the elements are wanted column by column.
    Factor(const ArrayOperand &operand, int type, bool columnOrder)
        : isMixed(isFortranOrdered(operand.shape) != columnOrder && rankOf(operand.shape) == 2),
          converted(operand.elementType == type ? 0 : operand.count * bytesOf(type)),
          ordered(isMixed ? operand.count * bytesOf(type) : 0),
          elements(operand.data) {
        if (converted.get()) {
            convertElements(converted.get(), elements, operand.count, type, operand.elementType);
            elements = converted.get();
        }
        if (ordered.get())
            turnOrder(operand.shape, bytesOf(type));
    }
    const void *data() const { return elements; }

private:
    // Of a column-major matrix the rows are as far apart as of a row-major one the columns.
    void turnOrder(const ShapeNode *shape, size_t bytes) {
        ShapeList target = copyShape(shape);
        setRowStrides(target);
        reorderElements(ordered.get(), elements, target, shape, shapeCount(shape),
                        static_cast<uint32_t>(bytes));
        releaseShape(target);
        elements = ordered.get();
    }

    bool isMixed;
    ScratchMemory converted, ordered;
    const void *elements;
};

bool holdsEnough(const ArrayOperand &operand, size_t rows, size_t columns) {
    return operand.count >= rows * columns;
}

void multiply(Value *result, const ArrayOperand &left, const ArrayOperand &right,
              const ProductPlan &plan, int type, bool columnOrder) {
    Factor leftFactor(left, type, columnOrder), rightFactor(right, type, columnOrder);
    ProductKernel kernel = productKernel(type);
    ProductSize size = plan.size;
    if (columnOrder)  // the transposed product
        kernel(result->payload.p, rightFactor.data(), leftFactor.data(),
               {size.columns, size.inner, size.rows});
    else
        kernel(result->payload.p, leftFactor.data(), rightFactor.data(), size);
}

void releaseOperands(Value *left, Value *right) {
    for (Value *operand : {left, right})
        if (isArrayLike(static_cast<int>(operand->type)))
            releaseArrayValue(operand);
}

// Zeros where operands have no elements to multiply.
Value *emptyProduct(int elementType) {
    return newResult({}, isElementType(elementType) ? elementType : DT_DOUBLE, false);
}

Value *productOf(const ArrayOperand &left, const ArrayOperand &right, int code) {
    int type = commonType(left.elementType, right.elementType);
    if (left.isNull() || right.isNull())
        runError("NULL array for array operation");
    else if (!left.isNumeric() || !right.isNumeric())
        runWarning("unsupported data type for array multiplication");
    bool usable = left.isNumeric() && right.isNumeric() && left.shape && right.shape;
    if (!usable || rankOf(left.shape) > 2 || rankOf(right.shape) > 2)
        return emptyProduct(type);
    ProductPlan plan = planFor(left.shape, right.shape, code);
    bool agree = plan.size.inner == plan.rightInner;
    if (!agree)
        runError("incompatible dimension of two arrays for multiplication");
    bool bothMatrices = rankOf(left.shape) == 2 && rankOf(right.shape) == 2;
    bool columnOrder =
        bothMatrices && isFortranOrdered(left.shape) && isFortranOrdered(right.shape);
    Value *result = newResult(plan, type, columnOrder);
    bool complete = agree && holdsEnough(left, plan.size.rows, plan.size.inner) &&
                    holdsEnough(right, plan.size.inner, plan.size.columns);
    if (result && complete)
        multiply(result, left, right, plan, type, columnOrder);
    return result;
}

}  // namespace

Value *arrayProduct(Value *leftValue, Value *rightValue, int code) {
    Value *result = productOf(ArrayOperand(leftValue), ArrayOperand(rightValue), code);
    releaseOperands(leftValue, rightValue);
    return result;
}

// ---- A scalar -----------------------------------------------------------------------------------

namespace {

Value *dotProductOf(const ArrayOperand &left, const ArrayOperand &right) {
    int type = commonType(left.elementType, right.elementType);
    if (left.isNull() || right.isNull())
        runError("NULL array for array operation");
    else if (!left.isNumeric() || !right.isNumeric())
        runWarning("unsupported data type for array multiplication");
    bool usable = left.isNumeric() && right.isNumeric();
    if (!usable)
        return newZeroValue(DT_DOUBLE);
    if (left.count != right.count)
        runError("incompatible dimension of two arrays for multiplication ");
    Value *result = newZeroValue(type);
    if (!result)
        return nullptr;
    Factor leftFactor(left, type, false), rightFactor(right, type, false);
    alignas(16) unsigned char sum[sizeof(Complex<double>)];
    dotKernel(type)(sum, leftFactor.data(), rightFactor.data(), std::min(left.count, right.count));
    loadElement(result, sum, type);
    return result;
}

}  // namespace

Value *arrayDotProduct(Value *leftValue, Value *rightValue, int) {
    Value *result = dotProductOf(ArrayOperand(leftValue), ArrayOperand(rightValue));
    releaseOperands(leftValue, rightValue);
    return result;
}

}  // namespace zy
