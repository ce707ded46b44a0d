// A file-scope declaration that repeats an earlier one: what differs is reported, and what the new
// one adds goes into the old, to which the parsed program refers already.

#include <utility>

#include "decl/arrayInfo.h"
#include "decl/funcInfo.h"
#include "expr/context.h"
#include "expr/scope.h"
#include "instance/report.h"
#include "stmt/parseStack.h"

namespace zy {

namespace {

void mergeStorage(TypeInfo *fresh, TypeInfo *old) {
    bool isExternAndStatic = (old->storage == STORAGE_EXTERN && fresh->storage == STORAGE_STATIC) ||
                             (old->storage == STORAGE_STATIC && fresh->storage == STORAGE_EXTERN);
    if (isExternAndStatic && old->level == FILE_LEVEL)
        old->storage = STORAGE_STATIC;
    else if (isExternAndStatic)
        parseError("'%s' as static variable redeclared", old->name->text);
    else if (old->storage == STORAGE_EXTERN)
        old->storage = fresh->storage;
}

bool haveSameType(const TypeInfo *fresh, const TypeInfo *old) {
    if (fresh->dataType != old->dataType || fresh->structLink != old->structLink) {
        parseError("variable '%s' was defined as %s, redefine it as %s", old->name->text,
                   dataTypeText(old->dataType), dataTypeText(fresh->dataType));
        return false;
    }
    if (fresh->kind != old->kind) {
        parseError("inconsistent array for variable '%s' ", old->name->text);
        return false;
    }
    return true;
}

// ---- Bounds -----------------------------------------------------------------------------------

struct Bounds {
    ExprNode *lower, *limit;  // leaves

    bool isIncomplete() const { return lower->payload.i == limit->payload.i; }
    int upper() const { return limit->payload.i - 1; }
    void take(const Bounds &other) {
        lower->payload = other.lower->payload;
        limit->payload = other.limit->payload;
    }
};

// The bounds at a place in the list, which then stands behind them.
bool nextBounds(ExprNode *&cell, Bounds &bounds) {
    if (!cell || !cell->next || !cell->item || !cell->next->item)
        return false;
    bounds = {cell->item, cell->next->item};
    cell = cell->next->next;
    return true;
}

void compareBounds(const Bounds &fresh, const Bounds &old, int dimension) {
    int oldLower = old.lower->payload.i, freshLower = fresh.lower->payload.i;
    if (oldLower != freshLower)
        parseError("lower limit for array extent of dimension %d is changed from %d to %d ",
                   dimension, oldLower, freshLower);
    if (old.upper() != fresh.upper())
        parseError("upper limit for array extent of dimension %d is changed from %d to %d ",
                   dimension, old.upper(), fresh.upper());
}

void mergeArrays(ArrayInfo *fresh, ArrayInfo *old) {
    if (!fresh || !old)
        return;
    if (fresh->rank != old->rank) {
        parseError("rank of array is changed from %d to %d ", old->rank, fresh->rank);
        return;
    }
    if (fresh->shapeKind != SHAPE_FIXED || old->shapeKind != SHAPE_FIXED)
        return;
    ExprNode *freshCell = fresh->bounds, *oldCell = old->bounds;
    Bounds a{}, b{};
    for (int dimension = 1; nextBounds(freshCell, a) && nextBounds(oldCell, b); dimension++) {
        if (dimension == 1 && b.isIncomplete())
            b.take(a);
        else if (dimension > 1 || !a.isIncomplete())
            compareBounds(a, b, dimension);
    }
}

// ---- Functions --------------------------------------------------------------------------------

// A definition's record replaces the prototype's: its statements refer to it. A prototype only adds
// formals to one that has none.
void mergeFunctions(TypeInfo *fresh, TypeInfo *old) {
    FuncInfo *added = fresh->functionLink;
    if (!added || !old->functionLink)
        return;
    if (added->body && !old->functionLink->body) {
        std::swap(fresh->functionLink, old->functionLink);
        std::swap(fresh->functionLink->owner, old->functionLink->owner);
        if (old->storageCell)
            old->storageCell->data.p = old->functionLink;
    } else if (!old->functionLink->parameters && added->parameters) {
        std::swap(added->parameters, old->functionLink->parameters);
        std::swap(added->variadic, old->functionLink->variadic);
    }
}

// ---- Storage ----------------------------------------------------------------------------------

// Takes a cell out of the file-scope frame.
void clearSlotOf(const VarCell *cell) {
    for (ScopeFrame *frame = baseContext ? baseContext->frames : nullptr; frame;
         frame = frame->outer)
        for (int slot = 0; slot < frame->slotCount; slot++)
            if (slotOf(frame, slot) == cell)
                setSlot(frame, slot, nullptr);
}

// The old cell stays, since addresses of it may be in use; if it is an array without elements, it
// takes over the contents of the new one.
void mergeCells(TypeInfo *fresh, TypeInfo *old) {
    VarCell *cell = std::exchange(fresh->storageCell, nullptr);
    if (!cell || cell == old->storageCell)
        return;
    clearSlotOf(cell);
    if (!old->storageCell) {
        old->storageCell = cell;
        allocateStorage(old);
        return;
    }
    bool isCompletion = old->storageCell->type == cell->type && old->arrayLink &&
                        old->storageCell->count == 0 && cell->count != 0;
    if (isCompletion)
        std::swap(*old->storageCell, *cell);
    killEntry(cell);
}

}  // namespace

void checkRedeclaration(TypeInfo *fresh, TypeInfo *old) {
    mergeStorage(fresh, old);
    if (haveSameType(fresh, old)) {
        mergeArrays(fresh->arrayLink, old->arrayLink);
        if (old->kind >= KIND_P_FUNCTION)
            comparePrototypes(old, fresh);
        if (old->kind == KIND_FUNCTION)
            mergeFunctions(fresh, old);
        mergeCells(fresh, old);
    }
    old->used |= fresh->used;
    if (globalBlock) {
        removeSymbol(fresh, &globalBlock->symbols());
        globalBlock->symbolCount--;
    }
    old->name->symbol = old;
}

}  // namespace zy
