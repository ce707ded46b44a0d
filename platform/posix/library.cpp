#include "platform/library.h"

#include <dlfcn.h>

namespace zy::platform {

// Lazily: an instance calls a third of what its copy imports, and what is missing in the system's
// libraries is found at once all the same, by the version of its name.
void *loadLibrary(const char *path) { return dlopen(path, RTLD_LAZY | RTLD_LOCAL); }

void *findSymbol(void *library, const char *name) { return dlsym(library, name); }

bool unloadLibrary(void *library) { return dlclose(library) == 0; }

const char *libraryErrorText() {
    const char *text = dlerror();
    return text ? text : "unknown error";
}

}  // namespace zy::platform
