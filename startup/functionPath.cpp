// The search for function files: <folder>/<function><extension>, along the tables of _fpath and
// _fpathext.

#include "decl/functionFiles.h"
#include "platform/files.h"
#include "startup/startupState.h"

namespace zy {

namespace {

bool existsAlong(const SearchTable &folders, const SearchTable &extensions, const char *name,
                 std::string &path) {
    for (int folder = 0; folder < folders.count; folder++)
        for (int i = 0; i < extensions.count; i++) {
            path = std::string(folders.entries[folder]) + '/' + name + extensions.entries[i];
            if (platform::fileExists(path.c_str()))
                return true;
        }
    return false;
}

}  // namespace

// The first one that exists decides: one that can't be read, or a folder, hides what comes later.
bool findFunctionFile(const char *name, std::string &path) {
    return existsAlong(searchTables[TABLE_FPATH], searchTables[TABLE_FPATHEXT], name, path) &&
           !platform::isDirectory(path.c_str()) && platform::isReadable(path.c_str());
}

}  // namespace zy
