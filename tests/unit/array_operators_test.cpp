// Array operators over all pairs of element types: what the operators give beside what this file
// computes in C++, with a promotion and arithmetic of its own.

#include <algorithm>
#include <complex>
#include <cstring>
#include <vector>

#include "expr/operators.h"
#include "numeric/arrayOperators.h"
#include "numeric/arrayValue.h"
#include "numeric/convert.h"
#include "tests/unit/instance.h"

namespace zy {

namespace {

constexpr size_t COUNT = 601;  // more than a block of the operators' loops

template <class T, bool dual>
struct Pair {
    using Part = T;
    static constexpr bool isDual = dual;
    T first, second;
};
template <class T>
concept IsPair = requires(T x) {
    x.first;
};

template <int code, class Element>
struct ElementCase {
    using T = Element;
    static constexpr int type = code;
};
template <class... Case>
struct Cases {
    template <class Action>
    static void each(Action action) {
        (action(Case{}), ...);
    }
};
using AllTypes =
    Cases<ElementCase<DT_CHAR, signed char>, ElementCase<DT_UCHAR, unsigned char>,
          ElementCase<DT_SHORT, short>, ElementCase<DT_USHORT, unsigned short>,
          ElementCase<DT_INT, int>, ElementCase<DT_UINT, unsigned>,
          ElementCase<DT_LLONG, long long>, ElementCase<DT_ULLONG, unsigned long long>,
          ElementCase<DT_FLOAT, float>, ElementCase<DT_DOUBLE, double>,
          ElementCase<DT_COMPLEX, Pair<float, false>>,
          ElementCase<DT_DCOMPLEX, Pair<double, false>>, ElementCase<DT_DUAL, Pair<float, true>>,
          ElementCase<DT_DDUAL, Pair<double, true>>>;

// Numbers that differ from element to element; none is 0, so that all can divide.
template <class T>
T sample(size_t i, int seed) {
    int number = static_cast<int>((i * 7 + static_cast<size_t>(seed) * 13) % 19) + 1;
    if constexpr (IsPair<T>)
        return {static_cast<typename T::Part>(number), static_cast<typename T::Part>(number % 5)};
    else if constexpr (std::is_floating_point_v<T>)
        return static_cast<T>(number) * T{0.75};
    else if constexpr (std::is_signed_v<T>)
        return static_cast<T>(i % 50 == 3 ? std::numeric_limits<T>::max()
                                          : number - (number > 9) * 20);
    else
        return static_cast<T>(i % 50 == 3 ? std::numeric_limits<T>::max() : number);
}

template <class T>
Value *arrayOf(int type, int seed) {
    ShapeList shape = newShapeNode(0, COUNT);
    setRowStrides(shape);
    Value *array = newArrayValue(type, shape);
    auto *elements = static_cast<T *>(array->payload.p);
    for (size_t i = 0; i < COUNT; i++)
        elements[i] = sample<T>(i, seed);
    return array;
}

Value *scalarOf(int type, const void *element) {
    Value *scalar = newZeroValue(type);
    loadElement(scalar, element, type);
    return scalar;
}

template <class To, class From>
To as(From x) {
    if constexpr (IsPair<To> && IsPair<From>)
        return {static_cast<typename To::Part>(x.first), static_cast<typename To::Part>(x.second)};
    else if constexpr (IsPair<To>)
        return {static_cast<typename To::Part>(x), 0};
    else
        return static_cast<To>(x);
}

template <class T>
T expectedPair(int code, T a, T b) {
    using C = std::complex<typename T::Part>;
    auto fromComplex = [](C z) { return T{z.real(), z.imag()}; };
    switch (code) {
        case OP_ARRAYS_ADD: return {a.first + b.first, a.second + b.second};
        case OP_ARRAYS_SUBTRACT: return {a.first - b.first, a.second - b.second};
        case OP_ELEMENT_MULTIPLY:
            if (T::isDual)
                return {a.first * b.first, a.first * b.second + a.second * b.first};
            return fromComplex(C{a.first, a.second} * C{b.first, b.second});
        default:
            if (T::isDual)
                return {a.first / b.first,
                        (a.second * b.first - a.first * b.second) / (b.first * b.first)};
            return fromComplex(C{a.first, a.second} / C{b.first, b.second});
    }
}

template <class T>
T expectedOf(int code, T a, T b) {
    if constexpr (IsPair<T>) {
        return expectedPair(code, a, b);
    } else if constexpr (std::is_floating_point_v<T>) {
        return code == OP_ARRAYS_ADD         ? a + b
               : code == OP_ARRAYS_SUBTRACT  ? a - b
               : code == OP_ELEMENT_MULTIPLY ? a * b
                                             : a / b;
    } else {
        T result = 0;  // what these functions store wraps around
        if (code == OP_ARRAYS_ADD)
            __builtin_add_overflow(a, b, &result);
        else if (code == OP_ARRAYS_SUBTRACT)
            __builtin_sub_overflow(a, b, &result);
        else if (code == OP_ELEMENT_MULTIPLY)
            __builtin_mul_overflow(a, b, &result);
        else
            result = a / b;
        return result;
    }
}

template <class T>
bool isClose(T a, T b) {
    if constexpr (IsPair<T>)
        return isClose(a.first, b.first) && isClose(a.second, b.second);
    else if constexpr (std::is_floating_point_v<T>)
        return a == b || std::fabs(a - b) <= (sizeof(T) == 4 ? 2e-6 : 1e-14) * (1 + std::fabs(b));
    else
        return a == b;
}

// The type that two element types compute in: the larger code, int at least.
template <class A, class B>
using Larger = std::conditional_t<(A::type > B::type), A, B>;
template <class A, class B>
using Common =
    std::conditional_t<(Larger<A, B>::type < DT_INT), ElementCase<DT_INT, int>, Larger<A, B>>;

template <class T>
void expectArray(Value *result, int type, const std::vector<T> &expected) {
    ASSERT_EQ(result->payload2.elementType, type);
    ASSERT_EQ(result->count, expected.size());
    auto *elements = static_cast<const T *>(result->payload.p);
    for (size_t i = 0; i < expected.size(); i++)
        ASSERT_TRUE(isClose(elements[i], expected[i])) << "element " << i;
    deleteValue(result);
}

// Records that aren't the result go back, as the routines of the operators see to.
Value *run(Value *(*entry)(Value *, Value *, int), Value *left, Value *right, int code) {
    Value *result = entry(left, right, code);
    for (Value *operand : {left, right})
        if (operand != result)
            recycleValue(operand);
    return result;
}

template <class A, class B>
std::vector<typename Common<A, B>::T> expectedElements(int code, bool firstOfLeft,
                                                       bool firstOfRight) {
    using T = typename Common<A, B>::T;
    std::vector<T> expected;
    for (size_t i = 0; i < COUNT; i++) {
        auto a = sample<typename A::T>(firstOfLeft ? 0 : i, 1);
        auto b = sample<typename B::T>(firstOfRight ? 0 : i, 2);
        expected.push_back(expectedOf(code, as<T>(a), as<T>(b)));
    }
    return expected;
}

template <class A, class B>
void testArithmetic() {
    constexpr int codes[][3] = {
        {OP_ARRAYS_ADD, OP_ARRAY_ADD_SCALAR, OP_SCALAR_ADD_ARRAY},
        {OP_ARRAYS_SUBTRACT, OP_ARRAY_SUBTRACT_SCALAR, OP_SCALAR_SUBTRACT_ARRAY},
        {OP_ELEMENT_MULTIPLY, OP_ARRAY_MULTIPLY_SCALAR, OP_SCALAR_MULTIPLY_ARRAY},
        {OP_ELEMENT_DIVIDE, OP_ARRAY_DIVIDE_SCALAR, OP_SCALAR_DIVIDE_ARRAY}};
    constexpr int type = Common<A, B>::type;
    auto a = sample<typename A::T>(0, 1);
    auto b = sample<typename B::T>(0, 2);
    for (const auto &code : codes) {
        SCOPED_TRACE(testing::Message() << A::type << " with " << B::type << ", " << code[0]);
        expectArray(run(arrayArrayOp, arrayOf<typename A::T>(A::type, 1),
                        arrayOf<typename B::T>(B::type, 2), code[0]),
                    type, expectedElements<A, B>(code[0], false, false));
        expectArray(
            run(arrayScalarOp, arrayOf<typename A::T>(A::type, 1), scalarOf(B::type, &b), code[1]),
            type, expectedElements<A, B>(code[0], false, true));
        expectArray(
            run(scalarArrayOp, scalarOf(A::type, &a), arrayOf<typename B::T>(B::type, 2), code[2]),
            type, expectedElements<A, B>(code[0], true, false));
    }
}

template <class T>
int expectedOrder(int index, T a, T b) {
    if constexpr (IsPair<T>) {
        bool equal = a.first == b.first && a.second == b.second;
        return index == 5 ? equal : index == 8 ? !equal : 0;
    } else {
        const bool results[] = {a != 0 || b != 0, (a != 0) != (b != 0), a != 0 && b != 0,
                                a<b, a <= b, a == b, a >= b, a> b, a != b};
        return results[index];
    }
}

template <class A, class B>
void testComparisons() {
    using T = typename Common<A, B>::T;
    for (int index = 0; index < 9; index++) {
        SCOPED_TRACE(testing::Message() << A::type << " with " << B::type << ", " << index);
        std::vector<int> expected;
        for (size_t i = 0; i < COUNT; i++)
            expected.push_back(expectedOrder(index, as<T>(sample<typename A::T>(i, 1)),
                                             as<T>(sample<typename B::T>(i, 2))));
        expectArray(run(arrayCompareArray, arrayOf<typename A::T>(A::type, 1),
                        arrayOf<typename B::T>(B::type, 2), OP_ARRAYS_OR + index),
                    DT_INT, expected);
    }
}

// Rows of 5 by 7 times 7 by 4, and of sizes that the tiles don't divide.
template <class A, class B>
void testProduct(int rows, int inner, int columns) {
    using T = typename Common<A, B>::T;
    auto matrix = [](int type, int first, int second) {
        ShapeList shape = newShapeNode(0, first);
        shape->next = newShapeNode(0, second);
        setRowStrides(shape);
        return newArrayValue(type, shape);
    };
    Value *left = matrix(A::type, rows, inner), *right = matrix(B::type, inner, columns);
    auto *a = static_cast<typename A::T *>(left->payload.p);
    auto *b = static_cast<typename B::T *>(right->payload.p);
    for (int i = 0; i < rows * inner; i++)
        a[i] = sample<typename A::T>(static_cast<size_t>(i), 1);
    for (int i = 0; i < inner * columns; i++)
        b[i] = sample<typename B::T>(static_cast<size_t>(i), 2);
    std::vector<T> expected(static_cast<size_t>(rows * columns), T{});
    for (int row = 0; row < rows; row++)
        for (int column = 0; column < columns; column++)
            for (int k = 0; k < inner; k++) {
                T &sum = expected[static_cast<size_t>(row * columns + column)];
                T term = expectedOf(OP_ELEMENT_MULTIPLY, as<T>(a[row * inner + k]),
                                    as<T>(b[k * columns + column]));
                sum = expectedOf(OP_ARRAYS_ADD, sum, term);
            }
    SCOPED_TRACE(testing::Message() << A::type << " times " << B::type << ", " << columns);
    expectArray(run(arrayProduct, left, right, OP_MATRIX_PRODUCT), Common<A, B>::type, expected);
}

class ArrayOperatorsTest : public InstanceTest {
protected:
    void SetUp() override {
        InstanceTest::SetUp();
        live = liveValueCount();
    }
    void TearDown() override {
        EXPECT_EQ(liveValueCount(), live);
        InstanceTest::TearDown();
    }
    int live = 0;
};

TEST_F(ArrayOperatorsTest, ArithmeticOfAllPairsOfTypes) {
    AllTypes::each(
        [](auto a) { AllTypes::each([](auto b) { testArithmetic<decltype(a), decltype(b)>(); }); });
}

TEST_F(ArrayOperatorsTest, ComparisonsOfAllPairsOfTypes) {
    AllTypes::each([](auto a) {
        AllTypes::each([](auto b) { testComparisons<decltype(a), decltype(b)>(); });
    });
}

TEST_F(ArrayOperatorsTest, ProductsOfAllPairsOfTypes) {
    AllTypes::each([](auto a) {
        AllTypes::each([](auto b) {
            testProduct<decltype(a), decltype(b)>(5, 7, 4);
            testProduct<decltype(a), decltype(b)>(4, 9, 1);
            testProduct<decltype(a), decltype(b)>(6, 260, 37);
        });
    });
}

TEST_F(ArrayOperatorsTest, ConversionsOfAllPairsOfTypes) {
    AllTypes::each([](auto a) {
        AllTypes::each([](auto b) {
            using A = decltype(a);
            using B = decltype(b);
            std::vector<typename A::T> from;
            std::vector<typename B::T> to(COUNT);
            // Small numbers, which every type has; the parts of pairs that aren't real are 0.
            for (size_t i = 0; i < COUNT; i++)
                from.push_back(as<typename A::T>(static_cast<signed char>(i % 90)));
            convertElements(to.data(), from.data(), COUNT, B::type, A::type);
            for (size_t i = 0; i < COUNT; i++)
                ASSERT_TRUE(isClose(to[i], as<typename B::T>(static_cast<signed char>(i % 90))))
                    << A::type << " to " << B::type << " at " << i;
        });
    });
}

// What has no value in the target's type: NaN, infinities, numbers out of range, and pairs with a
// second part.
TEST_F(ArrayOperatorsTest, SpecialValuesBecomeIntegers) {
    struct Row {
        int type;
        long long nan, infinity, minusInfinity, pair;
        const char *text;
    };
    constexpr Row rows[] = {
        {DT_CHAR, 127, 127, -128, 127, "a char variable. "},
        {DT_UCHAR, 255, 255, 0, 127, "a char variable. "},
        {DT_SHORT, 0, 0, 0, 0, "short variable. "},
        {DT_USHORT, 0, 0, 0, 0, "unsigned short variable. "},
        {DT_INT, INT32_MIN, INT32_MIN, INT32_MIN, INT32_MIN, "an int variable. "},
        {DT_UINT, 0, 0, 0, 0, "an unsigned int variable. "},
        {DT_LLONG, INT64_MIN, INT64_MIN, INT64_MIN, INT64_MIN, "long int variable. "},
        {DT_ULLONG, INT64_MIN, 0, INT64_MIN, INT64_MIN, "unsigned long int variable. "}};
    const double numbers[] = {NAN, INFINITY, -INFINITY};
    const Pair<double, false> pair{3, 1};
    for (const Row &row : rows) {
        auto converted = [&](const void *source, int type) {
            long long buffer = 0;
            convertElements(&buffer, source, 1, row.type, type);
            Value *value = newZeroValue(row.type);
            loadElement(value, &buffer, row.type);
            convertScalar(value, DT_LLONG);
            long long number = value->payload.ll;
            recycleValue(value);
            return number;
        };
        std::string text = errorsOf([&] { EXPECT_EQ(converted(&numbers[0], DT_DOUBLE), row.nan); });
        EXPECT_EQ(text, std::string("WARNING: assign NaN to ") + row.text + "\n");
        EXPECT_EQ(runStatus, RUN_WARNING);
        EXPECT_EQ(converted(&numbers[1], DT_DOUBLE), row.infinity) << row.type;
        EXPECT_EQ(converted(&numbers[2], DT_DOUBLE), row.minusInfinity) << row.type;
        errorsOf([&] { EXPECT_EQ(converted(&pair, DT_DCOMPLEX), row.pair) << row.type; });
    }
}

// Column-major arrays, which no declaration of a script can make: a matrix of 2 by 3 whose elements
// tell their place, in either order.
Value *matrixOf(bool columnOrder, int rows, int columns) {
    ShapeList shape = newShapeNode(0, rows);
    shape->next = newShapeNode(0, columns);
    if (columnOrder)
        setFortranStrides(shape);
    else
        setRowStrides(shape);
    Value *matrix = newArrayValue(DT_DOUBLE, shape);
    auto *elements = static_cast<double *>(matrix->payload.p);
    for (int row = 0; row < rows; row++)
        for (int column = 0; column < columns; column++)
            elements[columnOrder ? column * rows + row : row * columns + column] =
                10 * row + column;
    return matrix;
}

void expectElements(Value *matrix, bool columnOrder, const std::vector<double> &elements) {
    EXPECT_EQ(isFortranOrdered(matrix->shape), columnOrder);
    auto *found = static_cast<const double *>(matrix->payload.p);
    EXPECT_EQ(std::vector<double>(found, found + matrix->count), elements);
    deleteValue(matrix);
}

TEST_F(ArrayOperatorsTest, OrdersOfElements) {
    // Sums: by rows unless both are by columns.
    expectElements(run(arrayArrayOp, matrixOf(false, 2, 3), matrixOf(true, 2, 3), OP_ARRAYS_ADD),
                   false, {0, 2, 4, 20, 22, 24});
    expectElements(run(arrayArrayOp, matrixOf(true, 2, 3), matrixOf(false, 2, 3), OP_ARRAYS_ADD),
                   false, {0, 2, 4, 20, 22, 24});
    expectElements(run(arrayArrayOp, matrixOf(true, 2, 3), matrixOf(true, 2, 3), OP_ARRAYS_ADD),
                   true, {0, 20, 2, 22, 4, 24});
    // Rows 0 1 2 and 10 11 12 times rows 0 1, 10 11, 20 21.
    const std::vector<double> byRows{50, 53, 350, 383}, byColumns{50, 350, 53, 383};
    for (bool left : {false, true})
        for (bool right : {false, true})
            expectElements(
                run(arrayProduct, matrixOf(left, 2, 3), matrixOf(right, 3, 2), OP_MATRIX_PRODUCT),
                left && right, left && right ? byColumns : byRows);
    for (bool order : {false, true}) {
        Value *matrix = matrixOf(order, 2, 3);
        Value *transposed = arrayTranspose(matrix, nullptr, OP_TRANSPOSE);
        recycleValue(matrix);
        expectElements(transposed, order,
                       order ? std::vector<double>{0, 1, 2, 10, 11, 12}
                             : std::vector<double>{0, 10, 1, 11, 2, 12});
    }
}

}  // namespace

}  // namespace zy
