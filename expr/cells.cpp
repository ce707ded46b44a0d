// The storage of variables: cells, what they own, and the way from a declaration to its cell.

#include <cstdlib>
#include <cstring>

#include "expr/scope.h"
#include "instance/report.h"
#include "numeric/shape.h"

namespace zy {

VarCell *newVarCell(int type) {
    auto *cell = static_cast<VarCell *>(allocOrFail(sizeof(VarCell)));
    if (!cell)
        return nullptr;
    memset(static_cast<void *>(cell), 0, sizeof(VarCell));
    cell->type = type;
    return cell;
}

}  // namespace zy

using namespace zy;

namespace {

void releaseArrayCell(VarCell *cell, bool ownsData) {
    if (ownsData) {
        releaseElements(cell->data.p, cell->count, cell->data2.elementType);
        free(cell->data.p);
    }
    releaseShape(cell->shape);
}

}  // namespace

void killEntry(VarCell *cell) {
    switch (cell->type) {
        case DT_STRING:
        case DT_QUATERNION: free(cell->data.p); break;
        case DT_P_CHAR:
            if (cell->flags & CELL_OWNS_TEXT)
                free(cell->data.p);
            break;
        case DT_STRUCT:
            if (!cell->noFree)
                free(cell->data.p);
            break;
        case DT_CARRAY:
        case DT_ARRAY: releaseArrayCell(cell, true); break;
        case DT_P_CARRAY:
        case DT_P_ARRAY: releaseArrayCell(cell, cell->argumentMark == ARRAY_ARGUMENT); break;
        default: break;
    }
    free(cell);
}
