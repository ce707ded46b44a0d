// The storage of one variable: what a cell holds for each kind of declaration, and its release.

#include <cstdlib>
#include <cstring>

#include "decl/arrayInfo.h"
#include "decl/funcInfo.h"
#include "decl/structInfo.h"
#include "expr/freeBlocks.h"
#include "expr/nodes.h"
#include "expr/objects.h"
#include "expr/scope.h"
#include "instance/report.h"
#include "numeric/shape.h"

namespace zy {

namespace {

// Zeroed memory for a script's object; NULL after a message if there isn't enough.
void *newObject(size_t count, size_t size) {
    void *object = calloc(count, size);
    if (!object)
        reportOutOfMemory();
    return object;
}

bool initArrayCell(VarCell *cell, TypeInfo *info, int kind) {
    cell->data2.elementType = info->dataType;
    if (info->dataType == DT_STRUCT)
        cell->structInfo = info->structLink;
    const ArrayInfo *array = info->arrayLink;
    if (!array || kind == KIND_ASSUMED_C_ARRAY || kind == KIND_ASSUMED_ARRAY)
        return true;
    bool isPointer = kind == KIND_P_C_ARRAY || kind == KIND_P_ARRAY;
    cell->fortranOrder = array->fortranOrder;
    cell->adoptShape = isPointer && array->shapeKind == SHAPE_ASSUMED;
    cell->shape = declaredShape(array);
    if (!countElements(cell->shape, cell->count))
        return false;
    if (isPointer || cell->count == 0)
        return true;
    size_t size = elementSizeOf(info);
    cell->data.p = size ? newObject(cell->count, size) : nullptr;
    if (!cell->data.p)
        cell->count = 0;
    return cell->data.p != nullptr;
}

// The cell of a pointer to function holds a function record of its own, whose owner is the target.
bool initFunctionPointer(VarCell *cell) {
    cell->data.p = newFuncInfo(nullptr);
    return cell->data.p != nullptr;
}

bool initObject(VarCell *cell, const TypeInfo *info) {
    cell->structInfo = info->structLink;
    size_t size = info->structLink ? info->structLink->size : 0;
    if (size == 0)
        return true;
    cell->data.p = newObject(1, size);
    return cell->data.p != nullptr;
}

bool isReference(int kind) { return kind == KIND_REFERENCE || kind == KIND_BY_REFERENCE; }

int cellType(const TypeInfo *info, int kind) {
    if (isReference(kind))
        return DT_LINK;
    TypeInfo applied = *info;
    applied.kind = kind;
    return dataTypeOf(&applied);
}

}  // namespace

VarCell *newVarCell(int type) {
    auto *cell = static_cast<VarCell *>(takeBlock(freeCells));
    if (!cell)
        cell = static_cast<VarCell *>(allocOrFail(sizeof(VarCell)));
    if (!cell)
        return nullptr;
    memset(static_cast<void *>(cell), 0, sizeof(VarCell));
    cell->type = type;
    return cell;
}

bool initCell(VarCell *cell, TypeInfo *info, int kind) {
    memset(static_cast<void *>(cell), 0, sizeof(VarCell));
    cell->type = cellType(info, kind);
    switch (cell->type) {
        case DT_CARRAY:
        case DT_P_CARRAY:
        case DT_ARRAY:
        case DT_P_ARRAY: return kind == KIND_SIMPLE || initArrayCell(cell, info, kind);
        case DT_FUNCTION:
            cell->data.p = info->functionLink;
            cell->data2.frame = currentContext->frames;
            return true;
        case DT_P_FUNCTION: return initFunctionPointer(cell);
        case DT_STRUCT: return initObject(cell, info);
        default: return true;
    }
}

// ---- Storage that isn't there -----------------------------------------------------------------

namespace {

void releaseElementObjects(const VarCell *cell) {
    auto *object = static_cast<char *>(cell->data.p);
    for (uint32_t i = 0; object && i < cell->count; i++, object += cell->structInfo->size)
        releaseObject(object, cell->structInfo);
}

void releaseArrayContents(VarCell *cell, bool ownsData) {
    if (ownsData) {
        if (cell->data2.elementType == DT_STRUCT && cell->structInfo)
            releaseElementObjects(cell);
        releaseElements(cell->data.p, cell->count, cell->data2.elementType);
        free(cell->data.p);
    }
    releaseShape(cell->shape);
}

// The formals are those of the target.
void releaseBoundFunction(FuncInfo *function) {
    if (function)
        function->parameters = nullptr;
    deleteNode(function);
}

// The flags of a link are something else.
bool ownsText(const VarCell *cell) {
    return (cell->flags & CELL_OWNS_TEXT) && isPointer(static_cast<int>(cell->type));
}

void releaseContents(VarCell *cell) {
    switch (cell->type) {
        case DT_STRING:
        case DT_QUATERNION: free(cell->data.p); break;
        case DT_P_FUNCTION: releaseBoundFunction(static_cast<FuncInfo *>(cell->data.p)); break;
        case DT_STRUCT:
            if (!cell->noFree) {
                releaseObject(cell->data.p, cell->structInfo);
                free(cell->data.p);
            }
            break;
        case DT_CARRAY:
        case DT_ARRAY: releaseArrayContents(cell, true); break;
        case DT_P_CARRAY:
        case DT_P_ARRAY: releaseArrayContents(cell, cell->argumentMark == ARRAY_ARGUMENT); break;
        default:
            if (ownsText(cell))
                free(cell->text);
    }
}

// One cell serves: what an expression reads from it is copied, and the record itself stays.
VarCell *freshScratchCell(TypeInfo *symbol) {
    errorFlag = 1;
    releaseScratchCell();
    if (symbol)
        initCell(&scratchCell, symbol, isReference(symbol->kind) ? +KIND_SIMPLE : symbol->kind);
    else
        scratchCell.type = DT_INT;
    return &scratchCell;
}

}  // namespace

VarCell *missingSlot(TypeInfo *symbol) {
    runError("attempt to access non-existing memory");
    return freshScratchCell(symbol);
}

VarCell *missingCell(TypeInfo *symbol) {
    runError("attempt to access non-existing memory for '%s'",
             symbol->name ? symbol->name->text : "");
    return freshScratchCell(symbol);
}

void releaseScratchCell() {
    releaseContents(&scratchCell);
    memset(static_cast<void *>(&scratchCell), 0, sizeof(VarCell));
}

}  // namespace zy

void killEntry(zy::VarCell *cell) {
    zy::releaseContents(cell);
    if (!zy::giveBlock(zy::freeCells, cell))
        free(cell);
}
