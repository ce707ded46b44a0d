// The environment proxy: what an instance sets, what stays, what the host gets back.

#include "instance/environment.h"

#include <cstdlib>

#include "instance.h"

namespace zy {

class EnvironmentTest : public InstanceTest {
    void TearDown() override {
        envRelease();
        InstanceTest::TearDown();
    }
};

std::string valueOf(const char *name) {
    const char *value = envGet(name);
    return value ? value : "(none)";
}

TEST_F(EnvironmentTest, NameAndValueArePartedByEqualSignsAndBlanks) {
    for (const char *text : {"ZY_A=1 =2", "ZY_A 1 =2", "ZY_A= = 1 =2"}) {
        EXPECT_EQ(envPut(text), 0);
        EXPECT_EQ(valueOf("ZY_A"), "1 =2") << text;
    }
}

TEST_F(EnvironmentTest, ATextWithoutAValueRemovesTheVariable) {
    for (const char *text : {"ZY_A", "ZY_A=", "ZY_A "}) {
        envPut("ZY_A=1");
        EXPECT_EQ(envPut(text), 0);
        EXPECT_EQ(valueOf("ZY_A"), "(none)") << text;
    }
}

TEST_F(EnvironmentTest, ReleaseGivesBackWhatTheHostHad) {
    setenv("ZY_OLD", "host's", 1);
    envPut("ZY_OLD=1");
    envPut("ZY_OLD=2");
    envPut("ZY_NEW=1");
    envPut("ZY_NEWER=1");  // a longer name of the same beginning is another variable
    envRelease();
    EXPECT_EQ(valueOf("ZY_OLD"), "host's");
    EXPECT_EQ(valueOf("ZY_NEW"), "(none)");
    EXPECT_EQ(valueOf("ZY_NEWER"), "(none)");
    unsetenv("ZY_OLD");
}

TEST_F(EnvironmentTest, ANamelessTextFailsWithItsMessage) {
    EXPECT_EQ(envPut(nullptr), -1);
    EXPECT_EQ(errorsOf([] { EXPECT_EQ(envPut("=x"), -1); }),
              "222ERROR: cannot update environment variable\nputenv(): Invalid argument\n");
    EXPECT_EQ(runStatus, RUN_ERROR);
}

}  // namespace zy
