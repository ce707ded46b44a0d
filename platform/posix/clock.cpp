#include "platform/clock.h"

namespace zy::platform {

tm localTime() {
    time_t now = time(nullptr);
    tm local = {};
    localtime_r(&now, &local);
    return local;
}

}  // namespace zy::platform
