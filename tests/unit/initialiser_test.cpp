// Initial values of scalars and pointers: static ones are there when the text has been read,
// automatic ones when the statements that they became have run.

#include "decl/initialiser.h"

#include <cmath>

#include "declarations.h"
#include "expr/evaluator.h"
#include "expr/nodes.h"
#include "stmt/parser.h"
#include "stmt/program.h"

namespace zy {

class InitialiserTest : public DeclarationFixture {
protected:
    void TearDown() override {
        dropPending();
        DeclarationFixture::TearDown();
    }

    // Runs the statements that automatic initialisers became.
    static std::string runPending() {
        return errorsOf([] {
            for (StmtNode *statement = pendingBefore; statement; statement = statement->next) {
                Value *stack = currentContext->stack;
                if (statement->chain)
                    runNested(statement->chain);
                while (currentContext->stack != stack)
                    deleteValue(popValue());
            }
        });
    }
    static void dropPending() {
        releaseStatements(pendingBefore);
        pendingBefore = nullptr;
    }

    static VarCell *cellOf(const char *name) { return findVarCell(lookupName(name)->symbol); }
};

TEST_F(InitialiserTest, StaticDuration) {
    EXPECT_EQ(read("extern int i = 3; extern double d = 1 + 1.5; __global char c = 'a';"
                   "extern unsigned char u = 255; extern short s = 3.75; extern float f = 0.5;"
                   "extern long long l = -1; extern char *t = \"text\"; extern int *p = &i;"
                   "extern string_t z = \"text\"; extern int *n = NULL;"),
              "");
    EXPECT_EQ(cellOf("i")->data.i, 3);
    EXPECT_EQ(cellOf("d")->data.d, 2.5);
    EXPECT_EQ(cellOf("c")->data.c, 'a');
    EXPECT_EQ(cellOf("u")->data.uc, 255);
    EXPECT_EQ(cellOf("s")->data.s, 3);
    EXPECT_EQ(cellOf("f")->data.f, 0.5f);
    EXPECT_EQ(cellOf("l")->data.ll, -1);
    EXPECT_STREQ(cellOf("t")->data.text, "text");
    EXPECT_STREQ(cellOf("z")->data.text, "text");
    EXPECT_EQ(cellOf("p")->data.p, &cellOf("i")->data);
    EXPECT_EQ(cellOf("n")->data.p, nullptr);
    enterInner();
    EXPECT_EQ(read("static int x = i + 4, y = x * 2;"), "");
    TypeInfo *x = inner.symbols();
    EXPECT_EQ(x->storageCell->data.i, 7);
    EXPECT_EQ(x->next->storageCell->data.i, 14);
}

TEST_F(InitialiserTest, Automatic) {
    EXPECT_EQ(read("int i = 3; const double d = i + 0.5; static char c = 'a'; double *p = &d;"
                   "int &r = i; char *t = \"text\", *n = 0;"),
              "");
    EXPECT_EQ(cellOf("i")->data.i, 0);  // not yet
    EXPECT_EQ(runPending(), "");
    EXPECT_EQ(cellOf("i")->data.i, 3);
    EXPECT_EQ(cellOf("d")->data.d, 3.5);
    EXPECT_EQ(cellOf("c")->data.c, 'a');
    EXPECT_EQ(cellOf("p")->data.p, &cellOf("d")->data);
    EXPECT_EQ(cellOf("r"), cellOf("i"));
    EXPECT_STREQ(cellOf("t")->data.text, "text");
    EXPECT_EQ(cellOf("n")->data.p, nullptr);
}

// With the initialisers of a program put off, those of static duration wait as well.
TEST_F(InitialiserTest, PutOff) {
    e_lang->runInitialisers = 0;
    EXPECT_EQ(read("extern int i = 3;"), "");
    EXPECT_EQ(cellOf("i")->data.i, 0);
    EXPECT_EQ(runPending(), "");
    EXPECT_EQ(cellOf("i")->data.i, 3);
}

TEST_F(InitialiserTest, GlobalsAtOnce) {
    e_lang->initGlobals = 1;
    EXPECT_EQ(read("int i = 3;"), "");
    EXPECT_EQ(cellOf("i")->data.i, 3);
}

TEST_F(InitialiserTest, Refused) {
    struct {
        const char *text, *message;
    } rows[] = {
        {"typedef int T = 3;", "ERROR: initialize typedefed variable 'T'\n"},
        {"int x = {1};", "ERROR: initializer starting with '{'\n"},
        {"extern int y = {1};", "ERROR: initializer starting with '{'\n"},
        {"extern int a = 1; extern int a = 2;", "ERROR: variable 'a' redefined \n"},
        {"extern int b = ;",
         "ERROR: invalid rvalue for initialization of global/external/static/ variable\n"},
        {"int c = ;", "ERROR: invalid rvalue for initialization\n"},
        {"extern int d = *(int *)NULL;", nullptr},
    };
    for (auto &row : rows) {
        std::string messages = read(row.text);
        if (row.message)
            EXPECT_EQ(messages, row.message) << row.text;
        else
            EXPECT_NE(messages.find("ERROR: invalid initializer\n"), std::string::npos) << messages;
        EXPECT_TRUE(errorFlag) << row.text;
    }
    EXPECT_FALSE(lookupName("b")->symbol);  // nothing is left of it
    enterInner();
    EXPECT_EQ(read("extern int x = 3;"), "ERROR: initialize local extern 'x'\n");
}

TEST_F(InitialiserTest, CallsOfFunctionsWithoutABody) {
    std::string messages = read("int f(int); extern int x = f(2);");
    EXPECT_NE(messages.find("ERROR: invalid initializer\nERROR: function f() cannot be used as an "
                            "initializer for variable of static duration\n"),
              std::string::npos)
        << messages;
}

TEST_F(InitialiserTest, PointersOfTheRestrictedShell) {
    e_lang->restricted = 1;
    EXPECT_EQ(read("extern int *p = 0;"),
              "ERROR: lvalue of pointer type is restricted in safe shell\n");
    e_lang->restricted = 0;
}

// A pointer's constant follows the rule of assignments: a text never points to a number.
TEST_F(InitialiserTest, NumbersForPointers) {
    std::string messages = read("int *p = 5;");
    EXPECT_NE(messages.find("ERROR: found int where pointer to int is expected\n"),
              std::string::npos)
        << messages;
    EXPECT_FALSE(errorFlag);
    messages = read("char *s = 5;");
    EXPECT_NE(messages.find("WARNING: found int where pointer to char is expected\n"),
              std::string::npos)
        << messages;
    EXPECT_TRUE(errorFlag);
    EXPECT_EQ(read("char *t = 0; int *q = NULL;"), "");
}

}  // namespace zy
