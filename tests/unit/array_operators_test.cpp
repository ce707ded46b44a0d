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

constexpr int elementTypes[] = {DT_CHAR,    DT_UCHAR,    DT_SHORT,  DT_USHORT, DT_INT,
                                DT_UINT,    DT_LLONG,    DT_ULLONG, DT_FLOAT,  DT_DOUBLE,
                                DT_COMPLEX, DT_DCOMPLEX, DT_DUAL,   DT_DDUAL};

bool isPair(int type) { return type >= DT_COMPLEX; }
bool isDual(int type) { return type >= DT_DUAL; }
bool isSinglePrecision(int type) {
    return type == DT_FLOAT || type == DT_COMPLEX || type == DT_DUAL;
}

// A number of any type: an integer in `whole`, others in the parts.
struct Number {
    __int128 whole = 0;
    double first = 0, second = 0;
};

template <class T>
void putWhole(void *address, __int128 number) {
    auto element = static_cast<T>(number);  // wraps around
    memcpy(address, &element, sizeof element);
}
template <class T>
__int128 wholeAt(const void *address) {
    T element;
    memcpy(&element, address, sizeof element);
    return element;
}
template <class T>
void putParts(void *address, const Number &number, bool both) {
    const T parts[] = {static_cast<T>(number.first), static_cast<T>(number.second)};
    memcpy(address, parts, both ? sizeof parts : sizeof *parts);
}

void put(int type, void *address, const Number &number) {
    switch (type) {
        case DT_CHAR: return putWhole<signed char>(address, number.whole);
        case DT_UCHAR: return putWhole<unsigned char>(address, number.whole);
        case DT_SHORT: return putWhole<short>(address, number.whole);
        case DT_USHORT: return putWhole<unsigned short>(address, number.whole);
        case DT_INT: return putWhole<int>(address, number.whole);
        case DT_UINT: return putWhole<unsigned>(address, number.whole);
        case DT_LLONG: return putWhole<long long>(address, number.whole);
        case DT_ULLONG: return putWhole<unsigned long long>(address, number.whole);
        default:
            if (isSinglePrecision(type))
                return putParts<float>(address, number, isPair(type));
            return putParts<double>(address, number, isPair(type));
    }
}

Number at(int type, const void *elements, size_t index) {
    auto *address = static_cast<const char *>(elements) + index * elementSize(type);
    switch (type) {
        case DT_CHAR: return {wholeAt<signed char>(address)};
        case DT_UCHAR: return {wholeAt<unsigned char>(address)};
        case DT_SHORT: return {wholeAt<short>(address)};
        case DT_USHORT: return {wholeAt<unsigned short>(address)};
        case DT_INT: return {wholeAt<int>(address)};
        case DT_UINT: return {wholeAt<unsigned>(address)};
        case DT_LLONG: return {wholeAt<long long>(address)};
        case DT_ULLONG: return {wholeAt<unsigned long long>(address)};
        default: break;
    }
    Number number;
    float single[2] = {};
    double wide[2] = {};
    size_t bytes = elementSize(type);
    memcpy(isSinglePrecision(type) ? static_cast<void *>(single) : wide, address, bytes);
    number.first = isSinglePrecision(type) ? single[0] : wide[0];
    number.second = isSinglePrecision(type) ? single[1] : wide[1];
    return number;
}

// As it is in a type: wrapped around or rounded.
Number inType(int type, const Number &number) {
    unsigned char element[16];
    put(type, element, number);
    return at(type, element, 0);
}

Number converted(int target, int source, Number number) {
    if (isIntegral(source) && !isIntegral(target))
        number.first = static_cast<double>(number.whole);
    else if (!isIntegral(source) && isIntegral(target))
        number.whole = static_cast<__int128>(number.first);
    return inType(target, number);
}

// Numbers that differ from element to element; none is 0, so that all can divide.
Number sample(int type, size_t i, int seed) {
    int number = static_cast<int>((i * 7 + static_cast<size_t>(seed) * 13) % 19) + 1;
    Number result;
    result.whole = i % 50 == 3 ? ~__int128{0} << 62 | 41 : number - (number > 9) * 20;
    result.first = number * 0.75;
    result.second = number % 5;
    Number fitted = inType(type, result);
    if (isIntegral(type) && fitted.whole == 0)
        fitted.whole = 1;
    return fitted;
}

Value *newVector(int type, size_t count) {
    ShapeList shape = newShapeNode(0, static_cast<int>(count));
    setRowStrides(shape);
    return newArrayValue(type, shape);
}

void fill(Value *array, int seed) {
    int type = array->payload2.elementType;
    for (size_t i = 0; i < array->count; i++)
        put(type, static_cast<char *>(array->payload.p) + i * elementSize(type),
            sample(type, i, seed));
}

Value *arrayOf(int type, int seed) {
    Value *array = newVector(type, COUNT);
    fill(array, seed);
    return array;
}

Value *scalarOf(int type, int seed) {
    unsigned char element[16];
    put(type, element, sample(type, 0, seed));
    Value *scalar = newZeroValue(type);
    loadElement(scalar, element, type);
    return scalar;
}

// The type that two element types compute in: the larger code, int at least.
int commonOf(int left, int right) { return std::max({left, right, static_cast<int>(DT_INT)}); }

Number pairResult(int code, bool dual, const Number &a, const Number &b) {
    std::complex<double> x{a.first, a.second}, y{b.first, b.second}, z;
    switch (code) {
        case OP_ARRAYS_ADD: z = x + y; break;
        case OP_ARRAYS_SUBTRACT: z = x - y; break;
        case OP_ELEMENT_MULTIPLY:
            z = dual ? std::complex{a.first * b.first, a.first * b.second + a.second * b.first}
                     : x * y;
            break;
        default:
            z = dual ? std::complex{a.first / b.first,
                                    (a.second - a.first / b.first * b.second) / b.first}
                     : x / y;
    }
    return {0, z.real(), z.imag()};
}

// Two numbers of 64 bits may have a product of more than 127.
decltype(Number::whole) wrappingProduct(decltype(Number::whole) a, decltype(Number::whole) b) {
    using Bits = unsigned __int128;
    return static_cast<decltype(Number::whole)>(static_cast<Bits>(a) * static_cast<Bits>(b));
}

Number expectedOf(int code, int type, const Number &a, const Number &b) {
    if (isPair(type))
        return inType(type, pairResult(code, isDual(type), a, b));
    Number result;
    switch (code) {
        case OP_ARRAYS_ADD: result = {a.whole + b.whole, a.first + b.first}; break;
        case OP_ARRAYS_SUBTRACT: result = {a.whole - b.whole, a.first - b.first}; break;
        case OP_ELEMENT_MULTIPLY:
            result = {wrappingProduct(a.whole, b.whole), a.first * b.first};
            break;
        default: result = {b.whole ? a.whole / b.whole : 0, a.first / b.first};
    }
    return inType(type, result);
}

bool areClose(double a, double b, double tolerance) {
    return a == b || std::fabs(a - b) <= tolerance * (1 + std::fabs(b));
}
// Real numbers come out the same to the last bit; of pairs the formulas may differ.
bool isSame(int type, const Number &a, const Number &b, bool isSum) {
    if (isIntegral(type))
        return a.whole == b.whole;
    double tolerance = !isPair(type) && !isSum ? 0 : isSinglePrecision(type) ? 1e-4 : 1e-13;
    return areClose(a.first, b.first, tolerance) && areClose(a.second, b.second, tolerance);
}

void expectArray(Value *result, int type, const std::vector<Number> &expected, bool isSum = false) {
    ASSERT_EQ(result->payload2.elementType, type);
    ASSERT_EQ(result->count, expected.size());
    for (size_t i = 0; i < expected.size(); i++)
        ASSERT_TRUE(isSame(type, at(type, result->payload.p, i), expected[i], isSum))
            << "element " << i;
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

// Of the elements, or of the first one alone.
std::vector<Number> expectedElements(int code, int left, int right, bool firstOfLeft,
                                     bool firstOfRight) {
    int type = commonOf(left, right);
    std::vector<Number> expected;
    for (size_t i = 0; i < COUNT; i++)
        expected.push_back(
            expectedOf(code, type, converted(type, left, sample(left, firstOfLeft ? 0 : i, 1)),
                       converted(type, right, sample(right, firstOfRight ? 0 : i, 2))));
    return expected;
}

void testArithmetic(int left, int right) {
    constexpr int codes[][3] = {
        {OP_ARRAYS_ADD, OP_ARRAY_ADD_SCALAR, OP_SCALAR_ADD_ARRAY},
        {OP_ARRAYS_SUBTRACT, OP_ARRAY_SUBTRACT_SCALAR, OP_SCALAR_SUBTRACT_ARRAY},
        {OP_ELEMENT_MULTIPLY, OP_ARRAY_MULTIPLY_SCALAR, OP_SCALAR_MULTIPLY_ARRAY},
        {OP_ELEMENT_DIVIDE, OP_ARRAY_DIVIDE_SCALAR, OP_SCALAR_DIVIDE_ARRAY}};
    int type = commonOf(left, right);
    for (const auto &code : codes) {
        SCOPED_TRACE(testing::Message() << left << " with " << right << ", " << code[0]);
        expectArray(run(arrayArrayOp, arrayOf(left, 1), arrayOf(right, 2), code[0]), type,
                    expectedElements(code[0], left, right, false, false));
        expectArray(run(arrayScalarOp, arrayOf(left, 1), scalarOf(right, 2), code[1]), type,
                    expectedElements(code[0], left, right, false, true));
        expectArray(run(scalarArrayOp, scalarOf(left, 1), arrayOf(right, 2), code[2]), type,
                    expectedElements(code[0], left, right, true, false));
    }
}

bool expectedOrder(int index, int type, const Number &a, const Number &b) {
    bool equal = a.whole == b.whole && a.first == b.first && a.second == b.second;
    if (isPair(type))
        return index == 5 ? equal : index == 8 && !equal;
    bool less = isIntegral(type) ? a.whole < b.whole : a.first < b.first;
    bool left = a.whole != 0 || a.first != 0, right = b.whole != 0 || b.first != 0;
    const bool results[] = {left || right, left != right, left && right,   less,  less || equal,
                            equal,         !less,         !less && !equal, !equal};
    return results[index];
}

void testComparisons(int left, int right) {
    int type = commonOf(left, right);
    for (int index = 0; index < 9; index++) {
        SCOPED_TRACE(testing::Message() << left << " with " << right << ", " << index);
        std::vector<Number> expected;
        for (size_t i = 0; i < COUNT; i++)
            expected.push_back(
                {expectedOrder(index, type, converted(type, left, sample(left, i, 1)),
                               converted(type, right, sample(right, i, 2)))});
        expectArray(
            run(arrayCompareArray, arrayOf(left, 1), arrayOf(right, 2), OP_ARRAYS_OR + index),
            DT_INT, expected);
    }
}

Value *newMatrix(int type, int rows, int columns, bool columnOrder = false) {
    ShapeList shape = newShapeNode(0, rows);
    shape->next = newShapeNode(0, columns);
    if (columnOrder)
        setFortranStrides(shape);
    else
        setRowStrides(shape);
    return newArrayValue(type, shape);
}

void testProduct(int left, int right, int rows, int inner, int columns) {
    int type = commonOf(left, right);
    Value *a = newMatrix(left, rows, inner), *b = newMatrix(right, inner, columns);
    fill(a, 1);
    fill(b, 2);
    std::vector<Number> expected;
    for (int row = 0; row < rows; row++)
        for (int column = 0; column < columns; column++) {
            Number sum;
            for (int k = 0; k < inner; k++) {
                Number term = expectedOf(
                    OP_ELEMENT_MULTIPLY, type,
                    converted(type, left, at(left, a->payload.p, row * inner + k)),
                    converted(type, right, at(right, b->payload.p, k * columns + column)));
                sum = expectedOf(OP_ARRAYS_ADD, type, sum, term);
            }
            expected.push_back(sum);
        }
    SCOPED_TRACE(testing::Message() << left << " times " << right << ", " << columns);
    expectArray(run(arrayProduct, a, b, OP_MATRIX_PRODUCT), type, expected, true);
}

void forAllPairs(void (*action)(int, int)) {
    for (int left : elementTypes)
        for (int right : elementTypes)
            action(left, right);
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

TEST_F(ArrayOperatorsTest, ArithmeticOfAllPairsOfTypes) { forAllPairs(testArithmetic); }

TEST_F(ArrayOperatorsTest, ComparisonsOfAllPairsOfTypes) { forAllPairs(testComparisons); }

// Sizes that the tiles of a product divide, and sizes that they don't.
TEST_F(ArrayOperatorsTest, ProductsOfAllPairsOfTypes) {
    forAllPairs([](int left, int right) {
        testProduct(left, right, 5, 7, 4);
        testProduct(left, right, 4, 9, 1);
        testProduct(left, right, 6, 33, 37);
    });
    for (int type : elementTypes)
        testProduct(type, type, 130, 260, 17);
}

// Small numbers, which every type has.
TEST_F(ArrayOperatorsTest, ConversionsOfAllPairsOfTypes) {
    forAllPairs([](int source, int target) {
        Value *from = newVector(source, COUNT), *to = newVector(target, COUNT);
        for (size_t i = 0; i < COUNT; i++)
            put(source, static_cast<char *>(from->payload.p) + i * elementSize(source),
                {static_cast<int>(i % 90), static_cast<double>(i % 90)});
        convertElements(to->payload.p, from->payload.p, COUNT, target, source);
        for (size_t i = 0; i < COUNT; i++) {
            Number expected{static_cast<int>(i % 90), static_cast<double>(i % 90)};
            ASSERT_TRUE(isSame(target, at(target, to->payload.p, i), expected, false))
                << source << " to " << target << " at " << i;
        }
        deleteValue(from);
        deleteValue(to);
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
    const double pair[] = {3, 1};
    for (const Row &row : rows) {
        auto convertedTo = [&](const void *source, int type) {
            long long buffer = 0;
            convertElements(&buffer, source, 1, row.type, type);
            Value *value = newZeroValue(row.type);
            loadElement(value, &buffer, row.type);
            convertScalar(value, DT_LLONG);
            long long number = value->payload.ll;
            recycleValue(value);
            return number;
        };
        std::string text =
            errorsOf([&] { EXPECT_EQ(convertedTo(&numbers[0], DT_DOUBLE), row.nan); });
        EXPECT_EQ(text, std::string("WARNING: assign NaN to ") + row.text + "\n");
        EXPECT_EQ(runStatus, RUN_WARNING);
        EXPECT_EQ(convertedTo(&numbers[1], DT_DOUBLE), row.infinity) << row.type;
        EXPECT_EQ(convertedTo(&numbers[2], DT_DOUBLE), row.minusInfinity) << row.type;
        errorsOf([&] { EXPECT_EQ(convertedTo(pair, DT_DCOMPLEX), row.pair) << row.type; });
    }
}

// Column-major arrays, which no declaration of a script can make: a matrix of 2 by 3 whose elements
// tell their place, in either order.
Value *matrixOf(bool columnOrder, int rows, int columns) {
    Value *matrix = newMatrix(DT_DOUBLE, rows, columns, columnOrder);
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
