// The printers of single values, by a given format or the default one of their type.
#pragma once

#include "expr/scope.h"
#include "rtlib/conversion.h"
#include "rtlib/sink.h"

namespace zy {

constexpr int PRINT_FAILED = -9999;

// A format is one conversion with the text behind it; NULL asks for the default. The number of
// characters written, or PRINT_FAILED.
int printValue(Sink &sink, const char *format, const Value *value);
// The same for a format that has been taken apart.
int printConverted(Sink &sink, const Conversion &conversion, const Value *value);

// The same for storage, where defaults don't follow _formatf and _formatd and a text that is NULL
// shows as "NULL". The class of an object isn't in its cell.
int printCell(Sink &sink, const char *format, const VarCell *cell,
              const StructInfo *info = nullptr);
// The same for storage that a Value borrows.
int printView(Sink &sink, const Conversion *conversion, const Value *view);

// The text that a value is, if it is one: a string, pointer to char or array of char. NULL else.
// `limit` is where it ends at the latest.
const char *textOf(const Value *value, size_t &limit);

}  // namespace zy
