// Formatted output where no script reaches: destinations that lead nowhere, values of no printed
// type. What conversions make of values is told by scripts.

#include <string>
#include <vector>

#include "chain.h"
#include "expr/thread.h"
#include "numeric/specialValues.h"
#include "rtlib/engine.h"
#include "rtlib/printValue.h"
#include "rtlib/printf.h"

namespace zy {

namespace {

class PrintfTest : public ChainTest {
protected:
    ExprNode *text(const char *characters) {
        return pointer(DT_P_CHAR, const_cast<char *>(characters));
    }
    ExprNode *pointer(DataType type, void *address) {
        ExprNode *leaf = constant(type);
        leaf->payload.p = address;
        return leaf;
    }
    ExprNode *array(DataType element, void *memory, int count) {
        ExprNode *leaf = pointer(DT_CARRAY, memory);
        leaf->payload2.elementType = element;
        leaf->count = count;
        return leaf;
    }
    ExprNode *list(const std::vector<ExprNode *> &items) {
        ExprNode *head = nullptr, **end = &head;
        for (ExprNode *item : items) {
            *end = node(NODE_LIST);
            (*end)->item = item;
            end = &(*end)->next;
        }
        return head;
    }
    // What the arguments of a call print.
    std::string printed(const std::vector<ExprNode *> &items) {
        Sink sink;
        printArguments(sink, list(items), Formats::ALL_TEXTS);
        EXPECT_EQ(currentContext->stack, nullptr);
        return {sink.text(), sink.length()};
    }
    // Another node of the same variable.
    ExprNode *again(const ExprNode *leaf) {
        ExprNode *copy = node(NODE_VALUE);
        *copy = *leaf;
        return copy;
    }
    int resultOf(ExprNode *call) {
        Value *value = run(compileChain(call, nullptr, true));
        EXPECT_TRUE(value && value->type == DT_INT && !value->next);
        int number = value ? value->payload.i : INT_MIN;
        clearValueStack();
        return number;
    }
};

TEST_F(PrintfTest, DefaultsOfRealsFollowTheSystemVariables) {
    char narrow[] = "<%.1f>", wide[] = "%d";  // the second is of no use to a real
    e_lang->formatf = variable(pointer(DT_STRING, narrow))->payload.symbol;
    e_lang->formatd = variable(pointer(DT_STRING, wide))->payload.symbol;
    EXPECT_EQ(printed({number(2.25f), number(2.25)}), "<2.2>2.2500");
    e_lang->formatf = e_lang->formatd = nullptr;
    VarCell cell{};
    cell.type = DT_FLOAT;
    cell.data.f = 2.25f;
    Sink sink;
    EXPECT_EQ(printCell(sink, nullptr, &cell), 4);
    EXPECT_STREQ(sink.text(), "2.25");
    cell.type = DT_P_CHAR;
    cell.data.p = nullptr;
    Sink noText;
    printCell(noText, "%6s|", &cell);
    EXPECT_STREQ(noText.text(), "  NULL|");
}

TEST_F(PrintfTest, OtherTypesWarn) {
    EXPECT_EQ(printed({constant(DT_VOID), text("%d\n"), constant(DT_VOID), number(1)}), "1");
    EXPECT_EQ(runStatus, RUN_CLEAN);
    EXPECT_EQ(errorsOf([&] {
                  EXPECT_EQ(printed({constant(DT_VECT), number(1)}), "1");
              }),
              "WARNING: fprintf(stderr,) unsupported data type\n"
              "         at line 7 in file 'test.zy'\n");
    EXPECT_EQ(runStatus, RUN_WARNING);
}

// ---- The operators ------------------------------------------------------------------------------

TEST_F(PrintfTest, IntoMemory) {
    char memory[8] = "....";
    ExprNode *call =
        apply(OP_SPRINTF, pointer(DT_P_CHAR, memory),
              list({text("%s%d"), pointer(DT_P_CHAR, memory), number(5), text("%d"), number(6)}));
    EXPECT_EQ(resultOf(call), 5);
    EXPECT_STREQ(memory, "....5");
    ExprNode *toNull = apply(OP_SPRINTF, constant(DT_P_CHAR), list({text("a")}));
    EXPECT_EQ(errorsOf([&] { EXPECT_EQ(resultOf(toNull), 1); }),
              "ERROR: s in sprintf(s, ...) is a NULL pointer \n"
              "       at line 7 in file 'test.zy'\n");
}

TEST_F(PrintfTest, IntoAnArray) {
    char memory[8] = ".......";
    ExprNode *fits = apply(OP_SPRINTF, array(DT_CHAR, memory, 4),
                           list({text("%d%s"), number(1), text("a"), number(2)}));
    EXPECT_EQ(resultOf(fits), 3);
    EXPECT_STREQ(memory, "1a2");
    ExprNode *tooLong = apply(OP_SPRINTF, array(DT_CHAR, memory, 4), list({text("abcdef")}));
    EXPECT_EQ(errorsOf([&] { EXPECT_EQ(resultOf(tooLong), 6); }),
              "ERROR: array length of buf in sprintf(buf,format,arg-list) is less than the print "
              "output\n       at line 7 in file 'test.zy'\n");
    EXPECT_EQ(std::string(memory, 8), std::string("abc\0...\0", 8));
}

TEST_F(PrintfTest, IntoAString) {
    ExprNode *target = variable(constant(DT_STRING));
    ExprNode *call = apply(OP_SPRINTF, target, list({text("%d%s"), number(1), again(target)}));
    EXPECT_EQ(resultOf(call), 1);
    EXPECT_EQ(resultOf(call), 2);
    EXPECT_STREQ(cellOf(target)->data.text, "11");
    ExprNode *listed = apply(OP_VSPRINTF, target, text("<%s>"),
                             pointer(DT_P_VOID, list({again(target), number(2)})));
    EXPECT_EQ(resultOf(listed), 5);
    EXPECT_STREQ(cellOf(target)->data.text, "<11>2");
    free(cellOf(target)->data.text);
}

TEST_F(PrintfTest, WhatIsNoPointerLeadsNowhere) {
    EXPECT_EQ(errorsOf([&] {
                  EXPECT_EQ(resultOf(apply(OP_SPRINTF, number(70000), list({text("a")}))), 1);
              }),
              "ERROR: s in sprintf(s, ...) is a NULL pointer \n"
              "       at line 7 in file 'test.zy'\n");
    EXPECT_NE(errorsOf([&] {
                  EXPECT_EQ(resultOf(apply(OP_VFPRINTF, number(70000), text("a"), number(70000))),
                            -1);
              }).find("has not open yet"),
              std::string::npos);
    char memory[4] = "";
    EXPECT_EQ(resultOf(apply(OP_VSPRINTF, array(DT_CHAR, memory, 4), text("%d"), number(70000))),
              2);
    EXPECT_STREQ(memory, "%d");
}

TEST_F(PrintfTest, ListsOfVariableArguments) {
    char memory[16] = "";
    ExprNode *arguments = pointer(DT_P_VOID, list({number(1), text("two"), number(3)}));
    ExprNode *format = text("%d %s;");
    testing::internal::CaptureStdout();
    EXPECT_EQ(resultOf(apply(OP_VPRINTF, format, arguments)), 7);
    EXPECT_EQ(resultOf(apply(OP_VFPRINTF, pointer(DT_P_FILE, stdout), format, arguments)), 7);
    fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "1 two;31 two;3");
    EXPECT_EQ(resultOf(apply(OP_VSPRINTF, array(DT_CHAR, memory, 16), format, arguments)), 7);
    EXPECT_STREQ(memory, "1 two;3");
    EXPECT_EQ(
        resultOf(apply(OP_VSPRINTF, pointer(DT_P_CHAR, memory), text("none"), constant(DT_P_VOID))),
        4);
    EXPECT_STREQ(memory, "none");
}

TEST_F(PrintfTest, StreamsShowTheirBuffers) {
    EXPECT_EQ(printed({constant(DT_P_FILE)}), "NULL");
    FILE *stream = tmpfile();
    EXPECT_NE(printed({pointer(DT_P_FILE, stream)})
                  .find("    {\n\t_cnt    = 0\n\t_ptr    = NULL\n\t_base   = NULL\n\t_flag   = "),
              std::string::npos);
    fputs("ab\ncd", stream);
    rewind(stream);
    fgetc(stream);
    EXPECT_EQ(printed({pointer(DT_P_FILE, stream)})
                  .rfind("    {\n\t_cnt    = 4\n\t_ptr    = b\ncd\n\t_base   = ab\ncd\n", 0),
              0u);
    fclose(stream);
}

}  // namespace

}  // namespace zy
