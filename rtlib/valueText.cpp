#include "rtlib/valueText.h"

#include <cstdio>
#include <string>

#include "instance/report.h"
#include "numeric/convert.h"

namespace zy {

namespace {

template <class... Numbers>
std::string format(const char *form, Numbers... numbers) {
    char text[128];
    snprintf(text, sizeof text, form, numbers...);
    return text;
}

std::string quoted(const char *text) {
    std::string result = "\"";
    for (; text && *text; text++) {
        if (*text == '"' || *text == '\\')
            result += '\\';
        result += *text;
    }
    return result + '"';
}

std::string pairText(const char *name, const Value *value) {
    DoublePair pair = readDoubleComplex(value);
    return name + format("(%g,%g)", pair.first, pair.second);
}

}  // namespace

std::string valueToText(const Value *value) {
    const Payload &payload = value->payload;
    switch (value->type) {
        case DT_CHAR:
        case DT_UCHAR: return format("'%c'", payload.c);
        case DT_SHORT: return format("%hd", payload.s);
        case DT_USHORT: return format("%hu", payload.us);
        case DT_INT: return format("%d", payload.i);
        case DT_UINT: return format("%uU", payload.u);
        case DT_LLONG: return format("%lld", payload.ll);
        case DT_ULLONG: return format("%lluU", payload.ull);
        case DT_FLOAT: return format("%gF", payload.f);
        case DT_DOUBLE: return format("%g", payload.d);
        case DT_COMPLEX:
        case DT_DCOMPLEX: return pairText("complex", value);
        case DT_DUAL:
        case DT_DDUAL: return pairText("dual", value);
        case DT_STRING: return quoted(payload.text);
        default: break;
    }
    runWarning("change unsupported data type to string");
    noteRunError();
    return "";
}

}  // namespace zy
