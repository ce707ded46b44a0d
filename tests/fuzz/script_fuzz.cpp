// A script of any text is parsed, or refused, and run; its program is released before the next one
// is parsed. The first byte of an input says how: all at once, in two halves of which the second is
// appended to the program of the first, appended to itself once more, parsed and run by services of
// their own.
//
// tests/fuzz/run builds and runs it.

#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#include <initializer_list>

#include "embed/scriptDriver.h"
#include "text_fuzz.h"

using namespace zy;

namespace {

enum Switch : uint8_t {
    APPENDED = 1,
    AGAIN = 2,
    PARSED_FIRST = 16,
    TIMED = 64,  // the clock ends what runs too long; without events the short cuts of a run are on
};

int valuesBefore = 0;  // in an instance whose program is empty

constexpr suseconds_t TIME_PER_INPUT = 100000;  // microseconds

// What a script prints goes nowhere.
void silence() {
    static FILE *nothing = freopen("/dev/null", "w", stdout);
    static_cast<void>(nothing);
}

std::string withoutAnd(std::string text) {
    for (size_t i; (i = text.find("&&")) != text.npos;)
        text.replace(i, 2, "||");
    return text;
}

const std::string path = "/dev/shm/zyfuzz." + std::to_string(getpid()) + ".zy";

void writeFile(const std::string &text) {
    FILE *file = fopen(path.c_str(), "w");
    if (!file)
        fail("the script can't be written");
    fwrite(text.data(), 1, text.size(), file);
    fclose(file);
}

void runFile(const std::string &text, uint8_t switches, bool evaluated) {
    writeFile(text);
    std::string name = path, command = path;
    char *argv[] = {name.data(), nullptr};
    if (!evaluated)
        Zy_ParseScriptNoInit_kernel(nullptr, argv);
    else if (!(switches & PARSED_FIRST))
        Zy_RunScriptM_kernel(nullptr, argv);
    else if (Zy_ParseScript_kernel(nullptr, argv) == 0)
        Zy_ExecScriptM_kernel(nullptr, command.data());
}

void appendText(std::string text, bool evaluated) {
    e_lang->runInitialisers = evaluated;
    if (evaluated)
        Zy_AppendRunScript_kernel(nullptr, text.data());
    else
        Zy_AppendParseScript_kernel(nullptr, text.data());
    e_lang->runInitialisers = 1;
}

void setTimer(suseconds_t time) {
    itimerval value{{0, time}, {0, time}};
    setitimer(ITIMER_VIRTUAL, &value, nullptr);
}

void armTimer() {
    signal(SIGVTALRM, [](int) { abortRequest = 1; });
    e_lang->callbackActive = 0;
    e_lang->callbackFn = nullptr;
    setTimer(TIME_PER_INPUT);
}

void useText(const std::string &text, uint8_t switches, bool evaluated) {
    size_t half = switches & APPENDED ? text.find('\n', text.size() / 2) : text.npos;
    runFile(text.substr(0, half), switches, evaluated);
    checkStack();
    if (half != text.npos)
        appendText(text.substr(half), evaluated);
    checkStack();
    if (switches & AGAIN)
        appendText(text, evaluated);
    checkStack();
}

// Variables of the system live on, and may be removed.
void checkValues(const std::string &text) {
    int values = liveValueCount();
    if (values > valuesBefore && !has(text, "global"))
        fail("a value has leaked");
    valuesBefore = values;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    silence();
    if (freshInstance()) {
        appendText("_casesen(0);", false);  // constants of the system are made once, when asked for
        freshProgram();
        valuesBefore = liveValueCount();
    }
    if (size == 0)
        return 0;
    uint8_t switches = data[0];
    std::string text = textOf(data + 1, size - 1);
    bool evaluated = !scriptMayHavePointers(withoutAnd(text));
    if (!evaluated && has(text, "exec"))
        return -1;  // a directive that evaluates
    if (switches & TIMED)
        armTimer();
    useText(text, switches, evaluated);
    setTimer(0);
    freshProgram();
    checkValues(text);
    textsRun += evaluated;
    return 0;
}
