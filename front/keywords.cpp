// The keyword table: its rows, how they get in and out, and the copy of it that lasts from one
// program to the next. A bucket is a list whose head is the newest row, so that a word added later
// stands before an older row of the same name.

#include <cstdlib>
#include <cstring>

#include "front/keywordTable.h"
#include "front/lexerState.h"
#include "front/vocabularySwitches.h"
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
    keywordHashes.set(hash % KEYWORD_HASHES);
    return row;
}

// The current token may be a copy of the row.
void releaseRow(KeywordEntry *row) {
    if (currentKeyword.name == row->name)
        currentKeyword.name = removedWord;
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

void insertRow(KeywordEntry **table, KeywordEntry *row, char first) {
    KeywordEntry *&head = table[bucketOf(first)];
    row->next = head;
    head = row;
}

// Words that come and go, as those of the console do, use one row again and again.
KeywordEntry *takeRetired(const char *name) {
    KeywordEntry **link = &retiredKeywords;
    while (*link && strcmp((*link)->name, name) != 0)
        link = &(*link)->next;
    KeywordEntry *row = *link;
    if (row)
        *link = row->next;
    return row;
}

// Tokens that are kept during a look ahead may be copies of the row, so it stays until the program
// has ended.
void retire(KeywordEntry *row) {
    row->next = retiredKeywords;
    retiredKeywords = row;
}

void findKeptOperators() {
    assignKeyword = keywordNamed("=");
    shiftLeftKeyword = keywordNamed("<<");
    shiftRightKeyword = keywordNamed(">>");
}

}  // namespace

const VocabularyRow *vocabularyRow(const char *word) {
    for (const VocabularyRow &row : vocabulary)
        if (strcmp(row.word, word) == 0)
            return &row;
    return nullptr;
}

KeywordEntry *addKeyword(KeywordClass keywordClass, const char *name, int code) {
    KeywordEntry *row = takeRetired(name);
    if (row)
        *row = {nullptr, row->hash, 0, row->name, keywordClass, code};
    else
        row = newRow(name, nameHash(name), keywordClass, code, 0);
    if (row)
        insertRow(keywordTable, row, *name);
    return row;
}

KeywordEntry *addKeyword(KeywordClass keywordClass, const char *name) {
    return addKeyword(keywordClass, name, 0);
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
    releaseList(retiredKeywords);
    keywordHashes.reset();
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
    if (table == keywordTable) {
        retire(row);
        findKeptOperators();
    } else {
        releaseRow(row);
    }
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
    removeFoldedWords(keywordSnapshot);
    for (const KeywordEntry *row = shadowedKeywords; row; row = row->next)
        if (KeywordEntry *copy = copyRow(row))
            insertRow(keywordSnapshot, copy, *copy->name);
}

void restoreKeywords() {
    copyTable(keywordTable, keywordSnapshot);
    releaseList(shadowedKeywords);
    releaseList(retiredKeywords);
    findKeptOperators();
}

bool shadowKeyword(const char *name) {
    uint16_t hash = nameHash(name);
    bool found = false;
    KeywordEntry **link;
    while (*(link = linkOfKeyword(name, hash, keywordTable)) && (*link)->soft) {
        KeywordEntry *row = *link;
        *link = row->next;
        row->next = shadowedKeywords;
        shadowedKeywords = row;
        found = true;
    }
    return found;
}

}  // namespace zy
