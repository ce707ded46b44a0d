// Text goes to a stream piece by piece: the stream has a buffer of its own.

#include "rtlib/sink.h"

#include <climits>
#include <cstdarg>
#include <cstdlib>
#include <cstring>

#include "expr/calls.h"

#include "instance/report.h"

namespace zy {

Sink::~Sink() { free(buffer); }

bool Sink::reserve(size_t more) {
    size_t needed = used + more + 1;
    if (needed <= size)
        return true;
    size_t larger = needed < 256 ? 256 : needed * 2;
    auto *grown = static_cast<char *>(realloc(buffer, larger));
    if (!grown) {
        reportOutOfMemory();
        return false;
    }
    buffer = grown;
    size = larger;
    return true;
}

void Sink::write(const char *text, size_t length) {
    if (length == 0 || isUnwinding())
        return;
    if (stream) {
        failed |= fwrite(text, 1, length, stream) != length;
    } else if (reserve(length)) {
        memcpy(buffer + used, text, length);
        used += length;
        buffer[used] = '\0';
    } else {
        failed = true;
    }
    written += static_cast<long long>(length);
}

void Sink::write(const char *text) { write(text, strlen(text)); }

void Sink::print(const char *conversion, ...) {
    if (isUnwinding())
        return;
    va_list arguments, again;
    va_start(arguments, conversion);
    va_copy(again, arguments);
    int length = stream ? vfprintf(stream, conversion, arguments)
                        : vsnprintf(nullptr, 0, conversion, arguments);
    bool fits = length >= 0 && (stream || reserve(length));
    if (fits && !stream) {
        vsnprintf(buffer + used, size - used, conversion, again);
        used += length;
    }
    if (fits)
        written += length;
    else
        failed = true;
    va_end(again);
    va_end(arguments);
}

int Sink::result() const {
    if (failed)
        return -1;
    return written < INT_MAX ? static_cast<int>(written) : INT_MAX;
}

}  // namespace zy
