// State of the names.

#include "front/names.h"

namespace zy {

NameEntry *nameTable[BUCKET_COUNT];
NameEntry *nameIndex[NAME_INDEX_MAX];
uint32_t nameIndexSize = NAME_INDEX_SMALL;
uint32_t nameCount;
NameEntry forgottenName = {nullptr, nullptr, 0, 1, nullptr, nullptr};
NameEntry *pendingNames;
NameEntry *fileStaticNames;

}  // namespace zy
