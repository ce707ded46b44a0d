// The value of one assignment, as each of its kinds reads it.
#pragma once

#include "expr/operators.h"
#include "expr/value.h"

namespace zy {

// At its end a popped value goes back for an outer assignment or is released.
class Source {
public:
    explicit Source(ExprNode *node) : value(operandOf(node, popped)) {}
    Source(const Source &) = delete;
    Source &operator=(const Source &) = delete;
    ~Source() {
        if (!value || !popped)
            return;
        const ExprNode *running = currentContext->chain;
        if (running && running->kind == NODE_OPERATOR && running->op == OP_ASSIGN)
            pushValue(value);
        else
            deleteValue(value);
    }
    explicit operator bool() const { return value; }
    Value *get() const { return value; }

private:
    bool popped = false;
    Value *value;
};

}  // namespace zy
