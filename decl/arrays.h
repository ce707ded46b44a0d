// Array declarators: the part of a declarator between [ and ].
#pragma once

#include "decl/typeInfo.h"

namespace zy {

// With the [ consumed; leaves the ] as the current token. False after a message. hasPointerPrefix
// is the star count of a (*name) form, parameterList the formals read so far.
bool parseArrayDeclarator(TypeInfo *info, bool isParameter, int hasPointerPrefix,
                          TypeInfo *parameterList);

// Where a declarator of an array stands.
struct ArrayPlace {
    DeclContext context;
    int level;
    bool hasPrefix;  // (*name)[...]
    bool fortranOrder;
};
// Refuses the arrays that can't stand there. False after a message.
bool checkArrayPlace(const TypeInfo *info, const ArrayPlace &place);
// The same; makes those of a (*name) form pointers.
bool applyArrayPlace(TypeInfo *info, const ArrayPlace &place);

// The dimension that the pointer to an array counts its arrays by.
void addPointerDimension(TypeInfo *info);

// Of an array whose bounds are computed: the statement that gives it its storage, in front of the
// one being parsed.
void addDeferredStep(TypeInfo *info);

// Whether the extents come from the argument.
bool isAssumedShape(const TypeInfo *info);
// A formal a[:] or `array int *a`: a pointer, but for its size, which is that of what it is given.
bool takesShape(const TypeInfo *info);
// Whether a bound is computed when the declaration runs.
bool isDeferred(const TypeInfo *info);

// A computational array that was declared without a [, by & or *, gets the shape of its argument.
// False after a message if memory is exhausted.
bool addOpenShape(TypeInfo *info, bool fortranOrder);

}  // namespace zy
