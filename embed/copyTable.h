// The table of library copies: finding them, starting an instance in the lowest free one, ending
// it.
#pragma once

#include <string>

#include "embed/frontState.h"
#include "extern/include/embedzy.h"

namespace zy {

// Zy_Initialize() and Zy_Initialize2(), which differ in their entry alone.
int startInstance(InitEntry &entry, void **handle, ZyOptions *option);

// Ends the instance through its own export and frees its slot; the result of Zy_End().
int endInstance(void *handle, int (*endExport)(void *));

// The slot of an instance; NULL for a handle that isn't one's: looking a name up there isn't safe.
ZyCopySlot *findLiveSlot(void *handle);

// Why the last look-up or load failed, without a line feed at its end.
std::string loaderText();

}  // namespace zy
