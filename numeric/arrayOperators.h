// record header: the operators on computational arrays, one entry for each family. An operand that
// owns what it has ends here, or becomes the result; the Value records stay the caller's but for
// one that is the result. NULL if there is no memory for a result.
#pragma once

#include "expr/value.h"

namespace zy {

Value *arrayNegate(Value *array, Value *, int code);
Value *arrayAbs(Value *array, Value *, int code);
Value *arrayNot(Value *array, Value *, int code);
Value *arrayTranspose(Value *array, Value *, int code);
Value *arrayShape(Value *array, Value *, int code);
// shape(a, i): one extent, a scalar.
Value *arrayExtent(Value *array, Value *index, int code);
Value *arrayMathFunction(Value *array, Value *, int code);
Value *arrayComplexPart(Value *array, Value *, int code);

Value *arrayScalarOp(Value *array, Value *scalar, int code);
Value *scalarArrayOp(Value *scalar, Value *array, int code);
Value *arrayArrayOp(Value *left, Value *right, int code);
Value *arrayCompareScalar(Value *array, Value *scalar, int code);
Value *scalarCompareArray(Value *scalar, Value *array, int code);
Value *arrayCompareArray(Value *left, Value *right, int code);
Value *arrayAtan2(Value *left, Value *right, int code);

// The entry of an operator of an element-wise expression.
using ArrayEntry = Value *(*)(Value *left, Value *right, int code);
ArrayEntry elementwiseEntry(int code);

// A product of arrays: a scalar, or an array by the ranks of the operands.
Value *arrayDotProduct(Value *left, Value *right, int code);
Value *arrayProduct(Value *left, Value *right, int code);

// `a op= b` on arrays by the code of the assignment: what is to be stored. The operands are as
// above. NULL after a message if there is no such operator.
Value *arrayCompound(Value *left, Value *right, int code);

}  // namespace zy
