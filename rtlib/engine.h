// The engine's forms, for the operators.
#pragma once

#include "expr/value.h"
#include "rtlib/sink.h"

namespace zy {

enum class Formats {
    ALL_TEXTS,   // every text that no conversion takes is a format
    FIRST_ONLY,  // the first argument is the format; what it has no conversion for is dropped
};

void printArguments(Sink &sink, ExprNode *arguments, Formats formats);
// Evaluates what isn't printed.
void dropArguments(ExprNode *arguments);

}  // namespace zy
