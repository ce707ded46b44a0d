// record header: StructInfo, the layout of a struct, class, union or enum, owned by its tag. A
// record of the shared format of nodes: `kind` lies where it lies in them.
#pragma once

#include "expr/value.h"

namespace zy {

enum AggregateKind : uint16_t {
    AGGREGATE_NONE = 0,
    AGGREGATE_STRUCT = 1,  // and class
    AGGREGATE_UNION = 2,
    AGGREGATE_ENUM = 3,
};

struct StructInfo {
    TypeInfo *tag;
    TypeInfo *members;  // in order; of an enum the first enumerator of its block
    uint32_t kind;      // NODE_STRUCT_INFO
    uint32_t size;      // bytes; 0: incomplete. Of an enum the number of its enumerators
    TypeInfo *constructor;
    TypeInfo *destructor;
    uint32_t declaredSize;  // what size was when the body ended
    uint16_t aggregateKind;
    uint16_t memberLevel;  // scope level of the members
    uint8_t ownsTexts;     // an object has string members: a copy of it needs texts of its own
    uint8_t ownsObjects;   // an object has members that are constructed or destroyed with it
};

// One cell of a block's tag list.
struct TagEntry {
    TagEntry *next;
    NameEntry *name;  // the plain name, also of a hidden tag
    StructInfo *info;
    uint16_t aggregateKind;
};

}  // namespace zy
