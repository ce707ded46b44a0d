// Which code each operator gets for which operands, against the order of promotion computed here.

#include "expr/selection.h"

#include <functional>

#include "expressionTrees.h"

namespace zy {

namespace {

constexpr int numberTypes[] = {DT_CHAR,    DT_UCHAR,    DT_SHORT,  DT_USHORT, DT_INT,
                               DT_UINT,    DT_LLONG,    DT_ULLONG, DT_FLOAT,  DT_DOUBLE,
                               DT_COMPLEX, DT_DCOMPLEX, DT_DUAL,   DT_DDUAL};

bool isSmall(int type) { return type < DT_UINT; }

// The type in which two numbers are computed: the larger code, with small ones as int, and unsigned
// int with long long as unsigned long long.
int commonType(int left, int right) {
    int common = std::max({left, right, int{DT_INT}});
    bool mixed = (left == DT_UINT && right == DT_LLONG) || (left == DT_LLONG && right == DT_UINT);
    return mixed ? int{DT_ULLONG} : common;
}

// The code of + in each type; those of - * / lie behind it, but for the unsigned types.
int additionCode(int type) {
    switch (type) {
        case DT_INT: return 57;
        case DT_UINT: return 207;
        case DT_LLONG: return 223;
        case DT_ULLONG: return 239;
        case DT_FLOAT: return 252;
        case DT_DOUBLE: return 291;
        case DT_COMPLEX: return 330;
        case DT_DCOMPLEX: return 405;
        case DT_DUAL: return 374;
        default: return 449;
    }
}

int subtractionCode(int left, int right) {
    int common = commonType(left, right);
    if (common == DT_UINT)
        return right < DT_UINT ? 59 : left < DT_UINT ? 60 : 61;
    if (common == DT_ULLONG && left != DT_ULLONG && right != DT_ULLONG)
        return 224;
    if (common == DT_ULLONG)
        return right != DT_ULLONG ? 225 : left != DT_ULLONG ? 226 : 227;
    return additionCode(common) + 1;
}

int productCode(int common, int offset) {
    switch (common) {
        case DT_INT: return 62 + offset;
        case DT_UINT: return 208 + offset;
        case DT_LLONG: return 230 + offset;
        case DT_ULLONG: return 241 + offset;
        default: return additionCode(common) + 2 + offset;
    }
}

int bitCode(int common, int offset) {
    switch (common) {
        case DT_INT: return 70 + offset;
        case DT_UINT: return 214 + offset;
        case DT_LLONG: return 236 + offset;
        case DT_ULLONG: return offset == 2 ? 250 : 247 + offset;
        default: return NO_OPERATOR;
    }
}

// The first of the four order codes, by the wider operand.
int orderCode(int left, int right) {
    int wider = std::max(left, right);
    if (wider >= DT_COMPLEX)
        return NO_OPERATOR;
    if (wider >= DT_FLOAT)
        return 10;
    if (left == DT_UCHAR && right == DT_UCHAR)
        return 20;
    if (wider == DT_UCHAR && left != right)
        return 16;
    return 24 + 4 * (std::max(wider, int{DT_SHORT}) - DT_SHORT);
}

int equalityCode(int left, int right) {
    if (left < DT_COMPLEX && right < DT_COMPLEX)
        return 12;
    auto isWide = [](int type) { return type == DT_DCOMPLEX || type == DT_DDUAL; };
    return isWide(left) || isWide(right) ? 202 : 201;
}

void forAllPairs(const std::function<void(int, int)> &check) {
    for (int left : numberTypes)
        for (int right : numberTypes) {
            SCOPED_TRACE(std::string(dataTypeText(left)) + " with " + dataTypeText(right));
            check(left, right);
        }
}

}  // namespace

TEST(Selection, ArithmeticFollowsTheOrderOfPromotion) {
    forAllPairs([](int left, int right) {
        int common = commonType(left, right);
        EXPECT_EQ(selectBinary(OP_PLUS, left, right), additionCode(common));
        EXPECT_EQ(selectBinary(OP_MINUS, left, right), subtractionCode(left, right));
        EXPECT_EQ(selectBinary(OP_STAR, left, right), productCode(common, 0));
        EXPECT_EQ(selectBinary(OP_SLASH, left, right), productCode(common, 1));
        int modulo = common < DT_FLOAT ? productCode(common, 2) : NO_OPERATOR;
        EXPECT_EQ(selectBinary(OP_PERCENT, left, right), modulo);
        for (int op : {OP_PLUS, OP_STAR, OP_SLASH}) {
            EXPECT_EQ(resultTypeOf(selectBinary(op, left, right)), common);
        }
        int difference = common == DT_UINT     ? int{DT_INT}
                         : common == DT_ULLONG ? int{DT_LLONG}
                                               : common;
        EXPECT_EQ(resultTypeOf(selectBinary(OP_MINUS, left, right)), difference);
    });
}

TEST(Selection, BitsAndShiftsTakeIntegersAlone) {
    forAllPairs([](int left, int right) {
        int common = commonType(left, right);
        EXPECT_EQ(selectBinary(OP_BAR, left, right), bitCode(common, 0));
        EXPECT_EQ(selectBinary(OP_CARET, left, right), bitCode(common, 1));
        EXPECT_EQ(selectBinary(OP_AMPERSAND, left, right), bitCode(common, 2));
        bool integers = left < DT_FLOAT && right < DT_FLOAT;
        int shift = isSmall(left) ? 68 : left == DT_UINT ? 212 : left == DT_LLONG ? 234 : 245;
        EXPECT_EQ(selectBinary(OP_LEFT_SHIFT, left, right), integers ? shift : NO_OPERATOR);
        EXPECT_EQ(selectBinary(OP_RIGHT_SHIFT, left, right), integers ? shift + 1 : NO_OPERATOR);
    });
}

TEST(Selection, ComparisonsGoByTheWiderOperand) {
    forAllPairs([](int left, int right) {
        int code = orderCode(left, right);
        int step = code == 10 ? 1 : 0;  // equality lies between <= and >= of the real codes
        EXPECT_EQ(selectBinary(OP_LESS, left, right), code);
        if (code == NO_OPERATOR)
            return;
        EXPECT_EQ(selectBinary(OP_LESS_EQUAL, left, right), code + 1);
        EXPECT_EQ(selectBinary(OP_GREATER_EQUAL, left, right), code + 2 + step);
        EXPECT_EQ(selectBinary(OP_GREATER, left, right), code + 3 + step);
    });
    forAllPairs([](int left, int right) {
        int code = equalityCode(left, right);
        EXPECT_EQ(selectBinary(OP_EQUAL, left, right), code);
        EXPECT_EQ(selectBinary(OP_NOT_EQUAL, left, right), code == 12 ? 15 : code + 2);
        bool reals = left < DT_COMPLEX && right < DT_COMPLEX;
        EXPECT_EQ(selectBinary(OP_LOGICAL_OR, left, right), reals ? 7 : NO_OPERATOR);
        EXPECT_EQ(selectBinary(OP_LOGICAL_XOR, left, right), reals ? 8 : NO_OPERATOR);
        EXPECT_EQ(selectBinary(OP_LOGICAL_AND, left, right), reals ? 9 : NO_OPERATOR);
    });
}

TEST(Selection, UnaryOperators) {
    int negations[] = {65, 65, 65, 65, 65, 66, 228, 229, 256, 295, 334, 409, 378, 453};
    int complements[] = {1, 2, 4, 5, 67, 211, 233, 244};
    for (int i = 0; i < 14; i++) {
        EXPECT_EQ(selectUnary(OP_UNARY_MINUS, numberTypes[i]), negations[i]);
        EXPECT_EQ(selectUnary(OP_EXCLAMATION, numberTypes[i]), 6);
        EXPECT_EQ(selectUnary(OP_TILDE, numberTypes[i]), i < 8 ? complements[i] : NO_OPERATOR);
    }
    for (int type : {DT_ARRAY, DT_P_ARRAY}) {
        EXPECT_EQ(selectUnary(OP_UNARY_MINUS, type), 604);
        EXPECT_EQ(selectUnary(OP_EXCLAMATION, type), 607);
    }
    for (int type : {DT_P_CHAR, DT_PPP_INT, DT_STRING, DT_NULL})
        EXPECT_EQ(selectUnary(OP_EXCLAMATION, type), 6);
    EXPECT_EQ(selectUnary(OP_UNARY_MINUS, DT_P_INT), NO_OPERATOR);
    EXPECT_EQ(selectUnary(OP_EXCLAMATION, DT_STRUCT), NO_OPERATOR);
}

TEST(Selection, StringsPointersAndArrays) {
    struct Case {
        int left, right;
        std::vector<int> operators, codes;
    };
    const std::vector<int> arithmetic = {OP_PLUS, OP_MINUS, OP_STAR, OP_SLASH};
    const std::vector<int> order = {OP_LESS, OP_LESS_EQUAL, OP_GREATER_EQUAL, OP_GREATER};
    const std::vector<int> equality = {OP_EQUAL, OP_NOT_EQUAL};
    const std::vector<int> logic = {OP_LOGICAL_OR, OP_LOGICAL_XOR, OP_LOGICAL_AND};
    const Case cases[] = {
        {DT_STRING, DT_STRING, arithmetic, {554, 555, 556, 557}},
        {DT_STRING, DT_P_CHAR, arithmetic, {554, 555, 556, 557}},
        {DT_P_CHAR, DT_STRING, arithmetic, {554, 555, 556, 557}},
        {DT_STRING, DT_INT, arithmetic, {0, 555, 556, 557}},
        {DT_P_CHAR, DT_P_CHAR, arithmetic, {0, 106, 0, 0}},
        {DT_STRING, DT_UNDEFINED, arithmetic, {0, 0, 0, 0}},
        {DT_ARRAY, DT_DUAL, arithmetic, {641, 642, 643, 645}},
        {DT_ARRAY, DT_DDUAL, arithmetic, {0, 642, 643, 645}},
        {DT_INT, DT_P_ARRAY, arithmetic, {655, 656, 658, 0}},
        {DT_ARRAY, DT_P_ARRAY, arithmetic, {668, 672, 680, 0}},
        {DT_PP_INT, DT_LLONG, arithmetic, {595, 596, 0, 0}},
        {DT_INT, DT_P_STRUCT, arithmetic, {595, 596, 0, 0}},
        {DT_P_INT, DT_DOUBLE, arithmetic, {0, 0, 0, 0}},
        {DT_P_VOID, DT_INT, arithmetic, {0, 0, 0, 0}},
        {DT_P_VOID, DT_P_VOID, arithmetic, {0, 0, 0, 0}},
        {DT_P_INT, DT_P_DOUBLE, order, {195, 196, 198, 199}},
        {DT_P_INT, DT_INT, order, {0, 0, 0, 0}},
        {DT_NULL, DT_DOUBLE, order, {10, 11, 13, 14}},
        {DT_P_ARRAY, DT_P_ARRAY, order, {662, 663, 665, 666}},
        {DT_ARRAY, DT_DOUBLE, order, {635, 636, 638, 639}},
        {DT_ARRAY, DT_COMPLEX, order, {0, 0, 0, 0}},
        {DT_INT, DT_ARRAY, order, {649, 650, 652, 653}},
        {DT_STRING, DT_P_UCHAR, order, {50, 0, 0, 51}},
        {DT_P_CHAR, DT_P_CHAR, order, {195, 196, 198, 199}},
        {DT_ARRAY, DT_ARRAY, equality, {664, 667}},
        {DT_ARRAY, DT_DDUAL, equality, {637, 640}},
        {DT_COMPLEX, DT_ARRAY, equality, {651, 654}},
        {DT_STRING, DT_P_CHAR, equality, {48, 49}},
        {DT_STRING, DT_P_INT, equality, {197, 200}},
        {DT_NULL, DT_DOUBLE, equality, {12, 15}},
        {DT_NULL, DT_PP_CHAR, equality, {197, 200}},
        {DT_P_INT, DT_INT, equality, {0, 0}},
        {DT_STRUCT, DT_STRUCT, equality, {0, 0}},
        {DT_ARRAY, DT_ARRAY, logic, {659, 660, 661}},
        {DT_ARRAY, DT_INT, logic, {632, 633, 634}},
        {DT_DOUBLE, DT_ARRAY, logic, {646, 647, 648}},
        {DT_P_VOID, DT_STRING, logic, {7, 8, 9}},
    };
    for (const Case &row : cases)
        for (size_t i = 0; i < row.codes.size(); i++)
            EXPECT_EQ(selectBinary(row.operators[i], row.left, row.right), row.codes[i])
                << dataTypeText(row.left) << " with " << dataTypeText(row.right) << ", operator "
                << row.operators[i];
}

}  // namespace zy
