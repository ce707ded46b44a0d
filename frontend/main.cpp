// zy: the stand-alone front end, on the same library that hosts embed. It is the interpreter of its
// own copy of the library, so it uses the library's data and start functions, not the services.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "embedzy.h"
#include "instance/langState.h"
#include "startup/options.h"

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

// False after a message.
bool takeOption(char letter) {
    if (letter == 'v') {
        consoleMessage();
        exit(0);
    }
    if (zy::takeOptionLetter(e_lang, letter))
        return true;
    fprintf(stderr, "zy: invalid option -%c\n%s", letter, usage);
    return false;
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
        consoleMessage();
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
