// The start of an instance: its home, and what it does to the environment.

#include "host.h"

namespace {

const std::string copies = ZY_HOME "/extern/lib";

// Starts with that home and prints what came of it. 1: the start failed, but the end didn't.
int startIn(const std::string &home, int shellKind = ZY_REGULAR_SHELL) {
    void *handle;
    ZyOptions option = {shellKind, home.c_str(), copies.c_str()};
    int result = Zy_Initialize(&handle, &option);
    printf("%s", Zy_Home(handle));
    mustEnd(handle);
    return result == 0 ? 0 : 1;
}

TEST(StartTest, TheHomeIsThatOfTheOptionWithoutATrailingSeparator) {
    for (const char *trailer : {"", "/"}) {
        Outcome outcome = inChild([&] { return startIn(std::string(ZY_HOME) + trailer); });
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.out, ZY_HOME);
        EXPECT_EQ(outcome.err, "");
    }
}

TEST(StartTest, AHomeThatIsNoFolderIsReported) {
    for (const char *home : {ZY_HOME "/extern/include/embedzy.h", "/nowhere", ""}) {
        Outcome outcome = inChild([&] { return startIn(home); });
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err,
                  std::string("ERROR: invalid Embedded Zy home directory '") + home + "'\n");
    }
}

TEST(StartTest, AFailedStartLeavesAnInstanceThatServesAndLetsTheNextOneStart) {
    Outcome outcome = inChild([] {
        void *handle;
        ZyOptions option = {ZY_REGULAR_SHELL, "/nowhere", copies.c_str()};
        if (Zy_Initialize(&handle, &option) != -1)
            return 1;
        char *script[] = {const_cast<char *>("missing.zy"), nullptr};
        if (Zy_RunScript(handle, script) != -1 || Zy_AppType(handle) != 0 || Zy_Reset(handle) != 0)
            return 2;
        mustEnd(handle);
        return startIn(ZY_HOME);
    });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, ZY_HOME);
}

TEST(StartTest, TheEnvironmentTellsHomeVersionAndProgramsWhileAnInstanceLives) {
    Outcome outcome = inChild([] {
        setenv("MANPATH", "/old/man", 1);
        setenv("PATH", "/old/bin", 1);
        setenv("HOME", "/old/home", 1);
        unsetenv("ZYHOME");
        void *handle = mustStart();
        for (const char *name : {"ZYHOME", "ZYVERMAJOR", "ZYVERMINOR", "ZYVERMICRO", "ZYBUILD",
                                 "ZYEDITION", "ZYRELEASEDATE", "MANPATH", "PATH"})
            printf("%s=%s\n", name, getenv(name));
        // A second instance doesn't add the manual again.
        void *second = mustStart();
        printf("%s\n", getenv("MANPATH"));
        mustEnd(second);
        mustEnd(handle);
        for (const char *name : {"MANPATH", "PATH", "HOME"})
            printf("%s\n", getenv(name));
        return getenv("ZYHOME") || getenv("ZYBUILD") ? 1 : 0;
    });
    EXPECT_EQ(outcome.status, 0);
    std::string home = ZY_HOME;
    std::string manual = home + "/docs/man:/old/man\n";
    EXPECT_EQ(outcome.out, "ZYHOME=" + home +
                               "\nZYVERMAJOR=8\nZYVERMINOR=0\nZYVERMICRO=0\nZYBUILD=15421\n"
                               "ZYEDITION=Professional\nZYRELEASEDATE=February 11, 2017\nMANPATH=" +
                               manual + "PATH=" + home + "/bin:" + home + "/sbin:" + home +
                               "/toolkit/bin:" + home + "/toolkit/sbin:/usr/local/sbin:" +
                               "/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin\n" + manual +
                               "/old/man\n/old/bin\n/old/home\n");
}

TEST(StartTest, TheRestrictedShellFindsThePreparedProgramsAlone) {
    Outcome outcome = inChild([] {
        void *handle = mustStart({ZY_RESTRICTED_SHELL, ZY_HOME, nullptr});
        printf("%s", getenv("PATH"));
        mustEnd(handle);
        return 0;
    });
    EXPECT_EQ(outcome.out, ZY_HOME "/sbin:" ZY_HOME "/toolkit/sbin");
}

TEST(StartTest, AUserWithoutAHomeCannotStart) {
    if (getuid() != 0)
        GTEST_SKIP() << "only root can become a user without an account";
    Outcome outcome = inChild([] {
        for (const char *name : {"HOME", "HOMEPATH", "HOMEDRIVE"})
            unsetenv(name);
        if (setgid(54321) != 0 || setuid(54321) != 0)
            return 1;
        initConstSysVars();
        return 2;
    });
    EXPECT_EQ(outcome.status, 255);
    EXPECT_EQ(outcome.err, "Error: cannot create home directory for _home\n");
}

TEST(StartTest, AStandAloneFrontEndRunsTheSameStart) {
    Outcome outcome = inChild([] {
        setenv("ZYHOME", ZY_HOME, 1);
        initConstSysVars();
        initExecution();
        copyArgcArgv(0, nullptr);
        ZyCell *arguments = strToArgcArgv("a b", nullptr);
        killEntry(arguments);
        cleanMemory();
        return 0;
    });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
}

}  // namespace
