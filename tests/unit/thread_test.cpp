// The order of chains for each kind of node, as the text of their nodes: names of variables,
// constants, codes.

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
    ExprNode *member(TypeInfo *object) { return node(OP_MEMBER, leaf(object), number(0)); }

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

TEST_F(Thread, OperandsAndLists) {
    EXPECT_EQ(chainAndRelease(leaf(a)), "a");
    EXPECT_EQ(chainAndRelease(number(3)), "");
    EXPECT_EQ(chainAndRelease(number(3), true), "3i");
    EXPECT_EQ(chainAndRelease(list({leaf(a), number(3), leaf(b)})), "b a");
    EXPECT_EQ(chainAndRelease(list({leaf(a), number(3), leaf(b)}), true), "b 3i a");
}

TEST_F(Thread, TheRightmostOperandRunsFirst) {
    EXPECT_EQ(chainAndRelease(sum()), "b a 57");
    EXPECT_EQ(chainAndRelease(bind(OP_PLUS, sum(), number(1)), true), "b a 57 57");
    ExprNode *four = node(OP_STRFTIME, leaf(a), leaf(b));
    four->third = leaf(i);
    four->fourth = leaf(pointer);
    EXPECT_EQ(chainAndRelease(four), "pointer i b a 220");
    EXPECT_EQ(chainAndRelease(bind(OP_COMMA, leaf(a), leaf(b))), "a b 698");
    EXPECT_EQ(chainAndRelease(node(OP_GETPID, leaf(a))), "109");
    EXPECT_EQ(chainAndRelease(node(OP_SIZEOF, number(1))), "1i 240");
    EXPECT_EQ(chainAndRelease(node(OP_STREVAL, leaf(a), leaf(b))), "a 697");
}

TEST_F(Thread, BranchesGoOnBehindTheirOperator) {
    ExprNode *tree = bind(OP_LOGICAL_AND, leaf(a), sum());
    EXPECT_EQ(chainOf(tree), "a 9");
    EXPECT_EQ(textOf(branchChainsOf(tree).first), "b a 57");
    deleteNode(tree);

    tree = bind(OP_LOGICAL_OR, leaf(a), number(1));
    EXPECT_EQ(chainOf(tree), "a 7");
    EXPECT_EQ(textOf(branchChainsOf(tree).first), "");
    deleteNode(tree);

    ExprNode *branch = node(OP_CONDITIONAL, leaf(a), sum());
    branch->third = number(4);
    tree = bind(OP_PLUS, branch, leaf(b));
    EXPECT_EQ(chainOf(tree), "b a 703 57");
    EXPECT_EQ(textOf(branchChainsOf(branch).first), "b a 57 57");
    deleteNode(tree);

    tree = bind(OP_CONDITIONAL, leaf(a), sum(), number(4));
    EXPECT_EQ(chainOf(tree), "a 703");
    EXPECT_EQ(textOf(branchChainsOf(tree).first), "b a 57");
    EXPECT_EQ(textOf(branchChainsOf(tree).second), "4i");
    deleteNode(tree);
}

TEST_F(Thread, SubscriptsAndMembers) {
    EXPECT_EQ(chainAndRelease(element()), "n 707");
    ExprNode *fromSum =
        node(OP_SUBSCRIPT_POINTER, bind(OP_PLUS, leaf(pointer), leaf(i)), list({number(1)}));
    EXPECT_EQ(chainAndRelease(fromSum), "i pointer 595 704");
    EXPECT_EQ(chainAndRelease(bind(OP_INDIRECTION, leaf(pointer))), "pointer 597");
    TypeInfo *object = variable("object", DT_STRUCT);
    EXPECT_EQ(chainAndRelease(member(object)), "722");  // finds the variable itself
}

TEST_F(Thread, AssignmentsRunTheValueAndThenTheTarget) {
    EXPECT_EQ(chainAndRelease(bind(OP_ASSIGN, leaf(a), number(1))), "686");
    EXPECT_EQ(chainAndRelease(bind(OP_ASSIGN, leaf(a), sum())), "b a 57 686");
    EXPECT_EQ(chainAndRelease(bind(OP_ASSIGN, element(), leaf(b))), "b n 686");
    EXPECT_EQ(chainAndRelease(bind(OP_ASSIGN, bind(OP_INDIRECTION, leaf(pointer)), leaf(b))),
              "b pointer 686");
    EXPECT_EQ(chainAndRelease(bind(OP_ASSIGN, node(OP_REAL_FLOAT, element()), leaf(b))), "b n 686");
    EXPECT_EQ(chainAndRelease(bind(OP_ASSIGN, leaf(pointer), number(0))), "684 686");

    EXPECT_EQ(chainAndRelease(bind(OP_ASSIGN_ADD, leaf(a), leaf(b))), "b a 687");
    EXPECT_EQ(chainAndRelease(bind(OP_ASSIGN_ADD, element(), leaf(b))), "n b n 707 687");
    EXPECT_EQ(chainAndRelease(bind(OP_ASSIGN_ADD, leaf(a), v(DT_DOUBLE))), "v a 687 684");
    EXPECT_EQ(chainAndRelease(bind(OP_POSTFIX_INCREMENT, leaf(a))), "a 701");
    EXPECT_EQ(chainAndRelease(bind(OP_PREFIX_DECREMENT, element())), "n n 707 700");
    ExprNode *nested =
        node(OP_SUBSCRIPT, leaf(cells), list({bind(OP_POSTFIX_INCREMENT, leaf(i)), number(2)}));
    EXPECT_EQ(chainAndRelease(bind(OP_POSTFIX_INCREMENT, nested)), "i 701 i 701 707 701");
}

TEST_F(Thread, AddressesStandBehindTheirSubscripts) {
    EXPECT_EQ(chainAndRelease(bind(OP_ADDRESS, leaf(a))), "721");
    EXPECT_EQ(chainAndRelease(bind(OP_ADDRESS, element())), "n 721");
    EXPECT_EQ(chainAndRelease(bind(OP_ADDRESS, bind(OP_INDIRECTION, leaf(pointer)))),
              "pointer 721");

    ExprNode *wrong = node(OP_ADDRESS, number(1), leaf(a));
    EXPECT_EQ(errorsOf([&] { compileChain(wrong, nullptr, false); }),
              "ERROR: address operation evaluation order error\n"
              "ERROR: invalid operand for address op & \n");
    deleteNode(wrong);
}

TEST_F(Thread, CallsTakeReferencesByCellOrAddress) {
    TypeInfo *first = variable("x", DT_INT, KIND_BY_REFERENCE);
    TypeInfo *second = variable("y", DT_INT);
    TypeInfo *callee = function("callee", DT_INT, {first, second});
    auto call = [&](ExprNode *x, ExprNode *y) { return node(OP_CALL, leaf(callee), list({x, y})); };
    EXPECT_EQ(chainAndRelease(call(leaf(a), leaf(b))), "b 725");
    EXPECT_EQ(chainAndRelease(call(number(1), number(2))), "725");
    EXPECT_EQ(chainAndRelease(call(sum(), leaf(b))), "b b a 57 725");
    ExprNode *byAddress = call(element(), leaf(b));
    EXPECT_EQ(chainOf(byAddress), "b n 707 n 721 725");
    EXPECT_NE(referenceAddressOf(byAddress->right->item), nullptr);
    EXPECT_EQ(referenceAddressOf(byAddress->right->next->item), nullptr);
    deleteNode(byAddress);
    TypeInfo *target = variable("target", DT_P_FUNCTION, KIND_SIMPLE);
    ExprNode *through = node(OP_CALL, bind(OP_INDIRECTION, leaf(target)), list({leaf(a)}));
    EXPECT_EQ(chainAndRelease(through), "a target 597 725");
}

TEST_F(Thread, ShapesRunBeforeWhatIsCast) {
    TypeInfo *type = newTypeInfo();
    type->level = TYPE_ONLY_LEVEL;
    type->kind = KIND_ARRAY;
    type->arrayLink = shape({}, SHAPE_DEFERRED);
    type->arrayLink->rank = 1;
    appendListCell(type->arrayLink->bounds, number(0));
    appendListCell(type->arrayLink->bounds, leaf(i));
    EXPECT_EQ(chainAndRelease(node(OP_CAST, leaf(type), leaf(a))), "i a 684");
    TypeInfo *formal = variable("formal", DT_INT, KIND_P_ARRAY, {OPEN_LIMIT}, SHAPE_ASSUMED);
    EXPECT_EQ(chainAndRelease(node(OP_CAST, leaf(formal), leaf(a))), "formal a 684");
    TypeInfo *deferred = variable("deferred", DT_INT, KIND_ARRAY, {}, SHAPE_DEFERRED);
    appendListCell(deferred->arrayLink->bounds, number(0));
    appendListCell(deferred->arrayLink->bounds, leaf(i));
    EXPECT_EQ(chainAndRelease(node(OP_ARRAY_BOUNDS, leaf(deferred))), "i 726");
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
