// convertElements: every element type into every other. Reals and pairs that go into an integer
// are the only ones with values to tell apart: NaN, and for characters the infinities.

#include <cstring>
#include <limits>
#include <type_traits>

#include "instance/report.h"
#include "numeric/convert.h"
#include "numeric/elementConversion.h"
#include "numeric/elementTypes.h"
#include "numeric/independent.h"
#include "numeric/shape.h"

namespace zy {

namespace {

// ---- Integers -----------------------------------------------------------------------------------

// What NaN becomes, and how a character is filled by an infinity.
template <class T>
struct IntegerTarget;
template <>
struct IntegerTarget<signed char> {
    static constexpr signed char nan = 127, pairNaN = 127;
    static void warn() { runWarningAlways("assign NaN to a char variable. "); }
};
template <>
struct IntegerTarget<unsigned char> {
    static constexpr unsigned char nan = 255, pairNaN = 127;
    static void warn() { runWarningAlways("assign NaN to a char variable. "); }
};
template <>
struct IntegerTarget<short> {
    static constexpr short nan = 0, pairNaN = 0;
    static void warn() { runWarningAlways("assign NaN to short variable. "); }
};
template <>
struct IntegerTarget<unsigned short> {
    static constexpr unsigned short nan = 0, pairNaN = 0;
    static void warn() { runWarningAlways("assign NaN to unsigned short variable. "); }
};
template <>
struct IntegerTarget<int> {
    static constexpr int nan = INT32_MIN, pairNaN = INT32_MIN;
    static void warn() { runWarningAlways("assign NaN to an int variable. "); }
};
template <>
struct IntegerTarget<unsigned> {
    static constexpr unsigned nan = 0, pairNaN = 0;
    static void warn() { runWarningAlways("assign NaN to an unsigned int variable. "); }
};
template <>
struct IntegerTarget<long long> {
    static constexpr long long nan = INT64_MIN, pairNaN = INT64_MIN;
    static void warn() { runWarningAlways("assign NaN to long int variable. "); }
};
template <>
struct IntegerTarget<unsigned long long> {
    static constexpr unsigned long long nan = uint64_t{1} << 63, pairNaN = nan;
    static void warn() { runWarningAlways("assign NaN to unsigned long int variable. "); }
};

template <class T>
T integerFromReal(double number) {
    using Target = IntegerTarget<T>;
    if (std::isnan(number)) [[unlikely]] {
        Target::warn();
        return Target::nan;
    }
    if constexpr (sizeof(T) == 1) {
        using Limits = std::numeric_limits<T>;
        if (std::isinf(number)) [[unlikely]]
            return number > 0 ? Limits::max() : Limits::min();
    }
    return truncateTo<T>(number);
}

template <class T>
T integerFromPair(double first, double second) {
    using Target = IntegerTarget<T>;
    if (second == 0) [[likely]]
        return integerFromReal<T>(first);
    Target::warn();
    return Target::pairNaN;
}

// ---- One element --------------------------------------------------------------------------------

// Integers of 64 bits become a float by way of double, as a scalar does.
template <class To, class From>
To realFromInteger(From number) {
    if constexpr (sizeof(From) == sizeof(int64_t))
        return static_cast<To>(static_cast<double>(number));
    else
        return static_cast<To>(number);
}

// A pair that is no real number is NaN; a zero has no sign.
template <class To, class Pair>
To realFromPair(Pair z) {
    if (z.second != 0)
        return static_cast<To>(wideNaN);
    return static_cast<To>(z.first) + To{0};
}

template <class Pair, class From>
Pair pairFromReal(From number) {
    using Part = typename Pair::Part;
    if constexpr (std::is_integral_v<From>)
        return {realFromInteger<Part>(number), 0};
    if (std::isnan(number)) [[unlikely]]
        return nanPair<Pair>;
    if (std::isinf(number)) [[unlikely]]
        return infPair<Pair>;
    return {static_cast<Part>(number), 0};
}

template <class To, class From>
To convertElement(From element) {
    if constexpr (isPairType<To> && isPairType<From>)
        return convertPair<To>(element);
    else if constexpr (isPairType<To>)
        return pairFromReal<To>(element);
    else if constexpr (std::is_integral_v<To> && isPairType<From>)
        return integerFromPair<To>(element.first, element.second);
    else if constexpr (std::is_integral_v<To> && std::is_floating_point_v<From>)
        return integerFromReal<To>(element);
    else if constexpr (isPairType<From>)
        return realFromPair<To>(element);
    else if constexpr (std::is_integral_v<From> && std::is_floating_point_v<To>)
        return realFromInteger<To>(element);
    else
        return static_cast<To>(element);
}

// ---- Runs of elements ---------------------------------------------------------------------------

template <class To>
struct Into {
    template <class From>
    struct Of {
        static void run(void *destination, const void *source, size_t count) {
            auto *to = static_cast<To *>(destination);
            auto *from = static_cast<const From *>(source);
            ZY_INDEPENDENT
            for (size_t i = 0; i < count; i++)
                to[i] = convertElement<To>(from[i]);
        }
    };
};

using KernelRow = std::array<ConvertKernel, ELEMENT_TYPES>;
constexpr auto kernels = []<class... T>(TypeList<T...>) {
    return std::array<KernelRow, ELEMENT_TYPES>{[] {
        if constexpr (std::is_void_v<T>)
            return KernelRow{};
        else
            return elementTable<ConvertKernel, Into<T>::template Of>();
    }()...};
}(ElementTypes{});

void refuseSource(int target) {
    switch (target) {
        case DT_CHAR: runWarningAlways("unsupported data type for casting to char data"); break;
        case DT_UCHAR:
            runWarningAlways("unsupported data type for casting to unsigned char data");
            break;
        case DT_SHORT: runWarningAlways("unsupported data type for casting to  short data"); break;
        case DT_USHORT:
            runWarningAlways("unsupported data type for casting to unsigned  short data");
            break;
        case DT_INT: runWarningAlways("unsupported data type for casting to int data"); break;
        case DT_UINT:
            runWarningAlways("unsupported data type for casting to unsigned int data");
            break;
        case DT_LLONG:
            runWarningAlways("unsupported data type for casting to long int data");
            break;
        case DT_ULLONG:
            runWarningAlways("unsupported data type for casting to unsigned long int data");
            break;
        case DT_FLOAT: runWarningAlways("unsupported data type for casting to float data"); break;
        case DT_DOUBLE: runWarningAlways("unsupported data type for casting to double data"); break;
        default: runWarningAlways("unsupported data type for casting to complex or dual data");
    }
}

}  // namespace

ConvertKernel conversionKernel(int target, int sourceType) {
    bool known = isElementType(target) && isElementType(sourceType);
    return known ? kernels[target][sourceType] : nullptr;
}

int convertElements(void *destination, const void *source, uint32_t count, int target,
                    int sourceType) {
    if (target == sourceType) {
        memmove(destination, source, size_t{count} * elementSize(target));
        return 0;
    }
    if (!isElementType(target)) {
        runWarningAlways("unsupported data type for array operation");
        return -1;
    }
    if (ConvertKernel kernel = conversionKernel(target, sourceType))
        kernel(destination, source, count);
    else
        refuseSource(target);
    return 0;
}

}  // namespace zy
