// The export layer: Zy_Foo_zy, the names that the front layer looks up in a copy. Each leads to its
// kernel function; services that have none yet have no export either.

#include "embed/kernel.h"

// What the kernel function gets, by the road of the list.
#define ZY_ARGUMENTS_CLEARED(...) (nullptr __VA_OPT__(, ) __VA_ARGS__)
#define ZY_ARGUMENTS_KEPT(...) (interp __VA_OPT__(, ) __VA_ARGS__)
#define ZY_ARGUMENTS_DROPPED(...) (__VA_ARGS__)
#define ZY_ARGUMENTS_CLEARED_V(...) (nullptr, __VA_ARGS__, list)
#define ZY_ARGUMENTS_DROPPED_V(...) (__VA_ARGS__, list)

#define ZY_EXPORT_LATER(signature, call)
#define ZY_EXPORT_READY(signature, call) \
    extern "C" ZY_API signature;         \
    signature { return call; }

#define ZY_GROUP(title, text)
#define ZY_SERVICE(stage, front, road, result, name, failure, parameters, arguments, help) \
    ZY_EXPORT_##stage(result name##_zy ZY_WITH_HANDLE parameters,                          \
                      name##_kernel ZY_ARGUMENTS_##road arguments)
#define ZY_SERVICE_V(stage, front, road, result, name, kernel, failure, parameters, arguments, \
                     last, help)                                                               \
    ZY_EXPORT_##stage(result name##_zy ZY_WITH_HANDLE_V parameters,                            \
                      kernel ZY_ARGUMENTS_##road##_V arguments)
#define ZY_SERVICE_AS(stage, road, result, symbol, name, failure, parameters, arguments, help) \
    ZY_EXPORT_##stage(result name##_zy ZY_WITH_HANDLE parameters,                              \
                      symbol##_kernel ZY_ARGUMENTS_##road arguments)

#include "embed/services.inc"

ZY_EXPORT_READY(int Zy_Initialize_zy(void **interp, ZyOptions *option, ZyPutenv put, ZyGetenv get),
                Zy_Initialize_kernel_kernel(interp, option, put, get))
ZY_EXPORT_READY(int Zy_Initialize2_zy(void **interp, ZyOptions *option, ZyPutenv put, ZyGetenv get),
                Zy_Initialize2_kernel(interp, option, put, get))
