// Arrays that cross between host and instance. The host's data isn't copied.
#pragma once

#include "embed/hostValues.h"

namespace zy {

// With the extents as the next arguments. NULL if they are none.
Value *arrayFromHost(int type, int elementType, void *data, int rank, HostArguments &arguments);

// A leaf that declares an array of that type and shape, for the checks of assignment, which go by
// declarations.
ExprNode *declarationLike(const Value *array);

// Whether elements of that type can be handed over as they stand in memory.
bool isHostElement(int type);

// The elements as they are, as many bytes as the host's type makes of their count.
void copyElementsToHost(void *result, int hostElement, const Value *array);

}  // namespace zy
