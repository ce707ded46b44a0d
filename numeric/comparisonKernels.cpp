// The kernels of comparisons and of || ^^ &&: elements of one type to int, 0 or 1.

#include "expr/operators.h"
#include "expr/scalarFamilies.h"
#include "numeric/elementOperations.h"
#include "numeric/formTables.h"

namespace zy {

namespace {

struct EitherTrue {
    template <class T>
    static bool of(T a, T b) {
        return (a != 0) | (b != 0);
    }
};
struct OneTrue {
    template <class T>
    static bool of(T a, T b) {
        return (a != 0) != (b != 0);
    }
};
struct BothTrue {
    template <class T>
    static bool of(T a, T b) {
        return (a != 0) & (b != 0);
    }
};

template <class Comparison>
struct Comparing {
    template <class T, OperandForm form>
    struct Of {
        static bool run(void *to, const void *left, const void *right, size_t count) {
            if constexpr (std::is_integral_v<T> && sizeof(T) < sizeof(int))
                return false;
            else if constexpr (isPairType<T>)
                return combineElements<OfPairs<Comparison>, T, int, form>(to, left, right, count);
            else
                return combineElements<Comparison, T, int, form>(to, left, right, count);
        }
    };
};

// By code, from OP_ARRAYS_OR on.
constexpr FormTables comparisons[] = {
    formTables<Comparing<EitherTrue>::template Of>(),
    formTables<Comparing<OneTrue>::template Of>(),
    formTables<Comparing<BothTrue>::template Of>(),
    formTables<Comparing<Less>::template Of>(),
    formTables<Comparing<LessEqual>::template Of>(),
    formTables<Comparing<Equal>::template Of>(),
    formTables<Comparing<GreaterEqual>::template Of>(),
    formTables<Comparing<Greater>::template Of>(),
    formTables<Comparing<NotEqual>::template Of>(),
};

}  // namespace

ElementKernel comparisonKernel(int arraysCode, int elementType, OperandForm form) {
    if (!isElementType(elementType) || elementType < DT_INT)
        return nullptr;
    return comparisons[arraysCode - OP_ARRAYS_OR][form][elementType];
}

}  // namespace zy
