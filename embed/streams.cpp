#include "embed/streams.h"

#include "embed/kernel.h"
#include "instance/report.h"
#include "platform/files.h"

namespace zy {

namespace {

// The standard stream with that number, NULL after a message for any other.
FILE *standardStream(int fd, const char *service) {
    switch (fd) {
        case 0: return stdin;
        case 1: return stdout;
        case 2: return stderr;
    }
    plainError("invalid file descriptor for %s()", service);
    return nullptr;
}

// Takes the entry out of the list and frees it. A stream is in the list once.
void forgetStream(FILE *stream) {
    for (ReopenEntry **link = &reopenList; *link; link = &(*link)->next) {
        if ((*link)->stream == stream) {
            ReopenEntry *entry = *link;
            *link = entry->next;
            delete entry;
            return;
        }
    }
}

// Notes that a stream has been reopened (NULL: that failed); the service's result.
int noteReopened(FILE *stream) {
    if (!stream)
        return -1;
    if (stream == stderr)
        setvbuf(stderr, nullptr, _IONBF, 0);  // a message must be there when the process faults
    forgetStream(stream);
    int fd = platform::descriptorOf(stream);
    reopenList = new ReopenEntry{reopenList, fd, stream};
    return fd;
}

// The reopened stream with that descriptor. NULL, after a message unless fd is negative.
FILE *reopenedStream(int fd, const char *service) {
    if (fd < 0)
        return nullptr;
    for (ReopenEntry *entry = reopenList; entry; entry = entry->next)
        if (entry->fd == fd)
            return entry->stream;
    plainError("invalid file descriptor for %s()", service);
    return nullptr;
}

}  // namespace

void releaseReopenList() {
    while (reopenList)
        forgetStream(reopenList->stream);
}

}  // namespace zy

using namespace zy;

int Zy_Reopen_kernel(void *, char *path, char *mode, int fd) {
    FILE *stream = standardStream(fd, "Zy_Reopen");
    return stream ? noteReopened(freopen(path, mode, stream)) : -1;
}

int Zy_WReopen_kernel(void *, wchar_t *path, wchar_t *mode, int fd) {
    FILE *stream = standardStream(fd, "Zy_WReopen");
    return stream ? noteReopened(platform::reopenWide(path, mode, stream)) : -1;
}

int Zy_Close_kernel(void *, int fd) {
    FILE *stream = reopenedStream(fd, "Zy_Close");
    if (!stream)
        return -1;
    forgetStream(stream);
    return platform::closeStandardStream(stream);
}

int Zy_Flush_kernel(void *, int fd) {
    FILE *stream = reopenedStream(fd, "Zy_Flush");
    return stream ? fflush(stream) : -1;
}

int Zy_Setbuf_kernel(void *, int fd, char *buffer) {
    FILE *stream = standardStream(fd, "Zy_Setbuf");
    if (!stream)
        return -1;
    setbuf(stream, buffer);
    return 0;
}
