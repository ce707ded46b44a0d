// Stand-ins until conversions and subscripts exist. They refuse, so that callers take the way of a
// conversion or a subscript that cannot be done.

#include "instance/report.h"
#include "numeric/convert.h"
#include "numeric/shape.h"

namespace zy {

__attribute__((weak)) bool convertScalar(Value *, int) { return false; }

__attribute__((weak)) VarCell *subscriptedCell(TypeInfo *, int) {
    runError("undefined array reference operation");
    return nullptr;
}

}  // namespace zy
