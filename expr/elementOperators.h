// Elements of variables, read and stored: a[i], a[i][j] and p[i] of numbers have routines of their
// own, chosen by rank, element type and where the subscript stands; all else goes the general way.
#pragma once

#include "expr/value.h"

namespace zy {

// The routine that pushes what a subscript node selects.
NodeRoutine elementRoutine(ExprNode *node);
// That of an `=` whose target is an element; NULL for one that goes the general way.
NodeRoutine elementAssignRoutine(ExprNode *node);

// The general ways, for any subscript node and any `=`.
void readAnyElement(ExprNode *node);
void assignGeneral(ExprNode *node);

}  // namespace zy
