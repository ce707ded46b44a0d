// The function that a script has given to set_new_handler: it runs when a block can't be had.

#include "embed/newHandler.h"

#include "embed/scriptDriver.h"
#include "expr/calls.h"
#include "expr/operands.h"
#include "expr/routines.h"
#include "numeric/convert.h"
#include "rtlib/libraryCall.h"

namespace zy {

void memoryFailed() {
    if (newHandler)
        callWithoutArguments(newHandler);
}

// Gives the previous one. What has no body is none.
void setNewHandlerOperator(ExprNode *node) {
    void *previous = newHandler;
    {
        Operand operand(node->left, Operand::CONTENTS);
        if (!operand)
            return;
        auto type = static_cast<int>(operand->type);
        bool isFunction = type == DT_NAME || type == DT_FUNCTION || isPointer(type);
        void *function = isFunction ? pointerOf(operand.get()) : nullptr;
        bool isSignalConstant = reinterpret_cast<uintptr_t>(function) <= 100;
        newHandler = isSignalConstant ? nullptr : static_cast<TypeInfo *>(function);
    }
    pushAddress(node->op, previous);
}

}  // namespace zy
