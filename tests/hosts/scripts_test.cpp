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
