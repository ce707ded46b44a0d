// The types of results over all pairs of operands, against the order of promotion computed here.

#include "expr/selection.h"

#include <functional>

#include "expressionTrees.h"

namespace zy {

namespace {

constexpr int numberTypes[] = {DT_CHAR,    DT_UCHAR,    DT_SHORT,  DT_USHORT, DT_INT,
                               DT_UINT,    DT_LLONG,    DT_ULLONG, DT_FLOAT,  DT_DOUBLE,
                               DT_COMPLEX, DT_DCOMPLEX, DT_DUAL,   DT_DDUAL};

// The type in which two numbers are computed: the larger code, with small ones as int, and unsigned
// int with long long as unsigned long long.
int commonType(int left, int right) {
    int common = std::max({left, right, int{DT_INT}});
    bool mixed = (left == DT_UINT && right == DT_LLONG) || (left == DT_LLONG && right == DT_UINT);
    return mixed ? int{DT_ULLONG} : common;
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
        for (int op : {OP_PLUS, OP_STAR, OP_SLASH}) {
            EXPECT_EQ(resultTypeOf(selectBinary(op, left, right)), common);
        }
        int difference = common == DT_UINT     ? int{DT_INT}
                         : common == DT_ULLONG ? int{DT_LLONG}
                                               : common;
        EXPECT_EQ(resultTypeOf(selectBinary(OP_MINUS, left, right)), difference);
    });
}

}  // namespace zy
