// The words of the operating system, which the restricted shell takes out of the language, and lets
// in again while it reads trusted code.

#include <initializer_list>

#include "front/keywordTable.h"

namespace zy {

namespace {

struct RestrictedWord {
    const char *word;
    const char *meaning;  // the word of the vocabulary whose code it has
    bool soft;
};

constexpr RestrictedWord restrictedWords[] = {
    {"_execv", "_execv", false},
    {"_execvp", "_execvp", false},
    {"_fopen", "_fopen", false},
    {"_fork", "_fork", false},
    {"_fstat", "_fstat", false},
    {"_lstat", "_lstat", false},
    {"_pipe", "_pipe", false},
    {"_popen", "_popen", false},
    {"_remove", "_remove", false},
    {"_rename", "_rename", false},
    {"_socket", "_socket", false},
    {"_stat", "_stat", false},
    {"_socketpair", "_socketpair", false},
    {"_utime", "_utime", false},
    {"_system", "_system", false},
    {"_setrlimit", "setrlimit", false},  // no word until trusted code has been read
    {"getenv", "getenv", true},
    {"open", "open", true},
    {"putenv", "putenv", true},
    {"access", "access", true},
};

}  // namespace

void hideRestrictedKeywords() {
    for (const RestrictedWord &row : restrictedWords) {
        removeAllRows(row.word, keywordTable);
        removeAllRows(row.word, keywordSnapshot);
    }
    for (const char *word : {"execv", "execvp", "fork"})
        removeAllRows(word, keywordSnapshot);
}

void showRestrictedKeywords() {
    for (const RestrictedWord &row : restrictedWords) {
        if (keywordNamed(row.word))
            continue;
        const VocabularyRow *meaning = vocabularyRow(row.meaning);
        if (KeywordEntry *entry = addKeyword(meaning->keywordClass, row.word, meaning->code))
            entry->soft = row.soft;
    }
}

}  // namespace zy
