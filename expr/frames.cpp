// Frames of variables. The first fifty slots of a frame are reached by index alone, further ones
// along the chain that hangs on the last direct chunk.

#include <cstdlib>

#include "decl/funcInfo.h"
#include "expr/scope.h"
#include "stmt/stmtNode.h"

namespace zy {

namespace {

int levelOfOwner(const void *owner, bool isFunction) {
    if (!owner)
        return SYSTEM_LEVEL;
    return isFunction ? static_cast<const FuncInfo *>(owner)->parameterLevel
                      : static_cast<const StmtNode *>(owner)->level;
}

SlotChunk *newChunk() {
    auto *chunk = static_cast<SlotChunk *>(allocOrFail(sizeof(SlotChunk)));
    if (chunk)
        *chunk = {};
    return chunk;
}

// The place of a chunk's pointer, NULL if the chain isn't long enough to have one.
SlotChunk **chunkPlace(ScopeFrame *frame, int number, bool create) {
    if (number < DIRECT_CHUNKS)
        return &frame->chunks[number];
    SlotChunk **place = &frame->chunks[DIRECT_CHUNKS - 1];
    for (int i = DIRECT_CHUNKS - 1; i < number; i++) {
        if (!*place && create)
            *place = newChunk();
        if (!*place)
            return nullptr;
        place = &(*place)->next;
    }
    return place;
}

}  // namespace

ScopeFrame *newScopeFrame(void *owner, bool isFunction) {
    auto *frame = static_cast<ScopeFrame *>(allocOrFail(sizeof(ScopeFrame)));
    if (!frame)
        return nullptr;
    *frame = {};
    frame->isFunction = isFunction;
    frame->level = levelOfOwner(owner, isFunction);
    frame->owner = owner;
    return frame;
}

void setSlot(ScopeFrame *frame, int slot, VarCell *cell) {
    SlotChunk **place = chunkPlace(frame, slot / SLOTS_PER_CHUNK, true);
    if (!place)
        return;
    if (!*place)
        *place = newChunk();
    if (!*place)
        return;
    (*place)->cells[slot % SLOTS_PER_CHUNK] = cell;
    if (slot >= frame->slotCount)
        frame->slotCount = slot + 1;
}

VarCell *slotOf(const ScopeFrame *frame, int slot) {
    if (slot >= frame->slotCount)
        return nullptr;
    int number = slot / SLOTS_PER_CHUNK;
    const SlotChunk *chunk = frame->chunks[number < DIRECT_CHUNKS ? number : DIRECT_CHUNKS - 1];
    for (; chunk && number >= DIRECT_CHUNKS; number--)
        chunk = chunk->next;
    return chunk ? chunk->cells[slot % SLOTS_PER_CHUNK] : nullptr;
}

void releaseFrame(ScopeFrame *frame) {
    for (int slot = 0; slot < frame->slotCount; slot++)
        if (VarCell *cell = slotOf(frame, slot))
            killEntry(cell);
    for (SlotChunk *chunk : frame->chunks)
        while (chunk) {
            SlotChunk *next = chunk->next;
            free(chunk);
            chunk = next;
        }
    free(frame);
}

void popFrame() {
    ScopeFrame *frame = currentContext->frames;
    if (!frame || frame == baseFrame)
        return;
    currentContext->frames = frame->outer;
    releaseFrame(frame);
}

}  // namespace zy
