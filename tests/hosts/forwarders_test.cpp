// Every function of the front layer on a NULL handle and on a copy that lacks its export: the name
// in the messages, the failure value, no crash.

#include <vector>

#include "host.h"

namespace {

// Calls a front function with zeros behind the handle, whatever its parameters are. The result as
// a number, 0 for functions without one.
template <class Result, class Call>
long resultOf(Call call) {
    if constexpr (std::is_void_v<Result>)
        return call(), 0;
    else
        return (long)call();
}

template <class Result, class... Parameters>
long callWithZeros(Result (*function)(void *, Parameters...), void *handle) {
    return resultOf<Result>([&] { return function(handle, Parameters{}...); });
}

template <class Result, class... Parameters>
long callWithZeros(Result (*function)(void *, Parameters..., ...), void *handle) {
    return resultOf<Result>([&] { return function(handle, Parameters{}...); });
}

struct Service {
    const char *name;
    long failure;
    long (*call)(void *handle);
};

#define ZY_NOTHING 0
const std::vector<Service> services = {
#define ZY_GROUP(title, text)
#define ZY_SERVICE(stage, front, road, result, name, failure, parameters, arguments, help) \
    {#name, (long)failure, [](void *handle) { return callWithZeros(name, handle); }},
#define ZY_SERVICE_V(stage, front, road, result, name, kernel, failure, parameters, arguments, \
                     last, help)                                                               \
    {#name, (long)failure, [](void *handle) { return callWithZeros(name, handle); }},
#define ZY_SERVICE_AS(stage, road, result, symbol, name, failure, parameters, arguments, help) \
    {#name, (long)failure, [](void *handle) { return callWithZeros(symbol, handle); }},
#include "../../embed/services.inc"
};

TEST(Forwarders, ANullHandleGivesTheFailureValue) {
    ASSERT_GT(services.size(), 100u);
    std::string expected;
    for (const Service &service : services)
        expected += std::string("ERROR: The first argument of ") + service.name +
                    "() is NULL using multi-thread Zy\n";
    Outcome run = inChild([] {
        for (const Service &service : services)
            if (service.call(nullptr) != service.failure)
                printf("%s ", service.name);
        return 0;
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, expected);
}

TEST(Forwarders, AMissingExportGivesTheFailureValue) {
    std::string expected;
    for (const Service &service : services)
        expected += std::string(
                        "ERROR: internal error for dlsym(): copies/zymt1.dl: undefined "
                        "symbol: ") +
                    service.name + "_zy\nERROR: " + service.name + "() failed\n";
    Outcome run = inChild([] {
        makeForeignCopy();
        ZyOptions option = stagedHome("copies");
        void *handle;
        Zy_Initialize(&handle, &option);
        if (!freopen("err", "w", stderr))
            return 1;
        setvbuf(stderr, nullptr, _IONBF, 0);
        for (const Service &service : services)
            if (service.call(handle) != service.failure)
                printf("%s ", service.name);
        return 0;
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, expected);
}

}  // namespace
