// The one copy of a file's name, which lives as long as the instance: statements and the source
// stack refer to it.
#pragma once

namespace zy {

const char *internFileName(const char *name);
void releaseFileNames();

}  // namespace zy
