// Scripts, texts and expressions through the host's services.

#include <atomic>
#include <thread>

#include "host.h"

namespace {

void writeScript(const char *name, const char *text) { std::ofstream(name) << text; }

int runScript(void *zy, const char *text) {
    writeScript("script.zy", text);
    char name[] = "script.zy";
    char *argv[] = {name, nullptr};
    return Zy_RunScriptM(zy, argv);
}

int append(void *zy, const char *code) { return Zy_AppendRunScript(zy, const_cast<char *>(code)); }

// ---- Runs -------------------------------------------------------------------------------------

TEST(Scripts, ResultsOfARun) {
    Outcome run = inChild([] {
        void *zy = mustStart();
        printf("%d ", runScript(zy, "int i = 1; i++;"));
        printf("%d ", runScript(zy, "int main() { return 0; }"));
        printf("%d ", runScript(zy, "int main() { return 5; }"));
        printf("%d ", runScript(zy, "int main() { _exit(0); return 1; }"));
        printf("%d ", runScript(zy, "_exit(3); int main() { printf(\"never\"); return 0; }"));
        printf("%d ", runScript(zy, "int i = 1 % 0;"));
        printf("%d ", runScript(zy, "printf(\"never\"); int ;;; x y z"));
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "0 0 -1 0 -1 0 -1 ");
}

TEST(Scripts, AnAbortFromAnotherThreadEndsAnEndlessLoop) {
    Outcome run = inChild([] {
        void *zy = mustStart();
        std::atomic<bool> ended = false;
        std::thread aborter([&] {
            while (!ended) {
                Zy_Abort(zy);
                usleep(1000);
            }
        });
        printf("%d ", runScript(zy, "void f() { for (;;) { int i = 1; } } f();"));
        printf("%d", runScript(zy, "while (1);"));
        ended = true;
        aborter.join();
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.out, "1 1");
    EXPECT_EQ(run.err, "");
}

TEST(Scripts, AThousandScriptsInOneInstanceLeaveNothing) {
    Outcome run = inChild([] {
        void *zy = mustStart();
        for (int i = 0; i < 1000; i++) {
            std::string text = "int v" + std::to_string(i) + " = " + std::to_string(i) +
                               "; string_t s = \"text\"; int f(int a) { if (a > 0) return f(a - 1);"
                               " return a; } int main() { switch (f(3)) { case 0: return 0; }"
                               " return 1; }";
            if (runScript(zy, text.c_str()) != 0)
                return 1;
        }
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.status, 0) << run.err;
}

TEST(Scripts, ParsedOnceRunAgain) {
    Outcome run = inChild([] {
        void *zy = mustStart();
        char name[] = "parsed.zy", missing[] = "missing.zy", broken[] = "broken.zy";
        char *argv[] = {name, nullptr}, *none[] = {missing, nullptr}, *bad[] = {broken, nullptr};
        writeScript("broken.zy", "int x = ;");
        printf("%d %d ", Zy_ParseScript(zy, none), Zy_ParseScript(zy, bad));
        writeScript("parsed.zy",
                    "int runs; int main(int argc, char **argv) { runs++;"
                    " printf(\"run %d of %d; \", runs, argc); return 0; }");
        printf("%d ", Zy_ParseScript(zy, argv));
        char command[] = "parsed.zy one two";
        printf("%d ", Zy_ExecScriptM(zy, command));
        printf("%d", Zy_ExecScriptM(zy, name));
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.out, "-1 -1 0 run 1 of 3; 0 run 2 of 3; 0");
}

TEST(Scripts, AppendedTextGoesOnWhereTheProgramStands) {
    Outcome run = inChild([] {
        void *zy = mustStart();
        printf("%d ", append(zy, "int i = 3;"));
        printf("%d ", append(zy, "i++;"));
        printf("%d ", append(zy, "printf(\"%d \", i);"));
        printf("%d ", append(zy, "i = ;"));
        std::string longCode = "i = 0;" + std::string(5200, ' ') + "printf(\"long %d \", i);";
        printf("%d ", append(zy, longCode.c_str()));
        printf("%d", append(zy, nullptr));
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.out, "0 0 4 0 -1 long 0 0 -1");
}

// ---- Expressions ----------------------------------------------------------------------------------

struct Calculation {
    const char *expr;
    double value;
};

TEST(Expressions, ValuesByTheRulesOfPromotion) {
    static const Calculation table[] = {
        {"1 + 2 * 3", 7},
        {"(1 + 2) * 3", 9},
        {"7 / 2", 3},
        {"-7 / 2", -3},
        {"-7 % 3", -1},
        {"7 / 2.0", 3.5},
        {"1 + 2.5f", 3.5},
        {"3u - 5u", -2},
        {"3u - 5", -2},
        {"3 - 5u", -2},
        {"-1 > 1u", 1},
        {"-1 > 1", 0},
        {"-1 < 1LL", 1},
        {"2147483647 + 1", -2147483648.0},
        {"2147483647LL + 1", 2147483648.0},
        {"4294967295u + 1", 0},
        {"4294967295u + 1LL", 4294967296.0},
        {"3000000000u * 2", 1705032704.0},
        {"3000000000ULL * 2", 6000000000.0},
        {"1 << 4", 16},
        {"1 << 33", 2},
        {"8 >> -1", 16},
        {"1 << -1", 0},
        {"-8 >> 1", -4},
        {"1LL << 40", 1099511627776.0},
        {"0xF0 & 0x3C", 0x30},
        {"5 ^ 3", 6},
        {"5 | 3", 7},
        {"~0", -1},
        {"!0", 1},
        {"!5", 0},
        {"!0.5", 0},
        {"1 && 2", 1},
        {"0 || 0.0", 0},
        {"1 ^^ 1", 0},
        {"1 ^^ 0", 1},
        {"1 ^^ 0 || 1", 1},
        {"NaN && 1", 1},
        {"NaN ^^ 1", 0},
        {"!NaN", 0},
        {"NaN == NaN", 0},
        {"NaN != NaN", 1},
        {"1.0 / 0 == Inf", 1},
        {"1 ? 2 : 3.5", 2},
        {"0 ? 2 : 3.5", 3.5},
        {"(1, 2)", 2},
        {"- - 3", 3},
        {"-(-3)", 3},
        {"(int)3.9", 3},
        {"(int)-3.9", -3},
        {"(char)300", 44},
        {"(unsigned char)-1", 255},
        {"(long long)3e9", 3e9},
        {"int(2.7)", 2},
        {"double(3) / 2", 1.5},
        {"'a' + 1", 98},
        {"0x10", 16},
        {"017", 15},
        {"0b101", 5},
        {"1e3", 1000},
        {"sizeof(int)", 4},
        {"sizeof(double *)", 8},
        {"sizeof(long)", 4},
        {"sizeof 1.5", 8},
        {"1 < 2 == 1", 1},
        {"2 + 3 << 1", 10},
        {"1 | 2 == 2", 1},
        {"10 - 4 - 3", 3},
        {"2 * 3 % 4", 2},
    };
    Outcome run = inChild([] {
        void *zy = mustStart();
        for (const Calculation &row : table) {
            double value = -99;
            if (Zy_ExprCalc(zy, row.expr, ZY_TYPE_DOUBLE, &value) != 0 || value != row.value)
                printf("%s gives %g, not %g\n", row.expr, value, row.value);
        }
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "");
}

TEST(Expressions, IntegersDividedByZero) {
    Outcome run = inChild([] {
        void *zy = mustStart();
        for (const char *expr : {"1 / 0", "1 % 0", "1u / 0u", "1LL % 0", "1ULL / 0"}) {
            long long value;
            printf("%d ", Zy_ExprCalc(zy, expr, ZY_TYPE_LLONG, &value));
            printf("%lld\n", value);
        }
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.out, "0 2139095040\n0 2139095040\n0 2139095040\n0 2139095040\n0 2139095040\n");
}

TEST(Expressions, BadTextGivesItsMessageAndTheNextCallStartsClean) {
    Outcome run = inChild([] {
        void *zy = mustStart();
        std::string overlong(6000, '1');
        for (const char *expr : {"1 +", "(1", "1)", "1;", "unknown + 1", "", "1 2", "* /",
                                 "\"a\" * 2", overlong.c_str()}) {
            int value = 7;
            int result = Zy_ExprCalc(zy, expr, ZY_TYPE_INT, &value);
            if (result != -1 || value != 7)
                printf("%s: %d %d\n", expr, result, value);
            if (Zy_ExprCalc(zy, "1+1", ZY_TYPE_INT, &value) != 0 || value != 2)
                printf("after %s\n", expr);
            if (Zy_ExprParse(zy, expr) != -1 || Zy_ExprEval(zy, expr) != -1)
                printf("%s parses\n", expr);
        }
        printf("%d %d", Zy_ExprParse(zy, "1 + 2"), Zy_ExprEval(zy, "1 + 2"));
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "0 0");
}

TEST(Expressions, VariablesAreSetAndDeclared) {
    Outcome run = inChild([] {
        void *zy = mustStart();
        char declaration[] = "int i; double d; char *t; string_t s; const int c = 1;";
        printf("%d ", Zy_DeclareVar(zy, declaration));
        printf("%d ", Zy_SetVar(zy, "i", ZY_TYPE_DOUBLE, 3.75));
        printf("%d ", Zy_SetVar(zy, "d", ZY_TYPE_INT, 3));
        printf("%d ", Zy_SetVar(zy, "t", ZY_TYPE_P_CHAR, "text"));
        printf("%d ", Zy_SetVar(zy, "c", ZY_TYPE_INT, 3));
        printf("%d ", Zy_SetVar(zy, "nothing", ZY_TYPE_INT, 3));
        printf("%d\n", Zy_SetVar(zy, "i", ZY_TYPE_VOID, 3));
        int i = 0;
        double d = 0;
        char *text = nullptr;
        Zy_ExprCalc(zy, "i", ZY_TYPE_INT, &i);
        Zy_ExprCalc(zy, "d / 2", ZY_TYPE_DOUBLE, &d);
        Zy_ExprCalc(zy, "t", ZY_TYPE_STRING, &text);
        printf("%d %g %s ", i, d, text);
        Zy_ExprCalc(zy, "1.5", ZY_TYPE_STRING, &text);
        printf("%s ", text);
        free(text);
        void *address;
        ZyValueHandle value = Zy_ExprValue(zy, "i + 1", &address);
        printf("%d ", *static_cast<int *>(address));
        printf("%d %d", Zy_DeleteExprValue(zy, value), Zy_DeleteExprValue(zy, nullptr));
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.out, "0 0 0 0 -1 -1 -1\n3 1.5 text 1.5 4 -1 0");
    EXPECT_EQ(run.err,
              "ERROR: 'c' is invalid lvalue in Zy_SetVar()\n"
              "ERROR: 'nothing' is not a valid variable in Zy space\n"
              "ERROR: unknown data type in Zy_SetVar()\n");
}

}  // namespace
