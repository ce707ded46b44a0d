// Writable cells of the vocabulary: its tables, and what is out of them for a while.

#include "front/keywordTable.h"

namespace zy {

KeywordEntry *keywordTable[BUCKET_COUNT];
KeywordEntry *keywordSnapshot[BUCKET_COUNT];
KeywordEntry *shadowedKeywords;

KeywordEntry *assignKeyword;
KeywordEntry *shiftLeftKeyword;
KeywordEntry *shiftRightKeyword;

}  // namespace zy
