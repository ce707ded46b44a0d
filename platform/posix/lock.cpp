// A named lock is an advisory lock on a file under the user's runtime folder, which keeps processes
// apart, and a mutex, which keeps the threads of this process apart (they share the open file).

#include "platform/lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <mutex>
#include <string>

namespace zy::platform {

struct NamedLock {
    std::recursive_mutex threads;
    int file = -1;  // -1: no lock file could be made
    int depth = 0;  // how often the holder has taken it
};

namespace {

// The folder depends on the user alone, never on the environment: two processes that mean the same
// lock must find the same file.
std::string runtimeFolder() {
    std::string user = std::to_string(getuid());
    std::string folder = "/run/user/" + user;
    if (access(folder.c_str(), W_OK) == 0)
        return folder;
    folder = "/tmp/zy-" + user;
    mkdir(folder.c_str(), 0700);
    struct stat found;
    bool ours =
        lstat(folder.c_str(), &found) == 0 && S_ISDIR(found.st_mode) && found.st_uid == getuid();
    return ours ? folder : "";
}

}  // namespace

NamedLock *openNamedLock(const char *name) {
    auto *lock = new NamedLock;
    std::string folder = runtimeFolder();
    if (!folder.empty()) {
        std::string path = folder + "/zy-" + name + ".lock";
        // Not inherited by programs that are started: a child must not hold the lock.
        lock->file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    }
    return lock;
}

void takeLock(NamedLock *lock) {
    lock->threads.lock();
    if (lock->depth++ > 0 || lock->file < 0)
        return;
    while (flock(lock->file, LOCK_EX) != 0 && errno == EINTR) {
    }
}

void releaseLock(NamedLock *lock) {
    if (--lock->depth == 0 && lock->file >= 0)
        flock(lock->file, LOCK_UN);
    lock->threads.unlock();
}

void closeNamedLock(NamedLock *lock) {
    if (lock->file >= 0)
        close(lock->file);
    delete lock;
}

}  // namespace zy::platform
