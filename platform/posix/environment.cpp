#include "platform/environment.h"

#include <cstdlib>

namespace zy::platform {

int setEnvironment(const char *name, const char *value) {
    return value ? setenv(name, value, 1) : unsetenv(name);
}

}  // namespace zy::platform
