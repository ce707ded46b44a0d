// The evaluator's loop, and the operators that store, point, branch and convert.

#include "expr/evaluator.h"

#include <cmath>
#include <vector>

#include "chain.h"
#include "expr/calls.h"
#include "expr/events.h"
#include "expr/typeQueries.h"
#include "numeric/convert.h"

namespace zy {

namespace {

constexpr char errorPosition[] = "       at line 7 in file 'test.zy'\n";
constexpr char warningPosition[] = "         at line 7 in file 'test.zy'\n";

}  // namespace

class EvaluatorTest : public ChainTest {
protected:
    ExprNode *typeLeaf(int dataType) {
        TypeInfo &type = symbols.emplace_back();
        type = {};
        type.level = TYPE_ONLY_LEVEL;
        type.dataType = dataType;
        ExprNode *leaf = node(NODE_VALUE);
        leaf->type = DT_NAME;
        leaf->payload.symbol = &type;
        return leaf;
    }
    Value *cast(int dataType, ExprNode *operand) {
        return evaluate(apply(OP_CAST, typeLeaf(dataType), operand));
    }
    ExprNode *copyOf(const ExprNode *leaf) {
        ExprNode *copy = node(NODE_VALUE);
        *copy = *leaf;
        return copy;
    }
};

// ---- The loop -----------------------------------------------------------------------------------

TEST_F(EvaluatorTest, LeavesTheValueAndAnEmptyChain) {
    ExprNode *x = variable(number(3));
    EXPECT_EQ(evaluate(x)->payload.i, 3);
    EXPECT_EQ(
        evaluate(apply(OP_ADD_INT, apply(OP_MULTIPLY_INT, x, number(4)), copyOf(x)))->payload.i,
        15);
    EXPECT_EQ(currentContext->stack->next, nullptr);
}

TEST_F(EvaluatorTest, UnknownOperatorsAndKindsReport) {
    EXPECT_EQ(errorsOf([&] { evaluate(apply(OP_PLUS, number(1), number(2))); }),
              std::string("ERROR: undefined operation\n") + errorPosition);
    EXPECT_EQ(currentContext->stack, nullptr);
    EXPECT_EQ(runStatus, RUN_ERROR);
    runStatus = RUN_CLEAN;
    EXPECT_EQ(errorsOf([&] {
                  run(thread({node(NODE_FOREACH), node(NODE_LIST)}));
              }),
              std::string("ERROR: error in evaluate expression \n") + errorPosition);
    EXPECT_EQ(runStatus, RUN_ERROR);
}

TEST_F(EvaluatorTest, AMissingOperandEndsTheChain) {
    ExprNode *missing = apply(OP_ADD_INT, nullptr);
    ExprNode *sum = apply(OP_ADD_INT, missing, missing);
    ExprNode *after = variable(number(1));
    EXPECT_EQ(errorsOf([&] {
                  run(thread({sum, after}));
              }),
              std::string("ERROR: no value in stack (internal error)\n") + errorPosition);
    EXPECT_EQ(currentContext->stack, nullptr);
    EXPECT_EQ(evaluate(variable(number(2)))->payload.i, 2);
}

TEST_F(EvaluatorTest, EventsFireOnceInIntervalPlusOneNodes) {
    static int events;  // the callback has no place of its own
    events = 0;
    e_lang->callbackFn = [](void *, ZyDebugInfo *info, void *) {
        EXPECT_EQ(info->event, EVENT_STEP);
        EXPECT_EQ(info->line, 7);
        EXPECT_STREQ(info->file, "test.zy");
        EXPECT_EQ(e_lang->callbackActive, 0);
        return ++events;
    };
    e_lang->callbackActive = 1;
    e_lang->callbackMask = EVENT_STEP;
    e_lang->callbackInterval = 1;
    ExprNode *x = variable(number(1));
    ExprNode *tree = apply(OP_ADD_INT, apply(OP_ADD_INT, x, number(1)), copyOf(x));
    EXPECT_EQ(evaluate(tree)->payload.i, 3);  // four nodes
    EXPECT_EQ(events, 2);
    statement.line = 0;
    evaluate(tree);
    EXPECT_EQ(events, 2);
    statement.line = 7;
    e_lang->callbackMask = EVENT_STATEMENT;
    evaluate(tree);
    EXPECT_EQ(events, 2);
}

// ---- Branches -----------------------------------------------------------------------------------

TEST_F(EvaluatorTest, ShortCircuitRunsTheRightOperandOnlyIfItDecides) {
    struct Row {
        int code;
        double left, right;
        int expected;
        bool runsRight;
    };
    double nan = std::nan("");
    for (Row row : std::initializer_list<Row>{{OP_AND, 0, 1, 0, false},
                                              {OP_AND, 2, 3, 1, true},
                                              {OP_AND, 2, 0, 0, true},
                                              {OP_AND, nan, 1, 1, true},
                                              {OP_AND, 1, nan, 1, true},
                                              {OP_OR, 0, 0, 0, true},
                                              {OP_OR, 0, 5, 1, true},
                                              {OP_OR, 3, 0, 1, false},
                                              {OP_OR, nan, 0, 1, false}}) {
        ExprNode *right = variable(number(row.right));
        ExprNode *step = apply(OP_POSTFIX_INCREMENT, right);
        ExprNode *tree = apply(row.code, variable(number(row.left)), step);
        Value *result = evaluate(tree);
        EXPECT_EQ(result->type, unsigned{DT_INT});
        EXPECT_EQ(result->payload.i, row.expected) << row.left << ", " << row.right;
        EXPECT_EQ(result->next, nullptr);
        bool ran = cellOf(right)->data.d == row.right + 1 || std::isnan(row.right);
        EXPECT_EQ(ran, row.runsRight) << row.left << ", " << row.right;
        EXPECT_EQ(currentContext->statement, &statement);
    }
    EXPECT_EQ(evaluate(apply(OP_AND, number(1), number(2)))->payload.i, 1);
}

TEST_F(EvaluatorTest, ConditionalRunsOneBranchAndGivesTheWiderType) {
    ExprNode *x = variable(number(1));
    ExprNode *tree = apply(OP_CONDITIONAL, x, apply(OP_POSTFIX_INCREMENT, copyOf(x)), number(3.5));
    Value *result = evaluate(tree);
    EXPECT_EQ(result->type, unsigned{DT_DOUBLE});
    EXPECT_EQ(result->payload.d, 1);
    EXPECT_EQ(cellOf(x)->data.i, 2);
    cellOf(x)->data.i = 0;
    EXPECT_EQ(evaluate(tree)->payload.d, 3.5);
    EXPECT_EQ(cellOf(x)->data.i, 0);
    EXPECT_EQ(
        evaluate(apply(OP_CONDITIONAL, number(std::nan("")), number(4), number(5)))->payload.i, 4);
    ExprNode *null = apply(OP_CONDITIONAL, number(0), constant(DT_P_INT, 64), number(0));
    EXPECT_EQ(evaluate(null)->type, unsigned{DT_P_INT});
    EXPECT_EQ(currentContext->stack->payload.p, nullptr);
}

TEST_F(EvaluatorTest, CommaRunsLeftFirstAndKeepsRight) {
    ExprNode *x = variable(number(1));
    ExprNode *first = apply(OP_PREFIX_INCREMENT, x);
    ExprNode *second = apply(OP_MULTIPLY_INT, copyOf(x), number(10));
    EXPECT_EQ(evaluate(apply(OP_COMMA, first, second))->payload.i, 20);
    EXPECT_EQ(currentContext->stack->next, nullptr);
    EXPECT_EQ(evaluate(apply(OP_COMMA, copyOf(x), number(7)))->payload.i, 7);
    EXPECT_EQ(evaluate(apply(OP_COMMA, number(7), copyOf(x)))->payload.i, 2);
    EXPECT_EQ(currentContext->stack->next, nullptr);
}

// ---- Stores -------------------------------------------------------------------------------------

TEST_F(EvaluatorTest, IncrementsGiveTheOldOrTheNewValue) {
    auto check = [&](int code, auto before, auto result, auto after) {
        ExprNode *x = variable(number(before));
        ExprNode *tree = apply(code, x);
        EXPECT_EQ(memcmp(&evaluate(tree)->payload, &result, sizeof result), 0) << code;
        EXPECT_EQ(memcmp(&cellOf(x)->data, &after, sizeof after), 0) << code;
        EXPECT_EQ(currentContext->stack->next, nullptr);
    };
    check(OP_PREFIX_INCREMENT, INT_MAX, INT_MIN, INT_MIN);
    check(OP_POSTFIX_INCREMENT, 5, 5, 6);
    check(OP_PREFIX_DECREMENT, INT_MIN, INT_MAX, INT_MAX);
    check(OP_POSTFIX_DECREMENT, 0u, 0u, ~0u);
    check(OP_PREFIX_INCREMENT, static_cast<signed char>(127), static_cast<signed char>(-128),
          static_cast<signed char>(-128));
    check(OP_POSTFIX_INCREMENT, short{-1}, short{-1}, short{0});
    check(OP_PREFIX_INCREMENT, ~0ull, 0ull, 0ull);
    check(OP_POSTFIX_INCREMENT, 0.5, 0.5, 1.5);
    check(OP_PREFIX_DECREMENT, 0.5f, -0.5f, -0.5f);
}

TEST_F(EvaluatorTest, AssignmentOfItsOwnTypeStoresAndStays) {
    ExprNode *x = variable(number(1)), *y = variable(number(2)), *z = variable(number(5));
    ExprNode *inner = apply(OP_ASSIGN, y, z);
    EXPECT_EQ(evaluate(apply(OP_ASSIGN, x, inner))->payload.i, 5);
    EXPECT_EQ(currentContext->stack->next, nullptr);
    EXPECT_EQ(cellOf(x)->data.i, 5);
    EXPECT_EQ(cellOf(y)->data.i, 5);
}

TEST_F(EvaluatorTest, TheValueOfAnAssignmentHasTheTargetsType) {
    auto check = [&](auto target, auto source, auto expected) {
        for (bool onStack : {false, true}) {
            ExprNode *x = variable(number(target));
            ExprNode *right = onStack ? variable(number(source)) : number(source);
            Value *result = evaluate(apply(OP_ASSIGN, x, right));
            EXPECT_EQ(result->type, cellOf(x)->type);
            EXPECT_EQ(memcmp(&result->payload, &expected, sizeof expected), 0);
            EXPECT_EQ(memcmp(&cellOf(x)->data, &expected, sizeof expected), 0);
            EXPECT_EQ(result->next, nullptr);
        }
    };
    check(0, 2.9, 2);
    check(0, -1e10f, INT_MIN);
    check(0, HUGE_VAL, INT_MIN);
    check(0.0, 3, 3.0);
    check(0.0, 0.5f, 0.5);
    check(0.0f, 0.1, 0.1f);
    check(0, 7, 7);
}

TEST_F(EvaluatorTest, CompoundAssignments) {
    auto check = [&](int code, auto target, auto operand, auto expected) {
        for (bool onStack : {false, true}) {
            ExprNode *x = variable(number(target));
            ExprNode *right = onStack ? variable(number(operand)) : number(operand);
            Value *result = evaluate(apply(code, x, right));
            EXPECT_EQ(memcmp(&cellOf(x)->data, &expected, sizeof expected), 0) << code;
            EXPECT_EQ(result->type, cellOf(x)->type) << code;
            EXPECT_EQ(result->next, nullptr);
        }
    };
    check(OP_ASSIGN_ADD, INT_MAX, 1, INT_MIN);
    check(OP_ASSIGN_SUBTRACT, 3u, 5, static_cast<unsigned>(-2));
    check(OP_ASSIGN_MULTIPLY, 1.5, 2, 3.0);
    check(OP_ASSIGN_DIVIDE, 1.0f, 4, 0.25f);
    check(OP_ASSIGN_ADD, 1ll << 40, 1u, (1ll << 40) + 1);
    check(OP_ASSIGN_DIVIDE, -1ll, 2u, static_cast<long long>(~0ull / 2));
    check(OP_ASSIGN_MODULO, -7, 3, -1);
    check(OP_ASSIGN_MODULO, 7u, -1, 7u);
    check(OP_ASSIGN_MODULO, static_cast<unsigned char>(200), 7, static_cast<unsigned char>(4));
    check(OP_ASSIGN_BIT_AND, 0xF0, 0x3C, 0x30);
    check(OP_ASSIGN_BIT_OR, ~0ll << 40, 1, (~0ll << 40) | 1);
    check(OP_ASSIGN_BIT_XOR, static_cast<signed char>(-1), 1, static_cast<signed char>(-2));
    check(OP_ASSIGN_SHIFT_LEFT, 1, 33, 2);
    check(OP_ASSIGN_SHIFT_LEFT, 1, -1, INT_MIN);
    check(OP_ASSIGN_SHIFT_RIGHT, -8, 1, -4);
    check(OP_ASSIGN_SHIFT_RIGHT, 0x80000000u, 31, 1u);
    check(OP_ASSIGN_SHIFT_RIGHT, -2ll, 65, -1ll);
    errorsOf([&] { check(OP_ASSIGN_DIVIDE, 7, 0, 2139095040); });
    EXPECT_EQ(runStatus, RUN_WARNING);
    EXPECT_EQ(errorsOf([&] { evaluate(apply(OP_ASSIGN_MODULO, variable(number(7)), number(0))); }),
              std::string("WARNING: integer mod by zero \n") + warningPosition);
}

// ---- Casts --------------------------------------------------------------------------------------

TEST_F(EvaluatorTest, CastsBetweenNumbers) {
    EXPECT_EQ(cast(DT_INT, number(-2.9))->payload.i, -2);
    EXPECT_EQ(cast(DT_INT, number(3e9))->payload.i, INT_MIN);
    EXPECT_EQ(cast(DT_INT, number(0x1'0000'0005ll))->payload.i, 5);
    EXPECT_EQ(cast(DT_LLONG, number(3e9))->payload.ll, 3'000'000'000);
    EXPECT_EQ(cast(DT_LLONG, number((1ll << 53) + 1))->payload.ll, (1ll << 53) + 1);
    EXPECT_EQ(cast(DT_ULLONG, number(0x1.8p63))->payload.ull, 3ull << 62);
    EXPECT_EQ(cast(DT_UINT, number(-1.0))->payload.u, ~0u);
    EXPECT_EQ(cast(DT_UCHAR, number(-1))->payload.uc, 255);
    EXPECT_EQ(cast(DT_CHAR, number(200))->payload.sc, -56);
    EXPECT_EQ(cast(DT_DOUBLE, number(~0ull))->payload.d, 0x1p64);
    EXPECT_EQ(cast(DT_FLOAT, number(0.1))->payload.f, 0.1f);
    auto quiet = errorsOf([&] {
        EXPECT_EQ(cast(DT_CHAR, number(std::nan("")))->payload.sc, 0);
        EXPECT_EQ(cast(DT_INT, number(std::nan("")))->payload.i, INT_MIN);
    });
    EXPECT_EQ(quiet, "");
    Value *pair = cast(DT_DCOMPLEX, number(-HUGE_VAL));
    EXPECT_EQ(pair->payload.d, HUGE_VAL);
    EXPECT_EQ(pair->payload2.d, HUGE_VAL);
    // Constants in the tree stay what they are; a variable's value is converted in its record.
    ExprNode *three = number(3);
    ExprNode *tree = apply(OP_CAST, typeLeaf(DT_DOUBLE), three);
    EXPECT_EQ(evaluate(tree)->payload.d, 3);
    EXPECT_EQ(evaluate(tree)->payload.d, 3);
    EXPECT_EQ(three->type, unsigned{DT_INT});
    EXPECT_EQ(cast(DT_DOUBLE, variable(number(7)))->payload.d, 7);
}

TEST_F(EvaluatorTest, CastsOfPointersAndTexts) {
    EXPECT_EQ(cast(DT_P_CHAR, number(0x1234))->payload.bits, 0x1234u);
    EXPECT_EQ(cast(DT_INT, variable(constant(DT_P_INT, 0x7fff00000005)))->payload.i, 5);
    EXPECT_EQ(cast(DT_LLONG, constant(DT_P_INT, 0x7fff00000005))->payload.ll, 0x7fff00000005);
    Value *retyped = cast(DT_P_DOUBLE, constant(DT_P_INT, 0x7fff00000005));
    EXPECT_EQ(retyped->type, unsigned{DT_P_DOUBLE});
    EXPECT_EQ(retyped->payload.bits, 0x7fff00000005u);
    char text[] = "text";
    Value *copy = cast(DT_STRING, constant(DT_P_CHAR, reinterpret_cast<uintptr_t>(text)));
    EXPECT_STREQ(copy->payload.text, "text");
    EXPECT_NE(copy->payload.text, text);
    EXPECT_EQ(cast(DT_STRING, constant(DT_NULL))->payload.text, nullptr);
    EXPECT_EQ(errorsOf([&] { cast(DT_STRING, number(5)); }),
              std::string("ERROR: casting int to string\n") + errorPosition);
    EXPECT_EQ(currentContext->stack->type, unsigned{DT_STRING});
    EXPECT_EQ(currentContext->stack->payload.text, nullptr);
    EXPECT_EQ(runStatus, RUN_ERROR);
    EXPECT_EQ(errorsOf([&] { cast(DT_ARRAY, number(5)); }),
              std::string("ERROR: casting int to computational array\n") + errorPosition);
}

// ---- Pointers -----------------------------------------------------------------------------------

TEST_F(EvaluatorTest, PointerArithmeticCountsElements) {
    int cells[4] = {10, 20, 30, 40};
    ExprNode *p = variable(constant(DT_P_INT, reinterpret_cast<uintptr_t>(cells)));
    auto sum = [&](int code, ExprNode *left, ExprNode *right) { return apply(code, left, right); };
    EXPECT_EQ(evaluate(apply(OP_INDIRECTION, sum(OP_POINTER_ADD, p, number(2))))->payload.i, 30);
    EXPECT_EQ(evaluate(sum(OP_POINTER_ADD, number(3), p))->payload.p, &cells[3]);
    EXPECT_EQ(evaluate(sum(OP_POINTER_SUBTRACT, p, number(-1ll)))->payload.p, &cells[1]);
    EXPECT_EQ(currentContext->stack->type, unsigned{DT_P_INT});
    ExprNode *q = variable(constant(DT_P_INT, reinterpret_cast<uintptr_t>(&cells[3])));
    EXPECT_EQ(evaluate(sum(OP_POINTER_DIFFERENCE, q, p))->payload.i, 3);
    EXPECT_EQ(evaluate(sum(OP_POINTER_DIFFERENCE, copyOf(p), copyOf(q)))->payload.i, -3);
    EXPECT_EQ(evaluate(sum(OP_LESS_POINTER, p, q))->payload.i, 1);
    EXPECT_EQ(evaluate(sum(OP_EQUAL_POINTER, p, number(0)))->payload.i, 0);
    EXPECT_EQ(evaluate(sum(OP_EQUAL_POINTER, constant(DT_NULL), number(0)))->payload.i, 1);
    EXPECT_EQ(evaluate(apply(OP_SUBTRACT_INT, number(1), apply(OP_NOT, p)))->payload.i, 1);
}

TEST_F(EvaluatorTest, WhatIsDerivedFromNullCountsAsNull) {
    ExprNode *p = variable(constant(DT_P_INT));
    const std::string warning =
        std::string("WARNING: pointer arithmetic with ptr = NULL\n") + warningPosition;
    for (ExprNode *offset : {number(1), number(-1), number(100'000), number(1ll << 40)}) {
        runStatus = RUN_CLEAN;
        EXPECT_EQ(errorsOf([&] { evaluate(apply(OP_POINTER_ADD, p, offset)); }), warning);
        EXPECT_TRUE(isNullAddress(currentContext->stack->payload.p));
        EXPECT_EQ(runStatus, RUN_ERROR);
    }
    e_lang->warningLevel = 0;
    EXPECT_EQ(errorsOf([&] { evaluate(apply(OP_POINTER_ADD, p, number(1))); }), "");
    EXPECT_EQ(currentContext->stack->payload.bits, 4u);
    e_lang->warningLevel = 1;
    int object = 0;
    EXPECT_FALSE(isNullAddress(&object));
}

TEST_F(EvaluatorTest, AddressesLeadBackToTheirVariables) {
    ExprNode *x = variable(number(5));
    EXPECT_EQ(evaluate(apply(OP_ADDRESS, x))->payload.p, &cellOf(x)->data);
    EXPECT_EQ(currentContext->stack->type, unsigned{DT_P_INT});
    EXPECT_EQ(evaluate(apply(OP_INDIRECTION, apply(OP_ADDRESS, copyOf(x))))->payload.i, 5);
    ExprNode *p = variable(constant(DT_P_INT, reinterpret_cast<uintptr_t>(&cellOf(x)->data)));
    EXPECT_EQ(evaluate(apply(OP_ADDRESS, apply(OP_INDIRECTION, p)))->payload.p, &cellOf(x)->data);
    EXPECT_EQ(currentContext->stack->next, nullptr);
    Value *text = constant(DT_STRING, reinterpret_cast<uintptr_t>("text"));
    ExprNode *s = variable(text);
    EXPECT_EQ(evaluate(apply(OP_ADDRESS, s))->payload.p, &cellOf(s)->data);
    EXPECT_EQ(currentContext->stack->type, unsigned{DT_P_STRING});
    ExprNode *part = apply(OP_MOTION_ELEMENT1, copyOf(x));
    EXPECT_EQ(
        errorsOf([&] { evaluate(apply(OP_ADDRESS, part)); }),
        std::string("ERROR: unsupported data type for address operation &\n") + errorPosition);
}

TEST_F(EvaluatorTest, ReadingWhatIsDerivedFromNullGivesZero) {
    e_lang->warningLevel = 1;
    ExprNode *p = variable(constant(DT_P_DOUBLE));
    const std::string warning =
        std::string("WARNING: Pointer operation *ptr where ptr = NULL, 0 is assigned to *ptr\n") +
        warningPosition;
    EXPECT_EQ(errorsOf([&] { evaluate(apply(OP_INDIRECTION, p)); }), warning);
    EXPECT_EQ(currentContext->stack->type, unsigned{DT_DOUBLE});
    EXPECT_EQ(currentContext->stack->payload.d, 0);
    EXPECT_EQ(runStatus, RUN_WARNING);
    ExprNode *sum = apply(OP_POINTER_ADD, copyOf(p), number(1));
    EXPECT_NE(errorsOf([&] { evaluate(apply(OP_INDIRECTION, sum)); }).find(warning),
              std::string::npos);
    EXPECT_EQ(currentContext->stack->payload.d, 0);
    EXPECT_EQ(runStatus, RUN_ERROR);
}

// ---- The others ---------------------------------------------------------------------------------

TEST_F(EvaluatorTest, NewGivesClearedMemory) {
    for (int type : {DT_CHAR, DT_INT, DT_DOUBLE, DT_DCOMPLEX, DT_P_CHAR}) {
        Value *result = evaluate(apply(OP_NEW, typeLeaf(type)));
        EXPECT_EQ(result->type, static_cast<unsigned>(pointerTo(type)));
        std::vector<char> zeros(sizeofType(type));
        EXPECT_EQ(memcmp(result->payload.p, zeros.data(), zeros.size()), 0);
        free(result->payload.p);
    }
}

TEST_F(EvaluatorTest, SizeofAtRunTime) {
    EXPECT_EQ(evaluate(apply(OP_SIZEOF, variable(number(1.5))))->payload.ull, 8u);
    EXPECT_EQ(currentContext->stack->type, unsigned{DT_ULLONG});
    // Bounds in pairs, lower limit first; the size of the first one's type stands for the
    // element's.
    ExprNode *bounds[] = {number(1), number(4), number(0), variable(number(5))};
    ExprNode *list = nullptr;
    for (int i = 3; i >= 0; i--) {
        ExprNode *cell = node(NODE_LIST);
        cell->item = bounds[i];
        cell->next = list;
        list = cell;
    }
    EXPECT_EQ(evaluate(apply(OP_SIZEOF, list, number(4ull)))->payload.ull, 4u * 3 * 5);
    EXPECT_EQ(currentContext->stack->next, nullptr);
    list->next->next = nullptr;
    EXPECT_EQ(evaluate(apply(OP_SIZEOF, list, number(8ull)))->payload.ull, 8u * 3);
}

TEST_F(EvaluatorTest, NoTextToEvaluate) {
    EXPECT_EQ(errorsOf([&] { evaluate(apply(OP_STREVAL, constant(DT_STRING))); }),
              "Invalid argument for streval()\n");
    EXPECT_EQ(currentContext->stack->type, unsigned{DT_INT});
    EXPECT_EQ(currentContext->stack->payload.i, 0);
}

}  // namespace zy
