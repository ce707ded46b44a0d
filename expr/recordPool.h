// Where the records of Values and nodes come from: blocks that stay until the instance ends. Only
// expr/value.cpp uses this.
#pragma once

#include "expr/value.h"

namespace zy {

constexpr int RECORDS_PER_BLOCK = 256;

struct RecordBlock {
    RecordBlock *next;
    ExprNode records[RECORDS_PER_BLOCK];
};

extern RecordBlock *recordBlocks;
extern int recordCount;  // taken from the heap and not given back

}  // namespace zy
