#include "expr/evaluateNow.h"

#include "expr/evaluator.h"
#include "expr/readers.h"
#include "expr/thread.h"
#include "instance/langState.h"

namespace zy {

bool evaluateNow(ExprNode *tree, int &number) {
    Value *stack = currentContext->stack;
    unsigned char wasExecuting = executing;
    if (ExprNode *chain = compileChain(tree, nullptr, false))
        runNested(chain);
    executing = wasExecuting;
    bool popped;
    Value *value = operandOf(tree, popped);
    if (value)
        number = readInt32(value);
    if (popped)
        deleteValue(value);
    while (currentContext->stack && currentContext->stack != stack)
        deleteValue(popValue());
    return value;
}

}  // namespace zy
