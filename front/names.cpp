// The table of spellings. New entries go to the head of their bucket.

#include "front/names.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "decl/typeInfo.h"
#include "instance/report.h"

namespace zy {

namespace {

template <class Matches>
NameEntry *findName(const char *text, Matches matches) {
    NameEntry *entry = nameTable[bucketOf(*text)];
    while (entry && (entry->hidden || !matches(entry)))
        entry = entry->next;
    return entry;
}

// Sums of characters are alike in names that are counted on, so the first two take part.
NameEntry *&indexed(const char *text, uint16_t hash) {
    unsigned second = *text ? static_cast<unsigned char>(text[1]) : 0;
    unsigned place = hash + static_cast<unsigned char>(*text) * 37U + second * 101U;
    return nameIndex[place & (nameIndexSize - 1)];
}

void clearIndex(uint32_t newSize) {
    std::fill_n(nameIndex, nameIndexSize, nullptr);
    nameIndexSize = newSize;
}

// The newest of one spelling is met first.
void enlargeIndex() {
    clearIndex(NAME_INDEX_MAX);
    for (NameEntry *entry : nameTable)
        for (; entry; entry = entry->next)
            if (NameEntry *&known = indexed(entry->text, entry->hash); !known)
                known = entry;
}

void linkName(NameEntry *entry) {
    NameEntry *&head = nameTable[bucketOf(*entry->text)];
    entry->prev = nullptr;
    entry->next = head;
    if (head)
        head->prev = entry;
    head = entry;
    if (++nameCount > nameIndexSize / 2 && nameIndexSize < NAME_INDEX_MAX)
        enlargeIndex();
    indexed(entry->text, entry->hash) = entry;
}

void unlinkName(NameEntry *entry, NameEntry *&head) {
    (entry->prev ? entry->prev->next : head) = entry->next;
    if (entry->next)
        entry->next->prev = entry->prev;
    if (NameEntry *&known = indexed(entry->text, entry->hash); known == entry)
        known = &forgottenName;
    nameCount--;
}

// Room for an entry and the text behind it. NULL after a message if memory is exhausted.
NameEntry *newEntry(size_t textSize) {
    bool pooled = textSize <= sizeof(NameRecord::text);
    void *room = pooled ? takeRecord(namePool) : malloc(sizeof(NameEntry) + textSize);
    if (!room) {
        reportOutOfMemory();
        return nullptr;
    }
    auto *entry = static_cast<NameEntry *>(room);
    *entry = {};
    entry->pooled = pooled;
    entry->text = reinterpret_cast<char *>(entry + 1);
    return entry;
}

void releaseEntry(NameEntry *entry) {
    if (entry->pooled)
        giveRecord(namePool, reinterpret_cast<NameRecord *>(entry));
    else
        free(entry);
}

void releaseNameList(NameEntry *&head) {
    while (NameEntry *entry = head) {
        head = entry->next;
        releaseEntry(entry);
    }
}

}  // namespace

NameEntry *lookupName(const char *text) { return lookupHashedName(text, nameHash(text)); }

NameEntry *lookupHashedName(const char *text, uint16_t hash) {
    auto matches = [=](const NameEntry *entry) {
        return entry->hash == hash && !entry->hidden && strcmp(entry->text, text) == 0;
    };
    NameEntry *&known = indexed(text, hash);
    if (!known || matches(known))
        return known;
    NameEntry *entry = findName(text, matches);
    if (entry)
        known = entry;
    return entry;
}

NameEntry *lookupNamePrefix(const char *text, uint16_t hash, int length) {
    return findName(text, [=](const NameEntry *entry) {
        return entry->hash == hash && !entry->hidden &&
               (length < 2 || strncmp(entry->text, text, length) == 0);
    });
}

NameEntry *addName(const char *text) {
    size_t size = strlen(text) + 1;
    NameEntry *entry = newEntry(size);
    if (!entry)
        return nullptr;
    memcpy(entry->text, text, size);
    entry->hash = nameHash(text);
    linkName(entry);
    return entry;
}

void removeName(const char *text) {
    if (NameEntry *entry = lookupName(text)) {
        unlinkName(entry, nameTable[bucketOf(*text)]);
        releaseEntry(entry);
    }
}

// ---- File-static names ------------------------------------------------------------------------

namespace {

bool isFileStatic(const NameEntry *entry) {
    const TypeInfo *symbol = entry->symbol;
    return symbol && symbol->level == FILE_LEVEL && symbol->storage == STORAGE_STATIC;
}

// Moves the file-static names to a list, so that what stood first in a bucket comes off it last.
void moveFileStatics(NameEntry *&list) {
    for (NameEntry *&bucket : nameTable) {
        NameEntry *next = nullptr;
        for (NameEntry *entry = bucket; entry; entry = next) {
            next = entry->next;
            if (!isFileStatic(entry))
                continue;
            unlinkName(entry, bucket);
            entry->prev = nullptr;
            entry->next = list;
            list = entry;
        }
    }
}

}  // namespace

void hideFileNames() { moveFileStatics(pendingNames); }

void restoreFileNames() {
    moveFileStatics(fileStaticNames);
    while (NameEntry *entry = pendingNames) {
        pendingNames = entry->next;
        linkName(entry);
    }
}

void releaseNames() {
    for (NameEntry *&bucket : nameTable)
        releaseNameList(bucket);
    releaseNameList(pendingNames);
    releaseNameList(fileStaticNames);
    releasePool(namePool);
    clearIndex(NAME_INDEX_SMALL);
    nameCount = 0;
}

}  // namespace zy
