// Heap blocks and texts. Scripts and hosts release some of them, so they come from malloc.

#include <cstdlib>
#include <cstring>

#include "expr/value.h"
#include "instance/report.h"

namespace zy {

void *allocOrFail(size_t size) {
    void *block = malloc(size);
    if (!block && size != 0)
        reportOutOfMemory();
    return block;
}

char *copyString(const char *text) {
    if (!text)
        return nullptr;
    size_t size = strlen(text) + 1;
    auto *copy = static_cast<char *>(allocOrFail(size));
    return copy ? static_cast<char *>(memcpy(copy, text, size)) : nullptr;
}

char *updateString(char *old, char *replacement) {
    if (!replacement) {
        free(old);
        return nullptr;
    }
    size_t size = strlen(replacement) + 1;
    auto *buffer = static_cast<char *>(realloc(old, size));
    if (!buffer) {
        plainError("no enough memory for string operation in updateString()");
        free(replacement);
        return old;
    }
    memcpy(buffer, replacement, size);
    free(replacement);
    return buffer;
}

}  // namespace zy
