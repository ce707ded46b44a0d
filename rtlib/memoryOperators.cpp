// Blocks of memory: set, copied, read from and written to streams. What an array can't hold is cut.

#include <cstring>

#include "expr/routines.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "numeric/shape.h"
#include "rtlib/libraryCall.h"

namespace zy {

namespace {

// The bytes of an array operand, whose class the expression tells.
size_t bytesOf(const Value *array, const ExprNode *tree) {
    const TypeInfo *variable = variableOf(tree);
    size_t element = variable ? static_cast<size_t>(elementSizeOf(variable))
                              : static_cast<size_t>(elementSize(array->payload2.elementType));
    return array->count * element;
}

bool isTooSmall(const Value *array, const ExprNode *tree, uint64_t bytes) {
    return array->type == DT_CARRAY && bytesOf(array, tree) < bytes;
}

}  // namespace

void memsetOperator(ExprNode *node) {
    Operand to(node->left, Operand::CONTENTS), byte(node->right), number(node->third);
    if (!to || !byte || !number)
        return;
    uint64_t count = readUnsigned64(number.get());
    if (isTooSmall(to.get(), node->left, count)) {
        runError("array length buf is less than count in memset(buf,ch,count)");
        count = to->count;
    }
    void *memory = addressIn(to.get());
    if (memory)
        memset(memory, truncateToInt32(readDouble(byte.get())), count);
    pushAddress(node->op, memory);
    currentContext->stack->type = DT_P_VOID;
}

void memcpyOperator(ExprNode *node) {
    Operand to(node->left, Operand::CONTENTS), from(node->right, Operand::CONTENTS);
    Operand number(node->third);
    if (!to || !from || !number)
        return;
    uint64_t count = readUnsigned64(number.get());
    if (isTooSmall(to.get(), node->left, count)) {
        runError("string length to is less than count in memcpy(to,from,count)");
        count = to->count;
    }
    void *memory = addressIn(to.get()), *source = addressIn(from.get());
    if (memory && source)
        memmove(memory, source, count);
    pushAddress(node->op, memory);
    currentContext->stack->type = DT_P_VOID;
}

// ---- Streams ------------------------------------------------------------------------------------

namespace {

using Transfer = int (*)(void *memory, uint64_t size, uint64_t count, FILE *stream);

template <Transfer transfer, bool reads>
void transferBlock(ExprNode *node) {
    Operand block(node->left, Operand::CONTENTS), bytes(node->right), number(node->third);
    Operand file(node->fourth);
    if (!block || !bytes || !number || !file)
        return;
    uint64_t size = readUnsigned64(bytes.get()), count = readUnsigned64(number.get());
    if (reads && isTooSmall(block.get(), node->left, size * count)) {
        runError(
            "memory of array buf in fread(buf,size,count,stream) is less than the specified "
            "input stream");
        count = block->count;
    }
    void *memory = addressIn(block.get());
    auto *stream = static_cast<FILE *>(addressIn(file.get()));
    pushInteger(node->op, memory && stream ? transfer(memory, size, count, stream) : -1);
}

int readBlock(void *memory, uint64_t size, uint64_t count, FILE *stream) {
    return static_cast<int>(fread(memory, size, count, stream));
}
int writeBlock(void *memory, uint64_t size, uint64_t count, FILE *stream) {
    return static_cast<int>(fwrite(memory, size, count, stream));
}

}  // namespace

void freadOperator(ExprNode *node) { transferBlock<readBlock, true>(node); }
void fwriteOperator(ExprNode *node) { transferBlock<writeBlock, false>(node); }

}  // namespace zy
