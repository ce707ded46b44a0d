// What the targets share that give an instance texts to parse and run: the instance, renewed after
// a number of inputs, and the end of whatever runs too long.
#pragma once

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "embed/kernel.h"
#include "expr/events.h"
#include "expr/value.h"
#include "instance/langState.h"

namespace zy {

constexpr int INPUTS_PER_INSTANCE = 500;
constexpr int STATEMENTS_PER_INPUT = 2000;

inline int inputsLeft = 0;
inline int statementsLeft = 0;
inline long textsRun = 0;

[[noreturn]] inline void fail(const char *what) {
    fprintf(stderr, "%s\n", what);
    abort();
}

inline bool has(const std::string &text, const char *part) { return text.find(part) != text.npos; }

// Whether every `*` stands between blanks, as a product is written and a pointer is not.
inline bool hasProductsOnly(const std::string &text) {
    for (size_t i = text.find('*'); i != text.npos; i = text.find('*', i + 1))
        if (i == 0 || text[i - 1] != ' ' || (text[i + 1] != ' ' && text[i + 1] != '='))
            return false;
    return true;
}

// Whether a name begins with an underscore, as those of the system do; texts are among them.
inline bool namesSystem(const std::string &text) {
    for (size_t i = text.find('_'); i != text.npos; i = text.find('_', i + 1))
        if (i == 0 || !isalnum(static_cast<unsigned char>(text[i - 1])))
            return true;
    return false;
}

// A pointer that a script computes may point anywhere, and reading there is the script's fault: no
// text that can make one is run. Functions of the C library take any number for a pointer.
inline bool scriptMayHavePointers(const std::string &text) {
    for (const char *part : {"\"", "&", "->", "new", ")[", "[]", "<std", "<str", "<time", "<set",
                             "this", "alloc", "_t", "])", "] )"})
        if (has(text, part))
            return true;
    return namesSystem(text) || !hasProductsOnly(text);
}

// How many of the inputs were run, not parsed alone: written to a file at the end.
inline void writeRuns() {
    if (FILE *file = fopen("texts_run", "w")) {
        fprintf(file, "%ld\n", textsRun);
        fclose(file);
    }
}

inline int countStatement(void *, ZyDebugInfo *, void *) {
    if (--statementsLeft <= 0)
        abortRequest = 1;
    return 0;
}

inline void armEvents() {
    statementsLeft = STATEMENTS_PER_INPUT;
    abortRequest = 0;
    e_lang->callbackFn = countStatement;
    e_lang->callbackMask = EVENT_STATEMENT;
    e_lang->callbackActive = 1;
}

// True: it is a new one.
inline bool freshInstance() {
    if (inputsLeft-- > 0) {
        armEvents();
        return false;
    }
    static void *handle;
    if (handle)
        Zy_End_kernel(handle);
    else
        atexit(writeRuns);
    handle = &handle;
    ZyOptions options{};
    static char home[] = "home";  // run copies the sources of one
    options.zyhome = home;
    if (Zy_Initialize2_kernel(
            &handle, &options, [](const char *) { return 0; },
            [](const char *name) { return getenv(name); }) != 0)
        fail("an instance can't be made");
    inputsLeft = INPUTS_PER_INSTANCE;
    armEvents();
    return true;
}

// Nothing may be left on the stack of values.
inline void checkStack() {
    if (currentContext && currentContext->stack)
        fail("a value lies on the stack");
}

inline std::string textOf(const uint8_t *data, size_t size) {
    std::string text(reinterpret_cast<const char *>(data), size);
    return text.substr(0, text.find('\0'));
}

}  // namespace zy

// The sanitizer sees faults before the handlers of an instance do, and a block that is too large is
// refused, as a system does.
extern "C" const char *__asan_default_options() {
    return "handle_segv=2:handle_sigill=2:allocator_may_return_null=1:max_allocation_size_mb=64:"
           "quarantine_size_mb=32:malloc_context_size=3";
}
extern "C" const char *__ubsan_default_options() { return "print_stacktrace=1"; }
