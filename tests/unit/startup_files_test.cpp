// Start-up, login and logout files, and the copying of the model: what differs by shell and by what
// is there.

#include "embed/startupFiles.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "expr/scope.h"
#include "instance.h"
#include "startup/options.h"
#include "startup/startupState.h"
#include "startup/systemVariables.h"

namespace zy {

// A home with a config folder, and a folder of the user.
class StartupFilesTest : public InstanceTest {
protected:
    void SetUp() override {
        InstanceTest::SetUp();
        char name[] = "/tmp/zytestXXXXXX";
        folder = mkdtemp(name);
        std::filesystem::create_directories(folder + "/config");
        std::filesystem::create_directories(folder + "/user");
        before = getenv("ZYHOME") ? getenv("ZYHOME") : "";
        setenv("ZYHOME", folder.c_str(), 1);
        initExecution();
        setSystemText(SLOT_HOME, (folder + "/user").c_str());
    }
    void TearDown() override {
        InstanceTest::TearDown();
        std::filesystem::remove_all(folder);
        before.empty() ? unsetenv("ZYHOME") : setenv("ZYHOME", before.c_str(), 1);
    }
    void write(const char *name, const char *text) { std::ofstream(folder + "/" + name) << text; }
    std::string read(const char *name) {
        std::ostringstream text;
        text << std::ifstream(folder + "/" + name).rdbuf();
        return text.str();
    }
    // What the start prints on standard output, with that text on standard input.
    std::string startWith(const char *answer) {
        write("answer", answer);
        if (!freopen((folder + "/answer").c_str(), "r", stdin))
            return "";
        testing::internal::CaptureStdout();
        errors = errorsOf([] { readStartupFile(nullptr); });
        fflush(stdout);
        return testing::internal::GetCapturedStdout();
    }
    std::string folder, before, errors;
};

TEST_F(StartupFilesTest, TheFileRunsWithoutRestrictionsAndItsNamesGoAway) {
    write("config/zyrc", "int made = 1; _fpath = \"/regular\";");
    write("config/zysrc",
          "_fpath = \"/restricted\"; printf(\"%d;\", made2()); int made2(){return 3;}");
    EXPECT_EQ(startWith(""), "");
    EXPECT_EQ(lookupName("made")->symbol, nullptr);
    EXPECT_STREQ(searchTables[TABLE_FPATH].entries[0], "/regular");
    e_lang->restricted = 1;
    EXPECT_EQ(startWith(""), "3;");
    EXPECT_EQ(e_lang->restricted, 1);
    EXPECT_STREQ(searchTables[TABLE_FPATH].entries[0], "/restricted");
    EXPECT_EQ(lookupName("_fpath")->symbol->dataType, DT_CONSTANT);
    EXPECT_EQ(lookupName("_status")->symbol->dataType, DT_INT);
}

TEST_F(StartupFilesTest, AMissingFileIsNoErrorAndAWrongOneIs) {
    startWith("");
    EXPECT_EQ(errors, "");
    EXPECT_EQ(errorFlag, 0);
    write("config/zyrc", "int = 3;");
    startWith("");
    EXPECT_NE(errors.find("ERROR: cannot execute command '" + folder + "/config/zyrc'\n"),
              std::string::npos);
    EXPECT_EQ(errorFlag, 1);
}

TEST_F(StartupFilesTest, TheModelIsCopiedUnlessTheUserWantsToKeepHisFile) {
    write("config/_zyrc", "// model\nprintf(\"x\");\n");
    write("config/_zysrc", "// restricted");
    e_lang->copyStartupFile = 1;
    std::string model = folder + "/config/_zyrc", target = folder + "/user/_zyrc";
    EXPECT_EQ(startWith(""), "");
    EXPECT_EQ(errors, "\n" + model + " has been copied to " + target + "\n");
    EXPECT_EQ(read("user/_zyrc"), "// model\nprintf(\"x\");\n");
    write("user/_zyrc", "own");
    for (const char *answer : {"n\n", "", " x y\n"}) {
        EXPECT_EQ(startWith(answer), target + " already exists - overwrite? [y/n]: ");
        EXPECT_EQ(read("user/_zyrc"), "own") << answer;
    }
    startWith("  Yes\n");
    EXPECT_EQ(read("user/_zyrc"), "// model\nprintf(\"x\");\n");
    setSystemText(SLOT_HOME, (folder + "/user/").c_str());
    e_lang->restricted = 1;
    startWith("");
    EXPECT_EQ(read("user/_zysrc"), "// restricted");
}

TEST_F(StartupFilesTest, LoginFilesFollowTheStartAndMustExist) {
    write("config/zylogin", "printf(\"login \");");
    write("config/zyrc", "printf(\"start \");");
    e_lang->loginShell = 1;
    EXPECT_EQ(startWith(""), "start login ");
    e_lang->restricted = 1;
    EXPECT_EXIT(readStartupFile(nullptr), testing::ExitedWithCode(1),
                "^ERROR: cannot open file .*/config/zyslogin\n$");
}

TEST_F(StartupFilesTest, AModelThatCannotBeCopiedEndsTheProcess) {
    e_lang->copyStartupFile = 1;
    EXPECT_EXIT(readStartupFile(nullptr), testing::ExitedWithCode(1),
                "^\nWARNING: .*/config/_zyrc cannot be copied to .*/user/_zyrc\n$");
}

TEST_F(StartupFilesTest, TheLogoutFileOfTheUserRuns) {
    readStartupFile(nullptr);
    executezylogout();  // there is none
    write("user/_zylogout", "printf(\"bye\");");
    testing::internal::CaptureStdout();
    executezylogout();
    fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "bye");
    write("user/_zylogout", "int main() { return 2; }");
    EXPECT_EXIT(executezylogout(), testing::ExitedWithCode(1), "");
}

TEST_F(StartupFilesTest, OptionsOfAFirstLine) {
    EXPECT_EQ(firstLineOptions("#!/bin/zy -w\n"), "-w");
    EXPECT_EQ(firstLineOptions("#!/bin/zy   -aw more"), "-aw");
    EXPECT_EQ(firstLineOptions("#!/bin/zy\r\n"), "");
    EXPECT_EQ(firstLineOptions("#!/bin/zy "), "");
    EXPECT_EQ(errorsOf([] { applyOptionLine("a.zy", "-acxfwin -d"); }),
              "ERROR: invalid option x at line 1 in file 'a.zy'\n");
    EXPECT_EQ(e_lang->noOptionalLib, 1);
    EXPECT_EQ(e_lang->startupMode, 2);
    EXPECT_EQ(e_lang->warningLevel, 3);
    EXPECT_EQ(e_lang->parseOnly, 1);
    EXPECT_EQ(e_lang->copyStartupFile, 0);
    applyOptionLine("a.zy", "-S");
    EXPECT_EQ(e_lang->restricted, 1);
    EXPECT_EXIT(applyOptionLine("a.zy", "-wvx"), testing::ExitedWithCode(0), "^$");
}

}  // namespace zy
