// Keeps the place of a running script while texts are parsed and run in the middle of it.
#pragma once

#include "expr/calls.h"
#include "expr/context.h"
#include "instance/langState.h"

namespace zy {

class ContextKeeper {
public:
    ContextKeeper() = default;
    ContextKeeper(const ContextKeeper &) = delete;
    ContextKeeper &operator=(const ContextKeeper &) = delete;
    ~ContextKeeper() {
        if (isUnwinding()) {
            context->statement = statement;
            context->chain = nullptr;
            context->phase = phase;
            executing = 0;
            return;
        }
        if (runCutShort() && !isLive()) {
            currentContext->statement = nullptr;
            currentContext->chain = nullptr;
            return;
        }
        context->statement = statement;
        context->chain = chain;
        context->phase = phase;
        executing = running;
    }

private:
    bool isLive() const {
        const ExecContext *live = allContexts;
        while (live && live != context)
            live = live->allNext;
        return live != nullptr;
    }

    ExecContext *context = currentContext;
    StmtNode *statement = context->statement;
    ExprNode *chain = context->chain;
    uint16_t phase = context->phase;
    unsigned char running = executing;
};

}  // namespace zy
