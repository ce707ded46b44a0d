// The per-machine store: a text file of NAME=VALUE lines. Its path is fixed by the build.
#pragma once

#include <cstddef>

namespace zy::platform {

enum class StoreResult { found, noStore, noValue };

// Copies the value of `name` into `buffer`, cut at its size.
StoreResult readStore(const char *name, char *buffer, size_t size);

}  // namespace zy::platform
