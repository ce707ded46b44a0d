#include "platform/environment.h"

#include <unistd.h>

#include <cstdlib>

namespace zy::platform {

int setEnvironment(const char *name, const char *value) {
    return value ? setenv(name, value, 1) : unsetenv(name);
}

char **environmentList() { return environ; }

}  // namespace zy::platform
