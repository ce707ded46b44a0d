// record header: every spelling exists once, as a NameEntry of nameTable; identifiers are compared
// by pointer. The 62-bucket tables of the front end share bucketOf and nameHash.
#pragma once

#include <cstdint>

#include "instance/recordPool.h"

namespace zy {

struct TypeInfo;

constexpr int BUCKET_COUNT = 62;

struct NameEntry {
    NameEntry *next, *prev;  // of the bucket
    uint16_t hash;
    uint8_t hidden;    // taken out of sight of scripts
    uint8_t pooled;    // a record of namePool, not a heap block of its own
    char *text;        // behind the entry
    TypeInfo *symbol;  // the declaration visible at file scope, or NULL
};

// An entry with a text of usual length. The names that an instance starts with fit a block.
struct NameRecord {
    NameEntry entry;
    char text[24];
};
extern RecordPool<NameRecord, 192> namePool;

extern NameEntry *nameTable[BUCKET_COUNT];
// The entry that was last added or found of some spellings: a bucket of a large program is long.
// NULL says that no such name is in the table. A small program, and the start of each instance,
// touch a part of the index only.
constexpr uint32_t NAME_INDEX_MAX = 4096;
constexpr uint32_t NAME_INDEX_SMALL = 512;
extern NameEntry *nameIndex[NAME_INDEX_MAX];
extern uint32_t nameIndexSize;
extern uint32_t nameCount;
extern NameEntry forgottenName;  // stands in the index for one that has been removed: hidden
extern NameEntry *pendingNames;  // see hideFileNames()
extern NameEntry *fileStaticNames;

// The bucket of a name by its first character. 10 and more: the name starts with a letter.
constexpr int bucketOf(char c) {
    if (c >= 'a' && c <= 'z')
        return c - 62;
    if (c >= 'A' && c <= 'Z')
        return c - 54;
    return static_cast<unsigned char>(c) % 10;
}

// The sum of the characters as signed bytes, modulo 65536.
constexpr uint16_t nameHash(const char *text) {
    uint16_t sum = 0;
    for (; *text; text++)
        sum += static_cast<signed char>(*text);
    return sum;
}

NameEntry *lookupName(const char *text);  // NULL if there is none
// The same when the lexer has summed the hash already.
NameEntry *lookupHashedName(const char *text, uint16_t hash);
// Compares `length` characters, for completion; below 2 the hash alone.
NameEntry *lookupNamePrefix(const char *text, uint16_t hash, int length);
NameEntry *addName(const char *text);  // doesn't search first
void removeName(const char *text);
void releaseNames();

// File-static names of the enclosing file while another is read, and those of finished files, which
// can be found only through their TypeInfo.
void hideFileNames();
void restoreFileNames();

}  // namespace zy
