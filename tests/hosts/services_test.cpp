// The services that need no parser: runs and their refusals, streams, environment, faults.

#include <csignal>

#include "host.h"

namespace {

char scriptName[] = "script.zy";

extern "C" int runCHost(void);

TEST(Header, WorksFromC) {
    Outcome run = inChild(runCHost);
    EXPECT_EQ(run.status, 0) << "c_host.c, line";
    EXPECT_EQ(run.err, "");
}

TEST(Runs, ASecondRunIsRefusedUntilReset) {
    Outcome run = inChild([] {
        char *argv[] = {scriptName, nullptr};
        void *zy = mustStart();
        auto all = [&] {
            fprintf(stderr, "%d", Zy_RunScript(zy, argv));
            fprintf(stderr, "%d", Zy_RunScriptM(zy, argv));
            fprintf(stderr, "%d", Zy_ExecScript(zy, scriptName));
            fprintf(stderr, "%d\n", Zy_ExecScriptM(zy, scriptName));
        };
        Zy_RunScript(zy, argv);  // fails, and counts as a run all the same
        all();
        Zy_Reset(zy);
        Zy_ExecScript(zy, scriptName);
        all();
        Zy_Reset(zy);
        Zy_RunScriptM(zy, argv);
        Zy_RunScriptM(zy, argv);
        mustEnd(zy);
        return 0;
    });
    const std::string done = "ERROR: this interpreter has processed a script\n       ";
    const std::string missing = "ERROR: cannot open file 'script.zy' \n";
    EXPECT_EQ(
        run.err,
        missing + done +
            "using Zy_RunScript(), call Zy_Reset() before calling Zy_RunScript() again.\n-1" +
            done + "using Zy_RunScript(), cannot use Zy_RunScriptM().\n-1" + done +
            "using Zy_RunScript(), cannot use Zy_ExecScript().\n-1" + done +
            "using Zy_RunScript(), cannot use Zy_ExecScriptM().\n-1\n" + done +
            "using Zy_ExecScript(), call Zy_Reset() before calling Zy_ExecScript() again.\n-1" +
            done + "using Zy_ExecScript(), cannot use Zy_RunScriptM().\n-1" + done +
            "using Zy_ExecScript(), cannot use Zy_ExecScript() again.\n-1" + done +
            "using Zy_ExecScript(), cannot use Zy_ExecScriptM().\n-1\n" + missing + missing);
}

TEST(Streams, OutputGoesWhereTheHostSendsIt) {
    Outcome run = inChild([] {
        void *zy = mustStart();
        char path[] = "elsewhere", mode[] = "w";
        int fd = Zy_Reopen(zy, path, mode, 1);
        printf("redirected");
        fprintf(stderr, "%d", Zy_Flush(zy, fd));
        fprintf(stderr, "%s", readWhole("elsewhere").c_str());
        fprintf(stderr, "%d", Zy_Close(zy, fd));
        printf("lost");  // harmless: the stream leads nowhere
        wchar_t widePath[] = L"wide", wideMode[] = L"w";
        fd = Zy_WReopen(zy, widePath, wideMode, 1);
        printf("again");
        fprintf(stderr, "%d", Zy_Close(zy, fd));
        fprintf(stderr, "%s", readWhole("wide").c_str());
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "0redirected00again");
}

TEST(Streams, WrongDescriptorsAreNamed) {
    Outcome run = inChild([] {
        void *zy = mustStart();
        char path[] = "no such folder/x", mode[] = "w", buffer[BUFSIZ];
        wchar_t wide[] = L"x";
        printf("%d %d %d", Zy_Reopen(zy, path, mode, 3), Zy_WReopen(zy, wide, wide, -1),
               Zy_Setbuf(zy, 3, buffer));
        printf(" %d %d %d %d", Zy_Close(zy, -1), Zy_Close(zy, 1), Zy_Flush(zy, -1),
               Zy_Flush(zy, 7));
        printf(" %d\n", Zy_Setbuf(zy, 1, nullptr));
        printf("%d", Zy_Reopen(zy, path, mode, 0));
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.out, "-1 -1 -1 -1 -1 -1 -1 0\n-1");
    // The arguments of a call may be evaluated in any order, so the messages are sorted by name.
    for (const char *name : {"Zy_Reopen", "Zy_WReopen", "Zy_Setbuf", "Zy_Close", "Zy_Flush"})
        EXPECT_NE(run.err.find("ERROR: invalid file descriptor for " + std::string(name) + "()\n"),
                  std::string::npos)
            << name;
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 5) << run.err;
}

TEST(Faults, AWildPointerIsReportedAndEndsTheProcess) {
    for (int signal : {SIGSEGV, SIGILL}) {
        Outcome run = inChild([signal] {
            mustStart();
            printf("still printed");
            raise(signal);
            return 0;
        });
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.out, "still printed");
        EXPECT_EQ(run.err, signal == SIGSEGV ? "ERROR: cannot recover from previous errors\n\n"
                                             : "ERROR: Cannot Recover From Previous Errors\n\n");
    }
}

TEST(Faults, AnEndedInstanceHandlesNoSignal) {
    Outcome run = inChild([] {
        void *first = mustStart(), *second = mustStart();
        mustEnd(first);
        mustEnd(second);
        raise(SIGSEGV);
        return 0;
    });
#ifndef __SANITIZE_ADDRESS__  // it handles the signal itself
    EXPECT_EQ(run.status, -SIGSEGV);
#endif
    EXPECT_EQ(run.err.find("cannot recover"), std::string::npos);
}

TEST(Abort, WithNoScriptRunningItDoesNothing) {
    Outcome run = inChild([] {
        void *zy = mustStart();
        printf("%d ", Zy_Abort(zy));
        printf("%d", Zy_ExecScriptM(zy, scriptName));
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.out, "0 0");
}

}  // namespace
