#include "instance/environment.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "embed/frontState.h"
#include "instance/report.h"

namespace zy {

namespace {

EnvEntry *findEntry(const char *name, int length) {
    for (EnvEntry *entry = envList; entry; entry = entry->next)
        if (entry->nameLength == length && strncmp(entry->text, name, length) == 0)
            return entry;
    return nullptr;
}

char *copyOrNull(const char *text) { return text ? strdup(text) : nullptr; }

// A new entry at the end of the list, with the value that the variable has before it is set.
EnvEntry *appendEntry(const char *name) {
    auto *entry = static_cast<EnvEntry *>(calloc(1, sizeof(EnvEntry)));
    if (!entry)
        return nullptr;
    entry->previous = copyOrNull(getenv(name));
    EnvEntry **end = &envList;
    while (*end)
        end = &(*end)->next;
    return *end = entry;
}

int failedToSet() {
    fputs("222ERROR: cannot update environment variable\n", stderr);
    perror("putenv()");
    printRunErrorPosition();
    noteRunError();
    return -1;
}

}  // namespace

int envPut(const char *text) {
    if (!text)
        return -1;
    size_t length = strcspn(text, "= ");
    std::string name(text, length);
    const char *value = text + length + strspn(text + length, "= ");
    std::lock_guard guard(envLock);
    EnvEntry *entry = findEntry(text, static_cast<int>(length));
    // The old value is kept before the new one replaces it.
    if (!entry && !name.empty())
        entry = appendEntry(name.c_str());
    char *whole = strdup((name + "=" + value).c_str());
    if (!whole || (!entry && !name.empty())) {
        plainError("cannot reallocate memory for putenv()");
        printRunErrorPosition();
        noteRunError();
        free(whole);
        return failedToSet();
    }
    if (platform::setEnvironment(name.c_str(), *value ? value : nullptr) != 0) {
        free(whole);
        return failedToSet();
    }
    free(entry->text);
    entry->text = whole;
    entry->nameLength = static_cast<int>(length);
    return 0;
}

char *envGet(const char *name) { return getenv(name); }

void envRelease() {
    std::lock_guard guard(envLock);
    while (EnvEntry *entry = envList) {
        envList = entry->next;
        if (entry->text) {
            entry->text[entry->nameLength] = '\0';
            platform::setEnvironment(entry->text, entry->previous);
        }
        free(entry->text);
        free(entry->previous);
        free(entry);
    }
}

}  // namespace zy
