// Where the records of Values and nodes come from. Only expr/value.cpp uses this.
#pragma once

#include "expr/value.h"
#include "instance/recordPool.h"

namespace zy {

extern RecordPool<ExprNode, 256> valueRecords;
extern int recordCount;  // taken from the pool and not given back to it

}  // namespace zy
