// Macros and conditions where a script can't look: lengths at the edge of the line, results of the
// directives, what is left behind.

#include "expr/context.h"
#include "front/macros.h"
#include "front/preprocessorParts.h"
#include "tests/unit/instance.h"
#include "tests/unit/source.h"

namespace zy {

namespace {

class MacroTest : public InstanceTest {
protected:
    void SetUp() override {
        InstanceTest::SetUp();
        resetContexts();
    }
    void TearDown() override {
        closeSource();
        InstanceTest::TearDown();
    }
    // The characters of all tokens of a text, and the messages.
    std::string expand(const std::string &text) {
        std::string result;
        messages = errorsOf([&] {
            openSource(text);
            for (nextToken(); !endOfInput; nextToken())
                appendToken(result, linePos);
        });
        closeSource();
        return result;
    }
    std::string messages;
};

// A definition of X whose text has `length` characters, over as many lines as it takes.
std::string definition(int length) {
    std::string text = "#define X ";
    for (int made = 0; made + 2 <= length; made += 2) {
        text += made % 2000 == 1998 ? "1\\\n+" : "1+";
    }
    return text + (length % 2 ? "1\n" : "\n");
}

TEST_F(MacroTest, TextsFillALineAndNoMore) {
    EXPECT_EQ(SOURCE_LINE_MAX - 1, 5119);
    EXPECT_EQ(expand(definition(5119) + "X\n;").size(), 5120U);
    EXPECT_EQ(messages, "");
    // The text fits, but the rest of the line with it doesn't.
    freeMacros();
    EXPECT_EQ(expand(definition(5119) + "X ;\n!"), ";;!");
    EXPECT_EQ(messages.substr(0, 35), "ERROR: in expansion of macro 'X'\n  ");
    freeMacros();
    EXPECT_EQ(expand(definition(5121) + "X\n;"), "X;");
    EXPECT_EQ(messages.substr(0, 57), "ERROR: the text of macro 'X' exceeded the maximum length ");
}

TEST_F(MacroTest, TextsThatGrowComeToAnEnd) {
    std::string doubling = "#define D0(x) x x\n";
    for (int i = 1; i < 20; i++)
        doubling += "#define D" + std::to_string(i) + "(x) D" + std::to_string(i - 1) + "(D" +
                    std::to_string(i - 1) + "(x))\n";
    expand(doubling + "D5(y)\nz");
    EXPECT_NE(messages.find("in expansion of macro"), std::string::npos);
    EXPECT_EQ(openMacroCalls, 0);
    EXPECT_EQ(nestedExpansions, 0);
    EXPECT_EQ(expand("#define f(x) x(x)\nf(f) g"), "f(f)g");
    EXPECT_EQ(expand("#define p q r\n#define q p s\np"), "psr");
    EXPECT_EQ(messages, "");
}

TEST_F(MacroTest, ArgumentsEndWithTheirText) {
    EXPECT_EQ(expand("#define F(x) x\nF(1, (2"), ";");
    EXPECT_EQ(messages.substr(0, 33), "ERROR: in expansion of macro 'F'\n");
    EXPECT_EQ(expand("#define N 3\nF\n\n(N) F\n2"), "3F2");
    EXPECT_EQ(expand("#define G(x) [x]\nG(\"a)\" ')' /* ) */ (,))"), "[\"a)\"')'(,)]");
}

TEST_F(MacroTest, DirectivesTellWhatTheyDid) {
    auto run = [](int (*directive)(), const char *text) {
        typeLine(text);
        int result = 0;
        errorsOf([&] { result = directive(); });
        return result;
    };
    EXPECT_EQ(run(defineDirective, " A 0x10"), 0);
    EXPECT_EQ(run(defineDirective, " A 16"), 0);
    EXPECT_EQ(run(defineDirective, " A(x) 16"), 1);
    EXPECT_EQ(run(defineDirective, " +"), -1);
    EXPECT_EQ(run(defineDirective, " B(x,x)"), -2);
    EXPECT_EQ(run(undefDirective, " A"), 0);
    EXPECT_EQ(run(undefDirective, " A"), 1);
    EXPECT_EQ(run(undefDirective, " 5"), -1);
    EXPECT_EQ(run(undefDirective, " __GLOBALDEF__"), 1);
    EXPECT_EQ(e_lang->globalDef, 0);
    EXPECT_EQ(run(defineDirective, " __GLOBALDEF__"), 0);
    EXPECT_EQ(e_lang->globalDef, 1);
}

TEST_F(MacroTest, GroupsEndWithTheirProgram) {
    EXPECT_EQ(expand("a\n#if 0\nb\n#ifdef x\n#else\nc\n#endif\n#elif 1\nd\n#endif\ne"), "ade");
    EXPECT_EQ(condDepth, 0);
    expand("#if 1\n#ifndef x\na");
    EXPECT_EQ(messages, "ERROR: missing #endif \n       at line 4 in file 'a.zy'\n");
    EXPECT_EQ(condDepth, 0);
    EXPECT_EQ(conditionGroup, nullptr);
}

}  // namespace

}  // namespace zy
