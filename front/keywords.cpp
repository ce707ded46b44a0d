// The keyword table: its rows, how they get in and out, and the copy of it that lasts from one
// program to the next. A bucket is a list whose head is the newest row, so that a word added later
// stands before an older row of the same name.

#include <cstdlib>
#include <cstring>

#include "front/keywordTable.h"
#include "instance/report.h"

namespace zy {

namespace {

constexpr VocabularyRow vocabulary[] = {
#define ZY_KEYWORD(word, keywordClass, code, soft) {word, keywordClass, code, soft},
#include "front/keywords.inc"
#undef ZY_KEYWORD
};

// A row that is in no bucket yet. NULL after a message if memory is exhausted; exhausted for the
// text alone, the row has none and matches nothing.
KeywordEntry *newRow(const char *name, uint16_t hash, KeywordClass keywordClass, int code,
                     uint8_t soft) {
    auto *row = static_cast<KeywordEntry *>(malloc(sizeof(KeywordEntry)));
    size_t size = strlen(name) + 1;
    char *text = row ? static_cast<char *>(malloc(size)) : nullptr;
    if (text)
        memcpy(text, name, size);
    else
        plainError("cannot allocate memory for keywords");
    if (row)
        *row = {nullptr, hash, soft, text, keywordClass, code};
    return row;
}

void releaseRow(KeywordEntry *row) {
    free(row->name);
    free(row);
}

void releaseList(KeywordEntry *&list) {
    while (list) {
        KeywordEntry *row = list;
        list = row->next;
        releaseRow(row);
    }
}

void releaseTable(KeywordEntry **table) {
    for (int bucket = 0; bucket < BUCKET_COUNT; bucket++)
        releaseList(table[bucket]);
}

KeywordEntry *copyRow(const KeywordEntry *row) {
    if (!row->name)
        return nullptr;
    return newRow(row->name, row->hash, row->keywordClass, row->code, row->soft);
}

// Fills a table with copies of the other's rows, in their order.
void copyTable(KeywordEntry **target, KeywordEntry *const *source) {
    releaseTable(target);
    for (int bucket = 0; bucket < BUCKET_COUNT; bucket++) {
        KeywordEntry **end = &target[bucket];
        for (const KeywordEntry *row = source[bucket]; row; row = row->next) {
            *end = copyRow(row);
            if (*end)
                end = &(*end)->next;
        }
    }
}

void insertRow(KeywordEntry **table, KeywordEntry *row) {
    KeywordEntry *&head = table[bucketOf(*row->name)];
    row->next = head;
    head = row;
}

}  // namespace

const VocabularyRow *vocabularyRow(const char *word) {
    for (const VocabularyRow &row : vocabulary)
        if (strcmp(row.word, word) == 0)
            return &row;
    return nullptr;
}

KeywordEntry *addKeyword(KeywordClass keywordClass, const char *name, int code) {
    KeywordEntry *row = newRow(name, nameHash(name), keywordClass, code, 0);
    if (!row)
        return nullptr;
    KeywordEntry *&head = keywordTable[bucketOf(*name)];
    row->next = head;
    head = row;
    return row;
}

KeywordEntry *addKeyword(KeywordClass keywordClass, const char *name) {
    return addKeyword(keywordClass, name, 0);
}

void findKeptOperators() {
    assignKeyword = keywordNamed("=");
    shiftLeftKeyword = keywordNamed("<<");
    shiftRightKeyword = keywordNamed(">>");
}

void initKeywords() {
    releaseTable(keywordTable);
    for (const VocabularyRow &row : vocabulary)
        if (KeywordEntry *entry = addKeyword(row.keywordClass, row.word, row.code))
            entry->soft = row.soft;
    findKeptOperators();
    saveKeywords();
}

void releaseKeywords() {
    releaseTable(keywordTable);
    releaseTable(keywordSnapshot);
    releaseList(shadowedKeywords);
    findKeptOperators();
}

KeywordEntry **linkOfKeyword(const char *name, uint16_t hash, KeywordEntry **table) {
    KeywordEntry **link = &table[bucketOf(*name)];
    while (*link && ((*link)->hash != hash || !(*link)->name || strcmp((*link)->name, name) != 0))
        link = &(*link)->next;
    return link;
}

KeywordEntry *keywordNamed(const char *name, KeywordEntry *const *table) {
    return *linkOfKeyword(name, nameHash(name), const_cast<KeywordEntry **>(table));
}

int removeKeyword(const char *name, uint16_t hash, KeywordEntry **table) {
    KeywordEntry **link = linkOfKeyword(name, hash, table);
    KeywordEntry *row = *link;
    if (!row)
        return -1;
    *link = row->next;
    releaseRow(row);
    if (table == keywordTable)
        findKeptOperators();
    return 0;
}

bool removeAllRows(const char *name, KeywordEntry **table) {
    uint16_t hash = nameHash(name);
    bool found = false;
    while (removeKeyword(name, hash, table) == 0)
        found = true;
    return found;
}

// A word that a function of this program has taken the place of is back for the next one.
void saveKeywords() {
    copyTable(keywordSnapshot, keywordTable);
    for (const KeywordEntry *row = shadowedKeywords; row; row = row->next)
        if (KeywordEntry *copy = copyRow(row))
            insertRow(keywordSnapshot, copy);
}

void restoreKeywords() {
    copyTable(keywordTable, keywordSnapshot);
    releaseList(shadowedKeywords);
    findKeptOperators();
}

bool shadowKeyword(const char *name) {
    uint16_t hash = nameHash(name);
    bool found = false;
    KeywordEntry **link = linkOfKeyword(name, hash, keywordTable);
    while (KeywordEntry *row = *link) {
        if (!row->soft)
            break;
        *link = row->next;
        row->next = shadowedKeywords;
        shadowedKeywords = row;
        found = true;
        link = linkOfKeyword(name, hash, keywordTable);
    }
    return found;
}

}  // namespace zy
