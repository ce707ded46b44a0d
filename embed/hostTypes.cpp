#include "embed/hostTypes.h"

#include <iterator>

namespace zy {

namespace {

struct HostType {
    int code, dataType;
};

constexpr HostType hostTypes[] = {
#define ZY_HOST_TYPE(name, code, dataType, meaning) {code, dataType},
#include "embed/hostTypes.inc"
#undef ZY_HOST_TYPE
};

// The codes of the aggregates in each band, in the order struct, class, union, enum.
struct AggregateCodes {
    int dataType;
    int codes[4];
};
constexpr AggregateCodes aggregateCodes[] = {
    {DT_STRUCT, {27, 28, 29, 30}},
    {DT_P_STRUCT, {118, 119, 120, 121}},
    {DT_PP_STRUCT, {216, 217, 218, 219}},
    {DT_PPP_STRUCT, {318, 317, 316, 318}},
};

int sortOf(const StructInfo *structInfo) {
    if (!structInfo)
        return 0;
    switch (structInfo->aggregateKind) {
        case AGGREGATE_UNION: return 2;
        case AGGREGATE_ENUM: return 3;
        default: return structInfo->tag && (structInfo->tag->flags & FLAG_IN_CLASS) ? 1 : 0;
    }
}

}  // namespace

int toHostType(int dataType, const StructInfo *structInfo) {
    for (const AggregateCodes &row : aggregateCodes)
        if (row.dataType == dataType)
            return row.codes[sortOf(structInfo)];
    for (const HostType &row : hostTypes)
        if (row.dataType == dataType)
            return row.code;
    return 0;
}

DataType fromHostType(int code) {
    for (const HostType &row : hostTypes)
        if (row.code == code)
            return static_cast<DataType>(row.dataType);
    return DT_UNDEFINED;
}

}  // namespace zy
