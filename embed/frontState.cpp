#include "embed/frontState.h"

namespace zy {

alignas(64)
    ZyCopySlot copyTable[MAX_COPIES];  // apart from small cells: an instance has no use for it
int32_t copyCount;
std::atomic<int32_t> liveCount;

InitEntry initialize{"Zy_Initialize", "Zy_Initialize_zy", 1, 0, 1};
InitEntry initialize2{"Zy_Initialize2", "Zy_Initialize2_zy", 1, 0, 1};

platform::NamedLock *initLock;

EnvEntry *envList;
std::mutex envLock;

}  // namespace zy
