// What host tests share. The front layer fills its table once per process, so each case runs in a
// process of its own, and so does what is meant to fault.
#pragma once

#include <dlfcn.h>
#include <embedzy.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>

struct Outcome {
    int status;  // the exit status, or minus the signal that ended the process
    std::string out, err;
};

inline std::string readWhole(const std::filesystem::path &path) {
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// A folder of its own for a test, current while the test runs.
class TestFolder {
public:
    TestFolder() : before(std::filesystem::current_path()) {
        char name[] = "/tmp/zytestXXXXXX";
        path = mkdtemp(name);
        std::filesystem::current_path(path);
    }
    ~TestFolder() {
        std::filesystem::current_path(before);
        std::filesystem::remove_all(path);
    }
    std::filesystem::path path;

private:
    std::filesystem::path before;
};

// Runs an action in a child process; its result is the child's exit status.
inline Outcome inChild(const std::function<int()> &action) {
    TestFolder folder;
    fflush(nullptr);
    pid_t child = fork();
    if (child == 0) {
        if (!freopen("out", "w", stdout) || !freopen("err", "w", stderr))
            _exit(99);
        setvbuf(stderr, nullptr, _IONBF, 0);
        exit(action());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status),
            readWhole(folder.path / "out"), readWhole(folder.path / "err")};
}

// The options of a regular instance in the staged home.
inline ZyOptions stagedHome(const char *copyFolder = nullptr) {
    return {ZY_REGULAR_SHELL, ZY_HOME, copyFolder};
}

// Starting and ending instances in a child whose test is about something else.
inline void *mustStart(ZyOptions option = stagedHome()) {
    void *handle;
    if (Zy_Initialize(&handle, &option) != 0)
        exit(90);
    return handle;
}

inline void mustEnd(void *handle) {
    if (Zy_End(handle) != 0)
        exit(91);
}

// Waits, in a child, until it has printed a text on standard error.
inline void waitForMessage(const std::string &text) {
    while (readWhole("err").find(text) == std::string::npos)
        usleep(1000);
}

// Makes a folder "copies" in the current one with the copies of those numbers.
inline void makeCopies(std::initializer_list<int> numbers) {
    std::filesystem::create_directory("copies");
    for (int number : numbers)
        std::filesystem::copy_file(ZY_HOME "/extern/lib/zymt1.dl",
                                   "copies/zymt" + std::to_string(number) + ".dl");
}

// Makes that folder with a copy that is a library, but none of ours.
inline void makeForeignCopy() {
    std::filesystem::create_directory("copies");
    std::ofstream("empty.c") << "int nothing;\n";
    if (system("cc -shared -o copies/zymt1.dl empty.c") != 0)
        exit(97);
}

// Which copy an instance lives in: "zymt3.dl", "" for none.
inline std::string copyOf(void *handle) {
    Dl_info info{};
    void *anything = dlsym(handle, "Zy_End_zy");
    if (!anything || !dladdr(anything, &info))
        return "";
    return std::filesystem::path(info.dli_fname).filename();
}

// Whether a file is in the process's own map.
inline bool isMapped(const std::string &name) {
    return readWhole("/proc/self/maps").find(name) != std::string::npos;
}
