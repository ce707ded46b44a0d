// The kernel layer: Zy_Foo_kernel does the work of the service Zy_Foo on the state of its own copy.
// Declared from the list of services. A kernel function gets its service's arguments as the road
// in the list says.
#pragma once

#include "extern/include/embedzy.h"
#include "instance/langState.h"

// What stands before the parameters of the list: the handle, for front and export functions and for
// kernel functions by their road.
#define ZY_WITH_HANDLE(...) ([[maybe_unused]] void *interp __VA_OPT__(, ) __VA_ARGS__)
#define ZY_WITH_HANDLE_V(...) ([[maybe_unused]] void *interp, __VA_ARGS__, va_list list)
#define ZY_PARAMETERS_CLEARED(...) (void *__VA_OPT__(, ) __VA_ARGS__)
#define ZY_PARAMETERS_KEPT(...) (void *__VA_OPT__(, ) __VA_ARGS__)
#define ZY_PARAMETERS_DROPPED(...) (__VA_ARGS__)
#define ZY_PARAMETERS_CLEARED_V(...) (void *, __VA_ARGS__, va_list)
#define ZY_PARAMETERS_DROPPED_V(...) (__VA_ARGS__, va_list)

// A failure value for functions without a result.
#define ZY_NOTHING void()

#define ZY_GROUP(title, text)
#define ZY_SERVICE(stage, front, road, result, name, failure, parameters, arguments, help) \
    ZY_API result name##_kernel ZY_PARAMETERS_##road parameters;
#define ZY_SERVICE_V(stage, front, road, result, name, kernel, failure, parameters, arguments, \
                     last, help)                                                               \
    ZY_API result kernel ZY_PARAMETERS_##road##_V parameters;
#define ZY_SERVICE_AS(stage, road, result, symbol, name, failure, parameters, arguments, help) \
    ZY_API result symbol##_kernel ZY_PARAMETERS_##road parameters;

extern "C" {
#include "embed/services.inc"

ZY_API int Zy_Initialize_kernel_kernel(void **interp, ZyOptions *option, ZyPutenv put,
                                       ZyGetenv get);
ZY_API int Zy_Initialize2_kernel(void **interp, ZyOptions *option, ZyPutenv put, ZyGetenv get);
}

#undef ZY_GROUP
#undef ZY_SERVICE
#undef ZY_SERVICE_V
#undef ZY_SERVICE_AS
