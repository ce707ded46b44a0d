// Records of Values and nodes, and the value stack beyond its inline operations. Nothing counts
// records on the way in and out of the free list, liveValueCount() looks when it is asked.

#include "expr/value.h"

#include <cstdlib>
#include <cstring>

#include "expr/objects.h"
#include "expr/recordPool.h"
#include "instance/report.h"
#include "numeric/shape.h"

namespace zy {

Value *newRecord() {
    Value *record = takeRecord(valueRecords);
    if (!record) {
        reportOutOfMemory();
        return nullptr;
    }
    record->next = nullptr;
    record->link = nullptr;
    record->kind = NODE_VALUE;
    recordCount++;
    return record;
}

void releaseRecord(Value *record) {
    giveRecord(valueRecords, record);
    recordCount--;
}

namespace {

int freeCount() {
    int count = 0;
    for (const Value *value = valueFreeList; value; value = value->next)
        count++;
    return count;
}

}  // namespace

void preallocateValues(int count) {
    for (int missing = count - freeCount(); missing > 0; missing--)
        if (Value *record = newRecord())
            recycleValue(record);
}

int liveValueCount() { return recordCount - freeCount(); }

void releaseValueRecords() {
    releasePool(valueRecords);
    valueFreeList = nullptr;
    recordCount = 0;
}

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
