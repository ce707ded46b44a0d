// The scalar operators, each with its operands in all four combinations of places.

#include <cmath>
#include <limits>

#include "chain.h"

namespace zy {

class OperatorTest : public ChainTest {
protected:
    // The result of a binary operator; the same wherever its operands stand.
    template <class A, class B>
    Value *binary(int code, A a, B b) {
        Value first{};
        for (int places = 0; places < 4; places++) {
            ExprNode *left = number(a), *right = number(b);
            if (places & 1)
                left = variable(left);
            if (places & 2)
                right = variable(right);
            clearValueStack();
            int live = liveValueCount();
            ExprNode *tree = apply(code, left, right);
            for (int round = 0; round < 2; round++) {
                Value *result = evaluate(tree);
                EXPECT_NE(result, nullptr);
                EXPECT_EQ(result->next, nullptr);
                EXPECT_EQ(liveValueCount(), live + 1);
                if (places == 0)
                    first = *result;
                EXPECT_EQ(result->type, first.type);
                EXPECT_EQ(memcmp(&result->payload, &first.payload, 1), 0) << places;
            }
        }
        return currentContext->stack;
    }
    template <class A>
    Value *unary(int code, A a) {
        evaluate(apply(code, number(a)));
        clearValueStack();
        return evaluate(apply(code, variable(number(a))));
    }
};

#define EXPECT_INT(value, expression)               \
    do {                                            \
        const Value *result_ = (expression);        \
        EXPECT_EQ(result_->type, unsigned{DT_INT}); \
        EXPECT_EQ(result_->payload.i, value);       \
    } while (0)

TEST_F(OperatorTest, IntegersWrapAround) {
    EXPECT_INT(5, binary(OP_ADD_INT, 2, 3));
    EXPECT_INT(INT_MIN, binary(OP_ADD_INT, INT_MAX, 1));
    EXPECT_INT(INT_MAX, binary(OP_SUBTRACT_INT, INT_MIN, 1));
    EXPECT_INT(1, binary(OP_MULTIPLY_INT, INT_MAX, INT_MAX));
    EXPECT_INT(-2, binary(OP_SUBTRACT_UINT, 3u, 5u));
    EXPECT_INT(-4, binary(OP_SUBTRACT_INT_UINT, -1, 3u));
}

}  // namespace zy
