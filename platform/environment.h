// The environment of the process.
#pragma once

namespace zy::platform {

// Sets or, with a NULL value, removes a variable; 0 or -1 with errno set. The texts are copied.
int setEnvironment(const char *name, const char *value);

// The list of all variables, NAME=VALUE, NULL at its end. It moves when one is added.
char **environmentList();

}  // namespace zy::platform
