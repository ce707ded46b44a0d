// The lexer's look-up. What makes it more than a search are the soft words: the names of built-in
// functions, which are keywords only where they are called, so that a script may use them as names.

#include <cstdio>
#include <cstring>

#include "front/keywordTable.h"
#include "front/lexerParts.h"
#include "front/tokens.h"
#include "instance/report.h"

namespace zy {

namespace {

constexpr int SOFT_WORD_MAX = 64;

bool matches(const KeywordEntry *row, const char *text, uint16_t hash, int length) {
    if (row->hash != hash || !row->name)
        return false;
    return length <= 1 || strncmp(row->name, text, static_cast<size_t>(length)) == 0;
}

KeywordEntry *firstMatch(KeywordEntry *row, const char *text, uint16_t hash, int length) {
    while (row && !matches(row, text, hash, length))
        row = row->next;
    return row;
}

// Functions that choose their work by the type of an argument: a script's own one of that name is
// likely a mistake.
void warnOfGeneric(const char *word) {
    for (const char *generic : {"alias", "dlrunfun", "elementtype", "min", "max"})
        if (strcmp(word, generic) == 0)
            parseWarning("built-in generic function '%s()' is used, user shall not redefine it ",
                         word);
}

// Whether the soft word that has just been read is called here. A declaration of a function of that
// name doesn't call it.
bool isCalled(const char *word) {
    bool declared = expressionDepth == 0 && atDeclaration();
    if (!declared && !e_lang->macroExpansionOn)
        return true;
    peekNonBlank();
    char next = lineBuffer[linePos];
    if (declared) {
        if (next == '(')
            warnOfGeneric(word);
        return false;
    }
    if (next == '(')
        return true;
    // A text follows: fprintf stdout << TEXT.
    return classOf(next) & CC_LETTER && strcmp(word, "fprintf") == 0;
}

}  // namespace

KeywordEntry *findKeyword(const char *text, uint16_t hash, int length) {
    linePos = static_cast<int16_t>(linePos + length);
    if (!keywordHashes.test(hash % KEYWORD_HASHES))
        return nullptr;
    KeywordEntry **bucket = &keywordTable[bucketOf(*text)];
    KeywordEntry *row = firstMatch(*bucket, text, hash, length);
    if (!row || !row->soft)
        return row;
    // The look ahead may read lines whose directives change the table and the text: from here on
    // the word is a copy, and the walk starts again.
    char word[SOFT_WORD_MAX];
    snprintf(word, sizeof word, "%s", row->name);
    bool called = isCalled(word);
    for (row = *bucket; row; row = row->next)
        if (matches(row, word, hash, length) && (called || !row->soft))
            return row;
    return nullptr;
}

}  // namespace zy
