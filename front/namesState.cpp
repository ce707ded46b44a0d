// State of the names.

#include "front/names.h"

namespace zy {

RecordPool<NameRecord, 192> namePool;
NameEntry *nameTable[BUCKET_COUNT];
// The small index is one page of memory.
alignas(4096) NameEntry *nameIndex[NAME_INDEX_MAX];
uint32_t nameIndexSize = NAME_INDEX_SMALL;
uint32_t nameCount;
NameEntry forgottenName = {nullptr, nullptr, 0, 1, 0, nullptr, nullptr};
NameEntry *pendingNames;
NameEntry *fileStaticNames;

}  // namespace zy
