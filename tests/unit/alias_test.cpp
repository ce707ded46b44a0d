// Aliases and their expansion at the start of a console line.

#include "front/aliases.h"

#include <cstring>
#include <string>

#include "expr/value.h"
#include "instance.h"
#include "source.h"

namespace zy {

namespace {

std::string errors;

std::string expand(const std::string &line) {
    typeLine(line.c_str());
    errors = errorsOf(expandAlias);
    EXPECT_EQ(lineLength, static_cast<int>(strlen(lineBuffer)));
    return lineBuffer;
}

}  // namespace

using AliasTest = InstanceTest;

TEST_F(AliasTest, SetReplaceRemoveAndList) {
    EXPECT_EQ(setAlias("ls", "dir"), 0);
    EXPECT_EQ(setAlias("sl", "ls"), 0);  // the same sum, in another bucket
    EXPECT_EQ(setAlias("lt", "tail"), 0);
    EXPECT_EQ(setAlias("ls", "dir -l"), 1);
    EXPECT_EQ(setAlias("9", nullptr), 0);
    EXPECT_STREQ(lookupAlias("ls")->value, "dir -l");
    EXPECT_EQ(setAlias("ls", lookupAlias("ls")->value), 1);
    EXPECT_STREQ(lookupAlias("ls")->value, "dir -l");
    EXPECT_EQ(lookupAlias("l"), nullptr);

    testing::internal::CaptureStdout();
    EXPECT_EQ(listAliases(), 4);
    fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "9\nlt\ttail\nls\tdir -l\nsl\tls\n");

    EXPECT_EQ(removeAlias("lt"), 0);
    EXPECT_EQ(removeAlias("lt"), 1);
    EXPECT_STREQ(lookupAlias("ls")->value, "dir -l");
}

TEST_F(AliasTest, TheBuiltInFunctionSetsAndRemoves) {
    Value name = {}, value = {}, null = {};
    name.type = DT_STRING;
    name.payload.text = const_cast<char *>("ls");
    value.type = DT_P_CHAR;
    value.payload.text = const_cast<char *>("dir");
    null.type = DT_NULL;
    EXPECT_EQ(aliasFunction(&null, &value), -1);
    EXPECT_EQ(aliasFunction(&name, &value), 0);
    EXPECT_EQ(aliasFunction(&name, &value), 1);
    EXPECT_STREQ(lookupAlias("ls")->value, "dir");
    EXPECT_EQ(aliasFunction(&name, &null), 0);
    EXPECT_EQ(lookupAlias("ls"), nullptr);
    EXPECT_EQ(aliasFunction(&name, &null), 1);
}

TEST_F(AliasTest, AnAliasTakesTheRestOfTheLineOrPlacesItsArguments) {
    const struct {
        const char *value, *line, *result;
    } rows[] = {
        {"dir -l", "x", "dir -l"},
        {"dir -l", "  x a  b", "dir -l a  b"},
        {"dir -l", "x|more", "dir -l|more"},
        {"dir -l", "x;y", "dir -l;y"},
        {"dir", "xy a", "xy a"},
        {"dir", "", ""},
        {"dir", "; x", "; x"},
        {"cp _argv[2] _argv[1]", "x a b", "cp b a"},
        {"echo _argv[0]", "x a", "echo x"},
        {"echo _argv[#]!", "x a  b", "echo x a  b!"},
        {"echo _argv[$]", "x a b", "echo b"},
        {"echo _argv[$]", "x", "echo x"},
        {"echo <_argv[*]>", "x a   \"b c\" d", "echo <a \"b c\" d>"},
        {"echo <_argv[*]>", "x", "echo <>"},
        {"echo _argv", "x a", "echo _argv"},
        {"echo _argv[1", "x a", "echo _argv[1"},
        {"_argv[1] x", "x if", "if x"},
    };
    for (const auto &row : rows) {
        setAlias("x", row.value);
        EXPECT_EQ(expand(row.line), row.result) << row.value;
        EXPECT_EQ(errors, "") << row.value;
    }
    setAlias("x", nullptr);
    EXPECT_EQ(expand("x a"), "x a");
    EXPECT_EQ(errorFlag, 0);
}

TEST_F(AliasTest, AWrongIndexIsReported) {
    const struct {
        const char *value, *message;
    } rows[] = {
        {"echo _argv[2]", "_argv[2] is bigger than the max argument _argv[1]"},
        {"echo _argv[99999999999999999999999]",
         "_argv[2147483647] is bigger than the max argument _argv[1]"},
        {"echo _argv[a]", "bad index 'a' for _argv[]"},
        {"echo _argv[1-]", "bad index '-' for _argv[]"},
        {"echo _argv[]", "bad index ']' for _argv[]"},
    };
    for (const auto &row : rows) {
        errorFlag = 0;
        setAlias("x", row.value);
        EXPECT_EQ(expand("x a"), "echo ") << row.value;
        EXPECT_EQ(errors, "ERROR: " + std::string(row.message) + "\n");
        EXPECT_EQ(errorFlag, 1);
    }
}

TEST_F(AliasTest, ChainsUnfoldAndLoopsEnd) {
    setAlias("a", "b -1");
    setAlias("b", "c _argv[1] _argv[2]");
    setAlias("c", "echo");
    EXPECT_EQ(expand("a x"), "echo -1 x");
    setAlias("ls", "ls -l");
    EXPECT_EQ(expand("ls x"), "ls -l x");
    setAlias("p", "q 1");
    setAlias("q", "p 2");
    EXPECT_EQ(expand("p x"), "p 2 1 x");
    setAlias("q", "q 2");
    EXPECT_EQ(expand("p x"), "q 2 1 x");
    EXPECT_EQ(errors, "");
}

TEST_F(AliasTest, ALineThatOutgrowsTheBufferIsNotRunInPart) {
    std::string longText(SOURCE_LINE_MAX - 1 - 2, 'y');
    setAlias("x", longText.c_str());
    EXPECT_EQ(expand("x a"), longText + " a");
    EXPECT_EQ(expand("x ab"), "");
    EXPECT_EQ(errors, "ERROR: command line exceeded the maximum length of 5120\n");
    EXPECT_EQ(errorFlag, 1);
}

}  // namespace zy
