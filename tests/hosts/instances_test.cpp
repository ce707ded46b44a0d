// Creating and ending instances: which copy is taken, what is shared and what isn't.

#include <malloc.h>

#include <atomic>
#include <chrono>
#include <span>
#include <thread>

#include "host.h"

namespace {

void waitFor(const std::function<bool()> &condition) {
    while (!condition())
        std::this_thread::yield();
}

void pauseFor(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

// An instance on its own thread, until it is told to go.
struct Runner {
    std::atomic<bool> started = false, go = false;
    std::thread thread{[this] {
        void *handle = mustStart();
        Zy_SetGlobalUserData(handle, this);
        started = true;
        waitFor([this] { return go.load(); });
        if (Zy_GetGlobalUserData(handle) != this)
            exit(80);  // another instance has written to this one's cell
        mustEnd(handle);
    }};
    void end() {
        go = true;
        thread.join();
    }
};

// Any of them may be the one that waits for another's end, so all are told before one is joined.
void endAll(std::initializer_list<std::span<Runner>> groups) {
    for (std::span<Runner> group : groups)
        for (Runner &runner : group)
            runner.go = true;
    for (std::span<Runner> group : groups)
        for (Runner &runner : group)
            if (runner.thread.joinable())
                runner.thread.join();
}

TEST(Instances, EightThreadsRunEightInstancesAndTheNinthWaits) {
    Outcome run = inChild([] {
        {
            Runner runners[8];
            for (Runner &runner : runners)
                waitFor([&] { return runner.started.load(); });
            Runner ninth;
            waitForMessage("You may copy");
            if (ninth.started)
                return 81;
            runners[5].end();
            waitFor([&] { return ninth.started.load(); });
            endAll({runners, {&ninth, 1}});
        }
        // A second wait in the same process says nothing.
        Runner again[9];
        pauseFor(100);
        endAll({again});
        return 0;
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err,
              "WARNING: waiting for the availability of a dynamically loaded library '" ZY_HOME
              "/extern/lib/zymt9.dl'\n"
              "         You may copy '" ZY_HOME "/extern/lib/zymt1.dl' to '" ZY_HOME
              "/extern/lib/zymt9.dl'\n");
}

TEST(Instances, TheLowestFreeCopyIsTakenAndUnmappedAtTheEnd) {
    Outcome run = inChild([] {
        void *first = mustStart(), *second = mustStart();
        printf("%s %s\n", copyOf(first).c_str(), copyOf(second).c_str());
        mustEnd(first);
        printf("%d %d\n", isMapped("zymt1.dl"), isMapped("zymt2.dl"));
        void *third = mustStart(), *fourth = mustStart();
        printf("%s %s\n", copyOf(third).c_str(), copyOf(fourth).c_str());
        mustEnd(second);
        mustEnd(third);
        mustEnd(fourth);
        printf("%d\n", isMapped("zymt"));
        return 0;
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "zymt1.dl zymt2.dl\n0 1\nzymt1.dl zymt3.dl\n0\n");
    EXPECT_EQ(run.err, "");
}

TEST(Instances, ANewInstanceStartsFromInitialData) {
    Outcome run = inChild([] {
        char script[] = "no such script";
        char *argv[] = {script, nullptr};
        for (int i = 0; i < 2; i++) {
            void *handle = mustStart();
            printf("'%s' %p ", static_cast<char *>(dlsym(handle, "e_filenamebuf")),
                   Zy_GetGlobalUserData(handle));
            printf("%d\n", Zy_RunScript(handle, argv));
            Zy_SetGlobalUserData(handle, argv);
            mustEnd(handle);
        }
        return 0;
    });
    EXPECT_EQ(run.out, "'' (nil) -1\n'' (nil) -1\n");
    // The second run wasn't refused either.
    EXPECT_EQ(run.err,
              "ERROR: cannot open file 'no such script' \n"
              "ERROR: cannot open file 'no such script' \n");
}

TEST(Instances, TheSecondEntryWorksAlike) {
    Outcome run = inChild([] {
        ZyOptions option = stagedHome();
        void *handle;
        if (Zy_Initialize2(nullptr, &option) != -1 || Zy_Initialize2(&handle, &option) != 0)
            return 1;
        printf("%s\n", copyOf(handle).c_str());
        return Zy_End(handle);
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "zymt1.dl\n");
    EXPECT_EQ(run.err,
              "ERROR: The first argument of Zy_Initialize2() is NULL using multi-thread Zy\n");
}

TEST(Instances, ThousandsOfCyclesLeaveNothingBehind) {
    Outcome run = inChild([] {
        auto descriptors = [] {
            return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
        };
        auto cycle = [](int count) {
            for (int i = 0; i < count; i++)
                mustEnd(mustStart());
        };
        cycle(ZY_CYCLES / 10);  // the loader's and the heap's own tables settle
        size_t bytes = mallinfo2().uordblks;
        auto open = descriptors();
        cycle(ZY_CYCLES);
        printf("%td %zd", descriptors() - open, mallinfo2().uordblks - bytes);
        return 0;
    });
    EXPECT_EQ(run.status, 0) << run.err;
    long descriptors, grownBytes;
    std::istringstream(run.out) >> descriptors >> grownBytes;
    EXPECT_EQ(descriptors, 0);
    // The least block takes 24 bytes; what the allocator caches of freed ones counts as in use.
    EXPECT_LT(grownBytes, 16 * ZY_CYCLES);
}

}  // namespace
