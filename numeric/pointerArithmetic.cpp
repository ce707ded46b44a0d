// Pointers and C arrays plus and minus numbers, in elements.

#include "decl/structInfo.h"
#include "expr/operators.h"
#include "expr/readers.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "numeric/convert.h"
#include "numeric/shape.h"

namespace zy {

namespace {

bool isShaped(int type) { return type == DT_CARRAY || type == DT_P_CARRAY || type == DT_PP_CARRAY; }
bool isPointerToClass(int type) {
    return type == DT_P_STRUCT || type == DT_PP_STRUCT || type == DT_PPP_STRUCT;
}
bool pointsSomewhere(const Value *value) {
    return isPointer(value->type) || value->type == DT_STRING || value->type == DT_ARRAY;
}

// The class of what `tree` points to; known from the Value, or for an array from the declaration.
const StructInfo *classOf(const ExprNode *tree, const Value *pointer) {
    return isPointerToClass(pointer->type) ? pointer->payload2.structInfo : structInfoOf(tree);
}

int64_t sizeOfClass(const StructInfo *info) { return info ? info->size : 0; }

// Bytes from one element to the next.
int64_t stepOf(const ExprNode *tree, const Value *pointer) {
    if (isShaped(pointer->type)) {
        int element = pointer->payload2.elementType;
        int64_t size = element == DT_STRUCT ? sizeOfClass(classOf(tree, pointer))
                                            : int64_t{elementSize(element)};
        return size * (pointer->shape ? pointer->shape->extent.stride : 1);
    }
    if (pointer->type == DT_P_STRUCT)
        return sizeOfClass(classOf(tree, pointer));
    if (pointer->type == DT_STRING)
        return 1;
    if (pointer->type == DT_ARRAY)
        return elementSize(pointer->payload2.elementType);
    return elementSize(dereference(pointer->type));
}

// What the result knows of its target, taken over from the operand.
void keepTarget(Value *result, const Value *pointer) {
    result->type = pointer->type;
    if (pointer->type == DT_STRING)
        result->type = DT_P_CHAR;
    result->payload2 = pointer->payload2;
    if (isPointerToClass(pointer->type)) {
        result->owned = result->noFree = 0;
    } else if (isShaped(pointer->type)) {
        result->shape = pointer->shape;
        result->count = pointer->count;
        // What points into elements that a Value owns can't release them.
        result->ownership = pointer->ownership;
        if (pointer->ownership == ARRAY_OWNED)
            result->ownership = ARRAY_OWNS_SHAPE;
    }
    if (pointer->type == DT_CARRAY) {
        result->type = DT_P_CARRAY;
        result->count = pointer->shape ? pointer->shape->extent.stride : pointer->count;
    }
}

void warnOfNull() {
    if (!warningsAt(1))
        return;
    runWarning("pointer arithmetic with ptr = NULL");
    noteRunError();
}

}  // namespace

Value *pointerAdd(const ExprNode *node, const Value *left, const Value *right, int code) {
    bool leftPoints = pointsSomewhere(left);
    const Value *pointer = leftPoints ? left : right;
    auto address = reinterpret_cast<uintptr_t>(pointer->payload.p);
    if (!address)
        warnOfNull();
    Value *result = newValue();
    if (!result)
        return nullptr;
    int64_t number = truncateToInt64(readDouble(leftPoints ? right : left));
    auto step = static_cast<uint64_t>(stepOf(leftPoints ? node->left : node->right, pointer));
    uint64_t distance = static_cast<uint64_t>(number) * step;
    result->kind = NODE_VALUE;
    keepTarget(result, pointer);
    uintptr_t sum = code == OP_POINTER_ADD ? address + distance : address - distance;
    result->payload.p = reinterpret_cast<void *>(sum);
    // However far from NULL, it stays a NULL for what reads and stores.
    if (!address && !isNullAddress(result->payload.p))
        result->payload.p = nullptr;
    return result;
}

int pointerDifference(const ExprNode *node, const Value *left, const Value *right) {
    auto first = reinterpret_cast<uintptr_t>(pointerOf(left));
    auto second = reinterpret_cast<uintptr_t>(pointerOf(right));
    int64_t step = stepOf(node->left, left);
    auto bytes = static_cast<int64_t>(first - second);
    return step == 0 ? 0 : static_cast<int>(bytes / step);
}

}  // namespace zy
