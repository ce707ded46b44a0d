// The front layer: Zy_Foo(interp, ...) looks Zy_Foo_zy up in the copy that interp names and calls
// it. The forwarders follow from the list of services; written out are the few that do more.

#include "embed/kernel.h"

#include "embed/copyTable.h"
#include "instance/report.h"

namespace zy {

namespace {

// The same when it isn't known yet. NULL after the messages.
[[gnu::noinline]] void *lookExportUp(const char *service, const char *exportName, void *handle,
                                     bool live) {
    if (!handle) {
        plainError("The first argument of %s() is NULL using multi-thread Zy", service);
        return nullptr;
    }
    void *found = live ? platform::findSymbol(handle, exportName) : nullptr;
    if (!found) {
        plainError("internal error for dlsym(): %s",
                   live ? loaderText().c_str() : "the handle is no running interpreter's");
        plainError("%s() failed", service);
    }
    return found;
}

// The export of a service in the copy that the handle names.
void *findExport(ExportIndex index, const char *service, const char *exportName, void *handle) {
    ZyCopySlot *slot = handle ? findLiveSlot(handle) : nullptr;
    if (!slot)  // a stand-alone run isn't in the table
        return lookExportUp(service, exportName, handle, handle == e_interp);
    void *found = slot->exports[index].load(std::memory_order_relaxed);
    if (!found) {
        found = lookExportUp(service, exportName, handle, true);
        slot->exports[index].store(found, std::memory_order_relaxed);
    }
    return found;
}

}  // namespace

}  // namespace zy

using zy::findExport;

extern "C" {

// What the export gets, by the road of the list.
#define ZY_FORWARDED_CLEARED(...) (nullptr __VA_OPT__(, ) __VA_ARGS__)
#define ZY_FORWARDED_KEPT(...) (interp __VA_OPT__(, ) __VA_ARGS__)
#define ZY_FORWARDED_DROPPED(...) (interp __VA_OPT__(, ) __VA_ARGS__)
#define ZY_FORWARDED_CLEARED_V(...) (nullptr, __VA_ARGS__, list)
#define ZY_FORWARDED_DROPPED_V(...) (interp, __VA_ARGS__, list)

#define ZY_FORWARDER(road, result, symbol, name, failure, parameters, arguments) \
    result symbol ZY_WITH_HANDLE parameters {                                    \
        auto *found = reinterpret_cast<decltype(&symbol)>(                       \
            findExport(zy::EXPORT_##symbol, #name, #name "_zy", interp));        \
        return found ? found ZY_FORWARDED_##road arguments : failure;            \
    }
#define ZY_FORWARDER_V(road, result, name, failure, parameters, arguments, last)                 \
    result name ZY_WITH_HANDLE_DOTS parameters {                                                 \
        using Export = result(*) ZY_WITH_HANDLE_V parameters;                                    \
        auto found =                                                                             \
            reinterpret_cast<Export>(findExport(zy::EXPORT_##name, #name, #name "_zy", interp)); \
        if (!found)                                                                              \
            return failure;                                                                      \
        va_list list;                                                                            \
        va_start(list, last);                                                                    \
        result value = found ZY_FORWARDED_##road##_V arguments;                                  \
        va_end(list);                                                                            \
        return value;                                                                            \
    }
#define ZY_WITH_HANDLE_DOTS(...) (void *interp, __VA_ARGS__, ...)

#define ZY_FRONT_FORWARD(forwarder) forwarder
#define ZY_FRONT_OWN(forwarder)

#define ZY_GROUP(title, text)
#define ZY_SERVICE(stage, front, road, result, name, failure, parameters, arguments, help) \
    ZY_FRONT_##front(ZY_FORWARDER(road, result, name, name, failure, parameters, arguments))
#define ZY_SERVICE_V(stage, front, road, result, name, kernel, failure, parameters, arguments, \
                     last, help)                                                               \
    ZY_FRONT_##front(ZY_FORWARDER_V(road, result, name, failure, parameters, arguments, last))
#define ZY_SERVICE_AS(stage, road, result, symbol, name, failure, parameters, arguments, help) \
    ZY_FORWARDER(road, result, symbol, name, failure, parameters, arguments)

#include "embed/services.inc"

// ---- Those that do more ------------------------------------------------------------------------

// A NULL function is refused before the instance is asked.
int Zy_CallFuncByAddrv(void *interp, void *function, void *result, va_list arguments) {
    auto *found = reinterpret_cast<decltype(&Zy_CallFuncByAddrv)>(findExport(
        zy::EXPORT_Zy_CallFuncByAddrv, "Zy_CallFuncByAddrv", "Zy_CallFuncByAddrv_zy", interp));
    if (found && !function)
        zy::plainError("Zy_CallFuncByAddrv() failed");
    return found && function ? found(nullptr, function, result, arguments) : -1;
}

int Zy_CallFuncByAddr(void *interp, void *function, void *result, ...) {
    auto *found = reinterpret_cast<decltype(&Zy_CallFuncByAddrv)>(findExport(
        zy::EXPORT_Zy_CallFuncByAddr, "Zy_CallFuncByAddr", "Zy_CallFuncByAddr_zy", interp));
    if (found && !function)
        zy::plainError("Zy_CallFuncByAddr() failed");
    if (!found || !function)
        return -1;
    va_list list;
    va_start(list, result);
    int status = found(nullptr, function, result, list);
    va_end(list);
    return status;
}

int Zy_End(void *interp) {
    auto *found = reinterpret_cast<decltype(&Zy_End)>(
        findExport(zy::EXPORT_Zy_End, "Zy_End", "Zy_End_zy", interp));
    return found ? zy::endInstance(interp, found) : -1;
}

int Zy_Initialize(void **interp, ZyOptions *option) {
    return zy::startInstance(zy::initialize, interp, option);
}

int Zy_Initialize2(void **interp, ZyOptions *option) {
    return zy::startInstance(zy::initialize2, interp, option);
}

}  // extern "C"
