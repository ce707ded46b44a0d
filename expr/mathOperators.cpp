// Mathematical operators that aren't one formula of their operands: min and max.

#include <limits>

#include "expr/mathFamilies.h"
#include "expr/operators.h"
#include "numeric/shape.h"

namespace zy {

namespace {

class Extreme {
public:
    Extreme(bool isLeast, double start) : isLeast(isLeast), best(start) {}
    void meet(double number) {
        if (std::isnan(number))
            sawNaN = true;
        else if (isLeast ? number < best : number > best)
            best = number;
    }
    double result() const { return sawNaN ? wideNaN : best; }

private:
    bool isLeast, sawNaN = false;
    double best;
};

void meetElements(Extreme &extreme, const Value *array) {
    constexpr size_t together = 256;
    auto *from = static_cast<const char *>(array->payload.p);
    int type = array->payload2.elementType;
    double numbers[together] = {};
    for (size_t begin = 0; from && begin < array->count; begin += together) {
        size_t count = std::min<size_t>(together, array->count - begin);
        convertElements(numbers, from + begin * static_cast<size_t>(elementSize(type)),
                        static_cast<uint32_t>(count), DT_DOUBLE, type);
        for (size_t i = 0; i < count; i++)
            extreme.meet(numbers[i]);
    }
}

double startOf(DataType type, bool isLeast) {
    double largest = type == DT_INT     ? INT32_MAX
                     : type == DT_FLOAT ? std::numeric_limits<float>::max()
                                        : std::numeric_limits<double>::max();
    return isLeast ? largest : type == DT_INT ? INT32_MIN : -largest;
}

}  // namespace

void extremeOperator(ExprNode *node) {
    DataType type = resultTypeOf(node->op);
    bool isLeast = node->op == OP_MIN_INT || node->op == OP_MIN_FLOAT || node->op == OP_MIN_DOUBLE;
    Extreme extreme(isLeast, startOf(type, isLeast));
    for (const ExprNode *cell = node->left; cell; cell = cell->next) {
        Operand argument(cell->item, Operand::CONTENTS);
        if (!argument)
            return;
        if (isArrayLike(static_cast<int>(argument->type)))
            meetElements(extreme, argument.get());
        else
            extreme.meet(readDouble(argument.get()));
    }
    if (type == DT_INT)
        pushScalar(truncateToInt32(extreme.result()));
    else if (type == DT_FLOAT)
        pushScalar(static_cast<float>(extreme.result()));
    else
        pushScalar(extreme.result());
}

}  // namespace zy
