// Calls of script functions by the host: arguments and results of every type, argument lists,
// function files, calls in the middle of a run, and runs that end in a call.

#include <atomic>
#include <cmath>
#include <cstdarg>
#include <cstring>
#include <thread>

#include "host.h"

namespace {

// Calls of each instance; a million of them is a matter of a measurement.
#ifndef ZY_CALLS
#define ZY_CALLS 20000
#endif

struct FloatPair {
    float first, second;
};

// An instance with the functions of that text.
void *withFunctions(const char *text) {
    void *zy = mustStart();
    if (Zy_AppendParseScript(zy, const_cast<char *>(text)) != 0)
        exit(92);
    return zy;
}

int append(void *zy, const char *code) { return Zy_AppendRunScript(zy, const_cast<char *>(code)); }

int callWithList(void *zy, const char *name, void *result, ...) {
    va_list list;
    va_start(list, result);
    int status = Zy_CallFuncByNamev(zy, name, result, list);
    va_end(list);
    return status;
}

int callHandleWithList(void *zy, void *function, void *result, ...) {
    va_list list;
    va_start(list, result);
    int status = Zy_CallFuncByAddrv(zy, function, result, list);
    va_end(list);
    return status;
}

TEST(Calls, ArgumentsAndResultsOfEachType) {
    Outcome run = inChild([] {
        void *zy = withFunctions(
            "char c(char x) { return x + 1; } unsigned char uc(unsigned char x) { return x + 1; }"
            "short s(short x) { return x - 1; } unsigned short us(unsigned short x) { return x; }"
            "int i(int x, int y) { return x * 10 + y; } unsigned u(unsigned x) { return x; }"
            "long long l(long long x) { return x * 2; }"
            "unsigned long long ul(unsigned long long x) { return x; }"
            "float f(float x) { return x / 2; } double d(double x, int y) { return x + y; }"
            "float complex z(float complex x) { return x; }"
            "double complex dz(double complex x) { return x; }"
            "double dual du(double dual x) { return x; }"
            "string_t t(string_t x) { return x; }"
            "char *p(char *x) { return x + 1; } void *q(void *x) { return x; }"
            "double *dp(double *x) { *x = 7; return x; } void v(int x) { printf(\"v%d \", x); }");
        auto guarded = [](auto initial) { return std::pair(initial, 0x77); };
        auto rc = guarded('x');
        char bytes[8] = "aaaaaaa";
        printf("%d ", Zy_CallFuncByName(zy, "c", bytes, 'B'));
        printf("%s ", bytes);
        Zy_CallFuncByName(zy, "uc", &rc.first, 254);
        short rs;
        unsigned short rus;
        int ri;
        unsigned ru;
        long long rl;
        unsigned long long rul;
        Zy_CallFuncByName(zy, "s", &rs, -32768);
        Zy_CallFuncByName(zy, "us", &rus, 65535);
        Zy_CallFuncByName(zy, "i", &ri, 4, 2);
        Zy_CallFuncByName(zy, "u", &ru, 4000000000u);
        Zy_CallFuncByName(zy, "l", &rl, 1LL << 40);
        Zy_CallFuncByName(zy, "ul", &rul, ~0ULL);
        printf("%d %d %d %d %u %lld %llx ", static_cast<unsigned char>(rc.first), rs, rus, ri, ru,
               rl, rul);
        struct {
            float value;
            int behind;
        } rf = {0, 5};
        double rd;
        Zy_CallFuncByName(zy, "f", &rf.value, 2.5);
        Zy_CallFuncByName(zy, "d", &rd, 2.5, 3);
        printf("%g/%d %g ", rf.value, rf.behind, rd);
        FloatPair rz, az = {1, 2};
        double adz[2] = {1, 2}, rdz[2], rdu[2];
        Zy_CallFuncByName(zy, "z", &rz, az);
        Zy_CallFuncByName(zy, "dz", rdz, adz);
        Zy_CallFuncByName(zy, "du", rdu, adz);
        printf("%g,%g %g,%g %g,%g ", rz.first, rz.second, rdz[0], rdz[1], rdu[0], rdu[1]);
        char *rt, *rp;
        void *rq;
        double number = 1, *rdp;
        Zy_CallFuncByName(zy, "t", &rt, "text");
        Zy_CallFuncByName(zy, "p", &rp, "text");
        Zy_CallFuncByName(zy, "q", &rq, &rq);
        Zy_CallFuncByName(zy, "dp", &rdp, &number);
        printf("%s %s %d %d %g ", rt, rp, rq == &rq, rdp == &number, number);
        free(rt);
        fflush(stdout);
        printf("%d %d", Zy_CallFuncByName(zy, "v", nullptr, 3),
               Zy_CallFuncByName(zy, "d", nullptr, 1.0, 1));
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out,
              "0 Caaaaaa 255 32767 65535 42 4000000000 2199023255552 ffffffffffffffff 1.25/5 5.5 "
              "1,2 1,2 1,2 text ext 1 1 7 v3 0 0");
    EXPECT_EQ(run.err, "");
}

TEST(Calls, ByHandleAndWithLists) {
    Outcome run = inChild([] {
        void *zy = withFunctions(
            "int i(int x, int y) { return x * 10 + y; } double half(double x) { return x / 2; }"
            "int none(void) { return 5; } int later(int); int n = 8;"
            "int apply(int (*f)(int, int), int x) { return f(x, x); }"
            "int (*chosen(int x))(int, int) { return i; }");
        int r = 0, status;
        double d = 0;
        void *function = Zy_GlobalSymbolAddrByName(zy, "i");
        status = Zy_CallFuncByAddr(zy, function, &r, 1, 2);
        printf("%d %d ", status, r);
        status = callHandleWithList(zy, function, &r, 3, 4);
        printf("%d %d ", status, r);
        status = callWithList(zy, "half", &d, 5.0);
        printf("%d %g ", status, d);
        status = Zy_CallFuncByName(zy, "apply", &r, function, 6);
        printf("%d %d ", status, r);
        void *chosen = nullptr;
        status = Zy_CallFuncByName(zy, "chosen", &chosen, 1);
        printf("%d %d ", status, chosen == function);
        printf("%d ", *static_cast<int *>(Zy_GlobalSymbolAddrByName(zy, "n")) == 0);
        printf("%d ", Zy_GlobalSymbolAddrByName(zy, "later") == nullptr);
        ZyVarArgs list = Zy_VarArgsCreate(zy);
        status = Zy_CallFuncByNameVar(zy, "none", &r, list);
        printf("%d %d ", status, r);
        Zy_VarArgsAddArg(zy, &list, ZY_TYPE_INT, 7);
        Zy_VarArgsAddArgExpr(zy, &list, "n = n + 1");
        append(zy, "n = 8;");
        for (int i = 0; i < 2; i++) {
            status = Zy_CallFuncByNameVar(zy, "i", &r, list);
            printf("%d %d ", status, r);
        }
        Zy_VarArgsDelete(zy, list);
        list = Zy_VarArgsCreate(zy);
        Zy_VarArgsAddArg(zy, &list, ZY_TYPE_FLOAT, 3.0);
        printf("%d ", Zy_VarArgsAddArgExpr(zy, &list, "1+"));
        status = Zy_CallFuncByNameVar(zy, "i", &r, list);
        printf("%d %d ", status, r);
        printf("%d ", Zy_VarArgsAddArg(zy, &list, 20, 1));
        Zy_VarArgsDelete(zy, list);
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.out, "0 12 0 34 0 2.5 0 66 0 1 1 1 0 5 0 79 0 80 -1 0 30 -1 ");
    EXPECT_NE(run.err.find("Invalid argument for Zy_VarArgsAddArgExpr()\n"), std::string::npos);
    EXPECT_NE(run.err.find("ERROR: unknown data type in Zy_VarArgsAddArg()\n"), std::string::npos);
}

TEST(Calls, WhatCannotBeCalled) {
    Outcome run = inChild([] {
        void *zy = withFunctions("int i(int x) { return x; } int later(int); int n;");
        int r = 3;
        printf("%d ", Zy_CallFuncByName(zy, nullptr, &r));
        printf("%d ", Zy_CallFuncByName(zy, "no", &r));
        printf("%d ", Zy_CallFuncByName(zy, "n", &r));
        printf("%d ", Zy_CallFuncByName(zy, "later", &r, 1));
        printf("%d ", Zy_CallFuncByNameVar(zy, nullptr, &r, nullptr));
        printf("%d ", Zy_CallFuncByNameVar(zy, "i", &r, nullptr));
        printf("%d ", Zy_CallFuncByAddr(zy, nullptr, &r));
        printf("%d", r);
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.out, "-1 -1 -1 -1 -1 -1 -1 3");
    EXPECT_EQ(run.err,
              "ERROR: invalid function name for Zy_CallFuncByName().\n"
              "ERROR: invalid function name 'no' for Zy_CallFuncByName().\n"
              "ERROR: invalid function name 'n' for Zy_CallFuncByName().\n"
              "ERROR: invalid function name 'later' for Zy_CallFuncByName().\n"
              "ERROR: invalid function name for Zy_CallFuncByNameVar().\n"
              "ERROR: number of argument is 0, need 1 argument\n"
              "ERROR: Zy_CallFuncByAddr() failed\n");
}

TEST(Calls, AFunctionFileIsLoadedOnce) {
    Outcome run = inChild([] {
        std::ofstream("fromFile.zyf") << "int fromFile(int x) { return helper(x) + 1; }";
        std::ofstream("helper.zyf") << "int helper(int x) { return x * 2; }";
        std::ofstream("wrong.zyf") << "int wrong(int x) { return x +; }";
        void *zy = mustStart();
        append(zy, "_fpath = \".\";");
        int r = 0, status;
        for (int i = 1; i < 3; i++) {
            status = Zy_CallFuncByName(zy, "fromFile", &r, i);
            printf("%d %d ", status, r);
        }
        printf("%d", Zy_CallFuncByName(zy, "wrong", &r, 1));
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.out, "0 3 0 5 -1");
}

TEST(Calls, ErrorsInACallAreItsOwn) {
    Outcome run = inChild([] {
        void *zy = withFunctions(
            "int n(int x) { int (*z)(int) = NULL; z(x); return 4; } int ok() { return 1; }");
        int r = 3, status;
        status = Zy_CallFuncByName(zy, "n", &r, 0);
        printf("%d %d ", status, r);
        printf("%d ", Zy_CallFuncByName(zy, "ok", &r));
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.out, "-1 4 0 ");
}

// ---- In the middle of a run -------------------------------------------------------------------

// At each statement in line 2 of the script calls one of its functions.
int callBack(void *zy, ZyDebugInfo *info, void *) {
    if (info->line != 2)
        return 0;
    int r = -1;
    int status = Zy_CallFuncByName(zy, "inner", &r, 1);
    printf("%d:%d ", status, r);
    return 0;
}

int runWithCallback(void *zy, const char *text,
                    int (*function)(void *, ZyDebugInfo *, void *) = callBack) {
    std::ofstream("script.zy") << text;
    char name[] = "script.zy";
    char *argv[] = {name, nullptr};
    Zy_AddCallback(zy, ZY_EVENT_STATEMENT, function, nullptr, 0);
    return Zy_RunScriptM(zy, argv);
}

TEST(Calls, NestedInARun) {
    Outcome run = inChild([] {
        void *zy = mustStart();
        int status = runWithCallback(zy,
                                     "int inner(int x) {\n"
                                     "    x = x * 10;\n"
                                     "    return x + (__func__[0] == 'i');\n"
                                     "}\n"
                                     "int main() { int a = 1 + inner(100); "
                                     "printf(\"%d %s\", a, __func__); return 0; }");
        printf(" %d", status);
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.out, "0:11 1002 main 0");
    EXPECT_EQ(run.err, "");
}

// What a provider of signal() does: it notes the context in which the handler is set, and calls the
// handler, here in the middle of a call that the main function makes.
int signalAt(void *zy, ZyDebugInfo *info, void *) {
    int *signal, *other;
    void **contexts, **others;
    void *caller = ZyCurtdbForSignalptr(zy, &signal, &contexts, &other, &others, &other, &others,
                                        &other, &others);
    if (info->line == 3)
        contexts[2] = caller;
    if (info->line != 4)
        return 0;
    *signal = 2;
    int status = Zy_CallFuncByName(zy, "handler", nullptr);
    printf("%d %d ", status, *signal);
    return 0;
}

TEST(Calls, AJumpOutOfASignalHandler) {
    Outcome run = inChild([] {
        void *zy = mustStart();
        int status = runWithCallback(zy,
                                     "#include <setjmp.h>\njmp_buf place; int after;\n"
                                     "int set() { return 1; }\n"
                                     "int interrupted(int x) { return x + 1; }\n"
                                     "void handler() { longjmp(place, 7); after = 1; }\n"
                                     "int main() { set(); int r = setjmp(place);\n"
                                     "if (r == 0) after = 1 && interrupted(5) && r;\n"
                                     "printf(\"%d %d\", r, after); return 0; }",
                                     signalAt);
        printf(" %d", status);
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.out, "0 0 7 0 0");
    EXPECT_EQ(run.err, "");
}

TEST(Calls, AnExitInACallEndsTheRunAroundIt) {
    for (const char *status : {"0", "3"}) {
        Outcome run = inChild([status] {
            void *zy = mustStart();
            std::string text = "int inner(int x) {\n _exit(" + std::string(status) +
                               ");\n return 1; }\n int main() { int a = 1 && inner(1);"
                               " printf(\"never\"); return 0; }";
            printf("%d ", runWithCallback(zy, text.c_str()));
            append(zy, "int one() { return 1; } int both() { return 1 && one() ? 5 : 6; }");
            int r = 0;
            printf("%d ", Zy_ExprCalc(zy, "one() && one() ? both() : 0", ZY_TYPE_INT, &r));
            printf("%d ", r);
            Zy_CallFuncByName(zy, "both", &r);
            printf("%d", r);
            mustEnd(zy);
            return 0;
        });
        EXPECT_EQ(run.out, *status == '0' ? "0:0 0 0 5 5" : "-1:0 -1 0 5 5");
        EXPECT_EQ(run.err, "");
    }
}

TEST(Calls, AnAbortEndsACallWithAZeroResult) {
    Outcome run = inChild([] {
        void *zy = withFunctions(
            "int loop(int x) { while (x) ; return 5; }"
            "double nested(int x) { return 1 && loop(x) ? 2.5 : 1.5; }");
        std::atomic<bool> ended = false;
        std::thread aborter([&] {
            while (!ended) {
                Zy_Abort(zy);
                usleep(1000);
            }
        });
        int r = 3, status;
        double d = 3;
        status = Zy_CallFuncByName(zy, "loop", &r, 1);
        printf("%d %d ", status, r);
        status = Zy_CallFuncByName(zy, "nested", &d, 1);
        printf("%d %g", status, d);
        ended = true;
        aborter.join();
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.out, "1 0 1 0");
    EXPECT_EQ(run.err, "");
}

// ---- Several instances ------------------------------------------------------------------------

TEST(Calls, FourInstancesOnFourThreads) {
    Outcome run = inChild([] {
        std::thread threads[4];
        std::atomic<int> wrong = 0;
        for (int number = 0; number < 4; number++)
            threads[number] = std::thread([number, &wrong] {
                std::string code = "int total = 0; int add(int x) { total = total + x * " +
                                   std::to_string(number) + "; return total; }";
                void *zy = withFunctions(code.c_str());
                append(zy, "total = 0;");
                int sum = 0;
                for (int i = 0; i < ZY_CALLS; i++)
                    wrong += Zy_CallFuncByName(zy, "add", &sum, 1) != 0;
                wrong += sum != number * ZY_CALLS;
                mustEnd(zy);
            });
        for (std::thread &thread : threads)
            thread.join();
        return wrong == 0 ? 0 : 1;
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
}

}  // namespace
