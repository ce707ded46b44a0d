// Where formatted output goes: a stream, or a text that grows. It counts what was written, so that
// printers report failures alone.
#pragma once

#include <cstddef>
#include <cstdio>

namespace zy {

class Sink {
public:
    Sink() = default;  // a text
    explicit Sink(FILE *stream) : stream(stream) {}
    Sink(const Sink &) = delete;
    Sink &operator=(const Sink &) = delete;
    ~Sink();

    void write(const char *text, size_t length);
    void write(const char *text);
    // One conversion that the caller has made sound.
    void print(const char *conversion, ...);
    // Of a write, or of a value that couldn't be printed. What follows is still written.
    void fail() { failed = true; }

    long long count() const { return written; }
    bool hasFailed() const { return failed; }
    // Whether the rows of arrays are cut to the width of a terminal.
    bool wrapsLines() const { return stream && (stream == stdout || stream == stderr); }
    // The count as the result of a call: -1 after a failure.
    int result() const;

    // The text so far, with a NUL behind it.
    const char *text() const { return buffer ? buffer : ""; }
    size_t length() const { return used; }

private:
    bool reserve(size_t more);

    FILE *stream = nullptr;
    char *buffer = nullptr;
    size_t used = 0, size = 0;
    long long written = 0;
    bool failed = false;
};

}  // namespace zy
