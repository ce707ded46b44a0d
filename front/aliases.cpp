#include "front/aliases.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "expr/value.h"
#include "instance/report.h"

namespace zy {

namespace {

char *copyAliasText(const char *text) {
    if (!text)
        return nullptr;
    size_t size = strlen(text) + 1;
    auto *copy = static_cast<char *>(malloc(size));
    if (copy)
        return static_cast<char *>(memcpy(copy, text, size));
    parseError("out of memory");
    return nullptr;
}

// The link that points to the alias, or to NULL at the end of its bucket.
AliasEntry **linkOfAlias(const char *name) {
    uint16_t hash = nameHash(name);
    AliasEntry **link = &aliasTable[bucketOf(*name)];
    while (*link && ((*link)->hash != hash || strcmp((*link)->name, name) != 0))
        link = &(*link)->next;
    return link;
}

void releaseAlias(AliasEntry *alias) {
    free(alias->name);
    free(alias->value);
    free(alias);
}

void addAlias(const char *name, const char *value) {
    auto *alias = static_cast<AliasEntry *>(malloc(sizeof(AliasEntry)));
    char *copy = copyAliasText(name);
    if (!alias || !copy) {
        free(alias);
        free(copy);
        return;
    }
    AliasEntry *&head = aliasTable[bucketOf(*name)];
    *alias = {head, nameHash(name), copy, copyAliasText(value)};
    head = alias;
}

}  // namespace

AliasEntry *lookupAlias(const char *name) { return *linkOfAlias(name); }

int setAlias(const char *name, const char *value) {
    AliasEntry *alias = lookupAlias(name);
    if (!alias) {
        addAlias(name, value);
        return 0;
    }
    char *copy = copyAliasText(value);  // first: the old text may be what is given
    free(alias->value);
    alias->value = copy;
    return 1;
}

int removeAlias(const char *name) {
    AliasEntry **link = linkOfAlias(name);
    AliasEntry *alias = *link;
    if (!alias)
        return 1;
    *link = alias->next;
    releaseAlias(alias);
    return 0;
}

int listAliases() {
    int count = 0;
    for (const AliasEntry *bucket : aliasTable)
        for (const AliasEntry *alias = bucket; alias; alias = alias->next, count++) {
            if (alias->value)
                printf("%s\t%s\n", alias->name, alias->value);
            else
                printf("%s\n", alias->name);
        }
    return count;
}

void releaseAliases() {
    for (AliasEntry *&bucket : aliasTable)
        while (AliasEntry *alias = bucket) {
            bucket = alias->next;
            releaseAlias(alias);
        }
}

int aliasFunction(Value *name, Value *replacement) {
    const char *text = name ? name->payload.text : nullptr;
    if (!text)
        return -1;
    const char *value = replacement ? replacement->payload.text : nullptr;
    return value ? setAlias(text, value) : removeAlias(text);
}

}  // namespace zy
