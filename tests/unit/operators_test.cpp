// The scalar operators: every family over its operand types, with the operands in all places, held
// against what the same types give in this language, and the values at the edges by hand.

#include <bit>
#include <cmath>
#include <limits>

#include "chain.h"
#include "decl/dataType.h"
#include "expr/direct.h"
#include "expr/readers.h"

namespace zy {

namespace {

template <class T>
T resultAs(const Value *value) {
    T number{};
    memcpy(&number, &value->payload, sizeof number);
    return number;
}

std::string shown(const Value *value) {
    char text[80];
    uint64_t bits = 0;
    memcpy(&bits, &value->payload, sizeofType(value->type));
    snprintf(text, sizeof text, "%s 0x%llx", dataTypeText(value->type),
             static_cast<unsigned long long>(bits));
    return text;
}

constexpr char positionOfWarning[] = "         at line 7 in file 'test.zy'\n";

}  // namespace

class OperatorTest : public ChainTest {
protected:
    void TearDown() override {
        makesDirect = true;
        ChainTest::TearDown();
    }

    // The result of a binary operator: the same wherever its operands stand, computed directly and
    // on the stack, and one record.
    template <class A, class B>
    Value *binary(int code, A a, B b) {
        std::string first;
        for (int places = 0; places < 8; places++) {
            makesDirect = places & 4;
            ExprNode *left = number(a), *right = number(b);
            if (places & 1)
                left = variable(left);
            if (places & 2)
                right = variable(right);
            ExprNode *tree = apply(code, left, right);
            evaluate(tree);
            for (int round = 0; round < 2; round++) {
                clearValueStack();
                int live = liveValueCount();
                Value *result = evaluate(tree);
                EXPECT_TRUE(result && !result->next);
                EXPECT_EQ(liveValueCount(), live + 1);
                if (first.empty())
                    first = shown(result);
                EXPECT_EQ(shown(result), first) << "operator " << code << ", places " << places;
            }
        }
        return currentContext->stack;
    }
    template <class A>
    Value *unary(int code, A a) {
        Value *result = evaluate(apply(code, number(a)));
        std::string inPlace = shown(result);
        for (bool direct : {false, true}) {
            makesDirect = direct;
            result = evaluate(apply(code, variable(number(a))));
            EXPECT_EQ(shown(result), inPlace);
        }
        return result;
    }

    // Codes against what a function of the same types gives, over values at the edges.
    template <class T, class Result, class Expected>
    void expectAll(int code, DataType type, Expected expected, bool zeroDivides = true) {
        using Limits = std::numeric_limits<T>;
        const T samples[] = {0,
                             1,
                             static_cast<T>(-1),
                             7,
                             Limits::lowest(),
                             Limits::max(),
                             static_cast<T>(Limits::max() / 2 + 1)};
        for (T a : samples)
            for (T b : samples) {
                if (!zeroDivides && (b == 0 || b == static_cast<T>(-1)))
                    continue;
                Value *value = binary(code, a, b);
                EXPECT_EQ(value->type, static_cast<unsigned>(type));
                EXPECT_EQ(resultAs<Result>(value), static_cast<Result>(expected(a, b)))
                    << "operator " << code << " of " << +a << " and " << +b;
            }
    }
};

struct IntegerCodes {
    int add, subtract, multiply, divide, modulo, bitOr, bitXor, bitAnd;
};

template <class T, class Difference>
void checkIntegers(auto &test, const IntegerCodes &codes, DataType type, DataType difference) {
    using U = std::make_unsigned_t<T>;
    test.template expectAll<T, T>(codes.add, type, [](T a, T b) { return U(a) + U(b); });
    test.template expectAll<T, Difference>(codes.subtract, difference,
                                           [](T a, T b) { return U(a) - U(b); });
    test.template expectAll<T, T>(codes.multiply, type, [](T a, T b) { return U(a) * U(b); });
    test.template expectAll<T, T>(
        codes.divide, type, [](T a, T b) { return a / b; }, false);
    test.template expectAll<T, T>(
        codes.modulo, type, [](T a, T b) { return a % b; }, false);
    test.template expectAll<T, T>(codes.bitOr, type, [](T a, T b) { return a | b; });
    test.template expectAll<T, T>(codes.bitXor, type, [](T a, T b) { return a ^ b; });
    test.template expectAll<T, T>(codes.bitAnd, type, [](T a, T b) { return a & b; });
}

class IntegerOperatorTest : public OperatorTest {
public:
    using OperatorTest::expectAll;
};

TEST_F(IntegerOperatorTest, ArithmeticWrapsInEachWidth) {
    checkIntegers<int, int>(*this, {57, 58, 62, 63, 64, 70, 71, 72}, DT_INT, DT_INT);
    checkIntegers<unsigned, int>(*this, {207, 61, 208, 209, 210, 214, 215, 216}, DT_UINT, DT_INT);
    checkIntegers<long long, long long>(*this, {223, 224, 230, 231, 232, 236, 237, 238}, DT_LLONG,
                                        DT_LLONG);
    checkIntegers<unsigned long long, long long>(*this, {239, 227, 241, 242, 243, 247, 248, 250},
                                                 DT_ULLONG, DT_LLONG);
}

TEST_F(OperatorTest, DivisionByZeroWarnsAndGivesTheSameNumberInEachWidth) {
    const std::string divide =
        std::string("WARNING: integer divide by zero \n") + positionOfWarning;
    const std::string modulo = std::string("WARNING: integer mod by zero \n") + positionOfWarning;
    auto expectWarning = [&](int code, auto one, auto zero, const std::string &text) {
        ExprNode *tree = apply(code, number(one), number(zero));
        runStatus = RUN_CLEAN;
        EXPECT_EQ(errorsOf([&] { evaluate(tree); }), text);
        EXPECT_EQ(runStatus, RUN_WARNING);
        EXPECT_EQ(resultAs<decltype(one)>(currentContext->stack), decltype(one){2139095040});
        e_lang->warningLevel = 0;
        EXPECT_EQ(errorsOf([&] { evaluate(tree); }), "");
        EXPECT_EQ(resultAs<decltype(one)>(currentContext->stack), decltype(one){2139095040});
        e_lang->warningLevel = 1;
    };
    expectWarning(OP_DIVIDE_INT, 1, 0, divide);
    expectWarning(OP_DIVIDE_UINT, 1u, 0u, divide);
    expectWarning(OP_DIVIDE_LLONG, 1ll, 0, divide);
    expectWarning(OP_DIVIDE_ULLONG, 1ull, 0, divide);
    expectWarning(OP_MODULO_INT, 1, 0, modulo);
    expectWarning(OP_MODULO_UINT, 1u, 0u, modulo);
    expectWarning(OP_MODULO_LLONG, 1ll, 0, modulo);
    expectWarning(OP_MODULO_ULLONG, 1ull, 0, modulo);
    runStatus = RUN_ERROR;
    errorsOf([&] { evaluate(apply(OP_DIVIDE_INT, number(1), number(0))); });
    EXPECT_EQ(runStatus, RUN_ERROR);
}

// What texts make of mixed operands is told by scripts; here it is the same in all places.
TEST_F(OperatorTest, MixedOperandsGiveTheSameDirectlyAndInChains) {
    auto withAll = [&](auto a, auto... right) {
        for (int code : {OP_ADD_INT,           OP_ADD_UINT,           OP_ADD_LLONG,
                         OP_ADD_ULLONG,        OP_ADD_FLOAT,          OP_ADD_DOUBLE,
                         OP_SUBTRACT_UINT_INT, OP_SUBTRACT_INT_UINT,  OP_SUBTRACT_ULLONG_LLONG,
                         OP_SUBTRACT_DOUBLE,   OP_MULTIPLY_DOUBLE,    OP_DIVIDE_FLOAT,
                         OP_DIVIDE_DOUBLE,     OP_SHIFT_LEFT_INT,     OP_SHIFT_RIGHT_INT,
                         OP_SHIFT_LEFT_UINT,   OP_SHIFT_RIGHT_UINT,   OP_SHIFT_LEFT_LLONG,
                         OP_SHIFT_RIGHT_LLONG, OP_SHIFT_RIGHT_ULLONG, OP_GREATER_UINT,
                         OP_LESS_LLONG,        OP_LESS_ULLONG,        OP_LESS_CHAR,
                         OP_EQUAL_REAL,        OP_NOT_EQUAL_REAL})
            (binary(code, a, right), ...);
        for (int code :
             {OP_ONES_COMPLEMENT_CHAR, OP_ONES_COMPLEMENT_UCHAR, OP_ONES_COMPLEMENT_SHORT,
              OP_ONES_COMPLEMENT_USHORT, OP_ONES_COMPLEMENT_ULLONG, OP_NEGATE_INT, OP_NEGATE_UINT,
              OP_NEGATE_ULLONG, OP_NEGATE_FLOAT, OP_NEGATE_DOUBLE, OP_ABS_INT, OP_TO_CHAR,
              OP_TO_SHORT, OP_TO_INT, OP_TO_UINT, OP_TO_FLOAT, OP_TO_DOUBLE, OP_NOT})
            unary(code, a);
    };
    auto withEach = [&](auto... left) { (withAll(left, left...), ...); };
    withEach(static_cast<signed char>(-100), static_cast<unsigned char>(200), short{-300},
             static_cast<unsigned short>(65530), INT_MIN, 3'000'000'000u, LLONG_MAX - 1, ~0ull,
             0.5f, -7.9, std::nan(""));
}

// ---- Comparisons --------------------------------------------------------------------------------

// Codes of < <= >= > in a row, from `first`; the last one of the reals isn't next to the others.
template <class T>
void checkOrder(auto &test, int less, int lessEqual, int greaterEqual, int greater) {
    test.template expectAll<T, int>(less, DT_INT, [](T a, T b) { return a < b; });
    test.template expectAll<T, int>(lessEqual, DT_INT, [](T a, T b) { return a <= b; });
    test.template expectAll<T, int>(greaterEqual, DT_INT, [](T a, T b) { return a >= b; });
    test.template expectAll<T, int>(greater, DT_INT, [](T a, T b) { return a > b; });
}

TEST_F(IntegerOperatorTest, ComparisonsInEachWidth) {
    checkOrder<signed char>(*this, 16, 17, 18, 19);
    checkOrder<unsigned char>(*this, 20, 21, 22, 23);
    checkOrder<short>(*this, 24, 25, 26, 27);
    checkOrder<unsigned short>(*this, 28, 29, 30, 31);
    checkOrder<int>(*this, 32, 33, 34, 35);
    checkOrder<unsigned>(*this, 36, 37, 38, 39);
    checkOrder<long long>(*this, 40, 41, 42, 43);
    checkOrder<unsigned long long>(*this, 44, 45, 46, 47);
    checkOrder<double>(*this, 10, 11, 13, 14);
}

TEST_F(OperatorTest, NaNIsUnequalUnorderedAndTrue) {
    double nan = std::nan("");
    for (int code :
         {OP_LESS_REAL, OP_LESS_EQUAL_REAL, OP_EQUAL_REAL, OP_GREATER_EQUAL_REAL, OP_GREATER_REAL})
        EXPECT_EQ(binary(code, nan, nan)->payload.i, 0) << code;
    EXPECT_EQ(binary(OP_NOT_EQUAL_REAL, nan, nan)->payload.i, 1);
    EXPECT_EQ(unary(OP_NOT, nan)->payload.i, 0);
    EXPECT_EQ(binary(OP_XOR, nan, 1)->payload.i, 0);
    EXPECT_EQ(binary(OP_XOR, nan, 0)->payload.i, 1);
    EXPECT_EQ(unary(OP_NOT, 0.0)->payload.i, 1);
    EXPECT_EQ(unary(OP_NOT, 7)->payload.i, 0);
}

// ---- Readers ------------------------------------------------------------------------------------

TEST_F(OperatorTest, RealsOutOfRangeTruncateLikeTheProcessor) {
    EXPECT_EQ(truncateToInt32(2147483647.9), INT_MAX);
    EXPECT_EQ(truncateToInt32(2147483648.0), INT_MIN);
    EXPECT_EQ(truncateToInt32(-2147483648.9), INT_MIN);
    EXPECT_EQ(truncateToInt64(0x1p63), LLONG_MIN);
    EXPECT_EQ(truncateToInt64(-HUGE_VAL), LLONG_MIN);
    EXPECT_EQ(truncateToUint64(0x1p63), 1ull << 63);
    EXPECT_EQ(truncateToUint64(0x1.8p63), 3ull << 62);
    EXPECT_EQ(truncateToUint64(0x1p64), 0u);
    EXPECT_EQ(truncateToUint64(-1.0), ~0ull);
}

TEST_F(OperatorTest, ReadersTakeEveryScalar) {
    ExprNode pair{};
    pair.kind = NODE_VALUE;
    pair.type = DT_COMPLEX;
    pair.payload.pair[0] = 2.5f;
    pair.payload.pair[1] = 0;
    EXPECT_EQ(readDouble(&pair), 2.5);
    EXPECT_EQ(readSigned64(&pair), 2);
    pair.payload.pair[1] = 1;
    EXPECT_EQ(std::bit_cast<uint64_t>(readDouble(&pair)), 0x7FFFFFFFE0000000u);
    EXPECT_EQ(readSigned64(&pair), LLONG_MIN);
    pair.type = DT_P_INT;
    pair.payload.bits = 0x7fff00000001;
    EXPECT_EQ(readDouble(&pair), 0x7fff00000001p0);
    EXPECT_TRUE(logicalValue(&pair));
    pair.type = DT_ULLONG;
    pair.payload.bits = ~0ull;
    EXPECT_EQ(readDouble(&pair), 0x1p64);
    pair.type = DT_ARRAY;
    runStatus = RUN_CLEAN;
    EXPECT_EQ(errorsOf([&] { EXPECT_EQ(readSigned64(&pair), 0); }),
              std::string("WARNING: unsupported data type for casting to long int data\n") +
                  positionOfWarning);
    EXPECT_EQ(runStatus, RUN_WARNING);
}

}  // namespace zy
