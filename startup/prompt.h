// The running prompt: an expression that is evaluated before each line of the console, so that a
// prompt built from _cwd follows the current folder. nullPrompt() and freePrompt() are exports.
#pragma once

#include "expr/scope.h"

namespace zy {

// Makes the prompt expression of a new instance. The restricted shell has none: its prompt is a
// constant, which goes into the cell of _prompt.
void makePromptExpression(VarCell *promptCell);

// An assignment to _prompt: its statement's expression is the prompt expression from now on.
void keepPromptExpression();

// Evaluates the prompt expression in the current context and stores its text in _prompt.
void evalPrompt();

}  // namespace zy
