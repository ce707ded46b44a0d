// What a host sees when creating an instance or a call through the front layer fails: the messages,
// the values, and that no lock is left held.

#include <thread>

#include "host.h"

namespace {

bool canStart(ZyOptions option) {
    void *handle;
    return Zy_Initialize(&handle, &option) == 0 && Zy_End(handle) == 0;
}

TEST(Failures, CopiesAreCountedUpToTheFirstGap) {
    Outcome run = inChild([] {
        makeCopies({1, 2, 3, 5});
        ZyOptions option = stagedHome("copies");
        void *handles[] = {mustStart(option), mustStart(option), mustStart(option)};
        std::thread fourth([&] { exit(canStart(option) ? 0 : 2); });
        waitForMessage("You may copy");
        Zy_End(handles[1]);
        fourth.join();
        return 3;
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err,
              "WARNING: waiting for the availability of a dynamically loaded library "
              "'copies/zymt4.dl'\n"
              "         You may copy 'copies/zymt1.dl' to 'copies/zymt4.dl'\n");
}

TEST(Failures, NoMoreThanFiveHundredCopiesAreSeen) {
    Outcome run = inChild([] {
        makeCopies({1});
        // Links keep this light; the loader gives the one image for all of them.
        for (int i = 2; i <= 501; i++)
            std::filesystem::create_hard_link("copies/zymt1.dl",
                                              "copies/zymt" + std::to_string(i) + ".dl");
        ZyOptions option = stagedHome("copies");
        for (int i = 0; i < 500; i++)
            mustStart(option);
        alarm(1);
        mustStart(option);
        return 1;
    });
    EXPECT_EQ(run.status, -SIGALRM);
    EXPECT_NE(run.err.find("'copies/zymt501.dl'"), std::string::npos) << run.err;
}

TEST(Failures, AMissingFirstCopyIsReportedByEachCall) {
    Outcome run = inChild([] {
        makeCopies({});
        ZyOptions option = stagedHome("copies\\");
        void *handle = &option;
        printf("%d ", Zy_Initialize(&handle, &option));
        printf("%d ", Zy_Initialize(&handle, &option));
        printf("%p", handle);
        return 0;
    });
    EXPECT_EQ(run.out, "-1 -1 (nil)");
    EXPECT_EQ(run.err,
              "ERROR: Zy_Initialize() failed: missing 'copies//zymt1.dl'\n"
              "ERROR: internal error when loading 'copies//zymt1.dl': copies//zymt1.dl: cannot "
              "open shared object file: No such file or directory\n"
              "ERROR: Zy_Initialize() failed\n");
}

TEST(Failures, ADamagedCopyLeavesItsSlotFree) {
    Outcome run = inChild([] {
        makeCopies({1});
        std::ofstream("copies/zymt1.dl") << "no library";
        ZyOptions option = stagedHome("copies");
        void *handle;
        printf("%d", Zy_Initialize(&handle, &option));
        std::filesystem::remove_all("copies");
        makeCopies({1});
        printf(" %d", canStart(option));
        return 0;
    });
    EXPECT_EQ(run.out, "-1 1");
    EXPECT_EQ(run.err,
              "ERROR: internal error when loading 'copies/zymt1.dl': copies/zymt1.dl: file too "
              "short\n"
              "ERROR: Zy_Initialize() failed\n");
}

TEST(Failures, AWrongCopyKeepsItsSlot) {
    Outcome run = inChild([] {
        makeCopies({2});
        makeForeignCopy();
        ZyOptions option = stagedHome("copies");
        void *handle, *next;
        printf("%d", Zy_Initialize(&handle, &option));
        printf(" %d", Zy_Initialize(&next, &option));
        printf(" %s", copyOf(next).c_str());
        printf(" %d", Zy_End(next));
        printf(" %d", Zy_Reset(handle));
        return 0;
    });
    EXPECT_EQ(run.out, "-1 0 zymt2.dl 0 -1");
    EXPECT_EQ(run.err,
              "ERROR: internal error for dlsym(): copies/zymt1.dl: undefined symbol: "
              "Zy_Initialize_zy\n"
              "ERROR: Zy_Initialize() failed\n"
              "ERROR: internal error for dlsym(): copies/zymt1.dl: undefined symbol: "
              "Zy_Reset_zy\n"
              "ERROR: Zy_Reset() failed\n");
}

TEST(Failures, AnUnreadableFolderFallsBackToTheHome) {
    Outcome run = inChild([] { return canStart(stagedHome("no such folder")) ? 0 : 1; });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
}

TEST(Failures, ANullHandleIsRefusedAndHoldsNoLock) {
    Outcome run = inChild([] {
        ZyOptions option = stagedHome();
        printf("%d ", Zy_Initialize(nullptr, &option));
        printf("%d", canStart(option));
        char *argv[] = {nullptr};
        printf(" %d", Zy_RunScript(nullptr, argv));
        Zy_VaEnd(nullptr, nullptr);
        return 0;
    });
    EXPECT_EQ(run.out, "-1 1 -1");
    EXPECT_EQ(run.err,
              "ERROR: The first argument of Zy_Initialize() is NULL using multi-thread Zy\n"
              "ERROR: The first argument of Zy_RunScript() is NULL using multi-thread Zy\n"
              "ERROR: The first argument of Zy_VaEnd() is NULL using multi-thread Zy\n");
}

TEST(Failures, AnEndedInstanceIsNoInstance) {
    Outcome run = inChild([] {
        void *handle = mustStart();
        mustEnd(handle);
        printf("%d ", Zy_Reset(handle));
        printf("%d", Zy_End(handle));
        return canStart(stagedHome()) ? 0 : 2;
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "-1 -1");
    EXPECT_EQ(run.err,
              "ERROR: internal error for dlsym(): the handle is no running interpreter's\n"
              "ERROR: Zy_Reset() failed\n"
              "ERROR: internal error for dlsym(): the handle is no running interpreter's\n"
              "ERROR: Zy_End() failed\n");
}

}  // namespace
