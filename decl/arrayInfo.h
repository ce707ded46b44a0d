// record header: ArrayInfo, the declared shape of an array, owned by its TypeInfo. A record of the
// shared format of nodes: `kind` lies where it lies in them.
#pragma once

#include "expr/value.h"

namespace zy {

enum ShapeKind : uint32_t {
    SHAPE_FIXED = 0,     // all bounds are constants
    SHAPE_ASSUMED = 1,   // the extents come from the argument
    SHAPE_DEFERRED = 2,  // a bound is computed when the declaration runs
};

constexpr int OPEN_LIMIT = 0x7fffffff;  // a bound that the declaration doesn't know

struct ArrayInfo {
    int32_t rank;
    // List cells, two for each dimension: the lower limit, then one more than the largest
    // subscript. Lower 0 and limit 0 in the first dimension: an array of unknown extent.
    ExprNode *bounds;
    uint32_t kind;       // NODE_ARRAY_INFO
    uint32_t shapeKind;  // ShapeKind
    uint16_t fortranOrder;
    ShapeNode *fixedShape;  // what fixedShapeOf() has made of the bounds; owned
};

}  // namespace zy
