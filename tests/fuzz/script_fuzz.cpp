// A script of any text is parsed, or refused, and run, as a file or appended to the program so far;
// the program is released and parsed again.
//
// tests/fuzz/run builds and runs it.

#include <unistd.h>

#include "text_fuzz.h"

using namespace zy;

namespace {

// What a script prints goes nowhere.
void silence() {
    static FILE *nothing = freopen("/dev/null", "w", stdout);
    static_cast<void>(nothing);
}

void runFile(const std::string &text) {
    static const std::string path = "/dev/shm/zyfuzz." + std::to_string(getpid()) + ".zy";
    FILE *file = fopen(path.c_str(), "w");
    if (!file)
        fail("the script can't be written");
    fwrite(text.data(), 1, text.size(), file);
    fclose(file);
    std::string name = path;
    char *argv[] = {name.data(), nullptr};
    Zy_RunScript_kernel(nullptr, argv);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    silence();
    freshInstance();
    if (size == 0)
        return 0;
    std::string text = textOf(data + 1, size - 1);
    if (data[0] & 1)
        Zy_AppendRunScript_kernel(nullptr, text.data());
    else
        runFile(text);
    checkStack();
    return 0;
}
