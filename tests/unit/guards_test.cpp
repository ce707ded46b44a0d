// The checks of expressions against what is wanted of them: messages, and what they refuse.

#include "expr/guards.h"

#include "decl/structInfo.h"
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
    std::string assigning(ExprNode *left, ExprNode *right) {
        return verdict([&] { checkAssignment(left, right); }, {left, right});
    }
    std::string initialising(ExprNode *left, ExprNode *right) {
        return verdict([&] { checkInitialiser(left, right); }, {left, right});
    }
    std::string casting(int target, ExprNode *operand) {
        TypeInfo model{};
        model.dataType = target;
        ExprNode *cast = node(OP_CAST, newSymbolNode(newTypeOnly(&model)), operand);
        return verdict([&] { checkCast(cast, operand); }, {cast});
    }
    std::string passing(ExprNode *actual, TypeInfo *formal) {
        return verdict([&] { checkArgument(actual, formal, 2); }, {actual});
    }
    // The code of an array operation with that message, "" for none.
    std::string operating(int op, ExprNode *left, ExprNode *right) {
        int code = 0;
        std::string text =
            verdict([&] { code = checkArrayOperands(left, right, op); }, {left, right});
        return std::to_string(code) + (text.empty() ? "" : " " + text);
    }
    ExprNode *array(std::vector<int> extents, int shapeKind = SHAPE_FIXED, int kind = KIND_ARRAY) {
        return leaf(variable("a", DT_DOUBLE, kind, extents, shapeKind));
    }
    // A struct type of that name, with nothing in it.
    StructInfo *structType(const char *name) {
        StructInfo *info = newStructInfo(variable(name, DT_TAG));
        structs.push_back(info);
        return info;
    }
    TypeInfo *object(int type, StructInfo *info) {
        TypeInfo *symbol = variable("object", type);
        symbol->structLink = info;
        return symbol;
    }
    void TearDown() override {
        for (StructInfo *info : structs)
            deleteNode(info);
        TreeTest::TearDown();
    }
    std::vector<StructInfo *> structs;
};

TEST_F(Guards, ConstantsWhereATypeIsWanted) {
    EXPECT_EQ(converting(number(5), DT_INT), "");
    EXPECT_EQ(converting(number(5), DT_DDUAL), "");
    EXPECT_EQ(converting(number(0), DT_P_CHAR), "");
    EXPECT_EQ(converting(number(5), DT_P_CHAR),
              "WARNING: found int where pointer to char is expected\nrefused");
    EXPECT_EQ(converting(number(0), DT_PP_INT), "");
    EXPECT_EQ(converting(number(5), DT_P_INT),
              "ERROR: found int where pointer to int is expected\n");
    EXPECT_EQ(converting(constant(DT_DOUBLE), DT_P_INT),
              "ERROR: found double where pointer to int is expected\nrefused");
    EXPECT_EQ(converting(text(), DT_STRING), "");
    EXPECT_EQ(converting(number(5), DT_STRING),
              "ERROR: found int where string is expected\nrefused");
}

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

// An initialiser goes by what the constant is, an assignment by its type alone.
TEST_F(Guards, ConstantsForPointers) {
    EXPECT_EQ(initialising(v(DT_P_INT), number(5)),
              "ERROR: found int where pointer to int is expected\n");
    EXPECT_EQ(initialising(v(DT_P_CHAR), number(5)),
              "WARNING: found int where pointer to char is expected\nrefused");
    EXPECT_EQ(initialising(v(DT_P_CHAR), number(0)), "");
    EXPECT_EQ(initialising(v(DT_P_CHAR), text()), "");
    EXPECT_EQ(initialising(v(DT_DOUBLE), text()),
              "ERROR: found pointer to char where double is expected\nrefused");
    EXPECT_EQ(assigning(v(DT_P_INT), number(5)),
              "WARNING: found int where pointer to int is expected\n");
    EXPECT_EQ(assigning(v(DT_P_CHAR), number(5)),
              "ERROR: found int where pointer to char is expected\nrefused");
    EXPECT_EQ(assigning(v(DT_P_CHAR), number(0)), "");
}

TEST_F(Guards, Casts) {
    EXPECT_EQ(casting(DT_INT, v(DT_P_INT)), "");
    EXPECT_EQ(casting(DT_DOUBLE, v(DT_STRING)), "");
    EXPECT_EQ(casting(DT_P_STRUCT, v(DT_INT)), "");
    EXPECT_EQ(casting(DT_STRING, v(DT_P_CHAR)), "");
    EXPECT_EQ(casting(DT_VOID, v(DT_STRUCT)), "");
    EXPECT_EQ(casting(DT_INT, v(DT_STRUCT)),
              "ERROR: incompatible types for casting operation, casting class/struct/union to int\n"
              "refused");
    EXPECT_EQ(casting(DT_STRING, v(DT_INT)),
              "ERROR: incompatible types for casting operation, casting int to string\nrefused");
    e_lang->restricted = 1;
    EXPECT_EQ(casting(DT_P_INT, v(DT_INT)),
              "ERROR: cast non-pointer data to pointer type is restricted in safe shell\nrefused");
    e_lang->restricted = 0;
    TypeInfo *function = this->function("f", DT_INT, {});
    EXPECT_EQ(casting(DT_P_VOID, leaf(function)), "");
    EXPECT_EQ(function->used, 1);
}

TEST_F(Guards, CastsToPointersToComputationalArrays) {
    auto cast = [&](ExprNode *operand, int rank, int shapeKind, int kind = KIND_P_ARRAY) {
        TypeInfo model{};
        model.dataType = DT_DOUBLE;
        model.kind = static_cast<int8_t>(kind);
        model.arrayLink = shape(std::vector<int>(rank, 4), shapeKind);
        ExprNode *tree = node(OP_CAST, newSymbolNode(newTypeOnly(&model)), operand);
        deleteNode(model.arrayLink);
        return verdict([&] { checkCast(tree, operand); }, {tree});
    };
    TypeInfo *floats = variable("floats", DT_FLOAT, KIND_ARRAY, {4});
    EXPECT_EQ(cast(array({4}), 1, SHAPE_ASSUMED), "");
    EXPECT_EQ(cast(array({4, 4}), 1, SHAPE_ASSUMED),
              "ERROR: array dimensions do not match in casting to pointer to computational array\n"
              "refused");
    EXPECT_EQ(cast(array({4}), 1, SHAPE_FIXED),
              "ERROR: not assumed-shape array for casting pointer to computational array\nrefused");
    EXPECT_EQ(cast(v(DT_INT), 1, SHAPE_ASSUMED),
              "ERROR: non-array casted to pointer to computational array\nrefused");
    EXPECT_EQ(cast(leaf(floats), 1, SHAPE_ASSUMED),
              "WARNING: pointer to computational array of double point to array of float with less "
              "memory space\n");
    EXPECT_EQ(cast(array({4}), 1, SHAPE_ASSUMED, KIND_P_C_ARRAY),
              "ERROR: assumed-shape array not casted to pointer to computational array, maybe "
              "missing 'array'\nrefused");
}

TEST_F(Guards, AssignmentsOfArrays) {
    const char *mismatch = "ERROR: array dimensions do not match \nrefused";
    EXPECT_EQ(assigning(array({4}), leaf(variable("c", DT_INT, KIND_C_ARRAY, {3}))), mismatch);
    EXPECT_EQ(assigning(array({4}), leaf(variable("c", DT_INT, KIND_C_ARRAY, {4}))), "");
    EXPECT_EQ(assigning(array({4}), array({2, 2})), mismatch);
    EXPECT_EQ(assigning(array({4}), number(3)), "");
    EXPECT_EQ(assigning(array({4}), v(DT_P_INT)),
              "ERROR: invalid rvalue assigned to computational array\nrefused");
    EXPECT_EQ(assigning(v(DT_DOUBLE), array({4})),
              "ERROR: assign computational array to scalar\nrefused");
    auto assumed = [&](int kind) { return array({4}, SHAPE_ASSUMED, kind); };
    EXPECT_EQ(assigning(assumed(KIND_P_ARRAY), constant(DT_NULL)), "");
    EXPECT_EQ(assigning(assumed(KIND_P_ARRAY), array({9})), "");
    EXPECT_EQ(assigning(assumed(KIND_P_ARRAY), array({9, 9})), mismatch);
    EXPECT_EQ(assigning(assumed(KIND_P_ARRAY), v(DT_P_INT)),
              "ERROR: (pointer to) computational assumed-shape array points to non-array\nrefused");
    EXPECT_EQ(assigning(array({4}, SHAPE_FIXED, KIND_P_ARRAY), v(DT_P_INT)),
              "ERROR: invalid value for pointer to computational array \nrefused");
    EXPECT_EQ(assigning(array({4}, SHAPE_FIXED, KIND_P_ARRAY), number(1)),
              "WARNING: scalar rvalue assigned to pointer to  computational array\n");
    EXPECT_EQ(assigning(assumed(KIND_P_C_ARRAY), v(DT_P_DOUBLE)),
              "ERROR: pointer to assumed-shape array points to non-array\nrefused");
    EXPECT_EQ(assigning(assumed(KIND_P_C_ARRAY), constant(DT_NULL)), "");
}

TEST_F(Guards, StructsAreToldApart) {
    StructInfo *first = structType("_zy_first"), *second = structType("second");
    EXPECT_EQ(assigning(leaf(object(DT_STRUCT, first)), leaf(object(DT_STRUCT, first))), "");
    EXPECT_EQ(assigning(leaf(object(DT_STRUCT, first)), leaf(object(DT_STRUCT, second))),
              "ERROR: different structs 'first' and 'second' are incompatible data types\nrefused");
    e_lang->warningLevel = 1;
    EXPECT_EQ(assigning(leaf(object(DT_P_STRUCT, first)), leaf(object(DT_P_STRUCT, second))), "");
    e_lang->warningLevel = 2;
    EXPECT_EQ(assigning(leaf(object(DT_P_STRUCT, first)), leaf(object(DT_P_STRUCT, second))),
              "WARNING: different structs 'first' and 'second' are incompatible data types\n");
}

TEST_F(Guards, DimensionsOfMatrixOperations) {
    const char *refused = "ERROR: array dimensions do not match for matrix operations \nrefused";
    EXPECT_EQ(operating(OP_MATRIX_PRODUCT, array({2, 3}), array({3, 2})), "680");
    EXPECT_EQ(operating(OP_MATRIX_PRODUCT, array({2, 3}), array({2, 3})),
              std::string("680 ") + refused);
    EXPECT_EQ(operating(OP_MATRIX_PRODUCT, array({2, 3}), array({3})), "675");
    EXPECT_EQ(operating(OP_MATRIX_PRODUCT, array({2}), array({2, 3})), "677");
    EXPECT_EQ(operating(OP_MATRIX_PRODUCT, array({1}), array({1})), "673");
    EXPECT_EQ(operating(OP_MATRIX_PRODUCT, array({4}), array({1})), "676");
    EXPECT_EQ(operating(OP_MATRIX_PRODUCT, array({1}), array({4})), "678");
    EXPECT_EQ(operating(OP_MATRIX_PRODUCT, array({4}), array({4})), "679");
    EXPECT_EQ(operating(OP_MATRIX_PRODUCT, array({2, 2, 2}), array({2})),
              "680 ERROR: array dimension is larger than 2  in array multiplication\nrefused");
    EXPECT_EQ(operating(OP_ARRAYS_ADD, array({2, 3}), array({2, 3})), "668");
    EXPECT_EQ(operating(OP_ARRAYS_ADD, array({2, 3}), array({3, 3})),
              std::string("668 ") + refused);
    EXPECT_EQ(operating(OP_ARRAYS_ADD, array({2, 3}), array({3, 3}, SHAPE_DEFERRED)), "668");
    EXPECT_EQ(operating(OP_ARRAYS_ADD, array({0, 3}), array({3, 3})), "668");
    EXPECT_EQ(operating(OP_TRANSPOSE, array({2, 3, 4}), nullptr),
              "606 ERROR: the array dimension is larger than 2  in transpose()\nrefused");
    EXPECT_EQ(operating(OP_INVERSE, array({2, 3}), nullptr),
              "631 ERROR: the array dimension is not NxN for an inverse() operation \nrefused");
    EXPECT_EQ(operating(OP_INVERSE, array({2, 3}, SHAPE_ASSUMED), nullptr), "631");
    EXPECT_EQ(operating(OP_LINEARSOLVER, array({3, 3}), array({2})),
              "674 ERROR: the array dimension is not (NxN)N = N for an inverse() operation \n"
              "refused");
    EXPECT_EQ(operating(OP_ARRAY_POWER_SCALAR, array({3, 2}), number(2)),
              "644 ERROR: not NxN 2-dim array for the first arg of array type of function pow()\n"
              "refused");
}

TEST_F(Guards, BoundsOfExpressions) {
    auto extents = [&](ExprNode *tree) {
        Bounds bounds;
        EXPECT_TRUE(boundsOf(tree, bounds));
        std::string text;
        for (const Dimension &dimension : bounds)
            text += std::to_string(dimension.limit->payload.i) + " ";
        deleteNode(tree);
        return text;
    };
    EXPECT_EQ(extents(bind(OP_STAR, array({2, 3}), array({3, 5}))), "2 5 ");
    EXPECT_EQ(extents(bind(OP_STAR, array({2, 3}), array({3}))), "2 ");
    EXPECT_EQ(extents(bind(OP_PLUS, number(1), array({2, 3}))), "2 3 ");
    EXPECT_EQ(extents(node(OP_TRANSPOSE, bind(OP_UNARY_MINUS, array({2, 3})))), "3 2 ");
    ExprNode *cube = leaf(variable("cube", DT_INT, KIND_C_ARRAY, {2, 3, 4}));
    EXPECT_EQ(extents(node(OP_SUBSCRIPT_PART2, cube, list({number(1)}))), "3 4 ");
    ExprNode *sum = bind(OP_PLUS, v(DT_INT), v(DT_INT));
    Bounds bounds;
    EXPECT_EQ(errorsOf([&] { boundsOf(sum, bounds); }), "ERROR: cannot obtain array bounds\n");
    deleteNode(sum);
}

TEST_F(Guards, ArraysAsArguments) {
    TypeInfo *pointer = variable("f", DT_DOUBLE, KIND_P_ARRAY, {4});
    TypeInfo *assumedPointer = variable("f", DT_DOUBLE, KIND_P_ARRAY, {OPEN_LIMIT}, SHAPE_ASSUMED);
    TypeInfo *grid = variable("f", DT_DOUBLE, KIND_P_C_ARRAY, {0, 3});
    TypeInfo *assumed = variable("f", DT_DOUBLE, KIND_ASSUMED_ARRAY, {4}, SHAPE_ASSUMED);
    EXPECT_EQ(passing(array({4}), pointer), "");
    EXPECT_EQ(passing(array({5}), pointer),
              "WARNING: dimension of actual array differs from that of formal array\n");
    EXPECT_EQ(
        passing(array({4, 4}), pointer),
        "WARNING: rank 2 of actual array argument differs from rank 1 formal array argument\n");
    EXPECT_EQ(passing(leaf(variable("i", DT_INT, KIND_ARRAY, {4})), pointer),
              "WARNING: expecting double, but got int\n");
    EXPECT_EQ(passing(array({7}), assumedPointer), "");
    EXPECT_EQ(passing(constant(DT_NULL), assumedPointer), "");
    EXPECT_EQ(passing(v(DT_P_DOUBLE), assumedPointer),
              "ERROR: non-array is passed to pointer to assumed-shape array \nrefused");
    EXPECT_EQ(passing(leaf(variable("g", DT_DOUBLE, KIND_C_ARRAY, {9, 3})), grid), "");
    EXPECT_EQ(passing(v(DT_P_DOUBLE), grid),
              "WARNING: non-array is passed to pointer to array in a function \n");
    EXPECT_EQ(
        passing(v(DT_DOUBLE), assumed),
        "ERROR: actual argument is not array or pointer to array for formal argument of array "
        "of reference\nrefused");
    EXPECT_EQ(passing(array({4, 4}), assumed),
              "WARNING: rank of actual array argument differs from formal array of reference\n");
    EXPECT_EQ(passing(constant(DT_NULL), assumed), "");
}

TEST_F(Guards, PlainArguments) {
    EXPECT_EQ(passing(v(DT_INT), variable("f", DT_DOUBLE)), "");
    EXPECT_EQ(passing(v(DT_STRUCT), variable("f", DT_DOUBLE)),
              "ERROR: found class/struct/union where double is expected\nrefused");
    e_lang->warningLevel = 3;
    EXPECT_EQ(passing(v(DT_P_INT), variable("f", DT_P_DOUBLE)),
              "WARNING: passed pointer to int where pointer to double is expected\n");
    EXPECT_EQ(passing(v(DT_P_VOID), variable("f", DT_P_DOUBLE)), "");
    TypeInfo *callback = variable("f", DT_P_FUNCTION, KIND_P_FUNCTION);
    TypeInfo *function = this->function("g", DT_INT, {});
    EXPECT_EQ(passing(leaf(function), callback), "");
    EXPECT_EQ(function->used, 1);
    EXPECT_EQ(passing(number(0), callback), "");
    EXPECT_EQ(passing(leaf(variable("n", DT_INT)), callback),
              "WARNING: 'n' in argument 2 of the function call is not function or function pointer "
              "type \n");
    EXPECT_EQ(
        passing(number(7), callback),
        "WARNING: argument 2 of the function call is not function or function pointer type \n");
}

TEST_F(Guards, CountOfArguments) {
    TypeInfo *two = function("two", DT_INT, {variable("x", DT_INT), variable("y", DT_INT)});
    TypeInfo *one = function("one", DT_INT, {variable("x", DT_INT)});
    TypeInfo *none = function("none", DT_INT, {variable("x", DT_VOID)});
    auto counting = [&](int given, const TypeInfo *function) {
        return verdict([&] { checkArgumentCount(given, function->functionLink); }, {});
    };
    EXPECT_EQ(counting(2, two), "");
    EXPECT_EQ(counting(1, two), "ERROR: number of argument is 1, need 2 arguments\nrefused");
    EXPECT_EQ(counting(2, one), "ERROR: number of argument is 2, need 1 argument\nrefused");
    EXPECT_EQ(counting(1, none), "ERROR: number of argument is 1, need 0 arguments\nrefused");
    one->functionLink->variadic = 1;
    EXPECT_EQ(counting(5, one), "");
    EXPECT_EQ(counting(0, one), "ERROR: number of argument is 0, need 1 argument\nrefused");
    EXPECT_EQ(counting(5, function("open", DT_INT, {})), "");
    ExprNode *three = list({number(1), number(2), number(3)});
    EXPECT_EQ(verdict([&] { checkArguments(three, two->functionLink); }, {three}), "");
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
