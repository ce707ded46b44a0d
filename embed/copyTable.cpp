#include "embed/copyTable.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <thread>

#include "instance/environment.h"
#include "instance/langState.h"
#include "instance/report.h"

namespace zy {

std::string loaderText() {
    std::string text = platform::libraryErrorText();
    if (!text.empty() && text.back() == '\n')
        text.pop_back();
    return text;
}

ZyCopySlot *findLiveSlot(void *handle) {
    for (int i = 0; i < std::max(copyCount, 1); i++)
        if (copyTable[i].handle.load(std::memory_order_relaxed) == handle)
            return &copyTable[i];
    return nullptr;
}

// ---- The folder of the copies -------------------------------------------------------------------

namespace {

constexpr int STORE_VALUE_SIZE = 512;

// The first call's set-up and all later look-ups differ by a blank.
const char setUpHint[] =
    "       you may set it using 'option.zyhome' in  Embedded Zy API Zy_Initialize(&interp, "
    "option)\n";
const char laterHint[] =
    "       you may set it using 'option.zyhome' in Embedded Zy API Zy_Initialize(&interp, "
    "option)\n";

// Puts the folder, with one separator appended, into `folder`; done anew for each caller's own
// option. False after a message that ends in the hint.
bool findCopyFolder(const ZyOptions *option, const char *hint, std::string &folder) {
    std::string given = option && option->copyFolder ? option->copyFolder : "";
    platform::useNativeSeparators(given.data());
    if (platform::isReadable(given.c_str())) {
        folder = given;
    } else if (option && option->zyhome) {
        folder = std::string(option->zyhome) + "\\extern\\lib";
    } else {
        char home[STORE_VALUE_SIZE];
        if (platform::readStore("ZYHOME", home, sizeof home) != platform::StoreResult::found) {
            plainError("cannot obtain a value for ZYHOME");
            fputs(hint, stderr);
            return false;
        }
        folder = std::string(home) + "\\toolkit\\embedzy\\extern\\lib";
    }
    folder += platform::separator;
    platform::useNativeSeparators(folder.data());
    return true;
}

std::string copyPath(const std::string &folder, int number) {
    return folder + "zymt" + std::to_string(number) + ".dl";
}

// ---- Starting an instance -----------------------------------------------------------------------

void fillCopyTable(const InitEntry &entry, const ZyOptions *option) {
    initLock = platform::openNamedLock("MUTEX-ZY");
    std::string folder;
    if (!findCopyFolder(option, setUpHint, folder))
        return;
    while (copyCount < MAX_COPIES && platform::fileExists(copyPath(folder, copyCount + 1).c_str()))
        copyCount++;
    if (copyCount == 0)
        plainError("%s() failed: missing '%s'", entry.name, copyPath(folder, 1).c_str());
}

// The first caller fills the table; true for it if that failed. The others wait for it. The table
// counts as ready after a failure too, or they would wait for ever.
bool tableSetUpFailed(InitEntry &entry, const ZyOptions *option) {
    int32_t unused = 1;
    if (entry.firstCall.compare_exchange_strong(unused, 0)) {
        fillCopyTable(entry, option);
        entry.tableReady.store(1);
        return copyCount == 0;
    }
    while (entry.tableReady.load() == 0)
        std::this_thread::yield();
    return false;
}

// True unless the folder can't be found.
bool warnThatItWaits(const ZyOptions *option) {
    std::string folder;
    if (!findCopyFolder(option, laterHint, folder))
        return false;
    std::string next = copyPath(folder, copyCount + 1);
    plainWarning("waiting for the availability of a dynamically loaded library '%s'", next.c_str());
    fprintf(stderr, "         You may copy '%szymt1.dl' to '%s'\n", folder.c_str(), next.c_str());
    return true;
}

// The lowest free slot; waits while all are in use. -1 after a message. Without any copy slot 0 is
// taken, so that loading the first one reports what is wrong.
int chooseSlot(InitEntry &entry, const ZyOptions *option) {
    if (copyCount == 0)
        return 0;
    for (;;) {
        for (int i = 0; i < copyCount; i++)
            if (copyTable[i].inUse.load() == 0)
                return i;
        if (entry.warnOnce.exchange(0) == 1 && !warnThatItWaits(option))
            return -1;
        std::this_thread::yield();
    }
}

// The part of a start that is done by one thread of one process at a time.
int startLocked(InitEntry &entry, void **handle, ZyOptions *option) {
    if (!handle) {
        plainError("The first argument of %s() is NULL using multi-thread Zy", entry.name);
        return -1;
    }
    *handle = nullptr;
    int chosen = chooseSlot(entry, option);
    std::string folder;
    if (chosen < 0 || !findCopyFolder(option, laterHint, folder))
        return -1;
    std::string path = copyPath(folder, chosen + 1);
    *handle = platform::loadLibrary(path.c_str());
    if (!*handle) {
        plainError("internal error when loading '%s': %s", path.c_str(), loaderText().c_str());
        plainError("%s() failed", entry.name);
        return -1;
    }
    for (std::atomic<void *> &address : copyTable[chosen].exports)
        address.store(nullptr, std::memory_order_relaxed);
    copyTable[chosen].handle = *handle;
    copyTable[chosen].inUse = 1;
    using Start = int (*)(void **, ZyOptions *, ZyPutenv, ZyGetenv);
    auto start = reinterpret_cast<Start>(platform::findSymbol(*handle, entry.exportName));
    if (!start) {
        plainError("internal error for dlsym(): %s", loaderText().c_str());
        plainError("%s() failed", entry.name);
        return -1;
    }
    return start(handle, option, envPut, envGet);
}

}  // namespace

int startInstance(InitEntry &entry, void **handle, ZyOptions *option) {
    if (tableSetUpFailed(entry, option))
        return -1;
    liveCount++;
    // Held until the kernel start has returned: it changes what belongs to the whole process.
    platform::takeLock(initLock);
    int result = startLocked(entry, handle, option);
    platform::releaseLock(initLock);
    return result;
}

// ---- Ending an instance -------------------------------------------------------------------------

int endInstance(void *handle, int (*endExport)(void *)) {
    int result = endExport(nullptr);
    if (result == 0) {
        result = platform::unloadLibrary(handle) ? 0 : 1;
        // No lock: a thread that waits for a free slot holds it.
        for (ZyCopySlot &slot : copyTable) {
            if (slot.handle.load() == handle) {
                slot.handle = nullptr;
                slot.inUse = 0;
                break;
            }
        }
    }
    if (--liveCount == 0)
        envRelease();
    return result;
}

}  // namespace zy
