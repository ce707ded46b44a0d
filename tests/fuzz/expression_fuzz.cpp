// An expression of any text is parsed, or refused; the first byte says whether it is evaluated.
//
// tests/fuzz/run builds and runs it.

#include "embed/scriptDriver.h"
#include "text_fuzz.h"

using namespace zy;

namespace {

// A pointer that a script computes may point anywhere, and reading there is the script's fault: no
// text that can make one is run.
bool mayHavePointers(const std::string &text) {
    return text.find_first_of("\"&[_") != text.npos || text.find("new") != text.npos;
}

int valuesBefore = 0;  // in an instance that has parsed nothing

// Calls declare functions and texts are kept, until the program is released.
void checkValues() {
    if (inputsLeft > 0 || !valuesBefore)
        return;
    freshProgram();
    if (liveValueCount() > valuesBefore)
        fail("a value has leaked");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    checkValues();
    if (freshInstance()) {
        freshProgram();
        valuesBefore = liveValueCount();
    }
    if (size == 0)
        return 0;
    std::string text = textOf(data + 1, size - 1);
    bool evaluated = data[0] & 1 && !mayHavePointers(text);
    if (evaluated)
        Zy_ExprEval_kernel(nullptr, text.c_str());
    else
        Zy_ExprParse_kernel(nullptr, text.c_str());
    checkStack();
    textsRun += evaluated;
    return 0;
}
