// What operators call in rooms above theirs.
#pragma once

#include "expr/value.h"
#include "numeric/assign.h"

namespace zy {

// The statement loop, stmt/execute.h; false for nested runs.
void runStatements(bool debug);
// It ended with the whole run: nothing of what was interrupted is to go on.
bool runCutShort();
// A longjmp or the end of all runs has left a nested run for the run around it; until that goes on,
// nothing else does.
bool isUnwinding();

// Parses and runs an expression's text; its value is on the stack, zero for a text that is none.
// 0, or -1. The embedding interface defines it.
enum TextCaller : int { TEXT_OF_HOST = 0, TEXT_OF_SCRIPT = 1 };
int evalText(const char *text, int caller);

// A block couldn't be had: the function given to set_new_handler runs (embed/newHandler.cpp).
void memoryFailed();

}  // namespace zy
