// Loading library files and looking names up in them.
#pragma once

namespace zy::platform {

// A loaded library file; NULL if loading failed. Loading a file twice gives the same handle.
void *loadLibrary(const char *path);

// The address of a name in that library, NULL if it has none. The handle must be a loaded one.
void *findSymbol(void *library, const char *name);

// Gives back one loadLibrary; the last one unmaps the file and its data. True on success.
bool unloadLibrary(void *library);

// Why the last of these calls on this thread failed: one line without a line feed. The text is
// valid until the next call of this header.
const char *libraryErrorText();

}  // namespace zy::platform
