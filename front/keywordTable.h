// What the sources of the keyword table share among themselves.
#pragma once

#include <bitset>

#include "front/tokens.h"
#include "instance/recordPool.h"

namespace zy {

// One row of front/keywords.inc. It has no pointers, so that loading the library leaves it alone.
struct VocabularyRow {
    char word[20];
    uint16_t hash;
    bool soft;
    KeywordClass keywordClass;
    int code;
};

// Rows of all tables: a block has room for the vocabulary and its copy.
using KeywordPool = RecordPool<KeywordEntry, 640>;
extern KeywordPool keywordRows;
// The snapshot has the same rows as the table, and none is out of the table for a while: neither
// need be copied to the other.
extern bool keywordsAlike;

// Rows that functions of the script have taken the place of, newest first.
extern KeywordEntry *shadowedKeywords;
// Rows that have been removed in this program.
extern KeywordEntry *retiredKeywords;
// The text of the current token once its row is gone: empty.
extern char removedWord[1];

// The hashes that rows have or have had, cut to a few bits: most names are told from keywords by
// them, without a walk through a bucket.
constexpr int KEYWORD_HASHES = 4096;
extern std::bitset<KEYWORD_HASHES> keywordHashes;

// The row of a word in the initial vocabulary; NULL if it isn't in it.
const VocabularyRow *vocabularyRow(const char *word);

// The link that points to the newest row of the name; to NULL at the end of the bucket.
KeywordEntry **linkOfKeyword(const char *name, uint16_t hash, KeywordEntry **table);
// Removes every row of the name; false if there was none.
bool removeAllRows(const char *name, KeywordEntry **table);

// remkey's work on a name as the table has it. False, without a message, if there is no such row.
bool dropWord(const char *name);

}  // namespace zy
