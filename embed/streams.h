// Redirection of the standard streams by the host.
#pragma once

#include <cstdio>

namespace zy {

struct ReopenEntry {
    ReopenEntry *next;
    int fd;        // the descriptor that the host was given
    FILE *stream;  // one of the three standard streams
};

extern ReopenEntry *reopenList;  // newest first

// Forgets the entries; the streams stay where the host put them.
void releaseReopenList();

}  // namespace zy
