// Formatted output: what each conversion makes of each type, and how formats take their arguments.

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
    ExprNode *pair(DataType type, double first, double second) {
        ExprNode *leaf = constant(type);
        if (type == DT_COMPLEX || type == DT_DUAL) {
            leaf->payload.pair[0] = static_cast<float>(first);
            leaf->payload.pair[1] = static_cast<float>(second);
        } else {
            leaf->payload.d = first;
            leaf->payload2.d = second;
        }
        return leaf;
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
        result = sink.result();
        EXPECT_EQ(currentContext->stack, nullptr);
        return {sink.text(), sink.length()};
    }
    std::string printed(const char *format, ExprNode *value) {
        return printed({text(format), value});
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

    int result = 0;
};

// One row per format and value.
struct Row {
    const char *format;
    ExprNode *value;
    std::string expected;
};
#define EXPECT_ROWS(...)                                                        \
    for (const Row &row : std::vector<Row> __VA_ARGS__) {                       \
        EXPECT_EQ(printed(row.format, row.value), row.expected) << row.format;  \
        EXPECT_EQ(result, static_cast<int>(row.expected.size())) << row.format; \
    }

TEST_F(PrintfTest, DefaultsOfTypes) {
    EXPECT_EQ(
        printed({number(static_cast<signed char>('a')), number(static_cast<unsigned char>('b')),
                 number(static_cast<short>(-7)), text("|"),
                 number(static_cast<unsigned short>(65535)), text("|"), number(-1), text("|"),
                 number(4294967295u), text("|"), number(LLONG_MIN), text("|"), number(ULLONG_MAX)}),
        "ab-7|65535|-1|4294967295|-9223372036854775808|18446744073709551615");
    EXPECT_EQ(printed({number(1.5f), text("|"), number(2.5)}), "1.50|2.5000");
    EXPECT_EQ(printed({pair(DT_COMPLEX, 1, -2), pair(DT_DDUAL, 1, 2)}),
              "complex(1.00,-2.00)dual(1.0000,2.0000)");
    EXPECT_EQ(printed({pointer(DT_P_INT, reinterpret_cast<void *>(0x1234))}), "0x1234");
    int numbers[2];
    char expected[32];
    snprintf(expected, sizeof expected, "%p", static_cast<void *>(numbers));
    EXPECT_EQ(printed({array(DT_INT, numbers, 2)}), expected);
}

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
}

TEST_F(PrintfTest, IntegerConversions){EXPECT_ROWS({
    {"%d", number(-5), "-5"},
    {"%i|", number(5), "5|"},
    {"%5d|", number(42), "   42|"},
    {"%-5d|", number(42), "42   |"},
    {"%05d", number(-42), "-0042"},
    {"%+d", number(42), "+42"},
    {"% d", number(42), " 42"},
    {"%.4d", number(42), "0042"},
    {"%+-6.3d|", number(7), "+007  |"},
    {"%u", number(-1), "4294967295"},
    {"%x", number(-1), "ffffffff"},
    {"%#X", number(255), "0XFF"},
    {"%#o", number(8), "010"},
    {"%hd", number(65537), "1"},
    {"%hhd", number(255), "-1"},
    {"%hhu", number(-1), "255"},
    {"%ld", number(-3), "-3"},
    {"%d", number(static_cast<signed char>(-3)), "-3"},
    {"%d", number(static_cast<unsigned char>(200)), "200"},
    {"%u", number(static_cast<short>(-1)), "4294967295"},
    {"%d", number(LLONG_MIN), "-9223372036854775808"},
    {"%lld", number(-5LL), "-5"},
    {"%lld", number(ULLONG_MAX), "18446744073709551615"},  // the sign goes by the type
    {"%llu!", number(-5LL), "-5!"},
    {"%llx", number(255LL), "ff"},
    {"%8lld|", number(-5LL), "      -5|"},
    {"%I64d", number(LLONG_MAX), "9223372036854775807"},
    {"%I64u", number(ULLONG_MAX), "18446744073709551615"},
    {"%20I64d", number(1LL), "                   1"},
    {"%c", number(65), "A"},
    {"%3c|", number(65), "  A|"},
    {"%c", number(0), std::string(1, '\0')},
    {"%p", number(255), "0xff"},
    {"%5.1f", number(2), "  2.0"},
    {"%g", number(ULLONG_MAX), "1.84467e+19"},
})}

TEST_F(PrintfTest, BinaryConversions){EXPECT_ROWS({
    {"%b", number(5), "101"},
    {"%8b", number(5), "00000101"},
    {"%08b", number(5), "00000101"},
    {"%-8b", number(5), "00000101"},
    {"%b\n", number(0), "0\n"},
    {"%b", number(static_cast<signed char>(-1)), "11111111"},
    {"%b", number(static_cast<short>(-1)), std::string(16, '1')},
    {"%b", number(-1), std::string(32, '1')},
    {"%b", number(-1LL), std::string(64, '1')},
    {"%40b", number(1), std::string(31, '0') + "1"},
    {"%99999999999b", number(1LL), std::string(63, '0') + "1"},
    {"%b|", number(1.0f), "00111111100000000000000000000000|"},
    {"%b", number(1.0), std::string(32, '0') + "0011111111110000" + std::string(16, '0')},
    {"%b", number(-canonicalNaN), "0" + std::string(31, '1')},
})}

TEST_F(PrintfTest, RealConversions){EXPECT_ROWS({
    {"%f", number(1.5), "1.500000"},
    {"%lf", number(1.5f), "1.500000"},
    {"%8.2f|", number(-1.5), "   -1.50|"},
    {"%-8.2f|", number(1.5), "1.50    |"},
    {"%08.2f", number(-1.5), "-0001.50"},
    {"%+.0f", number(2.0), "+2"},
    {"%#.0f", number(2.0), "2."},
    {"%e", number(1500.0), "1.500000e+03"},
    {"%.3G", number(1e-10), "1E-10"},
    {"%a", number(1.0), "0x1p+0"},
    {"%f", number(-0.0), "-0.000000"},
    {"%Lf", number(1.0), "1.000000"},
    {"%f", number(wideNaN), "nan"},
    {"%8.2f\n", number(wideInf), "inf\n"},
    {"%e of it\n", number(-wideInf), "-inf of it\n"},
    {"%.2f%%", number(canonicalNaN), "nan%"},
    {"%d|", number(1.5), "1.5000|"},
    {"%c", number(1.5f), "1.50"},
    {"%p", number(1.5f), "1.50"},
})}

TEST_F(PrintfTest, PairConversions){EXPECT_ROWS({
    {"%5.1f|", pair(DT_COMPLEX, 1, -2), "complex(  1.0, -2.0)|"},
    {"%g\n", pair(DT_DCOMPLEX, 0.5, 2), "complex(0.5,2)\n"},
    {"%.1e", pair(DT_DUAL, 1, 2), "dual(1.0e+00,2.0e+00)"},
    {"%f\n", pair(DT_DCOMPLEX, wideNaN, wideNaN), "ComplexNaN"},
    {"%f\n", pair(DT_COMPLEX, -wideInf, 0), "ComplexInf"},
    {"%f", pair(DT_DDUAL, wideNaN, 1), "DualNaN"},
    {"%f", pair(DT_DUAL, wideInf, wideInf), "DualInf"},
    {"%f", pair(DT_DUAL, 1, wideInf), "dual(1.000000,inf)"},
    {"%d|", pair(DT_DUAL, 1, 2), "dual(1.00,2.00)|"},
})}

TEST_F(PrintfTest, Texts) {
    char open[3] = {'x', 'y', 'z'};  // without an end
    EXPECT_ROWS({
        {"%s|", text("abc"), "abc|"},
        {"%6s|", text("abc"), "   abc|"},
        {"%-6.2s|", text("abc"), "ab    |"},
        {"%ls", text("abc"), "abc"},
        {"%s", text("50%d"), "50%d"},
        {"%d|", text("abc"), "abc|"},
        {"%s\n", text(nullptr), "\n"},
        {"%s|", constant(DT_STRING), "|"},
        {"%3s|", constant(DT_P_UCHAR), "   |"},
        {"%s|", constant(DT_NULL), "(null)|"},
        {"%d", constant(DT_NULL), "0"},
        {"%s", array(DT_CHAR, open, 3), "xyz"},
        {"%5s", array(DT_UCHAR, open, 2), "   xy"},
        {"%s", pointer(DT_P_VOID, const_cast<char *>("v")), "v"},
    })
    EXPECT_EQ(printed({text(nullptr), number(1), constant(DT_NULL)}), "1(nil)");
    VarCell cell{};
    cell.type = DT_P_CHAR;
    Sink sink;
    printCell(sink, "%6s|", &cell);
    EXPECT_STREQ(sink.text(), "  NULL|");
}

TEST_F(PrintfTest, PointersAndStreams) {
    auto *address = reinterpret_cast<void *>(0xABCD0);
    EXPECT_ROWS({
        {"%p|", pointer(DT_P_DOUBLE, address), "0xabcd0|"},
        {"%10p|", pointer(DT_PP_INT, address), "   0xabcd0|"},
        {"%x", pointer(DT_P_VOID, address), "abcd0"},
        {"%b", pointer(DT_P_VOID, reinterpret_cast<void *>(5)), "101"},
        {"%f|", pointer(DT_P_INT, address), "0xabcd0|"},
        {"%p", text("a") == nullptr ? nullptr : pointer(DT_P_CHAR, address), "0xabcd0"},
    })
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

TEST_F(PrintfTest, FormatsTakeTheArgumentsBehindThem) {
    EXPECT_EQ(printed({text("%d %d\n"), number(1)}), "1 %d\n");
    EXPECT_EQ(printed({text("%d and %5.1f%%\n")}), "%d and %5.1f%%\n");
    EXPECT_EQ(printed({text("100%%\n")}), "100%\n");
    EXPECT_EQ(printed({text("%d%%|%%"), number(3)}), "3%|%");
    EXPECT_EQ(printed({text("%5.2f|"), number(1.5), number(2)}), " 1.50|2");
    EXPECT_EQ(printed({text("%d,"), number(1), text("%x;"), number(255), number(7)}), "1,ff;7");
    EXPECT_EQ(printed({number(7), text(" is %s"), text("%d"), text("!")}), "7 is %d!");
    EXPECT_EQ(printed({text("")}), "");
    EXPECT_EQ(printed({}), "");
}

TEST_F(PrintfTest, StarsTakeArguments) {
    EXPECT_EQ(printed({text("%*d|%d"), number(5), number(7), number(8)}), "    7|8");
    EXPECT_EQ(printed({text("%-*.*f|"), number(6), number(1), number(2.0)}), "2.0   |");
    EXPECT_EQ(printed({text("%*d|"), number(-5), number(7)}), "7    |");
    EXPECT_EQ(printed({text("%.*f"), number(-5), number(0.5)}), "0.500000");
    EXPECT_EQ(printed({text("%d * %d"), number(2), number(3)}), "2 * 3");  // behind the letter
    EXPECT_EQ(printed({text("a%*d|"), number(5)}), "a%*d|");
    EXPECT_EQ(printed({text("a%*d|")}), "a%*d|");
}

TEST_F(PrintfTest, WhatConvertsNothingPrintsTheDefault) {
    EXPECT_ROWS({
        {"%", number(7), "7"},
        {"%5", number(7), "7"},
        {"%y!", number(7), "7!"},
        {"%.\n", number(7), "7\n"},
        {"%-+ #0d", number(7), "+7"},
        {"%#s", text("a"), "a"},
        {"%+-c", number(65), "A"},
        {"%.3p", pointer(DT_P_INT, reinterpret_cast<void *>(16)), "0x10"},
        {"%n|", number(7), "7|"},
        {"%hq", number(7), "7q"},
    })
    EXPECT_EQ(printed({text("%5%d"), number(7), number(8)}), "78");
}

TEST_F(PrintfTest, WidthsBeyondReasonFail) {
    EXPECT_EQ(printed({text("%99999999999d|%d"), number(1), number(2)}), "|2");
    EXPECT_EQ(result, -1);
    EXPECT_EQ(printed({text("%.99999999999f"), number(1.0)}), "");
    EXPECT_EQ(result, -1);
    EXPECT_EQ(printed({text("%.2147483647s"), text("ab")}), "ab");
    EXPECT_EQ(result, 2);
}

TEST_F(PrintfTest, NumbersAreNoTexts) {
    std::string output;
    std::string errors = errorsOf([&] {
        output = printed({text("a%s|%d"), number(1), number(2)});
        EXPECT_EQ(result, -1);
        printed("%s", number(1.5));
        printed("%s", array(DT_INT, &result, 1));
        printed("%5s", constant(DT_P_INT));
    });
    std::string message = "ERROR: print an invalid string\n       at line 7 in file 'test.zy'\n";
    EXPECT_EQ(errors, message + message + message + message);
    EXPECT_EQ(output, "a2");
    EXPECT_EQ(runStatus, RUN_ERROR);
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

TEST_F(PrintfTest, ArgumentsRunAsTheyArePrinted) {
    ExprNode *counter = variable(number(5));
    auto increment = [&] { return apply(OP_POSTFIX_INCREMENT, again(counter), again(counter)); };
    ExprNode *call =
        apply(OP_PRINTF, list({text("%d %d %d %s\n"), again(counter), increment(), increment(),
                               variable(text("t")), apply(OP_ADD_INT, number(1), number(2))}));
    ExprNode *chain = compileChain(call, nullptr, false);
    EXPECT_EQ(chain, call);
    testing::internal::CaptureStdout();
    int records = liveValueCount();
    EXPECT_EQ(resultOf(call), 9);
    EXPECT_EQ(resultOf(call), 9);
    EXPECT_EQ(liveValueCount(), records);
    fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "5 5 6 t\n37 7 8 t\n3");
    EXPECT_EQ(currentContext->statement, &statement);
}

TEST_F(PrintfTest, MessagesOfArgumentsHaveAPosition) {
    ExprNode *divide = apply(OP_DIVIDE_INT, number(1), number(0));
    std::string errors = errorsOf([&] { printed({divide}); });
    EXPECT_NE(errors.find("at line 7 in file 'test.zy'"), std::string::npos) << errors;
}

TEST_F(PrintfTest, StreamsCountAndFail) {
    FILE *stream = tmpfile();
    ExprNode *call = apply(OP_FPRINTF, pointer(DT_P_FILE, stream),
                           list({text("%d|%s\n"), number(1), text("ab")}));
    EXPECT_EQ(resultOf(call), 5);
    rewind(stream);
    char line[16] = "";
    EXPECT_STREQ(fgets(line, sizeof line, stream), "1|ab\n");
    fclose(stream);

    ExprNode *counter = variable(number(5));
    ExprNode *missing =
        apply(OP_FPRINTF, constant(DT_P_FILE),
              list({text("%d"), apply(OP_POSTFIX_INCREMENT, counter, again(counter))}));
    EXPECT_EQ(errorsOf([&] { EXPECT_EQ(resultOf(missing), -1); }),
              "WARNING: the file to be written by fprintf() has not open yet\n"
              "         at line 7 in file 'test.zy'\n"
              "WARNING: fprintf() failed\n"
              "         at line 7 in file 'test.zy'\n");
    EXPECT_EQ(cellOf(counter)->data.i, 6);

    FILE *readOnly = fopen("/dev/null", "r");
    ExprNode *refused = apply(OP_FPRINTF, pointer(DT_P_FILE, readOnly), list({number(1)}));
    EXPECT_EQ(errorsOf([&] { EXPECT_EQ(resultOf(refused), -1); }),
              "WARNING: fprintf() failed\n         at line 7 in file 'test.zy'\n");
    fclose(readOnly);
}

TEST_F(PrintfTest, FailureKeepsAnError) {
    ExprNode *call = apply(OP_PRINTF, list({text("%s"), number(1)}));
    e_lang->warningLevel = 0;
    EXPECT_EQ(errorsOf([&] { EXPECT_EQ(resultOf(call), -1); }),
              "ERROR: print an invalid string\n       at line 7 in file 'test.zy'\n");
    e_lang->warningLevel = 1;
    EXPECT_NE(errorsOf([&] { resultOf(call); }).find("WARNING: printf() failed\n"),
              std::string::npos);
    EXPECT_EQ(runStatus, RUN_ERROR);
}

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

TEST_F(PrintfTest, CountsAreStored) {
    int number1 = 0;
    short number2[2] = {0, 9};
    EXPECT_EQ(printed({text("abc%n%d%n|"), pointer(DT_P_INT, &number1), number(10),
                       pointer(DT_P_SHORT, number2)}),
              "abc10|");
    EXPECT_EQ(number1, 3);
    EXPECT_EQ(number2[0], 5);
    EXPECT_EQ(number2[1], 9);
    EXPECT_EQ(printed({text("a%n|%n"), constant(DT_P_INT), pointer(DT_P_DOUBLE, &number1)}), "a|");
    EXPECT_EQ(number1, 3);
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

}  // namespace

}  // namespace zy
