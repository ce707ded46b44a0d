#include "stmt/signalState.h"

#include "extern/include/embedzy.h"

extern "C" {
int ZyLongjumSIG, ZyLongjumSSIG, ZyLongjumSIGset, ZyLongjumSIGaction;
void *ZyCurtdbForSignal[ZY_SIGNAL_COUNT], *ZyCurtdbForSSignal[ZY_SIGNAL_COUNT],
    *ZyCurtdbForSignalset[ZY_SIGNAL_COUNT], *ZyCurtdbForSignalaction[ZY_SIGNAL_COUNT];
}

namespace zy {

platform::SignalHandler handlerBeforeFault, handlerBeforeIllegal;

}  // namespace zy
