// Binding of operators: types of trees, refusals, lvalues, the casts that binding adds.

#include "expr/select.h"

#include "expressionTrees.h"

namespace zy {

class Select : public TreeTest {
protected:
    // What binding prints; errorFlag is cleared, the tree released.
    template <class... Operands>
    std::string refusal(int op, Operands... operands) {
        errorFlag = 0;
        std::string text = errorsOf([&] { deleteNode(bind(op, operands...)); });
        EXPECT_EQ(errorFlag, text.empty() ? 0 : 1) << text;
        errorFlag = 0;
        return text;
    }

    std::string typesOf(ExprNode *tree) {
        std::string text = std::string(dataTypeText(treeType(tree))) + " / " +
                           dataTypeText(treeDataType(tree)) + " / " +
                           dataTypeText(arrayElementTypeOf(tree));
        deleteNode(tree);
        return text;
    }
};

TEST_F(Select, TypesOfOperators) {
    EXPECT_EQ(typesOf(bind(OP_PLUS, v(DT_INT), v(DT_DOUBLE))), "double / double / double");
    EXPECT_EQ(typesOf(bind(OP_LESS, v(DT_DOUBLE), v(DT_DOUBLE))), "int / int / int");
    EXPECT_EQ(typesOf(bind(OP_CONDITIONAL, v(DT_INT), v(DT_INT), v(DT_DOUBLE))),
              "double / double / double");
    EXPECT_EQ(typesOf(bind(OP_CONDITIONAL, v(DT_INT), v(DT_P_FILE), constant(DT_NULL))),
              "pointer to file / pointer to file / pointer to file");
    EXPECT_EQ(typesOf(bind(OP_COMMA, v(DT_INT), v(DT_STRING))), "string / string / string");
    EXPECT_EQ(
        typesOf(bind(OP_ADDRESS, v(DT_P_INT))),
        "pointer to a pointer to int / pointer to a pointer to int / pointer to a pointer to int");
    EXPECT_EQ(typesOf(bind(OP_INDIRECTION, v(DT_PP_CHAR))),
              "pointer to char / pointer to char / pointer to char");
    EXPECT_EQ(typesOf(bind(OP_PLUS, v(DT_INT), v(DT_P_INT))),
              "pointer to int / pointer to int / pointer to int");
    EXPECT_EQ(typesOf(bind(OP_POSTFIX_INCREMENT, v(DT_CHAR))), "char / char / char");
    EXPECT_EQ(treeType(nullptr), DT_VOID);
}

TEST_F(Select, TypesOfArrays) {
    TypeInfo *grid = variable("grid", DT_INT, KIND_C_ARRAY, {3, 4});
    const char *element = "int / int / int";
    const char *row = "ANSI C array / pointer to int / pointer to int";
    const char *whole = "ANSI C array / pointer to a pointer to int / pointer to a pointer to int";
    EXPECT_EQ(typesOf(leaf(grid)), whole);
    EXPECT_EQ(typesOf(node(OP_SUBSCRIPT, leaf(grid), list({number(1), number(2)}))), element);
    EXPECT_EQ(typesOf(node(OP_SUBSCRIPT_PART1, leaf(grid), list({number(1)}))), row);
    EXPECT_EQ(typesOf(bind(OP_INDIRECTION, leaf(grid))), row);
    EXPECT_EQ(
        typesOf(bind(OP_INDIRECTION, bind(OP_INDIRECTION, bind(OP_PLUS, leaf(grid), number(1))))),
        element);
    EXPECT_EQ(typesOf(bind(OP_ADDRESS, leaf(variable("a", DT_INT, KIND_C_ARRAY, {3})))),
              "pointer to array / pointer to a pointer to int / pointer to a pointer to int");
    TypeInfo *words = variable("words", DT_P_CHAR, KIND_C_ARRAY, {3});
    EXPECT_EQ(typesOf(node(OP_SUBSCRIPT_POINTER, leaf(words), list({number(1), number(0)}))),
              "char / char / char");
    TypeInfo *pointer = variable("pp", DT_PP_DOUBLE);
    EXPECT_EQ(typesOf(node(OP_SUBSCRIPT_POINTER2, leaf(pointer), list({number(1), number(0)}))),
              "double / double / double");

    TypeInfo *floats = variable("floats", DT_FLOAT, KIND_ARRAY, {3});
    TypeInfo *chars = variable("chars", DT_CHAR, KIND_ARRAY, {3});
    const char *floatArray = "computational array / float / computational array";
    const char *intArray = "computational array / int / computational array";
    EXPECT_EQ(typesOf(bind(OP_PLUS, leaf(floats), leaf(chars))), floatArray);
    EXPECT_EQ(typesOf(bind(OP_PLUS, leaf(chars), v(DT_CHAR))), intArray);
    EXPECT_EQ(typesOf(bind(OP_LESS, leaf(floats), leaf(floats))), intArray);
    EXPECT_EQ(typesOf(bind(OP_UNARY_MINUS, leaf(floats))), floatArray);
    EXPECT_EQ(typesOf(node(OP_SIN_ARRAY, leaf(chars))), floatArray);
    EXPECT_EQ(typesOf(bind(OP_ADDRESS, leaf(floats))),
              "pointer to computational array / float / pointer to computational array");
}

TEST_F(Select, RefusalsOfOperands) {
    struct Case {
        int op, left, right;
        const char *text;
    };
    const Case cases[] = {
        {OP_PLUS, DT_P_INT, DT_P_INT, "invalid operands for addition operator +"},
        {OP_MINUS, DT_STRUCT, DT_INT, "invalid operands for subtraction operator -"},
        {OP_STAR, DT_P_INT, DT_INT, "invalid operands for multiplication operator *"},
        {OP_SLASH, DT_INT, DT_P_INT, "invalid operands for division operator  /"},
        {OP_PERCENT, DT_FLOAT, DT_INT, "mod operator % is applied to nonintegral values"},
        {OP_BAR, DT_FLOAT, DT_INT, "bitwise or operator | is applied to nonintegral values"},
        {OP_CARET, DT_INT, DT_P_INT,
         "bitwise exclusive or operator ^ is applied to nonintegral values"},
        {OP_AMPERSAND, DT_INT, DT_DOUBLE,
         "bitwise and operator & is applied to nonintegral values"},
        {OP_LEFT_SHIFT, DT_INT, DT_FLOAT,
         "operands are non-integral type for bitwise left shift operator << "},
        {OP_RIGHT_SHIFT, DT_FLOAT, DT_INT,
         "operands are non-integral type for bitwise left shift operator >> "},
        {OP_LESS, DT_COMPLEX, DT_INT, "invalid operands for less than operator <"},
        {OP_LESS_EQUAL, DT_STRING, DT_STRING,
         "invalid operands for less than or equal operator <="},
        {OP_GREATER_EQUAL, DT_STRING, DT_P_CHAR,
         "invalid operands for greater than or equal  operator >="},
        {OP_GREATER, DT_DUAL, DT_DUAL, "invalid operands for greater than  operator  >"},
        {OP_EQUAL, DT_P_INT, DT_INT, "invalid operands for equal operator =="},
        {OP_NOT_EQUAL, DT_STRUCT, DT_STRUCT, "invalid operands for not equal operator !="},
        {OP_LOGICAL_OR, DT_COMPLEX, DT_INT, "invalid operands for or operator ||"},
        {OP_LOGICAL_XOR, DT_STRUCT, DT_INT, "invalid operands for exclusive or operator ^^"},
        {OP_LOGICAL_AND, DT_INT, DT_VOID, "invalid operands for and operator &&"},
        {OP_ASSIGN_ADD, DT_INT, DT_STRUCT, "invalid operands for operator += "},
        {OP_ASSIGN_SUBTRACT, DT_P_INT, DT_P_INT, "invalid operands for operator -= "},
        {OP_ASSIGN_MULTIPLY, DT_P_INT, DT_INT, "invalid operands for operator *= "},
        {OP_ASSIGN_DIVIDE, DT_INT, DT_P_INT, "invalid operands for operator /= "},
        {OP_ASSIGN_MODULO, DT_FLOAT, DT_INT, "operands are non-integral type for operator %= "},
        {OP_ASSIGN_BIT_AND, DT_INT, DT_FLOAT, "operands are non-integral type for operator &= "},
        {OP_ASSIGN_BIT_XOR, DT_FLOAT, DT_INT, "operands are non-integral type for operator ^= "},
        {OP_ASSIGN_BIT_OR, DT_FLOAT, DT_INT, "operands are non-integral type for operator |= "},
        {OP_ASSIGN_SHIFT_LEFT, DT_FLOAT, DT_INT,
         "operands are non-integral type for operator <<= "},
        {OP_ASSIGN_SHIFT_RIGHT, DT_INT, DT_FLOAT,
         "operands are non-integral type for operator >>= "},
        {OP_ELEMENT_MULTIPLY, DT_INT, DT_INT,
         "1st operand for array operator '.*' is not computational array\n"
         "ERROR: 2nd operand for array operator '.*' is not computational array"},
        {OP_ELEMENT_DIVIDE, DT_P_INT, DT_INT,
         "1st operand for array operator './' is not computational array or scalar value\n"
         "ERROR: 2nd operand for array operator './' is not computational array"},
    };
    for (const Case &row : cases)
        EXPECT_EQ(refusal(row.op, v(row.left), v(row.right)),
                  std::string("ERROR: ") + row.text + "\n");
    EXPECT_EQ(refusal(OP_TILDE, v(DT_FLOAT)),
              "ERROR: the bitwise one's complement  operator ~ is applied to nonintegral values\n");
    EXPECT_EQ(refusal(OP_UNARY_MINUS, v(DT_STRING)),
              "ERROR: invalid operand for negation operator -\n");
    EXPECT_EQ(refusal(OP_EXCLAMATION, v(DT_STRUCT)), "ERROR: invalid operand for not operator !\n");
    EXPECT_EQ(refusal(OP_INDIRECTION, v(DT_INT)),
              "ERROR: operand of indirection operator * is not a pointer\n");
    EXPECT_EQ(refusal(OP_ADDRESS, number(3)),
              "ERROR: operand of address operation & is not a valid lvalue\n");
    EXPECT_EQ(refusal(OP_CONDITIONAL, v(DT_STRUCT), number(1), number(2)),
              "ERROR: invalid operand for ternary operation ?:\n");
    EXPECT_EQ(refusal(OP_CONDITIONAL, v(DT_INT), v(DT_DOUBLE), text()),
              "ERROR: found pointer to char where double is expected\n");
    EXPECT_EQ(refusal(OP_CONDITIONAL, v(DT_INT), v(DT_P_INT), number(0)), "");
    EXPECT_EQ(refusal(OP_CONDITIONAL, v(DT_INT), number(0), v(DT_P_INT)), "");
    EXPECT_EQ(
        refusal(OP_CONDITIONAL, v(DT_INT), leaf(variable("a", DT_INT, KIND_ARRAY, {2})), number(2)),
        "ERROR: mix computational array with scalar in operands for ternary operation ?:\n");
}

TEST_F(Select, ARefusedSumGoesOnAsFloat) {
    ExprNode *sum = nullptr;
    errorsOf([&] { sum = bind(OP_PLUS, v(DT_STRUCT), v(DT_INT)); });
    EXPECT_EQ(treeType(sum), DT_FLOAT);
    deleteNode(sum);
}

TEST_F(Select, WhatWasReportedIsNotReportedAgain) {
    errorFlag = 1;
    EXPECT_EQ(errorsOf([&] { deleteNode(bind(OP_ASSIGN, v(DT_INT))); }), "");
    EXPECT_EQ(errorsOf([&] { deleteNode(bind(OP_PLUS, v(DT_INT))); }), "");
}

TEST_F(Select, PointersCompareWithZero) {
    EXPECT_EQ(codeOf(bind(OP_EQUAL, v(DT_P_INT), number(0))), 197);
    EXPECT_EQ(codeOf(bind(OP_NOT_EQUAL, number(0), v(DT_P_INT))), 200);
    EXPECT_EQ(refusal(OP_EQUAL, v(DT_P_INT), number(1)),
              "ERROR: invalid operands for equal operator ==\n");
    TypeInfo *assumed = variable("s", DT_INT, KIND_ASSUMED_ARRAY, {3}, SHAPE_ASSUMED);
    EXPECT_EQ(codeOf(bind(OP_EQUAL, leaf(assumed), v(DT_P_VOID))), 197);
    EXPECT_EQ(codeOf(bind(OP_EQUAL, leaf(assumed), constant(DT_NULL))), 197);
}

TEST_F(Select, ConstRulesOfLvalues) {
    const char *message = "ERROR: lvalue is a const object\n";
    TypeInfo *fixed = variable("fixed", DT_INT);
    fixed->qualifiers = QUALIFIER_CONST;
    EXPECT_EQ(refusal(OP_ASSIGN, leaf(fixed), number(1)), message);
    EXPECT_EQ(refusal(OP_ASSIGN_ADD, leaf(fixed), number(1)), message);
    EXPECT_EQ(refusal(OP_PREFIX_INCREMENT, leaf(fixed)), message);
    EXPECT_EQ(refusal(OP_ADDRESS, leaf(fixed)), "");

    TypeInfo *toConst = variable("toConst", DT_P_INT);
    toConst->qualifiers = QUALIFIER_CONST;
    EXPECT_EQ(refusal(OP_ASSIGN, leaf(toConst), constant(DT_NULL)), "");
    EXPECT_EQ(
        refusal(OP_ASSIGN, node(OP_SUBSCRIPT_POINTER, leaf(toConst), list({number(0)})), number(1)),
        message);
    TypeInfo *constPointer = variable("constPointer", DT_P_INT);
    constPointer->qualifiers = QUALIFIER_CONST_POINTER;
    EXPECT_EQ(refusal(OP_ASSIGN, leaf(constPointer), constant(DT_NULL)), message);
    EXPECT_EQ(refusal(OP_ASSIGN, bind(OP_INDIRECTION, leaf(constPointer)), number(1)), "");

    TypeInfo *cells = variable("cells", DT_INT, KIND_C_ARRAY, {3});
    EXPECT_EQ(refusal(OP_ASSIGN, leaf(cells), number(1)),
              "ERROR: invalid lvalue of assignment operation\n");
    EXPECT_EQ(refusal(OP_ASSIGN, bind(OP_INDIRECTION, leaf(cells)), number(1)), "");
    TypeInfo *grid = variable("grid", DT_INT, KIND_C_ARRAY, {3, 4});
    EXPECT_EQ(refusal(OP_ASSIGN, bind(OP_INDIRECTION, leaf(grid)), number(1)),
              "ERROR: using array name as a pointer in lvalue of an assigment\n");
    EXPECT_EQ(refusal(OP_ASSIGN, number(1), number(1)),
              "ERROR: invalid lvalue of assignment operation\n");
    EXPECT_EQ(refusal(OP_ASSIGN, v(DT_INT)), "ERROR: invalid rvalue of assignment operation\n");
    EXPECT_EQ(refusal(OP_POSTFIX_DECREMENT, number(1)),
              "ERROR: operand is not modifiable lvalue for operator --\n");
    EXPECT_EQ(refusal(OP_PREFIX_INCREMENT, leaf(cells)),
              "ERROR: invalid operand for operator ++\n");
    EXPECT_EQ(refusal(OP_POSTFIX_INCREMENT, v(DT_P_VOID)),
              "ERROR: invalid operand for operator ++\n");
    EXPECT_EQ(refusal(OP_ASSIGN, node(OP_REAL_FLOAT, v(DT_COMPLEX)), number(1)), "");
}

TEST_F(Select, RestrictedShellRefusesPointers) {
    e_lang->restricted = 1;
    EXPECT_EQ(refusal(OP_ASSIGN, v(DT_P_INT), constant(DT_NULL)),
              "ERROR: lvalue of pointer type is restricted in safe shell\n");
    EXPECT_EQ(refusal(OP_PLUS, v(DT_P_INT), number(1)),
              "ERROR: pointer addition is restricted in safe shell\n");
    EXPECT_EQ(refusal(OP_MINUS, v(DT_P_INT), v(DT_P_INT)),
              "ERROR: pointer subtraction is restricted in safe shell\n");
    EXPECT_EQ(refusal(OP_ASSIGN_ADD, v(DT_P_INT), number(1)),
              "ERROR: lvalue of pointer type is restricted in safe shell\n"
              "ERROR: pointer addition += is restricted in safe shell\n");
    EXPECT_EQ(refusal(OP_ASSIGN_SUBTRACT, v(DT_P_INT), number(1)),
              "ERROR: lvalue of pointer type is restricted in safe shell\n"
              "ERROR: pointer subtraction -= is restricted in safe shell\n");
    e_lang->restricted = 0;
}

TEST_F(Select, AssignmentCastsWhatTheStoreDoesNotConvert) {
    auto rightOf = [&](int target, ExprNode *value) {
        ExprNode *tree = bind(OP_ASSIGN, v(target), value);
        std::string text = isOperator(tree->right) && tree->right->op == OP_CAST
                               ? std::string("cast to ") + dataTypeText(treeType(tree->right))
                               : "plain";
        deleteNode(tree);
        return text;
    };
    EXPECT_EQ(rightOf(DT_INT, v(DT_DOUBLE)), "plain");
    EXPECT_EQ(rightOf(DT_COMPLEX, v(DT_LLONG)), "plain");
    EXPECT_EQ(rightOf(DT_P_INT, v(DT_P_INT)), "plain");
    EXPECT_EQ(rightOf(DT_P_INT, constant(DT_NULL)), "plain");
    EXPECT_EQ(rightOf(DT_P_INT, number(0)), "cast to pointer to int");
    EXPECT_EQ(rightOf(DT_P_INT, v(DT_P_VOID)), "cast to pointer to int");
    EXPECT_EQ(rightOf(DT_STRING, text()), "cast to string");
    EXPECT_EQ(rightOf(DT_INT, node(OP_STREVAL, text())), "plain");

    EXPECT_EQ(codeOf(bind(OP_ASSIGN_ADD, v(DT_INT), v(DT_DOUBLE))), OP_CAST);
    EXPECT_EQ(codeOf(bind(OP_ASSIGN_ADD, v(DT_CHAR), number(1))), OP_CAST);
    EXPECT_EQ(codeOf(bind(OP_ASSIGN_ADD, v(DT_DOUBLE), number(1))), OP_ASSIGN_ADD);
    EXPECT_EQ(codeOf(bind(OP_ASSIGN_SUBTRACT, v(DT_P_INT), number(1))), OP_ASSIGN_SUBTRACT);
    EXPECT_EQ(codeOf(bind(OP_ASSIGN_ADD, v(DT_STRING), text())), OP_ASSIGN_ADD);
}

// `**pp`, `-*p`: prefix operators wait on the stack and are reduced from the top.
TEST_F(Select, ReducesPrefixOperatorsFromTheRight) {
    auto push = [](ExprNode *&list, ExprNode *node) {
        node->next = list;
        list = node;
    };
    ExprNode *operands = nullptr, *operators = nullptr;
    int depth = 3;
    push(operands, v(DT_PP_INT));
    for (int op : {OP_UNARY_MINUS, OP_INDIRECTION, OP_INDIRECTION})
        push(operators, newOperatorNode(op));
    while (operators)
        reduceOperator(operands, operators, depth);
    EXPECT_EQ(depth, 0);
    EXPECT_EQ(operands->op, OP_NEGATE_INT);
    EXPECT_EQ(treeType(operands->left), DT_INT);
    EXPECT_EQ(treeType(operands->left->left), DT_P_INT);
    EXPECT_EQ(operands->next, nullptr);
    deleteNode(operands);
}

TEST_F(Select, ReleasesAllRecords) {
    int before = liveValueCount();
    EXPECT_EQ(refusal(OP_ASSIGN, v(DT_P_INT), v(DT_P_VOID)), "");
    EXPECT_EQ(refusal(OP_ASSIGN_ADD, v(DT_CHAR), v(DT_INT)), "");
    EXPECT_EQ(liveValueCount(), before);
}

}  // namespace zy
