#include "embed/frontState.h"

namespace zy {

ZyCopySlot copyTable[MAX_COPIES];
int32_t copyCount;
std::atomic<int32_t> liveCount;

InitEntry initialize{"Zy_Initialize", "Zy_Initialize_zy", 1, 0, 1};
InitEntry initialize2{"Zy_Initialize2", "Zy_Initialize2_zy", 1, 0, 1};

platform::NamedLock *initLock;

EnvEntry *envList;
std::mutex envLock;

}  // namespace zy
