#include "instance/report.h"

#include <cstdarg>
#include <cstdio>

namespace zy {

void printErrorPosition(const SourcePosition &position) {
    fprintf(stderr, "       at line %d in file '%s'\n", position.line, position.file);
}

void printWarningPosition(const SourcePosition &position) {
    fprintf(stderr, "         at line %d in file '%s'\n", position.line, position.file);
}

namespace {

using PositionSource = bool (*)(SourcePosition &);

void printText(const char *prefix, const char *format, va_list arguments) {
    fputs(prefix, stderr);
    vfprintf(stderr, format, arguments);
    fputc('\n', stderr);
}

void printErrorPositionOf(PositionSource source) {
    if (SourcePosition position; source(position))
        printErrorPosition(position);
}

void printAnyWarning(PositionSource source, const char *format, va_list arguments) {
    printText("WARNING: ", format, arguments);
    if (SourcePosition position; source(position))
        printWarningPosition(position);
}

void printWarning(PositionSource source, const char *format, va_list arguments) {
    if (warningsAt(1))
        printAnyWarning(source, format, arguments);
}

}  // namespace

void printRunErrorPosition() { printErrorPositionOf(runPosition); }
void printParseErrorPosition() { printErrorPositionOf(parsePosition); }

bool warningsAt(int level) { return e_lang->warningLevel >= level; }

// The body of a reporter: its variable arguments go to one call.
#define ZY_WITH_ARGUMENTS(call)  \
    va_list arguments;           \
    va_start(arguments, format); \
    call;                        \
    va_end(arguments)

void runError(const char *format, ...) {
    ZY_WITH_ARGUMENTS(printText("ERROR: ", format, arguments));
    printErrorPositionOf(runPosition);
    noteRunError();
}

void runWarning(const char *format, ...) {
    ZY_WITH_ARGUMENTS(printWarning(runPosition, format, arguments));
    noteRunWarning();
}

void runWarningAlways(const char *format, ...) {
    ZY_WITH_ARGUMENTS(printAnyWarning(runPosition, format, arguments));
    noteRunWarning();
}

void parseError(const char *format, ...) {
    ZY_WITH_ARGUMENTS(printText("ERROR: ", format, arguments));
    printErrorPositionOf(parsePosition);
    errorFlag = 1;
}

void parseWarning(const char *format, ...) {
    ZY_WITH_ARGUMENTS(printWarning(parsePosition, format, arguments));
}

void plainError(const char *format, ...) {
    ZY_WITH_ARGUMENTS(printText("ERROR: ", format, arguments));
}

void plainWarning(const char *format, ...) {
    ZY_WITH_ARGUMENTS(printText("WARNING: ", format, arguments));
}

#undef ZY_WITH_ARGUMENTS

void reportOutOfMemory() {
    plainError("out of memory in Zy");
    errorFlag = 1;
}

}  // namespace zy
