// Texts that end or go wrong in the middle of something. What was begun is released with the
// program; the sanitizers see what is used after that. Fuzzed texts, cut to what matters.

#include "embed/kernel.h"
#include "embed/scriptDriver.h"
#include "expr/value.h"
#include "tests/unit/instance.h"

namespace zy {
namespace {

class Unfinished : public InstanceTest {
protected:
    void SetUp() override {
        InstanceTest::SetUp();
        freshProgram();
        before = liveValueCount();
    }
    // Appended, and appended again to the program that it made.
    void use(std::string text) {
        errorsOf([&] {
            Zy_AppendParseScript_kernel(nullptr, text.data());
            Zy_AppendParseScript_kernel(nullptr, text.data());
        });
        freshProgram();
        EXPECT_EQ(before, liveValueCount()) << text;
    }

    int before = 0;
};

TEST_F(Unfinished, Texts) {
    for (const char *text : {
             "struct A{int ; 5",
             "struct{int",
             "int n; switch(n){case 1;",
             "int n,k; for(k=0;k<n;k",
             "class A{int v();A();} class B{A a; B();} B::B(){this->",
             "class B{public ;B(;; ~B(",
             "int sum(a) int a; {a;",
             "int mul(int n)...{",
             "#define PRINT(a,...0",
             "int f(N) int g(double){.int",
             "class A{int f(int); 5} int A::f(int n){",
             "class B{int B();}; B::B(){",
             "class O{public: class I{int a;};}; int *O::I;",
             "#define two(a, b) a b\nint f();\nint p = f(two(\n (ap, d++; two(ap)",
         })
        use(text);
}

// A body without an end leaves a function that can't be called, whatever is parsed later.
TEST_F(Unfinished, BodyOfAFailedProgram) {
    std::string
        open = "class B { public: int n; B(); ~B(); };\nB::B() {\nswitch (n) {\ncase 1: n = 2;",
        call = "static B s;";
    std::string messages = errorsOf([&] {
        Zy_AppendParseScript_kernel(nullptr, open.data());
        Zy_AppendRunScript_kernel(nullptr, call.data());
    });
    EXPECT_NE(messages.find("'::B()' not defined"), messages.npos) << messages;
    freshProgram();
    EXPECT_EQ(before, liveValueCount());
}

// Contexts and frames that the host's functions still use are left when these have returned.
TEST_F(Unfinished, RunsThatEndInsideOthers) {
    e_lang->embedded = 1;
    const std::string lives = "class B { public: int n; B(); ~B(); }; B::B() { n = 1; }\n",
                      ends = "B::~B() { _exit(3); }\n";
    for (const std::string &text : {
             lives + ends + "int f() { B b; return 1; } f();",
             lives + ends + "int f() { int i; for (i = 0; i < 3; i++) { B b[2]; } return 1; } f();",
             lives + ends + "int f() { for (;;) { B b[2]; break; } return 1; } f();",
             lives + ends + "int f(B b) { return b.n; } int g() { B b; return 1 + f(b); } g();",
             std::string("class B { public: int n; B(); ~B(); }; B::B() { _exit(3); }\n"
                         "B::~B() { n = 2; } int f() { B b[3]; return 1; } f();"),
             std::string("class B { public: int n; B(); }; B::B() { _exit(3); }\n"
                         "int f() { B(); return 1; } f();"),
         }) {
        std::string code = text;
        errorsOf([&] { Zy_AppendRunScript_kernel(nullptr, code.data()); });
        clearValueStack();
        freshProgram();
        EXPECT_EQ(before, liveValueCount()) << text;
    }
}

}  // namespace
}  // namespace zy
