// The contexts of an instance: the base context, in which file-level code runs, and one for each
// call that has not returned.
#pragma once

#include "expr/value.h"

namespace zy {

extern ExecContext *baseContext;
extern ExecContext *allContexts;  // newest first
extern ExecContext *readyQueue;   // those that wait for their turn

// In `owned` of a pointer to char among the arguments of `...`: the text goes with the list.
constexpr uint8_t VAR_ARG_TEXT = 3;

// A context that inherits frames, level and priority from the current one. It doesn't become
// current. NULL after a message if memory is exhausted.
ExecContext *newContext();
// The same for a call of a function by the current context, without frames.
ExecContext *newCallContext(FuncInfo *function);
// Unlinks it everywhere and releases it with its value stack, not its frames.
void releaseContext(ExecContext *context);

// Makes the frame of level 0, which the base context then starts from.
void createBaseFrame();
// Releases every context with its frames above level 0, and makes a fresh base context current.
void resetContexts();
// Everything that is stored above level 0 goes, while the types of it are still there.
void releaseProgramStorage();
// For another run of the same program: the base context alone stays, with its frames of level 0
// and 1.
void rewindContexts();
void releaseContexts();  // and leaves none

// What is kept for the next calls goes back to the heap; the instance ends.
void releaseFreeBlocks();
void releaseFreeContexts();

}  // namespace zy
