// The kernels of comparisons and of || ^^ &&: elements of one type to int, 0 or 1.

#include "expr/operators.h"
#include "expr/scalarFamilies.h"
#include "numeric/elementLoops.h"
#include "numeric/elementTypes.h"

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

// Pairs are equal or not; they have no order and no truth.
template <class Comparison>
struct OfPairs {
    template <class Pair>
    static bool of(Pair x, Pair y) {
        bool equal = x.first == y.first && x.second == y.second;
        if constexpr (std::is_same_v<Comparison, Equal>)
            return equal;
        else
            return std::is_same_v<Comparison, NotEqual> && !equal;
    }
};

template <class Comparison, OperandForm form>
struct Comparing {
    template <class T>
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

using KernelTable = std::array<ElementKernel, ELEMENT_TYPES>;
template <class Comparison>
constexpr std::array<KernelTable, OPERAND_FORMS> tablesOf() {
    return {elementTable<ElementKernel, Comparing<Comparison, ARRAY_ARRAY>::template Of>(),
            elementTable<ElementKernel, Comparing<Comparison, ARRAY_SCALAR>::template Of>(),
            elementTable<ElementKernel, Comparing<Comparison, SCALAR_ARRAY>::template Of>()};
}

// By code, from OP_ARRAYS_OR on.
constexpr std::array<KernelTable, OPERAND_FORMS> comparisons[] = {
    tablesOf<EitherTrue>(),   tablesOf<OneTrue>(),   tablesOf<BothTrue>(),
    tablesOf<Less>(),         tablesOf<LessEqual>(), tablesOf<Equal>(),
    tablesOf<GreaterEqual>(), tablesOf<Greater>(),   tablesOf<NotEqual>(),
};

}  // namespace

ElementKernel comparisonKernel(int arraysCode, int elementType, OperandForm form) {
    if (!isElementType(elementType) || elementType < DT_INT)
        return nullptr;
    return comparisons[arraysCode - OP_ARRAYS_OR][form][elementType];
}

}  // namespace zy
