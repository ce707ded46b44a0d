// The arguments behind `...`. A va_list is a pointer to the next of the list cells that the call
// has made; each holds a Value, whose payload is what va_arg() reads through a pointer. The list is
// the context's own and ends with the call.

#include "expr/context.h"
#include "expr/operands.h"
#include "expr/routines.h"
#include "expr/scalarFamilies.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "numeric/convert.h"
#include "numeric/shape.h"
#include "rtlib/libraryCall.h"

namespace zy {

namespace {

// The cells that a va_list leads to; NULL at its end.
ExprNode *cellsOf(const Value *list) { return static_cast<ExprNode *>(addressIn(list)); }

// As C promotes an argument. A number that is read as one of another width or kind is converted, so
// that va_arg(list, double) of 1 is 1.0; other numbers keep the type that printf goes by.
void promote(Value *value, int wanted) {
    int type = static_cast<int>(value->type);
    if (!isReal(type) || !isReal(wanted))
        return;
    bool sameWidth =
        isIntegral(type) && isIntegral(wanted) && sizeofType(type) == sizeofType(wanted);
    if (type != wanted && !sameWidth)
        convertScalar(value, wanted);
}

// An object is read where it lies; of an array the pointer to its elements is read.
void *placeOf(Value *value) {
    return value->type == DT_STRUCT ? value->payload.p : &value->payload;
}

}  // namespace

void vaStartOperator(ExprNode *node) { pushAddress(node->op, currentContext->varArgs); }

// left: the address of the va_list, which moves on. right: the type that is read, if it is known.
void vaArgOperator(ExprNode *node) {
    void *place = nullptr;
    {
        Operand list(node->left, Operand::CONTENTS);
        if (!list)
            return;
        place = addressIn(list.get());
    }
    auto **next = static_cast<ExprNode **>(place);
    if (!next || !*next) {
        runError("no value available for Zy_VaArg()");
        pushAddress(node->op, nullptr);
        return;
    }
    Value *value = (*next)->item;
    *next = (*next)->next;
    if (node->right)
        promote(value, static_cast<int>(node->right->type));
    pushAddress(node->op, placeOf(value));
}

void vaCountOperator(ExprNode *node) {
    Operand list(node->left, Operand::CONTENTS);
    if (!list)
        return;
    int count = 0;
    for (const ExprNode *cell = cellsOf(list.get()); cell; cell = cell->next)
        count++;
    pushScalar(count);
}

// The extent of a dimension, counted from 0, of the next argument; 0 if that is no array or has no
// such dimension, so that a function can count them.
void vaArrayOperator(ExprNode *node) {
    Operand list(node->left, Operand::CONTENTS), dimension(node->right, Operand::CONTENTS);
    if (!list || !dimension)
        return;
    const ExprNode *cell = cellsOf(list.get());
    bool isArray = cell && isArrayLike(static_cast<int>(cell->item->type));
    const ShapeNode *shape = isArray ? cell->item->shape : nullptr;
    int number = readInt32(dimension.get());
    for (; shape && number > 0; number--)
        shape = shape->next;
    pushScalar(shape && number == 0 ? shape->extent.limit - shape->extent.lower : 0);
}

}  // namespace zy
