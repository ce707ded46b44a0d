#include "platform/store.h"

#include <cstdio>
#include <fstream>
#include <string>

namespace zy::platform {

StoreResult readStore(const char *name, char *buffer, size_t size) {
    std::ifstream store(ZY_STORE);
    if (!store)
        return StoreResult::noStore;
    std::string wanted = std::string(name) + "=";
    for (std::string line; std::getline(store, line);) {
        if (line.compare(0, wanted.size(), wanted) == 0) {
            std::snprintf(buffer, size, "%s", line.c_str() + wanted.size());
            return StoreResult::found;
        }
    }
    return StoreResult::noValue;
}

}  // namespace zy::platform
