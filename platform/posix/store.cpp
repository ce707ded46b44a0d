#include "platform/store.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace zy::platform {

StoreResult readStore(const char *name, char *buffer, size_t size) {
    FILE *store = fopen(ZY_STORE, "re");
    if (!store)
        return StoreResult::noStore;
    std::string wanted = std::string(name) + "=";
    StoreResult result = StoreResult::noValue;
    char *line = nullptr;
    size_t room = 0;
    while (result == StoreResult::noValue && getline(&line, &room, store) > 0) {
        if (strncmp(line, wanted.c_str(), wanted.size()) == 0) {
            line[strcspn(line, "\n")] = '\0';
            std::snprintf(buffer, size, "%s", line + wanted.size());
            result = StoreResult::found;
        }
    }
    free(line);
    fclose(store);
    return result;
}

}  // namespace zy::platform
