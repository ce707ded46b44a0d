// The room of the operating system: nothing outside it includes a system header of its own.
// One small header per topic; posix/ implements them all. A port is one more such folder.
// The room keeps no state of an instance.
#pragma once

#include "platform/clock.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/library.h"
#include "platform/lock.h"
#include "platform/processor.h"
#include "platform/signals.h"
#include "platform/store.h"
#include "platform/user.h"
