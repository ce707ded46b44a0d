// Files and folders.
#pragma once

#include <cstdio>
#include <string>

namespace zy::platform {

bool fileExists(const char *path);
bool isReadable(const char *path);
bool isWritable(const char *path);
bool isDirectory(const char *path);
// A text for reading. NULL if there is none: a folder isn't one, though the C library opens it.
FILE *openForReading(const char *path);

// Rewrites the separators of a path to the system's own, in place.
void useNativeSeparators(char *path);
constexpr char separator = '/';

// The folders for temporary files to try when the environment names none, NULL behind the last.
extern const char *const temporaryFolders[];

// Makes and opens a new file of a name of its own in that folder (which ends in a separator), for
// writing. Its path goes into `path`. NULL if that fails; `path` then holds the attempted name.
FILE *openTemporaryFile(const char *folder, std::string &path);
void removeFile(const char *path);

// Reopens a standard stream on a file that has a wide name; as freopen otherwise.
FILE *reopenWide(const wchar_t *path, const wchar_t *mode, FILE *stream);

int descriptorOf(FILE *stream);

// What a stream holds, as far as the C library tells; a text is NULL where there is none.
struct StreamBuffer {
    const char *text;
    size_t length;
};
struct StreamFields {
    int count;              // characters that can be read without asking the system
    StreamBuffer position;  // from where the stream stands
    StreamBuffer base;      // from the start of its buffer
    int flags;
};
StreamFields streamFields(FILE *stream);

// Closes the file that a standard stream is open on; the result is that of fclose. The stream then
// leads nowhere but stays usable: what is written to it is lost, what is read from it is at its
// end.
int closeStandardStream(FILE *stream);

// Makes descriptor `target` a duplicate of `source`. True on success.
bool duplicateDescriptor(int source, int target);

}  // namespace zy::platform
