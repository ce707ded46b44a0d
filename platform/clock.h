// The clock and the calendar.
#pragma once

#include <ctime>

namespace zy::platform {

// The local time now. Unlike the C library's localtime() it shares no buffer with other threads.
tm localTime();

}  // namespace zy::platform
