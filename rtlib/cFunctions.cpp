// The functions of the C library that need no more of the language than their operands. Where the
// library leaves the behaviour open, NULL above all, they answer with its failure value.

#include "rtlib/cFunctions.h"

#include <cctype>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "expr/calls.h"
#include "instance/langState.h"
#include "instance/report.h"
#include "numeric/convert.h"
#include "rtlib/libraryCall.h"

namespace zy {

// ---- Operands and results -----------------------------------------------------------------------

void *addressIn(const Value *value) {
    auto type = static_cast<int>(value->type);
    bool isAddress = isPointer(type) || isArray(type) || type == DT_STRING || type == DT_FUNCTION;
    void *address = isAddress ? pointerOf(value) : nullptr;
    return isNullAddress(address) ? nullptr : address;
}

void pushAddress(int code, const void *address) {
    Value *result = pushNewValue();
    if (!result)
        return;
    result->type = static_cast<uint32_t>(resultTypeOf(code));
    result->payload.p = const_cast<void *>(address);
}

void pushInteger(int code, long long number) {
    switch (resultTypeOf(code)) {
        case DT_UINT: pushScalar(static_cast<unsigned>(number)); break;
        case DT_LLONG: pushScalar(number); break;
        case DT_ULLONG: pushScalar(static_cast<unsigned long long>(number)); break;
        default: pushScalar(static_cast<int>(number));
    }
}

// ---- Characters ---------------------------------------------------------------------------------

int isAscii(int c) { return c >= 0 && c <= 127; }
int toAscii(int c) { return c & 127; }

namespace {

bool isCharacter(int c) { return c >= -128 && c <= 255; }

}  // namespace

int toLower(int c) { return isCharacter(c) ? tolower(c) : c; }
int toUpper(int c) { return isCharacter(c) ? toupper(c) : c; }

// ---- Texts --------------------------------------------------------------------------------------

namespace {

// NULL is read as the empty text.
const char *readable(const char *text) { return text ? text : ""; }

int signOf(int difference) { return (difference > 0) - (difference < 0); }

}  // namespace

int textLength(const char *text) { return static_cast<int>(strlen(readable(text))); }
int orderOfTexts(const char *a, const char *b) { return signOf(strcmp(readable(a), readable(b))); }
int collateTexts(const char *a, const char *b) { return strcoll(readable(a), readable(b)); }
double textToDouble(const char *text, char **end) { return strtod(readable(text), end); }

int textToLong(const char *text, char **end, int base) {
    return static_cast<int>(strtol(readable(text), end, base));
}

unsigned textToUnsignedLong(const char *text, char **end, int base) {
    return static_cast<unsigned>(strtoul(readable(text), end, base));
}

char *environmentText(const char *name) { return name ? e_lang->getenvFn(name) : nullptr; }
char *errorText(int number) { return strerror(number); }

// ---- Memory -------------------------------------------------------------------------------------

namespace {

void *orHandler(void *block) {
    if (!block)
        memoryFailed();
    return block;
}

}  // namespace

// The block is cleared, as that of calloc is.
void *allocate(size_t size) { return allocateZero(1, size); }
void *allocateZero(size_t count, size_t size) { return orHandler(calloc(count, size)); }
void *reallocate(void *block, size_t size) {
    void *moved = realloc(block, size);
    return moved || !size ? moved : orHandler(moved);
}

// ---- Streams ------------------------------------------------------------------------------------

namespace {

int warnBelowZero(int result, const char *warning) {
    if (result < 0)
        runWarning("%s", warning);
    return result;
}

FILE *orWarning(FILE *stream, const char *warning) {
    if (!stream && warningsAt(3))
        runWarning("%s", warning);
    return stream;
}

}  // namespace

FILE *openFile(const char *path, const char *mode) {
    return orWarning(path && mode ? fopen(path, mode) : nullptr, "fopen() error");
}
FILE *reopenFile(const char *path, const char *mode, FILE *stream) {
    return orWarning(mode && stream ? freopen(path, mode, stream) : nullptr, "freopen() error");
}
FILE *openTemporary() { return tmpfile(); }

int closeFile(FILE *stream) {
    if (!stream)
        return warnBelowZero(-1, "fclose() failed because arg of fclose() is NULL");
    return warnBelowZero(fclose(stream), "fclose() failed");
}

int flushFile(FILE *stream) {
    return warnBelowZero(fflush(stream), "fflush(fp) fail, fp may be a NULL pointer");
}
int seekFile(FILE *stream, int offset, int origin) {
    return warnBelowZero(stream ? fseek(stream, offset, origin) : -1, "fseek() failed");
}
int tellFile(FILE *stream) {
    return warnBelowZero(stream ? static_cast<int>(ftell(stream)) : -1,
                         "ftell(FILE *stream) error");
}

int atEndOfFile(FILE *stream) { return stream ? feof(stream) : 0; }
int hasFileError(FILE *stream) { return stream ? ferror(stream) : 0; }
int putCharacter(int c, FILE *stream) { return stream ? fputc(c, stream) : EOF; }
int printCharacter(int c) { return putchar(c); }
int putText(const char *text, FILE *stream) {
    return !text ? 0 : stream ? fputs(text, stream) : EOF;
}
int printLine(const char *text) { return text ? puts(text) : 0; }
int getCharacter(FILE *stream) { return stream ? fgetc(stream) : EOF; }
int ungetCharacter(int c, FILE *stream) { return stream ? ungetc(c, stream) : EOF; }

int bufferFile(FILE *stream, char *buffer, int mode, size_t size) {
    int result = stream ? setvbuf(stream, buffer, mode, size) : -1;
    if (result)
        runWarning("setvbuf() return -1");
    return result;
}

int removeFile(const char *path) {
    return warnBelowZero(path ? remove(path) : -1, "remove() return -1");
}
int renameFile(const char *from, const char *to) { return from && to ? rename(from, to) : -1; }

// ---- Numbers and time ---------------------------------------------------------------------------

// Up to the constant _RAND_MAX.
int randomNumber() { return rand() & 32767; }

// A script's time_t is an int.
int currentTime(int *place) {
    auto now = static_cast<int>(time(nullptr));
    if (place)
        *place = now;
    return now;
}

namespace {

// A script's struct tm is what the C library's begins with.
constexpr size_t BROKEN_TIME_SIZE = 9 * sizeof(int);
static_assert(offsetof(tm, tm_sec) == 0 &&
              offsetof(tm, tm_isdst) + sizeof(int) == BROKEN_TIME_SIZE);

tm brokenTime(const void *broken) {
    tm copy{};
    if (broken)
        memcpy(&copy, broken, BROKEN_TIME_SIZE);
    return copy;
}

}  // namespace

void *utcTime(int *seconds) {
    time_t time = seconds ? *seconds : 0;
    return seconds ? gmtime(&time) : nullptr;
}
void *localTime(int *seconds) {
    time_t time = seconds ? *seconds : 0;
    return seconds ? localtime(&time) : nullptr;
}

// The fields come back in their ranges.
int makeTime(void *broken) {
    tm copy = brokenTime(broken);
    auto seconds = static_cast<int>(mktime(&copy));
    if (broken)
        memcpy(broken, &copy, BROKEN_TIME_SIZE);
    return seconds;
}

char *brokenTimeText(void *broken) {
    tm copy = brokenTime(broken);
    return broken ? asctime(&copy) : nullptr;
}
char *timeText(int *seconds) {
    time_t time = seconds ? *seconds : 0;
    return seconds ? ctime(&time) : nullptr;
}

size_t formatTime(char *dest, size_t size, const char *format, const void *broken) {
    tm copy = brokenTime(broken);
    return dest && format && broken ? strftime(dest, size, format, &copy) : 0;
}

int processorTime() { return static_cast<int>(clock()); }

}  // namespace zy
