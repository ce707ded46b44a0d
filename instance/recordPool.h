// record header: records of one type, carved from blocks that stay until the pool is released. A
// record that is given back waits in the pool for the next taker. With ZY_HEAP_RECORDS each record
// is a heap block of its own, so that sanitizers see misuse.
#pragma once

#include <cstdlib>
#include <new>

namespace zy {

template <class Record, int perBlock>
struct RecordPool {
    struct Block {
        Block *next;
        Record records[perBlock];
    };
    struct Link {
        Link *next;
    };
    Block *blocks;
    Link *given;          // back
    Record *fresh, *end;  // what the newest block has left
};

// Makes a block the newest; false if memory is exhausted.
template <class Record, int perBlock>
bool addBlock(RecordPool<Record, perBlock> &pool) {
    using Block = typename RecordPool<Record, perBlock>::Block;
    auto *block = static_cast<Block *>(malloc(sizeof(Block)));
    if (!block)
        return false;
    block->next = pool.blocks;
    pool.blocks = block;
    pool.fresh = block->records;
    pool.end = block->records + perBlock;
    return true;
}

// Its contents are anything; NULL if memory is exhausted.
template <class Record, int perBlock>
Record *takeRecord(RecordPool<Record, perBlock> &pool) {
#ifdef ZY_HEAP_RECORDS
    static_cast<void>(pool);
    return static_cast<Record *>(malloc(sizeof(Record)));
#else
    if (auto *link = pool.given) {
        pool.given = link->next;
        return reinterpret_cast<Record *>(link);
    }
    return pool.fresh != pool.end || addBlock(pool) ? pool.fresh++ : nullptr;
#endif
}

template <class Record, int perBlock>
void giveRecord(RecordPool<Record, perBlock> &pool, Record *record) {
#ifdef ZY_HEAP_RECORDS
    static_cast<void>(pool);
    free(record);
#else
    using Link = typename RecordPool<Record, perBlock>::Link;
    pool.given = new (record) Link{pool.given};
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
