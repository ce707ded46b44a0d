// State of the front layer. It is that of the copy which the host linked or loaded first, and all
// instances of the process share it; in the copies of the instances it lies unused.
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>

#include "embed/exportIndex.h"
#include "platform/platform.h"

namespace zy {

constexpr int MAX_COPIES = 500;

// Slot i always stands for the copy zymt<i+1>.dl.
struct ZyCopySlot {
    std::atomic<void *> handle;  // of the loaded copy, NULL when free
    std::atomic<int32_t> inUse;  // read in a loop by a thread that waits for a free slot
    std::atomic<void *> exports[EXPORT_COUNT];  // those of its copy that were looked up, or NULL
};

extern ZyCopySlot copyTable[MAX_COPIES];
extern int32_t copyCount;               // copies found by the first initialisation
extern std::atomic<int32_t> liveCount;  // instances handed out minus instances ended

// The two initialisation entries differ in these alone.
struct InitEntry {
    const char *name;
    const char *exportName;
    std::atomic<int32_t> firstCall;   // 1 until a caller has taken the set-up of the table
    std::atomic<int32_t> tableReady;  // 1 when the table may be read
    std::atomic<int32_t> warnOnce;    // 1 until a caller has warned that it waits
};

extern InitEntry initialize, initialize2;

extern platform::NamedLock *initLock;  // MUTEX-ZY

// A variable that an instance has set.
struct EnvEntry {
    EnvEntry *next;
    char *text;      // NAME=VALUE
    int nameLength;  // of NAME
    char *previous;  // the value before any instance set it, NULL for none
};

extern EnvEntry *envList;
extern std::mutex envLock;  // guards envList: instances set variables from their own threads

}  // namespace zy
