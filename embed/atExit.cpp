// The functions that a script has given to atexit.

#include "embed/scriptDriver.h"

namespace zy {

namespace {

// The function may have added others at the head, so the entry is looked for again.
void unlink(AtExitEntry *entry) {
    for (AtExitEntry **link = &e_lang->atExitList; *link; link = &(*link)->next)
        if (*link == entry) {
            *link = entry->next;
            delete entry;
            return;
        }
}

}  // namespace

void runAtExit() {
    int mask = e_lang->callbackMask;
    e_lang->callbackMask = 0;  // no debug events from these calls
    while (AtExitEntry *entry = e_lang->atExitList) {
        callWithoutArguments(entry->function);
        unlink(entry);
    }
    e_lang->callbackMask = mask;
}

void freeAtExitList() {
    while (e_lang->atExitList)
        unlink(e_lang->atExitList);
}

}  // namespace zy
