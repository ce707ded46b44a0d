#include "platform/library.h"

#include <dlfcn.h>

namespace zy::platform {

void *loadLibrary(const char *path) { return dlopen(path, RTLD_NOW | RTLD_LOCAL); }

void *findSymbol(void *library, const char *name) { return dlsym(library, name); }

bool unloadLibrary(void *library) { return dlclose(library) == 0; }

const char *libraryErrorText() {
    const char *text = dlerror();
    return text ? text : "unknown error";
}

}  // namespace zy::platform
