// Starts of an instance whose home comes from the machine's store.

#include "host.h"

namespace {

// Exported, but no service: the home of this copy.
extern "C" char *Zy_Home_kernel(void *);

const std::string homeOfMachine = ZY_MACHINE "/home";

void writeStore(const std::string &text) { std::ofstream(ZY_MACHINE "/store") << text; }

class StoreTest : public testing::Test {
protected:
    void SetUp() override { unsetenv("ZYHOME"); }
    void TearDown() override { std::filesystem::remove(ZY_MACHINE "/store"); }
};

// An instance with options that name no home, so that only the kernel looks into the store.
int startWithoutHome() {
    void *handle;
    std::string copies = ZY_HOME "/extern/lib";
    ZyOptions option = {ZY_REGULAR_SHELL, nullptr, copies.c_str()};
    int result = Zy_Initialize(&handle, &option);
    printf("%s", Zy_Home(handle));
    mustEnd(handle);
    return result == 0 ? 0 : 1;
}

// A stand-alone interpreter: no front layer, no copies.
int startAlone() {
    initConstSysVars();
    int result = initExecution();
    printf("%s", Zy_Home_kernel(nullptr));
    cleanMemory();
    return result == 0 ? 0 : 1;
}

TEST_F(StoreTest, AnEmbeddedInstanceWithoutOptionsTakesTheToolkitOfTheStoresHome) {
    writeStore("OTHER=x\nZYHOME=" + homeOfMachine + "\n");
    // Another home in the environment is meant for stand-alone runs.
    Outcome outcome = inChild([] {
        setenv("ZYHOME", "/elsewhere", 1);
        void *handle;
        if (Zy_Initialize(&handle, nullptr) != 0)
            return 1;
        printf("%s %s ", Zy_Home(handle), getenv("ZYHOME"));
        mustEnd(handle);
        printf("%s", getenv("ZYHOME"));
        return 0;
    });
    std::string toolkit = homeOfMachine + "/toolkit/embedzy";
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, toolkit + " " + toolkit + " /elsewhere");
    EXPECT_EQ(outcome.err, "");

    outcome = inChild(startWithoutHome);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, toolkit);
}

TEST_F(StoreTest, AStandAloneRunTakesTheHomeAsItIsUnlessTheEnvironmentHasOne) {
    writeStore("ZYHOME=" + homeOfMachine + "\n");
    EXPECT_EQ(inChild(startAlone).out, homeOfMachine);

    std::filesystem::remove(ZY_MACHINE "/store");
    Outcome outcome = inChild([] {
        setenv("ZYHOME", "/some/home", 1);
        return startAlone();
    });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "/some/home");
    EXPECT_EQ(outcome.err, "");
}

TEST_F(StoreTest, NoStoreIsReportedAndHostsAreToldOfTheOption) {
    Outcome outcome = inChild(startWithoutHome);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err,
              "ERROR: cannot obtain a value for ZYHOME\n"
              "       you may set it using 'option.zyhome' in Embedded Zy API "
              "Zy_Initialize(&interp, &option)\n");

    outcome = inChild(startAlone);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "ERROR: cannot obtain a value for ZYHOME\n");
}

TEST_F(StoreTest, AStoreWithoutTheValueIsReported) {
    writeStore("OTHER=x\nZYHOMES=/x\n");
    Outcome outcome = inChild(startWithoutHome);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "ERROR: register value ZYHOME cannot be obtained from registry\n");
}

}  // namespace
