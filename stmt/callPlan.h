// What each call of a function needs to know of it, found at the first one and kept with the body:
// how its formals are filled, its name, and the progress fields of its compound statements. These
// stand in the shared tree: a call saves and clears them, so that its activation starts on clean
// fields; the return puts them back.
#pragma once

#include <string>
#include <vector>

#include "decl/funcInfo.h"
#include "expr/value.h"
#include "stmt/stmtNode.h"

namespace zy {

struct CallPlan {
    std::string name;  // as __func__ has it
    bool hasParameters;
    bool takesNumbers;  // formals that are all plain numbers, nothing in front of or behind them
    std::vector<unsigned char *> progress;
    int activations = 0;
};

// NULL while the body is being parsed: what its calls have in common isn't known yet.
CallPlan *makeCallPlan(const FuncInfo *function);
void releaseCallPlan(StmtNode *body);

inline CallPlan *callPlanOf(const FuncInfo *function) {
    auto *plan = static_cast<CallPlan *>(function->body->operandE.pointer);
    return plan ? plan : makeCallPlan(function);
}

// Only an activation that stands inside another of the same body finds progress to save. A buffer
// of the common size stays with the context for its next use.
void saveProgress(ExecContext *context, const CallPlan *plan);
void restoreProgress(ExecContext *context, const CallPlan *plan);

inline void beginActivation(ExecContext *context, CallPlan *plan) {
    if (plan->activations++ > 0)
        saveProgress(context, plan);
}

inline void endActivation(ExecContext *context, CallPlan *plan) {
    plan->activations--;
    if (context->hasSavedProgress)
        restoreProgress(context, plan);
    else
        for (unsigned char *field : plan->progress)
            *field = 0;
}

}  // namespace zy
