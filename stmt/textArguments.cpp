// A string that is passed to a pointer: the callee works on a copy. The cell keeps the copy apart
// from the pointer, which the callee may move.

#include "stmt/textArguments.h"

#include <cstring>

#include "decl/funcInfo.h"
#include "expr/nodes.h"
#include "expr/typeQueries.h"
#include "numeric/shape.h"

namespace zy {

namespace {

bool takesText(int type) { return isPointer(type) && !isArray(type) && type != DT_P_FUNCTION; }

}  // namespace

bool passText(VarCell *cell, const Value *value) {
    if (value->type != DT_STRING || !takesText(static_cast<int>(cell->type)))
        return false;
    cell->text = cell->data.text = copyString(value->payload.text);
    cell->flags |= CELL_OWNS_TEXT;
    return true;
}

bool passElements(VarCell *cell, const Value *value) {
    bool isTemporary = (value->type == DT_CARRAY || value->type == DT_ARRAY) &&
                       value->ownership == ARRAY_OWNED && value->payload.p;
    int element = value->payload2.elementType;
    bool isPlain = element >= 0 && isScalarNumeric(element);
    if (!isTemporary || !isPlain || !takesText(static_cast<int>(cell->type)))
        return false;
    size_t size = static_cast<size_t>(elementSize(element)) * value->count;
    auto *copy = static_cast<char *>(allocOrFail(size + 1));  // ended as a text is
    if (!copy)
        return false;
    memcpy(copy, value->payload.p, size);
    copy[size] = '\0';
    cell->text = cell->data.text = copy;
    cell->flags |= CELL_OWNS_TEXT;
    return true;
}

namespace {

bool pointsInto(const char *text, const Value *pointer) {
    auto start = reinterpret_cast<uintptr_t>(text);
    auto place = reinterpret_cast<uintptr_t>(pointer->payload.p);
    return text && place >= start && place <= start + strlen(text);
}

}  // namespace

void keepReturnedText(const FuncInfo *function, const ScopeFrame *frame, const Value *result) {
    if (!isPointer(static_cast<int>(result->type)) || !function->parameters || !frame)
        return;
    for (int slot = 0; slot < frame->slotCount; slot++) {
        VarCell *cell = slotOf(frame, slot);
        bool ownsText =
            cell && (cell->flags & CELL_OWNS_TEXT) && takesText(static_cast<int>(cell->type));
        if (!ownsText || !pointsInto(cell->text, result))
            continue;
        keepText(cell->text);
        cell->flags &= ~CELL_OWNS_TEXT;
    }
}

}  // namespace zy
