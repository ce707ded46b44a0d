// The kernels of + - * / and pow, by operation, element type and the places of the scalars.

#include "expr/operators.h"
#include "expr/scalarFamilies.h"
#include "numeric/elementOperations.h"
#include "numeric/formTables.h"
#include "numeric/mathFunctions.h"

namespace zy {

namespace {

// ---- Operations ---------------------------------------------------------------------------------

struct PowerOfElements {
    template <class T>
    static T of(T a, T b) {
        if constexpr (std::is_integral_v<T>)
            return truncateTo<T>(realPow(static_cast<double>(a), static_cast<double>(b)));
        else
            return InWidth<Power>::of(a, b);
    }
};

// Integers have no quotient by zero: the scalar operator's stands in, and the loop tells.
template <class T>
T quotient(T a, T b, bool &byZero) {
    if (b == 0) [[unlikely]] {
        byZero = true;
        return static_cast<T>(INTEGER_BY_ZERO);
    }
    if (isMinusOne(b)) [[unlikely]]
        return Subtract::of(T{0}, a);
    return a / b;
}

template <class T, OperandForm form>
bool divideIntegers(void *to, const void *left, const void *right, size_t count) {
    auto *result = static_cast<T *>(to);
    auto *a = static_cast<const T *>(left);
    auto *b = static_cast<const T *>(right);
    bool byZero = false;
    for (size_t i = 0; i < count; i++)
        result[i] =
            quotient(form == SCALAR_ARRAY ? *a : a[i], form == ARRAY_SCALAR ? *b : b[i], byZero);
    return byZero;
}

// ---- Tables -------------------------------------------------------------------------------------

template <class Operation>
struct Arithmetic {
    template <class T, OperandForm form>
    struct Of {
        static bool run(void *to, const void *left, const void *right, size_t count) {
            constexpr bool divides = std::is_same_v<Operation, DivideElements>;
            if constexpr (std::is_integral_v<T> && sizeof(T) < sizeof(int))
                return false;
            else if constexpr (divides && std::is_integral_v<T>)
                return divideIntegers<T, form>(to, left, right, count);
            else
                return combineElements<Operation, T, T, form>(to, left, right, count);
        }
    };
};

struct OperationRow {
    int code;
    FormTables kernels;
};
constexpr OperationRow operations[] = {
    {OP_ARRAYS_ADD, formTables<Arithmetic<AddElements>::template Of>()},
    {OP_ARRAYS_SUBTRACT, formTables<Arithmetic<SubtractElements>::template Of>()},
    {OP_ELEMENT_MULTIPLY, formTables<Arithmetic<MultiplyElements>::template Of>()},
    {OP_ELEMENT_DIVIDE, formTables<Arithmetic<DivideElements>::template Of>()},
    {OP_ARRAYS_POWER, formTables<Arithmetic<PowerOfElements>::template Of>()},
};

}  // namespace

ElementKernel arithmeticKernel(int arraysCode, int elementType, OperandForm form) {
    if (!isElementType(elementType) || elementType < DT_INT)
        return nullptr;
    for (const OperationRow &row : operations)
        if (row.code == arraysCode)
            return row.kernels[form][elementType];
    return nullptr;
}

}  // namespace zy
