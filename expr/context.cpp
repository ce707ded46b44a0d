#include "expr/context.h"

#include <cstdlib>
#include <unordered_set>

#include "expr/scope.h"
#include "expr/value.h"

namespace zy {

namespace {

void unlinkFromAll(ExecContext *context) {
    ExecContext **link = &allContexts;
    while (*link && *link != context)
        link = &(*link)->allNext;
    if (*link)
        *link = context->allNext;
}

void unlinkFromReady(ExecContext *context) {
    ExecContext **link = &readyQueue;
    while (*link && *link != context)
        link = &(*link)->readyNext;
    if (*link)
        *link = context->readyNext;
}

void releaseStack(ExecContext *context) {
    while (Value *top = context->stack) {
        context->stack = top->next;
        deleteValue(top);
    }
}

}  // namespace

ExecContext *newContext() {
    auto *context = static_cast<ExecContext *>(allocOrFail(sizeof(ExecContext)));
    if (!context)
        return nullptr;
    *context = {};
    context->allNext = allContexts;
    allContexts = context;
    if (const ExecContext *creator = currentContext) {
        context->frames = creator->frames;
        context->level = creator->frames ? creator->frames->level + 1 : 0;
        context->priority = creator->priority;
    }
    return context;
}

void releaseContext(ExecContext *context) {
    unlinkFromAll(context);
    unlinkFromReady(context);
    releaseStack(context);
    free(context->resumeStatus);
    free(context);
}

namespace {

// Frames are shared: a call sees those of its definition. Each is released once.
void releaseAllFrames() {
    std::unordered_set<ScopeFrame *> frames;
    for (const ExecContext *context = allContexts; context; context = context->allNext)
        for (ScopeFrame *frame = context->frames; frame && frame != baseFrame; frame = frame->outer)
            if (!frames.insert(frame).second)
                break;
    for (ScopeFrame *frame : frames)
        releaseFrame(frame);
}

}  // namespace

void releaseContexts() {
    releaseAllFrames();
    while (allContexts)
        releaseContext(allContexts);
    currentContext = evalContext = baseContext = nullptr;
}

void resetContexts() {
    releaseContexts();
    currentContext = baseContext = newContext();
    if (baseContext)
        baseContext->frames = baseFrame;
}

void createBaseFrame() {
    baseFrame = newScopeFrame(nullptr, false);
    if (baseContext && !baseContext->frames)
        baseContext->frames = baseFrame;
}

}  // namespace zy
