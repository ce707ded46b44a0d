// A number for each export that the front layer looks up: where its address is kept with the copy.
#pragma once

namespace zy {

#define ZY_GROUP(title, text)
#define ZY_SERVICE(stage, front, road, result, name, failure, parameters, arguments, help) \
    EXPORT_##name,
#define ZY_SERVICE_V(stage, front, road, result, name, kernel, failure, parameters, arguments, \
                     last, help)                                                               \
    EXPORT_##name,
#define ZY_SERVICE_AS(stage, road, result, symbol, name, failure, parameters, arguments, help) \
    EXPORT_##symbol,

enum ExportIndex {
#include "embed/services.inc"
    EXPORT_COUNT
};

#undef ZY_GROUP
#undef ZY_SERVICE
#undef ZY_SERVICE_V
#undef ZY_SERVICE_AS

}  // namespace zy
