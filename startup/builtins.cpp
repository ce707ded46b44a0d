#include "startup/builtins.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <limits>

#include "expr/constants.h"
#include "instance/version.h"
#include "numeric/specialValues.h"
#include "platform/clock.h"
#include "platform/environment.h"

namespace zy {

namespace {

struct Text {
    char text[32];
};

Text dateText(const tm &now) {
    constexpr const char *months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    Text date;
    snprintf(date.text, sizeof date.text, "%.3s%3d %4d", months[now.tm_mon], now.tm_mday,
             now.tm_year + 1900);
    return date;
}

Text timeText(const tm &now) {
    Text time;
    snprintf(time.text, sizeof time.text, "%.2d:%.2d:%.2d", now.tm_hour, now.tm_min, now.tm_sec);
    return time;
}

struct SystemVariable {
    char name[16];
    int type;
    int slot;
};

constexpr SystemVariable systemVariables[] = {
#define ZY_SYSTEM_VARIABLE(name, type, slot) {name, DT_##type, slot},
#define ZY_CONSTANT(name, type, member, value)
#define ZY_PAIR(name, type, first, second)
#define ZY_WIDE_PAIR(name, type, first, second)
#include "startup/builtins.inc"
#undef ZY_SYSTEM_VARIABLE
#undef ZY_CONSTANT
#undef ZY_PAIR
#undef ZY_WIDE_PAIR
};

// New symbols go to the head of the list, so that it must be turned round to run by slot.
void reverseSystemSymbols() {
    TypeInfo *reversed = nullptr;
    while (TypeInfo *symbol = systemSymbols) {
        systemSymbols = symbol->next;
        symbol->next = reversed;
        reversed = symbol;
    }
    systemSymbols = reversed;
}

// Gives a symbol a second name.
void bindName(const char *text, const char *of) {
    NameEntry *name = lookupName(text);
    if (!name)
        name = addName(text);
    const NameEntry *known = lookupName(of);
    if (name && known)
        name->symbol = known->symbol;
}

void createSystemSymbols() {
    for (const SystemVariable &variable : systemVariables)
        addSystemVariable(variable.name, variable.type, variable.slot);
    reverseSystemSymbols();
    bindName("__arm", "__arm1");
    bindName("__hand", "__hand1");
}

// Payloads hold texts without const, since a script may have made them; these are only copied.
char *word(const char *text) { return const_cast<char *>(text); }

void createConstants() {
    tm now = platform::localTime();
    Text date = dateText(now);
    Text time = timeText(now);
    const PredefinedConstant constants[] = {
#define ZY_SYSTEM_VARIABLE(name, type, slot)
#define ZY_CONSTANT(name, type, member, value) {name, DT_##type, {.member = value}},
#define ZY_PAIR(name, type, first, second) {name, DT_##type, {.pair = {first, second}}},
#define ZY_WIDE_PAIR(name, type, first, second) {name, DT_##type, {.d = first}, {.d = second}},
#include "startup/builtins.inc"
#undef ZY_SYSTEM_VARIABLE
#undef ZY_CONSTANT
#undef ZY_PAIR
#undef ZY_WIDE_PAIR
    };
    for (const PredefinedConstant &constant : constants)
        addPredefinedConstant(constant);
}

}  // namespace

void refreshEnvironment() {
    char **list = platform::environmentList();
    size_t count = 0;
    while (list && list[count])
        count++;
    auto **copy = static_cast<char **>(allocOrFail((count + 1) * sizeof(char *)));
    if (!copy)
        return;
    memcpy(copy, list, count * sizeof(char *));
    copy[count] = nullptr;
    free(environmentCopy);
    environmentCopy = copy;
    const NameEntry *name = lookupName("_environ");
    if (name && name->symbol && name->symbol->dataType == DT_CONSTANT)
        name->symbol->constant->payload.p = copy;
}

void createBuiltinSymbols() {
    refreshEnvironment();
    createSystemSymbols();
    createConstants();
}

void releaseBuiltins() {
    free(environmentCopy);
    environmentCopy = nullptr;
}

}  // namespace zy
