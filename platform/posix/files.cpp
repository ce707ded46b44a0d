#include "platform/files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cwchar>

namespace zy::platform {

const char *const temporaryFolders[] = {"/tmp", "/var/tmp", nullptr};

bool fileExists(const char *path) { return access(path, F_OK) == 0; }
bool isReadable(const char *path) { return access(path, R_OK) == 0; }
bool isWritable(const char *path) { return access(path, W_OK) == 0; }

bool isDirectory(const char *path) {
    struct stat found;
    return stat(path, &found) == 0 && S_ISDIR(found.st_mode);
}

FILE *openForReading(const char *path) {
    FILE *file = fopen(path, "r");
    struct stat found;
    if (file && fstat(fileno(file), &found) == 0 && S_ISDIR(found.st_mode)) {
        fclose(file);
        return nullptr;
    }
    return file;
}

void useNativeSeparators(char *path) {
    for (; *path; path++)
        if (*path == '\\')
            *path = '/';
}

FILE *openTemporaryFile(const char *folder, std::string &path) {
    path = std::string(folder) + "zyXXXXXX";
    int file = mkstemp(path.data());
    return file < 0 ? nullptr : fdopen(file, "w");
}

void removeFile(const char *path) { unlink(path); }

namespace {

// Empty if the text has no form in the current locale.
std::string narrowText(const wchar_t *text) {
    std::mbstate_t state{};
    size_t length = wcsrtombs(nullptr, &text, 0, &state);
    if (length == static_cast<size_t>(-1))
        return "";
    std::string narrow(length, '\0');
    wcsrtombs(narrow.data(), &text, length + 1, &state);
    return narrow;
}

}  // namespace

FILE *reopenWide(const wchar_t *path, const wchar_t *mode, FILE *stream) {
    return freopen(narrowText(path).c_str(), narrowText(mode).c_str(), stream);
}

int descriptorOf(FILE *stream) { return fileno(stream); }

StreamFields streamFields(FILE *stream) {
#ifdef __GLIBC__
    const char *end = stream->_IO_read_end;
    auto upToEnd = [end](const char *start) {
        return StreamBuffer{start, start ? static_cast<size_t>(end - start) : 0};
    };
    StreamBuffer position = upToEnd(stream->_IO_read_ptr);
    return {static_cast<int>(position.length), position, upToEnd(stream->_IO_read_base),
            stream->_flags};
#else
    (void)stream;
    return {};
#endif
}

int closeStandardStream(FILE *stream) {
    int result = fflush(stream);
    if (!freopen("/dev/null", stream == stdin ? "r" : "w", stream))
        result = EOF;
    return result;
}

bool duplicateDescriptor(int source, int target) { return dup2(source, target) >= 0; }

}  // namespace zy::platform
