// An expression of any text is parsed, or refused; the first byte says whether it is evaluated.
//
// tests/fuzz/run builds and runs it.

#include "text_fuzz.h"

using namespace zy;

namespace {

// A pointer that a script computes may point anywhere, and reading there is the script's fault: no
// text that can make one is run.
bool mayHavePointers(const std::string &text) {
    return text.find_first_of("\"&[_") != text.npos || text.find("new") != text.npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    freshInstance();
    if (size == 0)
        return 0;
    std::string text = textOf(data + 1, size - 1);
    bool evaluated = data[0] & 1 && !mayHavePointers(text);
    int values = liveValueCount();
    if (evaluated)
        Zy_ExprEval_kernel(nullptr, text.c_str());
    else
        Zy_ExprParse_kernel(nullptr, text.c_str());
    checkStack();
    bool declares = text.find('(') != text.npos;  // a call declares the function
    if (!declares && liveValueCount() != values)
        fail("a value has leaked");
    textsRun += evaluated;
    return 0;
}
