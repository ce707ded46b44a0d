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
             "class O{public: class I{int a;};}; int *O::I;",
             "#define two(a, b) a b\nint f();\nint p = f(two(\n (ap, d++; two(ap)",
         })
        use(text);
}

}  // namespace
}  // namespace zy
