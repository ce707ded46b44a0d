// State of the names.

#include "front/names.h"

namespace zy {

NameEntry *nameTable[BUCKET_COUNT];
NameEntry *nameIndex[NAME_INDEX_SIZE];
NameEntry *pendingNames;
NameEntry *fileStaticNames;

}  // namespace zy
