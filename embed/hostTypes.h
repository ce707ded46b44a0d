// The host type codes against the data types: one list (embed/hostTypes.inc), read in either
// direction.
#pragma once

#include "decl/structInfo.h"

namespace zy {

// The code of a data type, 0 for one that has none. structInfo tells class, union and enum from
// struct; NULL counts as struct.
int toHostType(int dataType, const StructInfo *structInfo);

// The data type of a code, DT_UNDEFINED for one that isn't in the list.
DataType fromHostType(int code);

}  // namespace zy
