// What runs hold of memory: a run takes none but what lives in it, and an instance keeps nothing of
// the scripts that it has run.

#include <malloc.h>
#include <sys/resource.h>

#include "host.h"

namespace {

void writeScript(const std::string &text) { std::ofstream("script.zy") << text; }

// The most that the process ever held, in kilobytes.
long peakMemory() {
    rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

// By how much running a script, which was parsed before, moves the peak. Its exit status is lost.
long growthOfRun(const std::string &text) {
    writeScript(text);
    char name[] = "script.zy";
    char *argv[] = {name, nullptr};
    void *zy = mustStart();
    if (Zy_ParseScript(zy, argv) != 0)
        exit(1);
    long before = peakMemory();
    if (Zy_ExecScriptM(zy, name) != 0)
        exit(2);
    long growth = peakMemory() - before;
    mustEnd(zy);
    return growth;
}

// AddressSanitizer keeps what is freed, so that the peak tells nothing.
#ifdef __SANITIZE_ADDRESS__
constexpr bool peakTells = false;
#else
constexpr bool peakTells = true;
#endif

void expectSteady(const std::string &text) {
    Outcome run = inChild([&] {
        printf("%ld", growthOfRun(text));
        return 0;
    });
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    if (peakTells) {
        EXPECT_LT(std::stol(run.out), 1024);
    }
}

// Blocks of statements of all sorts, with values that are made and dropped in each.
const std::string declarations =
    "int n; string_t s = \"a\"; complex z = 1; array double a[4] = {1, 2, 3, 4}, b[4];\n"
    "struct Pair { int x, y; } p = {1, 2}, q;\n"
    "int next(int i) { string_t own = \"own\"; return i + 1; }\n";
const std::string work = "s = \"text\"; z = z * 2 / 2; b = a + b * 0.5; q = p; n = next(n);\n";

}  // namespace

TEST(Memory, AMillionStatements) {
    std::string text = declarations + "int main() {\n";
    for (int i = 0; i < 200000; i++)
        text += work;
    expectSteady(text + "return n != 200000; }\n");
}

TEST(Memory, TenMillionPasses) {
    expectSteady(
        "int main() { int i, n = 0; for (i = 0; i < 10000000; i++) { int k = i; n ^= k; }"
        " return 0; }");
}

TEST(Memory, PassesWithAllSortsOfValues) {
    expectSteady(declarations + "int main() { int i; for (i = 0; i < 300000; i++) {\n" + work +
                 "} return n != 300000; }");
}

// A record of each script that stayed would be 900 of them; tables may differ by a few bytes.
TEST(Memory, ScriptsThatWereRunLeaveNothing) {
    Outcome run = inChild([] {
        void *zy = mustStart();
        char name[] = "script.zy";
        char *argv[] = {name, nullptr};
        size_t early = 0;
        for (int i = 0; i < 1000; i++) {
            std::string number = std::to_string(i), size = std::to_string(i % 9 + 1);
            writeScript(
                "#define NUMBER " + number + "\n" + declarations + "enum E { ONE = " + size +
                " }; int c[" + size + "]; " +
                (i % 2 ? "double f(double x) { return x; }" : "int f(int x) { return x; }") +
                "int main() { static int kept[ONE]; switch ((int)f(3)) { case 3: " + work +
                "printf(\"%d\", NUMBER); break; } return 0; }" + (i % 5 ? "" : "int x = ;"));
            if (Zy_RunScriptM(zy, argv) != (i % 5 ? 0 : -1))
                return 1;
            if (i == 99)
                early = mallinfo2().uordblks;
        }
        size_t late = mallinfo2().uordblks;
        mustEnd(zy);
        return late < early + 2048 ? 0 : 2;
    });
    EXPECT_EQ(run.status, 0) << run.err.substr(run.err.size() > 200 ? run.err.size() - 200 : 0);
}
