// The operators on two arrays, or on an array and a scalar: + - * / pow, comparisons and logic.

#include <utility>

#include "expr/operators.h"
#include "instance/report.h"
#include "numeric/arrayOperands.h"
#include "numeric/arrayOperators.h"
#include "numeric/elementTypes.h"
#include "numeric/shape.h"

namespace zy {

namespace {

// A result without values, for operands that the operator can't compute with.
Value *undefinedResult(const ArrayOperand &model, const ArrayOperand *other, int elementType,
                       uint32_t count) {
    ArrayResult result(model, other, elementType, count);
    if (result)
        result.clear();
    return result.get();
}

}  // namespace

// ---- Arithmetic ---------------------------------------------------------------------------------

int arraysCodeOf(int code) {
    switch (code) {
        case OP_ARRAY_ADD_SCALAR:
        case OP_SCALAR_ADD_ARRAY: return OP_ARRAYS_ADD;
        case OP_ARRAY_SUBTRACT_SCALAR:
        case OP_SCALAR_SUBTRACT_ARRAY: return OP_ARRAYS_SUBTRACT;
        case OP_ARRAY_MULTIPLY_SCALAR:
        case OP_SCALAR_MULTIPLY_ARRAY: return OP_ELEMENT_MULTIPLY;
        case OP_ARRAY_DIVIDE_SCALAR:
        case OP_SCALAR_DIVIDE_ARRAY: return OP_ELEMENT_DIVIDE;
        default: return code;
    }
}

namespace {

void reportNullArray() { runError("NULL array for array operation"); }

void reportUnsupported(int arraysCode) {
    if (arraysCode == OP_ARRAYS_ADD)
        runWarning("unsupported data type for array addition");
    else
        runWarning("unsupported data type for array subtraction");
}

void reportDimensions(int arraysCode) {
    switch (arraysCode) {
        case OP_ARRAYS_ADD: runError("incompatible dimension of two arrays for addition"); break;
        case OP_ARRAYS_SUBTRACT:
            runError("incompatible dimension of two arrays for subtraction");
            break;
        case OP_ARRAYS_POWER:
            runError("incompatible dimension of two arrays for function pow()");
            break;
        case OP_ELEMENT_MULTIPLY:
            runError("incompatible dimension of two arrays for element-wide multiplication .* ");
            break;
        default: runError("incompatible dimension of two arrays for element-wide division ./ ");
    }
}

Value *computeWithScalar(Value *arrayValue, const Value *scalar, int code, OperandForm form) {
    ArrayOperand array(arrayValue);
    int arraysCode = arraysCodeOf(code), scalarType = static_cast<int>(scalar->type);
    if (array.isNull())
        reportNullArray();
    else if (!array.isNumeric() || !isElementType(scalarType))
        reportUnsupported(arraysCode);
    if (!array.isNumeric() || !isElementType(scalarType))
        return undefinedResult(array, nullptr, DT_DOUBLE, array.count);
    int type = commonType(array.elementType, scalarType);
    ArrayResult result(array, nullptr, type, array.count);
    if (!result)
        return nullptr;
    ScalarElement element(scalar, type);
    ElementSource elements = sourceOf(array, type);
    ElementStep step{arithmeticKernel(arraysCode, type, form), bytesOf(type), elements,
                     element.source(), false};
    if (form == SCALAR_ARRAY)
        std::swap(step.left, step.right);
    runInto(result, step);
    return result.get();
}

}  // namespace

Value *arrayScalarOp(Value *array, Value *scalar, int code) {
    return computeWithScalar(array, scalar, code, ARRAY_SCALAR);
}

Value *scalarArrayOp(Value *scalar, Value *array, int code) {
    return computeWithScalar(array, scalar, code, SCALAR_ARRAY);
}

Value *arrayArrayOp(Value *leftValue, Value *rightValue, int code) {
    ArrayPair pair(leftValue, rightValue);
    if (pair.hasNull())
        reportNullArray();
    else if (!pair.isNumeric())
        reportUnsupported(code);
    if (!pair.isNumeric())
        return undefinedResult(pair.model(), &pair.other(), DT_DOUBLE, pair.count());
    if (pair.countsDiffer())
        reportDimensions(code);
    int type = commonType(pair.left.elementType, pair.right.elementType);
    ArrayResult result(pair.model(), &pair.other(), type, pair.count());
    if (result)
        runInto(result, {arithmeticKernel(code, type, ARRAY_ARRAY), bytesOf(type),
                         sourceOf(pair.left, type), sourceOf(pair.right, type), false});
    return result.get();
}

// ---- Comparisons and logic ----------------------------------------------------------------------

namespace {

// By code from the first of a family on; the families have one order.
constexpr const char *nullOperandTexts[] = {
    "NULL computational array as operand for array operator ||",
    "NULL computational array as operand for array operator ^^",
    "NULL computational array as operand for array operator &&",
    "NULL computational array as operand for array operator <",
    "NULL computational array as operand for array operator <=",
    "NULL computational array as operand for array operator ==",
    "NULL computational array as operand for array operator >=",
    "NULL computational array as operand for array operator >",
    "NULL computational array as operand for array operator !=",
};

// The text of an error with the status of a warning.
void reportNullOperand(int index) {
    auto status = runStatus;
    runError("%s", nullOperandTexts[index]);
    runStatus = status;
    noteRunWarning();
}

// Real elements compare with a scalar as double, pairs in their own type.
Value *compareWithScalar(Value *arrayValue, const Value *scalar, int index, OperandForm form) {
    ArrayOperand array(arrayValue);
    if (array.isNull())
        reportNullOperand(index);
    else if (!array.isNumeric())
        runWarning("unsupported data type for array operation");
    if (!array.isNumeric())
        return undefinedResult(array, nullptr, DT_INT, array.count);
    int type = isPairElement(array.elementType) ? array.elementType : DT_DOUBLE;
    ArrayResult result(array, nullptr, DT_INT, array.count);
    if (!result)
        return nullptr;
    ScalarElement element(scalar, type);
    ElementStep step{comparisonKernel(OP_ARRAYS_OR + index, type, form), sizeof(int),
                     sourceOf(array, type), element.source(), false};
    if (form == SCALAR_ARRAY)
        std::swap(step.left, step.right);
    runInto(result, step);
    return result.get();
}

}  // namespace

Value *arrayCompareScalar(Value *array, Value *scalar, int code) {
    return compareWithScalar(array, scalar, code - OP_ARRAY_OR_SCALAR, ARRAY_SCALAR);
}

Value *scalarCompareArray(Value *scalar, Value *array, int code) {
    return compareWithScalar(array, scalar, code - OP_SCALAR_OR_ARRAY, SCALAR_ARRAY);
}

Value *arrayCompareArray(Value *leftValue, Value *rightValue, int code) {
    ArrayPair pair(leftValue, rightValue);
    if (pair.hasNull())
        reportNullArray();
    else if (!pair.isNumeric())
        runWarning("unsupported data type for array operation");
    if (!pair.isNumeric())
        return undefinedResult(pair.model(), &pair.other(), DT_INT, pair.count());
    if (pair.countsDiffer())
        runError("incompatible dimensions of two arrays for array operation");
    int type = commonType(pair.left.elementType, pair.right.elementType);
    ArrayResult result(pair.model(), &pair.other(), DT_INT, pair.count());
    if (result)
        runInto(result, {comparisonKernel(code, type, ARRAY_ARRAY), sizeof(int),
                         sourceOf(pair.left, type), sourceOf(pair.right, type), false});
    return result.get();
}

ArrayEntry elementwiseEntry(int code) {
    switch (code) {
        case OP_NEGATE_ARRAY: return arrayNegate;
        case OP_ARRAY_ADD_SCALAR:
        case OP_ARRAY_SUBTRACT_SCALAR:
        case OP_ARRAY_MULTIPLY_SCALAR:
        case OP_ARRAY_DIVIDE_SCALAR: return arrayScalarOp;
        case OP_SCALAR_ADD_ARRAY:
        case OP_SCALAR_SUBTRACT_ARRAY:
        case OP_SCALAR_MULTIPLY_ARRAY:
        case OP_SCALAR_DIVIDE_ARRAY: return scalarArrayOp;
        case OP_ARRAYS_ADD:
        case OP_ARRAYS_SUBTRACT:
        case OP_ELEMENT_MULTIPLY:
        case OP_ELEMENT_DIVIDE:
        case OP_ARRAYS_POWER: return arrayArrayOp;
        default: return arrayMathFunction;
    }
}

// ---- Compound assignments -----------------------------------------------------------------------

namespace {

// The plain operators by where the arrays are.
struct CompoundRow {
    int code, arrays, arrayScalar, scalarArray;
};
constexpr CompoundRow compoundRows[] = {
    {OP_ASSIGN_ADD, OP_ARRAYS_ADD, OP_ARRAY_ADD_SCALAR, OP_SCALAR_ADD_ARRAY},
    {OP_ASSIGN_SUBTRACT, OP_ARRAYS_SUBTRACT, OP_ARRAY_SUBTRACT_SCALAR, OP_SCALAR_SUBTRACT_ARRAY},
    {OP_ASSIGN_MULTIPLY, OP_MATRIX_PRODUCT, OP_ARRAY_MULTIPLY_SCALAR, OP_SCALAR_MULTIPLY_ARRAY},
    {OP_ASSIGN_DIVIDE, OP_ELEMENT_DIVIDE, OP_ARRAY_DIVIDE_SCALAR, OP_SCALAR_DIVIDE_ARRAY},
};

}  // namespace

Value *arrayCompound(Value *left, Value *right, int code) {
    bool leftArray = isArrayLike(static_cast<int>(left->type));
    bool rightArray = isArrayLike(static_cast<int>(right->type));
    for (const CompoundRow &row : compoundRows) {
        if (row.code != code)
            continue;
        if (leftArray && rightArray)
            return row.arrays == OP_MATRIX_PRODUCT ? arrayProduct(left, right, row.arrays)
                                                   : arrayArrayOp(left, right, row.arrays);
        return leftArray ? arrayScalarOp(left, right, row.arrayScalar)
                         : scalarArrayOp(left, right, row.scalarArray);
    }
    runError("undefined operation");
    return nullptr;
}

}  // namespace zy
