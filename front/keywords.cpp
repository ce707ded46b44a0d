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
#define ZY_KEYWORD(word, keywordClass, code, soft) {word, nameHash(word), soft, keywordClass, code},
#include "front/keywords.inc"
#undef ZY_KEYWORD
};

// Puts a row into the pool's record. NULL after a message if memory is exhausted.
KeywordEntry *newRow(const KeywordEntry &contents) {
    KeywordEntry *row = takeRecord(keywordRows);
    if (!row) {
        plainError("cannot allocate memory for keywords");
        return nullptr;
    }
    *row = contents;
    keywordHashes.set(row->hash % KEYWORD_HASHES);
    return row;
}

KeywordEntry *newVocabularyRow(const VocabularyRow &row) {
    return newRow({nullptr, row.hash, row.soft, false, const_cast<char *>(row.word),
                   row.keywordClass, row.code});
}

// Gives the row a text of its own. Exhausted memory leaves it without one, after a message: it
// matches nothing.
KeywordEntry *newOwningRow(const char *name, const KeywordEntry &contents) {
    KeywordEntry *row = newRow(contents);
    if (!row)
        return nullptr;
    row->ownsName = true;
    row->name = strdup(name);
    if (!row->name)
        plainError("cannot allocate memory for keywords");
    return row;
}

// The current token may be a copy of the row.
void releaseRow(KeywordEntry *row) {
    if (row->ownsName && currentKeyword.name == row->name)
        currentKeyword.name = removedWord;
    if (row->ownsName)
        free(row->name);
    giveRecord(keywordRows, row);
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
    return row->ownsName ? newOwningRow(row->name, *row) : newRow(*row);
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
        *end = nullptr;
    }
}

void insertRow(KeywordEntry **table, KeywordEntry *row, char first) {
    KeywordEntry *&head = table[bucketOf(first)];
    row->next = head;
    head = row;
    keywordsAlike = false;
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
        *row = {nullptr, row->hash, 0, row->ownsName, row->name, keywordClass, code};
    else
        row = newOwningRow(name, {nullptr, nameHash(name), 0, 0, nullptr, keywordClass, code});
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
        if (KeywordEntry *entry = newVocabularyRow(row))
            insertRow(keywordTable, entry, *row.word);
    findKeptOperators();
    saveKeywords();
}

void releaseKeywords() {
    releaseTable(keywordTable);
    releaseTable(keywordSnapshot);
    releaseList(shadowedKeywords);
    releaseList(retiredKeywords);
    releasePool(keywordRows);
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
    keywordsAlike = false;
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

void withdrawKeyword(const char *name) {
    bool alike = keywordsAlike;
    for (KeywordEntry **table : {keywordTable, keywordSnapshot})
        removeKeyword(name, nameHash(name), table);
    keywordsAlike = alike;
}

// A word that a function of this program has taken the place of is back for the next one.
void saveKeywords() {
    if (keywordsAlike)
        return;
    bool alike = !shadowedKeywords && foldedNames == 0;
    copyTable(keywordSnapshot, keywordTable);
    removeFoldedWords(keywordSnapshot);
    for (const KeywordEntry *row = shadowedKeywords; row; row = row->next)
        if (KeywordEntry *copy = copyRow(row))
            insertRow(keywordSnapshot, copy, *copy->name);
    keywordsAlike = alike;
}

void restoreKeywords() {
    if (!keywordsAlike) {
        copyTable(keywordTable, keywordSnapshot);
        findKeptOperators();
    }
    releaseList(shadowedKeywords);
    releaseList(retiredKeywords);
    keywordsAlike = true;
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
        keywordsAlike = false;
        found = true;
    }
    return found;
}

}  // namespace zy
