// The functions that a script has given to atexit.

#include "embed/scriptDriver.h"
#include "expr/operands.h"
#include "expr/routines.h"
#include "expr/scalarFamilies.h"

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

// Newest first. A NULL pointer to function isn't taken.
void atexitOperator(ExprNode *node) {
    void *function;
    {
        Operand operand(node->left);
        if (!operand)
            return;
        function = operand->payload.symbol;
    }
    if (function)
        e_lang->atExitList = new AtExitEntry{e_lang->atExitList, function};
    pushScalar(function ? 0 : 1);
}

}  // namespace zy
