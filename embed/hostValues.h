// Values across the border between host and script: numbers to the memory of the host, and what the
// host passes behind a type code.
#pragma once

#include <cstdarg>

#include "expr/value.h"

namespace zy {

// Variable arguments of the host, as they are consumed.
class HostArguments {
public:
    explicit HostArguments(va_list from) { va_copy(list, from); }
    HostArguments(const HostArguments &) = delete;
    HostArguments &operator=(const HostArguments &) = delete;
    ~HostArguments() { va_end(list); }
    va_list list;
};

// Stores a scalar as a number of a data type, in its own width.
void storeNumber(void *result, int type, const Value *value);

// What stands behind the host type code. NULL after a message, which may name the service. Objects
// are copied, arrays are not.
Value *valueFromHost(int code, HostArguments &arguments, const char *service);
// A number of a data type from DT_CHAR to DT_DOUBLE, passed as C passes it.
Value *numberFromHost(int type, HostArguments &arguments);

}  // namespace zy
