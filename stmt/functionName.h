// The names of running functions: in messages, and as the value of __func__.
#pragma once

#include "expr/scope.h"
#include "stmt/callPlan.h"
#include "stmt/execute.h"

namespace zy {

// The function's name as scripts know it.
const char *shownName(const TypeInfo *function);
// The same as __func__ has it: that of a member function with its class in front.
std::string fullName(const TypeInfo *function);

// The cell of __func__ in the frame of level 0; NULL without one.
VarCell *findFunctionNameCell();
// Sets __func__ to the name of the function that runs; empty for NULL.
inline void setFunctionName(const CallPlan *plan) {
    VarCell *cell = functionNameFrame == baseFrame ? functionNameCell : findFunctionNameCell();
    if (!cell) [[unlikely]]
        return;
    cell->data.text = const_cast<char *>(plan ? plan->name.c_str() : "");
}

}  // namespace zy
