// Keeps the place of a running script while texts are parsed and run in the middle of it.
#pragma once

#include "expr/context.h"
#include "instance/langState.h"

namespace zy {

class ContextKeeper {
public:
    ContextKeeper() = default;
    ContextKeeper(const ContextKeeper &) = delete;
    ContextKeeper &operator=(const ContextKeeper &) = delete;
    ~ContextKeeper() {
        context->statement = statement;
        context->chain = chain;
        context->phase = phase;
        executing = running;
    }

private:
    ExecContext *context = currentContext;
    StmtNode *statement = context->statement;
    ExprNode *chain = context->chain;
    uint16_t phase = context->phase;
    unsigned char running = executing;
};

}  // namespace zy
