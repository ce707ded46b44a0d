// What unit tests share: an instance per test, and what it printed.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "extern/include/embedzy.h"
#include "instance/langState.h"

namespace zy {

// An instance with all its tables but no home: what initConstSysVars() makes.
class InstanceTest : public testing::Test {
protected:
    void SetUp() override {
        initConstSysVars();
        errorFlag = 0;
        runStatus = RUN_CLEAN;
    }
    void TearDown() override { cleanMemory(); }
};

// What an action prints on standard error.
template <class Action>
std::string errorsOf(Action action) {
    testing::internal::CaptureStderr();
    action();
    fflush(stderr);
    return testing::internal::GetCapturedStderr();
}

}  // namespace zy
