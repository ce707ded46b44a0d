// An expression of any text is parsed, or refused, and evaluated. The first byte says which.
//
// tests/fuzz/run builds and runs it.

#include "text_fuzz.h"

using namespace zy;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    freshInstance();
    if (size == 0)
        return 0;
    std::string text = textOf(data + 1, size - 1);
    if (data[0] & 1)
        Zy_ExprEval_kernel(nullptr, text.c_str());
    else
        Zy_ExprParse_kernel(nullptr, text.c_str());
    checkStack();
    return 0;
}
