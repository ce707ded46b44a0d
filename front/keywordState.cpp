// Writable cells of the vocabulary: its tables, and what is out of them for a while.

#include "front/aliases.h"
#include "front/keywordTable.h"
#include "front/vocabularySwitches.h"

namespace zy {

KeywordEntry *keywordTable[BUCKET_COUNT];
KeywordEntry *keywordSnapshot[BUCKET_COUNT];
KeywordPool keywordRows;
bool keywordsAlike;
KeywordEntry *shadowedKeywords;
KeywordEntry *retiredKeywords;
char removedWord[1];
std::bitset<KEYWORD_HASHES> keywordHashes;

KeywordEntry *assignKeyword;
KeywordEntry *shiftLeftKeyword;
KeywordEntry *shiftRightKeyword;

uint32_t foldedNames;

AliasEntry *aliasTable[BUCKET_COUNT];

}  // namespace zy
