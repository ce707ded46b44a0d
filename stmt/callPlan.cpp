#include "stmt/callPlan.h"

#include <algorithm>
#include <cstdlib>

#include "expr/typeQueries.h"
#include "stmt/arms.h"
#include "stmt/callArguments.h"
#include "stmt/functionName.h"

namespace zy {

namespace {

bool takesNumbersAlone(const FuncInfo *function, bool isMember) {
    const TypeInfo *formal = isMember || function->variadic ? nullptr : function->parameters;
    int count = 0;
    for (; formal && isNumberFormal(formal) && count < SLOTS_PER_CHUNK; count++)
        formal = formal->next;
    return count > 0 && !formal;
}

}  // namespace

CallPlan *makeCallPlan(const FuncInfo *function) {
    if (function->isOpen)
        return nullptr;
    bool isMember = function->owner->flags & FLAG_MEMBER_FUNCTION;
    auto *plan = new CallPlan;
    plan->name = fullName(function->owner);
    plan->hasParameters = hasParameters(function);
    plan->takesNumbers = takesNumbersAlone(function, isMember);
    plan->progress = progressFields(function->body);
    function->body->operandE.pointer = plan;
    return plan;
}

void releaseCallPlan(StmtNode *body) { delete static_cast<CallPlan *>(body->operandE.pointer); }

namespace {

constexpr size_t PROGRESS_BUFFER = 24;

bool reserveBuffer(ExecContext *context, size_t size) {
    if (size <= PROGRESS_BUFFER && context->resumeStatus)
        return true;
    free(context->resumeStatus);
    context->resumeStatus =
        static_cast<unsigned char *>(allocOrFail(std::max(size, PROGRESS_BUFFER)));
    return context->resumeStatus;
}

}  // namespace

void saveProgress(ExecContext *context, const CallPlan *plan) {
    bool anyStarted = false;
    for (const unsigned char *field : plan->progress)
        anyStarted |= *field != 0;
    if (!anyStarted || !reserveBuffer(context, plan->progress.size()))
        return;
    context->hasSavedProgress = 1;
    unsigned char *buffer = context->resumeStatus;
    for (unsigned char *field : plan->progress) {
        *buffer++ = *field;
        *field = 0;
    }
}

void restoreProgress(ExecContext *context, const CallPlan *plan) {
    const unsigned char *buffer = context->resumeStatus;
    for (unsigned char *field : plan->progress)
        *field = *buffer++;
    context->hasSavedProgress = 0;
    if (plan->progress.size() <= PROGRESS_BUFFER)
        return;
    free(context->resumeStatus);
    context->resumeStatus = nullptr;
}

}  // namespace zy
