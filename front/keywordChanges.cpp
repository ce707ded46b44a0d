// What a script may do to the vocabulary: zykey renames a word, addkey gives it a second name,
// remkey takes it away. The changes last to the end of the program.

#include <cstdlib>
#include <cstring>

#include "expr/scope.h"
#include "front/keywordTable.h"
#include "front/vocabularySwitches.h"
#include "instance/report.h"

namespace zy {

namespace {

constexpr int FIRST_LETTER_BUCKET = 10;

bool startsWithLetter(const char *name) { return bucketOf(*name) >= FIRST_LETTER_BUCKET; }

// The text of a string value as the name that the lexer would make of it; NULL after a message.
char *nameOf(const Value *value) {
    if (!value || !value->payload.text) {
        parseError("not valid keyword");
        return nullptr;
    }
    size_t size = strlen(value->payload.text) + 1;
    auto *name = static_cast<char *>(malloc(size));
    if (!name) {
        parseError("cannot allocate memory for keyword");
        return nullptr;
    }
    memcpy(name, value->payload.text, size);
    foldName(name);
    return name;
}

bool isVisibleVariable(const char *name) {
    NameEntry *entry = lookupName(name);
    return entry && lookupSymbolParse(entry, nullptr, nullptr);
}

bool mayBecomeKeyword(const char *name) {
    if (!startsWithLetter(name))
        parseError(
            "the new name '%s' is not a valid keyword identifier, it must start with an "
            "alphabetic letter",
            name);
    else if (keywordNamed(name))
        parseError("the name '%s' is already a keyword", name);
    else if (isVisibleVariable(name))
        parseError("the name '%s' has been defined as a variable", name);
    else
        return true;
    return false;
}

void warnOfSymbol(int mode, const char *oldName) {
    if (startsWithLetter(oldName))
        return;
    if (mode == MODE_ZYKEY)
        parseWarning("The key symbol '%s' is changed", oldName);
    else
        parseWarning("a keyword is added for symbol '%s'", oldName);
}

int changeName(int mode, const char *newName, const char *oldName) {
    if (!mayBecomeKeyword(newName))
        return -1;
    const KeywordEntry *old = keywordNamed(oldName);
    if (!old) {
        parseError("the name '%s' is not a keyword", oldName);
        return -1;
    }
    warnOfSymbol(mode, oldName);
    addKeyword(old->keywordClass, newName, old->code);
    if (mode == MODE_ZYKEY)
        removeAllRows(oldName, keywordTable);
    return 0;
}

}  // namespace

int changeKeyword(int mode, Value *newValue, Value *oldValue) {
    char *newName = nameOf(newValue);
    char *oldName = newName ? nameOf(oldValue) : nullptr;
    int result = oldName ? changeName(mode, newName, oldName) : -1;
    free(newName);
    free(oldName);
    return result;
}

bool dropWord(const char *name) {
    if (!keywordNamed(name))
        return false;
    if (!startsWithLetter(name))
        parseWarning("The key symbol '%s' is removed", name);
    return removeAllRows(name, keywordTable);
}

int dropKeyword(Value *value) {
    char *name = nameOf(value);
    if (!name)
        return -1;
    bool found = dropWord(name);
    if (!found)
        parseError("the name '%s' is not a keyword", name);
    free(name);
    return found ? 0 : -1;
}

}  // namespace zy
