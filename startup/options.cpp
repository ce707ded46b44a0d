#include "startup/options.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "extern/include/embedzy.h"
#include "instance/report.h"
#include "platform/files.h"
#include "startup/systemVariables.h"

namespace zy {

void redirectErrors() {
    if (!e_lang->errorsToOutput && !e_lang->errorsToOutputUnbuffered)
        return;
    fflush(stderr);
    platform::duplicateDescriptor(platform::descriptorOf(stdout), platform::descriptorOf(stderr));
    if (!e_lang->errorsToOutputUnbuffered)
        return;
    // The answer of a network server's program.
    setvbuf(stdout, nullptr, _IONBF, 0);
    fputs("Content-type: text/plain\n\n", stdout);
}

void applyOptionLine(const char *file, const char *options) {
    bool redirected = e_lang->errorsToOutput || e_lang->errorsToOutputUnbuffered;
    for (const char *letter = options + 1; *letter && *letter != ' '; letter++) {
        if (*letter == 'v') {
            consoleMessage();
            exit(0);
        }
        if (!takeOptionLetter(e_lang, *letter))
            plainError("invalid option %c at line 1 in file '%s'", *letter, file);
    }
    if (baseFrame)
        systemCell(SLOT_WARNING)->data.i = e_lang->warningLevel;
    if (!redirected)
        redirectErrors();
}

std::string firstLineOptions(const char *line) {
    std::string word(line, strcspn(line, "\r\n"));
    size_t start = word.find(' ');
    start = start == std::string::npos ? start : word.find_first_not_of(' ', start);
    return start == std::string::npos ? "" : word.substr(start, word.find(' ', start) - start);
}

}  // namespace zy
