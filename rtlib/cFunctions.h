// record header: what a script gets of the C library's functions: each is the library's, with the
// answers that the language gives where the library's behaviour is undefined. The rows of
// expr/operators.inc name them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace zy {

// Characters: the classification gives 1 for yes.
template <int (*test)(int)>
int isInClass(int c) {
    return c >= -128 && c <= 255 && test(c) ? 1 : 0;
}
int isAscii(int c);
int toAscii(int c);
int toLower(int c);
int toUpper(int c);

// Texts.
int textLength(const char *text);                // of a NULL text 0
int orderOfTexts(const char *a, const char *b);  // -1, 0 or 1
int collateTexts(const char *a, const char *b);
double textToDouble(const char *text, char **end);
int textToLong(const char *text, char **end, int base);
unsigned textToUnsignedLong(const char *text, char **end, int base);
char *environmentText(const char *name);
char *errorText(int number);

// Memory.
void *allocate(size_t size);
void *allocateZero(size_t count, size_t size);
void *reallocate(void *block, size_t size);

// Streams. A NULL stream fails, with a warning where the language has one.
FILE *openFile(const char *path, const char *mode);
FILE *reopenFile(const char *path, const char *mode, FILE *stream);
FILE *openTemporary();
int closeFile(FILE *stream);
int flushFile(FILE *stream);
int seekFile(FILE *stream, int offset, int origin);
int tellFile(FILE *stream);
int atEndOfFile(FILE *stream);
int hasFileError(FILE *stream);
int putCharacter(int c, FILE *stream);
int printCharacter(int c);
int putText(const char *text, FILE *stream);
int printLine(const char *text);
int getCharacter(FILE *stream);
int ungetCharacter(int c, FILE *stream);
int bufferFile(FILE *stream, char *buffer, int mode, size_t size);
int removeFile(const char *path);
int renameFile(const char *from, const char *to);

// Numbers and time.
int randomNumber();
int currentTime(int *place);
void *utcTime(int *seconds);
void *localTime(int *seconds);
int makeTime(void *broken);
char *brokenTimeText(void *broken);
char *timeText(int *seconds);
size_t formatTime(char *dest, size_t size, const char *format, const void *broken);
int processorTime();

}  // namespace zy
