// The evaluator's loop where no text leads: unknown nodes, missing operands, events.

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

// ---- Pointers -----------------------------------------------------------------------------------

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

// ---- The others ---------------------------------------------------------------------------------

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

TEST_F(EvaluatorTest, NoTextToEvaluate) {
    EXPECT_EQ(errorsOf([&] { evaluate(apply(OP_STREVAL, constant(DT_STRING))); }),
              "Invalid argument for streval()\n");
    EXPECT_EQ(currentContext->stack->type, unsigned{DT_INT});
    EXPECT_EQ(currentContext->stack->payload.i, 0);
}

}  // namespace zy
