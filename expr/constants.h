// record header: constants by name that the system predefines, and constants where the parser needs
// a number at once.
#pragma once

#include "expr/scope.h"

namespace zy {

// A row of the lists of predefined constants. A string's text is copied.
struct PredefinedConstant {
    const char *name;
    int type;  // DataType
    Payload payload;
    Payload2 payload2 = {};
};

// Binds the name at level 0. NULL after a message if memory is exhausted.
Symbol *addPredefinedConstant(const PredefinedConstant &row);

// A scalar constant as the cast to int gives it. False, and no number, for any other type.
bool constantToInt(const Value *constant, int &number);

}  // namespace zy
