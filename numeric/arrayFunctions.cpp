// The mathematical functions on arrays: one row for each function, by the kind of element. What is
// narrower than float is computed as float.

#include <algorithm>

#include "expr/operators.h"
#include "instance/report.h"
#include "numeric/arrayOperands.h"
#include "numeric/arrayOperators.h"
#include "numeric/elementTypes.h"
#include "numeric/mathFunctions.h"
#include "numeric/shape.h"

namespace zy {

namespace {

template <class T>
constexpr bool isComputedIn = !std::is_integral_v<T>;

template <class Function>
struct Applying {
    template <class T>
    struct Of {
        static bool run(void *to, const void *from, const void *right, size_t count) {
            if constexpr (isComputedIn<T>)
                return mapElements<InWidth<Function>, T, T>(to, from, right, count);
            return false;
        }
    };
};
template <class Function>
struct ApplyingToTwo {
    template <class T>
    struct Of {
        static bool run(void *to, const void *left, const void *right, size_t count) {
            if constexpr (isComputedIn<T>)
                return combineElements<InWidth<Function>, T, T, ARRAY_ARRAY>(to, left, right,
                                                                             count);
            return false;
        }
    };
};

using KernelTable = std::array<ElementKernel, ELEMENT_TYPES>;
template <class Function>
constexpr KernelTable kernelsOf = elementTable<ElementKernel, Applying<Function>::template Of>();
constexpr KernelTable atan2Kernels =
    elementTable<ElementKernel, ApplyingToTwo<Atan2>::template Of>();

const KernelTable *kernelsFor(int code) {
    switch (code) {
        case OP_SIN_ARRAY: return &kernelsOf<Sin>;
        case OP_COS_ARRAY: return &kernelsOf<Cos>;
        case OP_TAN_ARRAY: return &kernelsOf<Tan>;
        case OP_ASIN_ARRAY: return &kernelsOf<Asin>;
        case OP_ACOS_ARRAY: return &kernelsOf<Acos>;
        case OP_ATAN_ARRAY: return &kernelsOf<Atan>;
        case OP_SINH_ARRAY: return &kernelsOf<Sinh>;
        case OP_COSH_ARRAY: return &kernelsOf<Cosh>;
        case OP_TANH_ARRAY: return &kernelsOf<Tanh>;
        case OP_ASINH_ARRAY: return &kernelsOf<Asinh>;
        case OP_ACOSH_ARRAY: return &kernelsOf<Acosh>;
        case OP_ATANH_ARRAY: return &kernelsOf<Atanh>;
        case OP_CEIL_ARRAY: return &kernelsOf<Ceil>;
        case OP_FLOOR_ARRAY: return &kernelsOf<Floor>;
        case OP_SQRT_ARRAY: return &kernelsOf<SquareRoot>;
        case OP_LOG_ARRAY: return &kernelsOf<Log>;
        case OP_LOG10_ARRAY: return &kernelsOf<Log10>;
        default: return &kernelsOf<Exp>;
    }
}

}  // namespace

ElementKernel functionKernel(int code, int elementType) { return (*kernelsFor(code))[elementType]; }

Value *arrayMathFunction(Value *value, Value *, int code) {
    ArrayOperand array(value);
    if (!array.isNumeric())
        runWarning("unsupported data type for array function");
    int type = array.isNumeric() ? std::max<int>(array.elementType, DT_FLOAT) : DT_FLOAT;
    ArrayResult result(array, nullptr, type, array.count);
    if (!result) {
        runError("no memory for array allocation for sine() array function");
        return nullptr;
    }
    if (array.isNumeric())
        runInto(result,
                {(*kernelsFor(code))[type], bytesOf(type), sourceOf(array, type), {}, false});
    else
        result.clear();
    return result.get();
}

namespace {

// The element type of atan2 of two types; DT_NULL for a pair that doesn't go together.
int atan2Type(int left, int right) {
    if (left <= DT_FLOAT && right <= DT_FLOAT)
        return DT_FLOAT;
    bool hasFunction = left == DT_DOUBLE || left == DT_COMPLEX || left == DT_DCOMPLEX;
    return left == right && hasFunction ? left : DT_NULL;
}

}  // namespace

Value *arrayAtan2(Value *leftValue, Value *rightValue, int) {
    ArrayPair pair(leftValue, rightValue);
    int type =
        pair.isNumeric() ? atan2Type(pair.left.elementType, pair.right.elementType) : DT_NULL;
    int resultType = type == DT_NULL ? DT_DCOMPLEX : type;
    if (type == DT_NULL)
        runError("data types for two arguments of atan2() does not match");
    ArrayResult result(pair.model(), &pair.other(), resultType, pair.count());
    if (!result) {
        runError("no memory for array allocation for atan2() array function");
        return nullptr;
    }
    if (type == DT_NULL)
        result.clear();
    else
        runInto(result, {atan2Kernels[type], bytesOf(type), sourceOf(pair.left, type),
                         sourceOf(pair.right, type), false});
    return result.get();
}

}  // namespace zy
