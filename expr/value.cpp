// Records of Values and nodes, and the value stack beyond its inline operations. Records are carved
// from blocks; nothing counts them on the way in and out, liveValueCount() looks when it is asked.

#include "expr/value.h"

#include <cstdlib>
#include <cstring>

#include "expr/objects.h"
#include "expr/recordPool.h"
#include "instance/report.h"
#include "numeric/shape.h"

namespace zy {

#ifdef ZY_HEAP_RECORDS

Value *newRecord() {
    auto *record = static_cast<Value *>(allocOrFail(sizeof(Value)));
    if (!record)
        return nullptr;
    record->next = nullptr;
    record->link = nullptr;
    record->kind = NODE_VALUE;
    recordCount++;
    return record;
}

void releaseRecord(Value *record) {
    free(record);
    recordCount--;
}

void preallocateValues(int) {}

int liveValueCount() { return recordCount; }

void releaseValueRecords() {}

#else

namespace {

bool addBlock() {
    auto *block = static_cast<RecordBlock *>(allocOrFail(sizeof(RecordBlock)));
    if (!block)
        return false;
    block->next = recordBlocks;
    recordBlocks = block;
    recordCount += RECORDS_PER_BLOCK;
    for (int i = RECORDS_PER_BLOCK - 1; i >= 0; i--) {
        block->records[i].kind = NODE_VALUE;
        recycleValue(&block->records[i]);
    }
    return true;
}

int freeCount() {
    int count = 0;
    for (const Value *value = valueFreeList; value; value = value->next)
        count++;
    return count;
}

}  // namespace

Value *newRecord() { return addBlock() ? newValue() : nullptr; }

void releaseRecord(Value *record) { recycleValue(record); }

void preallocateValues(int count) {
    for (int missing = count - freeCount(); missing > 0; missing -= RECORDS_PER_BLOCK)
        if (!addBlock())
            return;
}

int liveValueCount() { return recordCount - freeCount(); }

void releaseValueRecords() {
    while (RecordBlock *block = recordBlocks) {
        recordBlocks = block->next;
        free(block);
    }
    valueFreeList = nullptr;
    recordCount = 0;
}

#endif

Value *newZeroValue(int type) {
    Value *value = newValue();
    if (!value)
        return nullptr;
    memset(static_cast<void *>(value), 0, sizeof(Value));
    value->kind = NODE_VALUE;
    value->type = type;
    return value;
}

Value *zeroCell(int type) { return newZeroValue(type); }

void deleteValue(Value *value) {
    if (value->kind == NODE_VALUE) {
        switch (value->type) {
            case DT_STRING: free(value->payload.text); break;
            case DT_STRUCT:
                if (value->owned) {
                    releaseObject(value->payload.p, value->payload2.structInfo);
                    free(value->payload.p);
                }
                break;
            case DT_CARRAY:
            case DT_P_CARRAY:
            case DT_PP_CARRAY:
            case DT_P_ARRAY:
            case DT_ARRAY: releaseArrayValue(value); break;
            default: break;
        }
    }
    recycleValue(value);
}

Value *reportEmptyStack() {
    runError("no value in stack (internal error)");
    return nullptr;
}

void clearValueStack() {
    while (Value *top = currentContext->stack) {
        currentContext->stack = top->next;
        deleteValue(top);
    }
}

}  // namespace zy
