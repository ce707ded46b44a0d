// A stand-in until subscripts exist. It refuses, so that callers take the way of a subscript that
// cannot be done.

#include "instance/report.h"
#include "numeric/shape.h"

namespace zy {

__attribute__((weak)) VarCell *subscriptedCell(TypeInfo *, int) {
    runError("undefined array reference operation");
    return nullptr;
}

}  // namespace zy
