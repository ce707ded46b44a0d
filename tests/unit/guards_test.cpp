// Checks of expressions where no text leads; what texts are refused is in parser_test.cpp.

#include "expr/guards.h"

#include "expressionTrees.h"

namespace zy {

class Guards : public TreeTest {
protected:
    // What a check prints, and behind it a mark if it refused the statement. Releases the trees.
    template <class Check>
    std::string verdict(Check check, std::initializer_list<ExprNode *> trees) {
        errorFlag = 0;
        std::string text = errorsOf(check);
        for (ExprNode *tree : trees)
            deleteNode(tree);
        if (errorFlag)
            text += "refused";
        errorFlag = 0;
        return text;
    }
    std::string converting(ExprNode *tree, int expected) {
        return verdict([&] { convertTree(tree, expected); }, {tree});
    }
};

TEST_F(Guards, ExpressionsWhereATypeIsWanted) {
    EXPECT_EQ(converting(v(DT_DOUBLE), DT_CHAR), "");
    EXPECT_EQ(converting(constant(DT_NULL), DT_P_FILE), "");
    EXPECT_EQ(converting(constant(DT_NULL), DT_INT), "");
    EXPECT_EQ(converting(v(DT_PP_CHAR), DT_P_INT), "");
    EXPECT_EQ(converting(v(DT_P_INT), DT_INT),
              "WARNING: found pointer to int where int is expected\n");
    EXPECT_EQ(converting(v(DT_INT), DT_P_INT),
              "WARNING: found int where pointer to int is expected\n");
    EXPECT_EQ(converting(v(DT_DOUBLE), DT_P_INT),
              "ERROR: found double where pointer to int is expected\nrefused");
    EXPECT_EQ(converting(leaf(variable("s", DT_CHAR, KIND_P_C_ARRAY, {9})), DT_STRING), "");
    TypeInfo *unknown = variable("unknown", DT_UNDEFINED);
    EXPECT_EQ(converting(leaf(unknown), DT_DOUBLE), "");
    EXPECT_EQ(unknown->dataType, DT_DOUBLE);
    ExprNode *zero = nullptr;
    errorsOf([&] { zero = convertTree(nullptr, DT_DOUBLE); });
    EXPECT_EQ(errorFlag, 1);
    EXPECT_EQ(treeType(zero), DT_DOUBLE);
    deleteNode(zero);
}

TEST_F(Guards, ASumOfScalarsHasNoBounds) {
    ExprNode *sum = bind(OP_PLUS, v(DT_INT), v(DT_INT));
    Bounds bounds;
    EXPECT_EQ(errorsOf([&] { boundsOf(sum, bounds); }), "ERROR: cannot obtain array bounds\n");
    deleteNode(sum);
}

TEST_F(Guards, TwoDeclarationsOfAnArray) {
    auto compare = [&](TypeInfo *fresh, TypeInfo *old) {
        return verdict([&] { compareArrayTypes(fresh, old); }, {});
    };
    TypeInfo *old = variable("a", DT_INT, KIND_C_ARRAY, {2, 3});
    EXPECT_EQ(compare(variable("a", DT_INT, KIND_C_ARRAY, {2, 3}), old), "");
    EXPECT_EQ(compare(variable("a", DT_INT, KIND_ARRAY, {2, 3}), old),
              "ERROR: change from C array to computational array or from computational array to C "
              "array\nrefused");
    EXPECT_EQ(compare(variable("a", DT_INT, KIND_C_ARRAY, {2}), old),
              "ERROR: array ranks do not match\nrefused");
    EXPECT_EQ(compare(variable("a", DT_INT, KIND_C_ARRAY, {2, 3}, SHAPE_ASSUMED), old),
              "ERROR: array types do not match\nrefused");
    EXPECT_EQ(compare(variable("a", DT_INT, KIND_C_ARRAY, {2, 4}), old),
              "ERROR: array dimensions do not match\nrefused");
    TypeInfo *fortran = variable("a", DT_INT, KIND_C_ARRAY, {2, 3});
    fortran->arrayLink->fortranOrder = 1;
    EXPECT_EQ(compare(fortran, old), "ERROR: C and Fortran array types do not match\nrefused");
}

}  // namespace zy
