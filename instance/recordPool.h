// record header: records of one type, carved from blocks that stay until the pool is released. A
// record that is given back waits in the pool for the next taker, linked by its `next`. With
// ZY_HEAP_RECORDS each record is a heap block of its own, so that sanitizers see misuse.
#pragma once

#include <cstdlib>

namespace zy {

template <class Record, int perBlock>
struct RecordPool {
    struct Block {
        Block *next;
        Record records[perBlock];
    };
    Block *blocks;
    Record *given;  // back
    int carved;     // from all blocks
};

// Its contents are anything; NULL if memory is exhausted.
template <class Record, int perBlock>
Record *takeRecord(RecordPool<Record, perBlock> &pool) {
#ifdef ZY_HEAP_RECORDS
    static_cast<void>(pool);
    return static_cast<Record *>(malloc(sizeof(Record)));
#else
    using Block = typename RecordPool<Record, perBlock>::Block;
    if (Record *record = pool.given) {
        pool.given = record->next;
        return record;
    }
    if (pool.carved % perBlock == 0) {
        auto *block = static_cast<Block *>(malloc(sizeof(Block)));
        if (!block)
            return nullptr;
        block->next = pool.blocks;
        pool.blocks = block;
    }
    return &pool.blocks->records[pool.carved++ % perBlock];
#endif
}

template <class Record, int perBlock>
void giveRecord(RecordPool<Record, perBlock> &pool, Record *record) {
#ifdef ZY_HEAP_RECORDS
    static_cast<void>(pool);
    free(record);
#else
    record->next = pool.given;
    pool.given = record;
#endif
}

// Whatever its records own has been released before.
template <class Record, int perBlock>
void releasePool(RecordPool<Record, perBlock> &pool) {
    while (auto *block = pool.blocks) {
        pool.blocks = block->next;
        free(block);
    }
    pool = {};
}

}  // namespace zy
