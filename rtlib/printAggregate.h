// The printers of what has parts: arrays by rows and pages, aggregates by members.
#pragma once

#include "decl/structInfo.h"
#include "numeric/shape.h"
#include "rtlib/conversion.h"
#include "rtlib/sink.h"

namespace zy {

// Each element by the conversion, NULL for the default of its type; the text behind the conversion
// is the caller's to write.
void printArray(Sink &sink, const Conversion *conversion, int elementType, const void *data,
                const ShapeNode *shape);

// All members, each with its name behind `prefix`, the path that leads to the object. No line feed
// stands behind the last one, unless it is an array.
void printStruct(Sink &sink, const char *prefix, const StructInfo *info, const void *object);

}  // namespace zy
