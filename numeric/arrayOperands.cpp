#include "numeric/arrayOperands.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "instance/report.h"
#include "numeric/arrayValue.h"
#include "numeric/elementTypes.h"

namespace zy {

// ---- Steps --------------------------------------------------------------------------------------

namespace {

// Elements of a block: two operands and the result of the widest type stay in the nearest cache.
constexpr size_t BLOCK = 256;
constexpr size_t WIDEST = sizeof(Complex<double>);

class Block {
public:
    Block(size_t begin, size_t count) : begin(begin), count(count) {}
    // Elements of a source in the kernel's type, in the buffer if they aren't so where they lie.
    const void *read(const ElementSource &source, void *buffer) const {
        if (source.step && !source.convert) {
            compute(*source.step, buffer);
            return buffer;
        }
        if (source.step)
            return readConverted(source, buffer);
        const char *from = static_cast<const char *>(source.data) + begin * source.stride;
        if (!source.convert)
            return from;
        source.convert(buffer, from, count);
        return buffer;
    }
    void compute(ElementStep &step, void *to) const {
        alignas(64) unsigned char left[BLOCK * WIDEST], right[BLOCK * WIDEST];
        const void *first = read(step.left, left), *second = read(step.right, right);
        step.dividedByZero |= step.kernel(to, first, second, count);
    }

private:
    [[gnu::noinline]] const void *readConverted(const ElementSource &source, void *buffer) const {
        alignas(64) unsigned char computed[BLOCK * WIDEST];
        compute(*source.step, computed);
        source.convert(buffer, computed, count);
        return buffer;
    }

    size_t begin, count;
};

}  // namespace

void runStep(ElementStep &step, void *to, size_t count) {
    if (step.left.isPlain() && step.right.isPlain()) {
        step.dividedByZero |= step.kernel(to, step.left.data, step.right.data, count);
        return;
    }
    for (size_t begin = 0; begin < count; begin += BLOCK)
        Block(begin, std::min(BLOCK, count - begin))
            .compute(step, static_cast<char *>(to) + begin * step.resultBytes);
}

void runInto(const ArrayResult &result, ElementStep step) {
    runStep(step, result.elements(), result.count());
    if (step.dividedByZero)
        runWarning("integer divide by zero ");
}

// ---- Operands -----------------------------------------------------------------------------------

ArrayOperand::ArrayOperand(Value *value)
    : value(value), data(nullptr), elementType(DT_NULL), count(0), shape(nullptr) {
    if (!isArrayLike(static_cast<int>(value->type)) || !value->payload.p)
        return;
    data = value->payload.p;
    elementType = value->payload2.elementType;
    count = value->count;
    shape = value->shape;
}

bool ArrayOperand::isNumeric() const { return isElementType(elementType); }

ScratchMemory::ScratchMemory(size_t bytes) : memory(bytes ? allocOrFail(bytes) : nullptr) {}
ScratchMemory::~ScratchMemory() { free(memory); }

int rankOf(const ShapeNode *shape) {
    int rank = 0;
    for (; shape; shape = shape->next)
        rank++;
    return rank;
}

size_t extentOf(const ShapeNode *dimension) {
    int64_t extent = int64_t{dimension->extent.limit} - dimension->extent.lower;
    return static_cast<size_t>(std::max<int64_t>(0, extent));
}

size_t bytesOf(int elementType) { return static_cast<size_t>(elementSize(elementType)); }

int commonType(int left, int right) { return std::max({left, right, static_cast<int>(DT_INT)}); }

ElementSource sourceOf(const ArrayOperand &operand, int kernelType) {
    bool same = operand.elementType == kernelType;
    return {operand.data, same ? nullptr : conversionKernel(kernelType, operand.elementType),
            bytesOf(operand.elementType), nullptr};
}

// ---- Pairs of operands --------------------------------------------------------------------------

namespace {

bool haveSameExtents(const ShapeNode *first, const ShapeNode *second) {
    for (; first && second; first = first->next, second = second->next)
        if (int64_t{first->extent.limit} - first->extent.lower !=
            int64_t{second->extent.limit} - second->extent.lower)
            return false;
    return !first && !second;
}

bool ordersDiffer(const ArrayOperand &left, const ArrayOperand &right) {
    return isFortranOrdered(left.shape) != isFortranOrdered(right.shape) &&
           haveSameExtents(left.shape, right.shape) && left.isNumeric() && right.isNumeric();
}

}  // namespace

ArrayPair::ArrayPair(Value *leftValue, Value *rightValue)
    : left(leftValue),
      right(rightValue),
      leftIsModel(!isFortranOrdered(left.shape)),
      mixesOrders(ordersDiffer(left, right)),
      ordered(mixesOrders ? size_t{count()} * elementSize(other().elementType) : 0) {
    if (!ordered.get())
        return;
    ArrayOperand &columns = leftIsModel ? right : left;
    reorderElements(ordered.get(), columns.data, model().shape, columns.shape, count(),
                    static_cast<uint32_t>(elementSize(columns.elementType)));
    columns.data = ordered.get();
}

ScalarElement::ScalarElement(const Value *value, int kernelType) : bytes{} {
    fillFromScalar(bytes, 1, kernelType, value);
}

// ---- Results ------------------------------------------------------------------------------------

namespace {

// Whether an operand's memory can hold the result.
bool canBecome(const Value *operand, size_t elementBytes, uint32_t count) {
    return operand && isArrayLike(static_cast<int>(operand->type)) &&
           operand->ownership == ARRAY_OWNED && operand->count == count && operand->payload.p &&
           isElementType(operand->payload2.elementType) &&
           bytesOf(operand->payload2.elementType) == elementBytes;
}

void takeShape(Value *result, const Value *model) {
    if (result == model)
        return;
    releaseShape(result->shape);
    result->shape = copyShape(model->shape);
}

Value *newResult(const Value *model, int elementType, uint32_t count) {
    Value *result = isArrayLike(static_cast<int>(model->type))
                        ? newArrayLike(model, elementType)
                        : newArrayValue(elementType, nullptr);
    if (!result || result->count == count)
        return result;
    memset(result->payload.p, 0, size_t{result->count} * elementSize(elementType));
    result->count = std::min(count, result->count);
    return result;
}

void releaseOperand(Value *operand) {
    if (operand && isArrayLike(static_cast<int>(operand->type)))
        releaseArrayValue(operand);
}

}  // namespace

ArrayResult::ArrayResult(const ArrayOperand &model, const ArrayOperand *other, int elementType,
                         uint32_t count)
    : left(model.value), right(other ? other->value : nullptr), result(nullptr) {
    size_t bytes = bytesOf(elementType);
    if (canBecome(left, bytes, count) && shapeCount(model.shape) == count)
        result = left;
    else if (canBecome(right, bytes, count) && shapeCount(model.shape) == count)
        result = right;
    if (!result) {
        result = newResult(left, elementType, count);
        return;
    }
    takeShape(result, left);
    result->type = DT_ARRAY;
    result->payload2.elementType = elementType;
    result->payload2.castFlag = 0;
}

ArrayResult::~ArrayResult() {
    if (left != result)
        releaseOperand(left);
    if (right && right != result && right != left)
        releaseOperand(right);
}

void ArrayResult::clear() {
    memset(elements(), 0, size_t{count()} * elementSize(result->payload2.elementType));
}

}  // namespace zy
