// Frames of variables. The first fifty slots of a frame are reached by index alone, further ones
// along the chain that hangs on the last direct chunk.

#include <algorithm>
#include <cstdlib>

#include "decl/funcInfo.h"
#include "expr/context.h"
#include "expr/freeBlocks.h"
#include "expr/scope.h"
#include "instance/report.h"
#include "stmt/parseStack.h"

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

constexpr int SLOT_MAX = INT16_MAX;

// Where the pointer to a chunk stands; the chain is made long enough. NULL if memory is exhausted.
SlotChunk **chunkPlace(ScopeFrame *frame, int number) {
    if (number < DIRECT_CHUNKS)
        return &frame->chunks[number];
    SlotChunk **place = &frame->chunks[DIRECT_CHUNKS - 1];
    for (int i = DIRECT_CHUNKS - 1; i < number; i++) {
        if (!*place)
            *place = newChunk();
        if (!*place)
            return nullptr;
        place = &(*place)->next;
    }
    return place;
}

}  // namespace

namespace {

// A frame that is empty but for a chunk that it may have.
ScopeFrame *newEmptyFrame() {
    if (void *block = takeBlock(freeFrames))
        return static_cast<ScopeFrame *>(block);
    auto *frame = static_cast<ScopeFrame *>(allocOrFail(sizeof(ScopeFrame)));
    if (frame)
        *frame = {};
    return frame;
}

void freeChunks(SlotChunk *&chunk) {
    while (SlotChunk *first = chunk) {
        chunk = first->next;
        free(first);
    }
}

void freeFrame(ScopeFrame *frame) {
    for (SlotChunk *&chunk : frame->chunks)
        freeChunks(chunk);
    free(frame);
}

}  // namespace

ScopeFrame *newScopeFrame(void *owner, bool isFunction) {
    ScopeFrame *frame = newEmptyFrame();
    if (!frame)
        return nullptr;
    frame->outer = nullptr;
    frame->key = frameKeys += uint64_t{1} << 16;
    frame->isFunction = isFunction;
    frame->level = levelOfOwner(owner, isFunction);
    frame->owner = owner;
    return frame;
}

namespace {

ScopeFrame *newFrameWithChunk() {
    ScopeFrame *frame = newEmptyFrame();
    if (frame && !frame->chunks[0])
        frame->chunks[0] = newChunk();
    return frame;
}

}  // namespace

ScopeFrame *newNumberFrame(ExecContext *context) {
    ScopeFrame *frame = context->spareFrame ? context->spareFrame : newFrameWithChunk();
    if (!frame || !frame->chunks[0])
        return nullptr;
    context->spareFrame = nullptr;
    frame->outer = context->frames;
    frame->key = frameKeys += uint64_t{1} << 16;
    frame->isFunction = true;
    frame->level = context->level;
    frame->owner = context->function;
    return frame;
}

void keepNumberFrame(ExecContext *context) {
    ScopeFrame *frame = context->frames;
    context->frames = frame->outer;
    frame->slotCount = 0;
    context->spareFrame = frame;
}

void freeNumberFrame(ScopeFrame *frame) {
    for (VarCell *cell : frame->chunks[0]->cells)
        free(cell);
    freeFrame(frame);
}

bool setSlot(ScopeFrame *frame, int slot, VarCell *cell) {
    if (slot >= SLOT_MAX) {
        parseError("too many variables in one scope");
        return false;
    }
    SlotChunk **place = chunkPlace(frame, slot / SLOTS_PER_CHUNK);
    if (place && !*place)
        *place = newChunk();
    if (!place || !*place)
        return false;
    (*place)->cells[slot % SLOTS_PER_CHUNK] = cell;
    if (slot >= frame->slotCount)
        frame->slotCount = slot + 1;
    return true;
}

namespace {

// A number has no contents to release.
inline void releaseCell(VarCell *cell) {
    if (!isReal(static_cast<int>(cell->type)) || !giveBlock(freeCells, cell))
        killEntry(cell);
}

void releaseLaterChunks(ScopeFrame *frame) {
    for (int slot = SLOTS_PER_CHUNK; slot < frame->slotCount; slot++)
        if (VarCell *cell = slotOf(frame, slot))
            killEntry(cell);
    for (int number = 1; number < DIRECT_CHUNKS; number++)
        freeChunks(frame->chunks[number]);
}

}  // namespace

void releaseFrame(ScopeFrame *frame) {
    int count = std::min<int>(frame->slotCount, SLOTS_PER_CHUNK);
    SlotChunk *first = frame->chunks[0];
    for (int slot = 0; first && slot < count; slot++) {
        if (VarCell *cell = first->cells[slot])
            releaseCell(cell);
        first->cells[slot] = nullptr;
    }
    if (frame->slotCount > SLOTS_PER_CHUNK)
        releaseLaterChunks(frame);
    frame->slotCount = 0;
    if (!giveBlock(freeFrames, frame))
        freeFrame(frame);
}

void releaseFreeBlocks() {
    while (void *cell = takeBlock(freeCells))
        free(cell);
    while (void *node = takeBlock(freeShapes))
        free(node);
    while (void *frame = takeBlock(freeFrames))
        freeFrame(static_cast<ScopeFrame *>(frame));
    releaseFreeContexts();
}

namespace {

// Declarations without storage in a frame: names of types, constants, and what has a cell of its
// own. Their slots stay empty, so that a slot's number is the position in the list.
bool needsSlot(const TypeInfo *symbol) {
    return !symbol->storageCell && symbol->storage != STORAGE_TYPEDEF &&
           symbol->storage != STORAGE_EXTERN && symbol->dataType != DT_TAG &&
           symbol->dataType != DT_ENUM && symbol->dataType != DT_CONSTANT &&
           !(symbol->qualifiers & QUALIFIER_BUILTIN);
}

// The frame of level 0 or 1 among those of the top-level context. That of level 1 is made on
// demand.
ScopeFrame *fileFrame(int level) {
    if (level == SYSTEM_LEVEL || !baseContext)
        return baseFrame;
    ScopeFrame **link = &baseContext->frames;
    while (*link && (*link)->level > FILE_LEVEL)
        link = &(*link)->outer;
    if (*link && (*link)->level == FILE_LEVEL)
        return *link;
    ScopeFrame *frame = newScopeFrame(globalBlock, false);
    if (!frame)
        return nullptr;
    frame->level = FILE_LEVEL;
    frame->outer = *link;
    *link = frame;
    return frame;
}

bool holdsCell(const ScopeFrame *frame, const VarCell *cell) {
    for (int slot = 0; slot < frame->slotCount; slot++)
        if (slotOf(frame, slot) == cell)
            return true;
    return false;
}

// Removed declarations leave their cells behind, so the slot of a new one may be taken.
int freeSlot(const ScopeFrame *frame, int wanted) {
    return slotOf(frame, wanted) ? frame->slotCount : wanted;
}

VarCell *newInitialisedCell(TypeInfo *symbol) {
    VarCell *cell = newVarCell(symbol->dataType);
    if (cell)
        initCell(cell, symbol, symbol->kind);
    return cell;
}

}  // namespace

void allocateStorage(TypeInfo *symbol) {
    if (symbol->level > FILE_LEVEL)
        return;  // enterBlock() does it
    ScopeFrame *frame = fileFrame(symbol->level);
    if (!frame || (symbol->storageCell && holdsCell(frame, symbol->storageCell)))
        return;
    if (!symbol->storageCell)
        symbol->storageCell = newInitialisedCell(symbol);
    if (symbol->storageCell)
        setSlot(frame, freeSlot(frame, symbol->index), symbol->storageCell);
}

void allocateStaticCell(TypeInfo *symbol) {
    if (!symbol->storageCell)
        symbol->storageCell = newInitialisedCell(symbol);
}

void enterBlock() {
    StmtNode *block = currentContext->statement;
    ScopeFrame *frame = newScopeFrame(block, false);
    if (!frame)
        return;
    frame->outer = currentContext->frames;
    currentContext->frames = frame;
    int slot = 0;
    for (TypeInfo *symbol = block->symbols(); symbol; symbol = symbol->next)
        fillSlot(frame, slot++, needsSlot(symbol) ? newInitialisedCell(symbol) : nullptr);
}

void popFrame() {
    ScopeFrame *frame = currentContext->frames;
    if (!frame || frame == baseFrame)
        return;
    currentContext->frames = frame->outer;
    releaseFrame(frame);
}

}  // namespace zy
