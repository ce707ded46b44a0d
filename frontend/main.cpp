// zy: the stand-alone front end, on the same library that hosts embed. It is the interpreter of its
// own copy of the library, so it uses the library's data and start functions, not the services.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "embedzy.h"
#include "instance/langState.h"
#include "instance/version.h"

namespace {

const char usage[] =
    "usage: zy [options] script [arguments]\n"
    "       zy --version | --help\n"
    "options:\n"
    "  -a  leave lib/libopt out of the function path\n"
    "  -f  read no start-up file\n"
    "  -n  parse only, run nothing\n"
    "  -r  standard error follows standard output\n"
    "  -S  restricted shell\n"
    "  -v  print the version\n"
    "  -w  print all warnings about the script\n";

void printVersion() {
    printf("Zy %d.%d.%d %s\n", zy::versionMajor, zy::versionMinor, zy::versionMicro, Zy_edition);
}

// False after a message.
bool takeOption(char letter) {
    switch (letter) {
        case 'a': e_lang->noOptionalLib = 1; return true;
        case 'c':
        case 'i': return true;
        case 'd': e_lang->copyStartupFile = 1; return true;
        case 'f': e_lang->startupMode = 2; return true;
        case 'g': e_lang->errorsToOutputUnbuffered = 1; return true;
        case 'n': e_lang->parseOnly = 1; return true;
        case 'r': e_lang->errorsToOutput = 1; return true;
        case 'S':
            e_lang->restricted = 1;
            e_lang->noOptionalLib = 1;
            return true;
        case 'v': printVersion(); exit(0);
        case 'w': e_lang->warningLevel = 3; return true;
        default: fprintf(stderr, "zy: invalid option -%c\n%s", letter, usage); return false;
    }
}

// Where the first word behind the options stands; 0 after a message.
int takeOptions(int argc, char **argv) {
    int at = 1;
    for (; at < argc && argv[at][0] == '-' && argv[at][1]; at++)
        for (const char *letter = argv[at] + 1; *letter; letter++)
            if (!takeOption(*letter))
                return 0;
    return at;
}

// Without ZYHOME the home is the folder above the program's own.
void findHome() {
    if (getenv("ZYHOME"))
        return;
    std::error_code error;
    auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (!error)
        setenv("ZYHOME", program.parent_path().parent_path().c_str(), 1);
}

}  // namespace

int main(int argc, char **argv) {
    if (argc == 2 && strcmp(argv[1], "--version") == 0) {
        printVersion();
        return 0;
    }
    if (argc == 2 && strcmp(argv[1], "--help") == 0) {
        fputs(usage, stdout);
        return 0;
    }
    initConstSysVars();
    const char *name = strrchr(argv[0], '/');
    if (strcmp(name ? name + 1 : argv[0], "zys") == 0)
        takeOption('S');
    int script = takeOptions(argc, argv);
    if (script == 0)
        return 1;
    if (script == argc) {
        fputs("zy: the console isn't there yet; name a script\n", stderr);
        return 1;
    }
    findHome();
    e_lang->scriptGiven = 1;
    if (initExecution() != 0)
        return 1;
    copyArgcArgv(argc - script, argv + script);
    // A name that exists here is this file, not one to be looked for along _path.
    bool here = !strchr(argv[script], '/') && std::filesystem::exists(argv[script]);
    snprintf(e_filenamebuf, ZY_FILENAME_SIZE, "%s%s", here ? "./" : "", argv[script]);
    return console();
}
