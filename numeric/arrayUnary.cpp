// Operators on one array: - abs ! real imag conj. Each family is a table of kernels by element
// type, and a rule for the type of the result.

#include "expr/operators.h"
#include "instance/report.h"
#include "numeric/arrayOperands.h"
#include "numeric/arrayOperators.h"
#include "numeric/elementOperations.h"
#include "numeric/elementTypes.h"
#include "numeric/shape.h"

namespace zy {

// ---- Operations ---------------------------------------------------------------------------------

namespace {

// What isn't 0 or more is negated, so NaN has its sign turned and -0.0 keeps it. The squares of a
// pair may overflow, which the scalar function prevents.
struct ModulusOfElement {
    template <class T>
    static auto of(T x) {
        if constexpr (isPairType<T>) {
            double first = x.first, second = x.second;
            return static_cast<typename T::Part>(std::sqrt(first * first + second * second));
        } else if constexpr (std::is_unsigned_v<T>) {
            return x;
        } else {
            return x >= 0 ? x : NegateElement::of(x);
        }
    }
};

struct IsFalse {
    template <class T>
    static int of(T x) {
        if constexpr (isPairType<T>)
            return x.first == 0;
        else
            return x == 0;
    }
};

// A part has no infinity and no signed zero; integers have neither.
template <class T>
T plainPart(T x) {
    if constexpr (std::is_integral_v<T>)
        return x;
    else
        return x == static_cast<T>(wideInf) ? static_cast<T>(wideNaN) : x + T{0};
}

// double, or the parts of double pairs; all others are float.
template <class T>
struct PartType {
    using type = float;
};
template <>
struct PartType<double> {
    using type = double;
};
template <>
struct PartType<Complex<double>> {
    using type = double;
};
template <>
struct PartType<Dual<double>> {
    using type = double;
};

struct RealPart {
    template <class T>
    static auto of(T x) {
        using Part = typename PartType<T>::type;
        if constexpr (isPairType<T>)
            return plainPart(x.first);
        else
            return static_cast<Part>(plainPart(x));
    }
};
struct ImaginaryPart {
    template <class T>
    static auto of(T x) {
        if constexpr (isPairType<T>)
            return plainPart(x.second);
        else
            return typename PartType<T>::type{0};
    }
};

struct Conjugate {
    template <class T>
    static auto of(T x) {
        if constexpr (!isPairType<T>) {
            using Part = typename PartType<T>::type;
            return Complex<Part>{static_cast<Part>(plainPart(x)), 0};
        } else {
            return conjugatePair(x);
        }
    }
};

// ---- Families -----------------------------------------------------------------------------------

template <class Operation>
struct Mapping {
    template <class T>
    struct Of {
        static bool run(void *to, const void *from, const void *right, size_t count) {
            using Result = decltype(Operation::of(T{}));
            return mapElements<Operation, T, Result>(to, from, right, count);
        }
    };
};

using KernelTable = std::array<ElementKernel, ELEMENT_TYPES>;
template <class Operation>
constexpr KernelTable kernelsOf = elementTable<ElementKernel, Mapping<Operation>::template Of>();

int partType(int elementType) {
    return elementType == DT_DOUBLE || elementType == DT_DCOMPLEX || elementType == DT_DDUAL
               ? DT_DOUBLE
               : DT_FLOAT;
}

int conjugateType(int elementType) {
    if (isPairElement(elementType))
        return elementType;
    return elementType == DT_DOUBLE ? DT_DCOMPLEX : DT_COMPLEX;
}

// The kernel applied to the elements, or zeros if there is none for them.
Value *mapArray(const ArrayOperand &array, const KernelTable &kernels, int resultType) {
    ArrayResult result(array, nullptr, resultType, array.count);
    if (!result)
        return nullptr;
    ElementStep step{array.isNumeric() ? kernels[array.elementType] : nullptr,
                     bytesOf(resultType),
                     sourceOf(array, array.elementType),
                     {},
                     false};
    if (step.kernel)
        runInto(result, step);
    else
        result.clear();
    return result.get();
}

}  // namespace

ElementKernel negationKernel(int elementType) {
    return isElementType(elementType) ? kernelsOf<NegateElement>[elementType] : nullptr;
}

// ---- Entries ------------------------------------------------------------------------------------

Value *arrayNegate(Value *value, Value *, int) {
    ArrayOperand array(value);
    if (!array.isNumeric())
        runWarning("unsupported data type for array negation");
    return mapArray(array, kernelsOf<NegateElement>,
                    array.isNumeric() ? array.elementType : DT_DOUBLE);
}

Value *arrayAbs(Value *value, Value *, int) {
    ArrayOperand array(value);
    if (!array.isNumeric())
        runWarning("unsupported data type for array function abs()");
    bool ownType = array.isNumeric() && !isPairElement(array.elementType);
    return mapArray(array, kernelsOf<ModulusOfElement>,
                    ownType ? array.elementType : partType(array.elementType));
}

Value *arrayNot(Value *value, Value *, int) {
    ArrayOperand array(value);
    if (array.isNull())
        runError("NULL computational array as operand for array not operator !");
    else if (!array.isNumeric())
        runWarning("unsupported data type for array not operator !");
    return mapArray(array, kernelsOf<IsFalse>, DT_INT);
}

Value *arrayComplexPart(Value *value, Value *, int code) {
    ArrayOperand array(value);
    bool conjugates = code == OP_CONJ_ARRAY;
    if (!array.isNumeric() && conjugates)
        runWarning("unsupported array data type for conjugate(array) function");
    else if (!array.isNumeric())
        runWarning("unsupported array data type for real(array) function");
    int type = conjugates ? conjugateType(array.elementType) : partType(array.elementType);
    const KernelTable &kernels = conjugates              ? kernelsOf<Conjugate>
                                 : code == OP_REAL_ARRAY ? kernelsOf<RealPart>
                                                         : kernelsOf<ImaginaryPart>;
    Value *result = mapArray(array, kernels, type);
    if (!result)
        runError("no memory for array allocation for real(), imag() or conjugate() array function");
    return result;
}

}  // namespace zy
