// Chains of expressions: their steps are those of direct trees, they need no stack, and threading
// leaves no record.

#include "expr/thread.h"

#include "expr/direct.h"

#include "expressionTrees.h"

namespace zy {

class Thread : public TreeTest {
protected:
    void SetUp() override {
        TreeTest::SetUp();
        makesDirect = false;
        a = variable("a", DT_INT);
        b = variable("b", DT_INT);
        i = variable("i", DT_INT);
        cells = variable("cells", DT_INT, KIND_C_ARRAY, {3, 4});
        pointer = variable("pointer", DT_P_INT);
        n = variable("n", DT_LLONG);
    }

    void TearDown() override {
        makesDirect = true;
        TreeTest::TearDown();
    }

    // Of its subscripts one is read where it stands.
    ExprNode *element() { return node(OP_SUBSCRIPT, leaf(cells), list({leaf(n), number(2)})); }
    ExprNode *sum() { return bind(OP_PLUS, leaf(a), leaf(b)); }

    TypeInfo *a, *b, *i, *n, *cells, *pointer;
};

// The events of a tree are those of its chain.
TEST_F(Thread, StepsOfDirectTrees) {
    ExprNode *trees[] = {bind(OP_ASSIGN, leaf(a), sum()),
                         bind(OP_ASSIGN, element(), leaf(b)),
                         bind(OP_PLUS, element(), leaf(b)),
                         node(OP_INDIRECTION, leaf(pointer)),
                         bind(OP_ASSIGN, node(OP_INDIRECTION, leaf(pointer)), leaf(i)),
                         node(OP_AND, leaf(a), sum()),
                         node(OP_CAST, leaf(n), sum()),
                         bind(OP_ASSIGN_ADD, leaf(a), sum()),
                         node(OP_POSTFIX_INCREMENT, leaf(i))};
    for (ExprNode *tree : trees) {
        int steps = countSteps(tree), nodes = 0;
        for (ExprNode *step = compileChain(tree, nullptr, false); step; step = step->next)
            nodes++;
        EXPECT_EQ(steps, nodes) << "operator " << tree->op;
        deleteNode(tree);
    }
}

TEST_F(Thread, AnAddressOfNothingIsReported) {
    ExprNode *wrong = node(OP_ADDRESS, number(1), leaf(a));
    EXPECT_EQ(errorsOf([&] { compileChain(wrong, nullptr, false); }),
              "ERROR: address operation evaluation order error\n"
              "ERROR: invalid operand for address op & \n");
    deleteNode(wrong);
}

// Neither stack nor time may grow with more than the size of the tree.
TEST_F(Thread, DeepTrees) {
    ExprNode *sum = leaf(a);
    for (int n = 0; n < 100000; n++)
        sum = bind(OP_PLUS, sum, leaf(b));
    ExprNode *head = compileChain(sum, nullptr, false);
    EXPECT_EQ(textOf(head).substr(0, 8), "b b b b ");
    deleteNode(sum);

    ExprNode *address = leaf(pointer), *vector = leaf(variable("vector", DT_INT, KIND_ARRAY, {3}));
    ExprNode *choice = leaf(a);
    for (int n = 0; n < 200; n++) {
        address = bind(OP_PLUS, number(1), address);
        vector = bind(OP_PLUS, vector, leaf(variable("v", DT_DOUBLE, KIND_ARRAY, {3})));
        choice = bind(OP_CONDITIONAL, leaf(a), v(DT_DOUBLE), choice);
    }
    EXPECT_EQ(treeType(address), DT_P_INT);
    EXPECT_EQ(treeDataType(vector), DT_DOUBLE);
    EXPECT_EQ(treeType(choice), DT_DOUBLE);
    for (ExprNode *tree : {address, vector, choice})
        deleteNode(tree);
}

TEST_F(Thread, ReleasesWhatItAdded) {
    int before = liveValueCount();
    chainAndRelease(bind(OP_ASSIGN_ADD, element(), bind(OP_POSTFIX_INCREMENT, element())));
    chainAndRelease(bind(OP_CONDITIONAL, leaf(a), sum(), bind(OP_LOGICAL_AND, leaf(a), leaf(b))));
    EXPECT_EQ(liveValueCount(), before);
}

}  // namespace zy
