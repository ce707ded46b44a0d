// Contexts are linked on allContexts, and what ends a program or an instance finds them there.
// Frames are shared between them: a call sees those of its definition.

#include "expr/context.h"

#include <cstdlib>
#include <unordered_set>

#include "decl/funcInfo.h"
#include "expr/freeBlocks.h"
#include "expr/nodes.h"
#include "expr/scope.h"
#include "expr/value.h"

namespace zy {

namespace {

void unlinkContext(ExecContext *&head, ExecContext *ExecContext::*next, ExecContext *context) {
    ExecContext **link = &head;
    while (*link && *link != context)
        link = &((*link)->*next);
    if (*link)
        *link = context->*next;
}

void freeContext(ExecContext *context) {
    if (context->spareFrame)
        freeNumberFrame(context->spareFrame);
    free(context->resumeStatus);
    free(context);
}

void releaseStack(ExecContext *context) {
    while (Value *top = context->stack) {
        context->stack = top->next;
        deleteValue(top);
    }
}

// The frames above a level, each once however many contexts see it.
void releaseFramesAbove(int level) {
    std::unordered_set<ScopeFrame *> frames;
    for (ExecContext *context = allContexts; context; context = context->allNext) {
        while (context->frames && context->frames->level > level) {
            frames.insert(context->frames);
            context->frames = context->frames->outer;
        }
    }
    for (ScopeFrame *frame : frames)
        releaseFrame(frame);
}

}  // namespace

namespace {

// A blank one on allContexts.
ExecContext *takeContext() {
    auto *context = static_cast<ExecContext *>(takeBlock(freeContexts));
    if (!context) {
        context = static_cast<ExecContext *>(allocOrFail(sizeof(ExecContext)));
        if (!context)
            return nullptr;
        context->resumeStatus = nullptr;
        context->spareFrame = nullptr;
    }
    unsigned char *buffer = context->resumeStatus;
    ScopeFrame *frame = context->spareFrame;
    *context = {};
    context->resumeStatus = buffer;
    context->spareFrame = frame;
    context->allNext = allContexts;
    allContexts = context;
    return context;
}

}  // namespace

ExecContext *newContext() {
    ExecContext *context = takeContext();
    const ExecContext *creator = currentContext;
    if (!context || !creator)
        return context;
    context->frames = creator->frames;
    context->level = creator->frames ? creator->frames->level + 1 : 0;
    context->priority = creator->priority;
    return context;
}

ExecContext *newCallContext(FuncInfo *function) {
    ExecContext *context = takeContext();
    if (!context)
        return nullptr;
    context->isCall = 1;
    context->state = 1;
    context->priority = currentContext->priority;
    context->caller = currentContext;
    context->function = function;
    context->level = function->parameterLevel;
    context->statement = function->body;
    return context;
}

namespace {

void releaseVarArgs(ExprNode *list) {
    for (const ExprNode *cell = list; cell; cell = cell->next)
        if (cell->item->type == DT_P_CHAR && cell->item->owned == VAR_ARG_TEXT)
            cell->item->type = DT_STRING;
    deleteNode(list);
}

}  // namespace

void releaseContext(ExecContext *context) {
    unlinkContext(allContexts, &ExecContext::allNext, context);
    unlinkContext(readyQueue, &ExecContext::readyNext, context);
    releaseStack(context);
    if (context->varArgs)
        releaseVarArgs(context->varArgs);
    if (!giveBlock(freeContexts, context))
        freeContext(context);
}

void releaseFreeContexts() {
    while (void *context = takeBlock(freeContexts))
        freeContext(static_cast<ExecContext *>(context));
}

void createBaseFrame() {
    baseFrame = newScopeFrame(nullptr, false);
    if (baseContext && !baseContext->frames)
        baseContext->frames = baseFrame;
}

void resetContexts() {
    releaseContexts();
    releaseRemovedSymbols();
    currentContext = baseContext = newContext();
    if (baseContext)
        baseContext->frames = baseFrame;
    resetClassContext();
}

void rewindContexts() {
    releaseFramesAbove(FILE_LEVEL);
    ExecContext *next = nullptr;
    for (ExecContext *context = allContexts; context; context = next) {
        next = context->allNext;
        if (context != baseContext)
            releaseContext(context);
    }
    evalContext = nullptr;
    currentContext = baseContext;
    releaseStack(baseContext);
    baseContext->statement = nullptr;
    baseContext->chain = nullptr;
    baseContext->phase = 0;
    resetClassContext();
}

void releaseProgramStorage() {
    releaseFramesAbove(SYSTEM_LEVEL);
    for (ExecContext *context = allContexts; context; context = context->allNext)
        releaseStack(context);
}

void releaseContexts() {
    releaseFramesAbove(SYSTEM_LEVEL);
    while (allContexts)
        releaseContext(allContexts);
    currentContext = evalContext = baseContext = nullptr;
}

// ---- Member functions in progress -------------------------------------------------------------

ClassContext *claimClassContext() {
    if (classContext && !classContext->thisFormal)
        return classContext;
    auto *record = static_cast<ClassContext *>(allocOrFail(sizeof(ClassContext)));
    if (!record)
        return nullptr;
    *record = {};
    record->next = classContext;
    classContext = record;
    return record;
}

void popClassContext() {
    ClassContext *top = classContext;
    ClassContext *below = top->next;
    if (!below) {
        *top = {};
        return;
    }
    classContext = below;
    free(top);
}

void resetClassContext() {
    while (classContext && classContext->next)
        popClassContext();
    if (ClassContext *bottom = classContext)
        *bottom = {};
    else
        claimClassContext();
}

void releaseClassContext() {
    resetClassContext();
    free(classContext);
    classContext = nullptr;
}

}  // namespace zy
