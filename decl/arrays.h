// Array declarators: the part of a declarator between [ and ].
#pragma once

#include "decl/typeInfo.h"

namespace zy {

// With the [ consumed; leaves the ] as the current token. False after a message. hasPointerPrefix
// is the star count of a (*name) form, parameterList the formals read so far.
bool parseArrayDeclarator(TypeInfo *info, bool isParameter, int hasPointerPrefix,
                          TypeInfo *parameterList);

// Whether the extents come from the argument.
bool isAssumedShape(const TypeInfo *info);

// A computational array that was declared without a [, by & or *, gets the shape of its argument.
// False after a message if memory is exhausted.
bool addOpenShape(TypeInfo *info, bool fortranOrder);

}  // namespace zy
