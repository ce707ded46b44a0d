// The lock that serialises the creation of instances, between threads and between processes.

#include "platform/lock.h"

#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <thread>

#include "instance.h"

namespace zy {

// A child process; what it writes to `ready` wakes its parent.
struct Child {
    template <class Action>
    explicit Child(Action action) {
        if (pipe(ends) != 0)
            abort();
        id = fork();
        if (id == 0) {
            action([this] { return write(ends[1], "", 1) == 1; });
            _exit(0);
        }
    }
    ~Child() {
        kill(id, SIGKILL);
        waitpid(id, nullptr, 0);
        close(ends[0]);
        close(ends[1]);
    }
    bool readyWithin(int milliseconds) {
        struct timeval time = {milliseconds / 1000, milliseconds % 1000 * 1000};
        fd_set set;
        FD_ZERO(&set);
        FD_SET(ends[0], &set);
        return select(ends[0] + 1, &set, nullptr, nullptr, &time) == 1;
    }
    pid_t id;
    int ends[2];
};

TEST(Lock, CreationWaitsForAnotherProcessAndOutlivesItsDeath) {
    Child holder([](auto ready) {
        platform::takeLock(platform::openNamedLock("MUTEX-ZY"));
        ready();
        pause();
    });
    ASSERT_TRUE(holder.readyWithin(60000));

    Child host([](auto ready) {
        ZyOptions option = {ZY_REGULAR_SHELL, ZY_HOME, nullptr};
        void *handle;
        if (Zy_Initialize(&handle, &option) == 0)
            ready();
    });
    EXPECT_FALSE(host.readyWithin(200));
    kill(holder.id, SIGKILL);
    EXPECT_TRUE(host.readyWithin(60000));
}

TEST(Lock, OneThreadMayTakeItTwiceAndHoldsItUntilItHasReleasedItTwice) {
    platform::NamedLock *lock = platform::openNamedLock("zy-test");
    std::atomic<bool> other = false;
    platform::takeLock(lock);
    platform::takeLock(lock);
    std::thread thread([&] {
        platform::takeLock(lock);
        other = true;
        platform::releaseLock(lock);
    });
    platform::releaseLock(lock);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(other);
    platform::releaseLock(lock);
    thread.join();
    platform::closeNamedLock(lock);
}

}  // namespace zy
