// Heap blocks of one size that calls and blocks of scripts take and give back all the time, kept
// for the next one. A kept block is a malloc block like any other, its contents as they were left
// but for the first word.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <new>

namespace zy {

struct FreeBlocks {
    struct Link {
        Link *next;
    };
    Link *top;
    int count;
};

constexpr int FREE_BLOCKS_MAX = 4096;  // what a deep recursion leaves beyond it goes to the heap

// NULL if there is none.
inline void *takeBlock(FreeBlocks &blocks) {
    FreeBlocks::Link *block = blocks.top;
    if (!block)
        return nullptr;
    blocks.top = block->next;
    blocks.count--;
    return block;
}

// False if the block stays the caller's. With ZY_HEAP_RECORDS it always does, so that sanitizers
// see a use after the release.
inline bool giveBlock(FreeBlocks &blocks, void *block) {
#ifdef ZY_HEAP_RECORDS
    static_cast<void>(blocks), static_cast<void>(block);
    return false;
#else
    if (blocks.count >= FREE_BLOCKS_MAX)
        return false;
    blocks.top = new (block) FreeBlocks::Link{blocks.top};
    blocks.count++;
    return true;
#endif
}

extern FreeBlocks freeCells;   // VarCell
extern FreeBlocks freeShapes;  // ShapeNode
extern FreeBlocks freeFrames;  // ScopeFrame; each keeps its first chunk, which is empty
// ExecContext; each keeps its small buffer of phases, if it has one.
extern FreeBlocks freeContexts;
extern uint64_t frameKeys;  // the last one given out

}  // namespace zy
