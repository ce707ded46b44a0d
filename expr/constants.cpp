#include "expr/constants.h"

#include <climits>

namespace zy {

Symbol *addPredefinedConstant(const PredefinedConstant &row) {
    Value *value = newZeroValue(row.type);
    if (!value)
        return nullptr;
    value->payload = row.payload;
    value->payload2 = row.payload2;
    if (row.type == DT_STRING)
        value->payload.text = copyString(row.payload.text);
    return addPredefinedConstant(row.name, value);
}

namespace {

// What the processor's conversion gives, NaN and numbers out of range included.
int truncateToInt(double number) {
    bool fits = number > INT_MIN - 1.0 && number < INT_MAX + 1.0;
    return fits ? static_cast<int>(number) : INT_MIN;
}

// A pair with a second part isn't a real number.
int truncatePair(double first, double second) {
    return second == 0 ? truncateToInt(first) : INT_MIN;
}

}  // namespace

bool constantToInt(const Value *constant, int &number) {
    const Payload &payload = constant->payload;
    switch (constant->type) {
        case DT_CHAR: number = payload.sc; break;
        case DT_UCHAR: number = payload.uc; break;
        case DT_SHORT: number = payload.s; break;
        case DT_USHORT: number = payload.us; break;
        case DT_INT: number = payload.i; break;
        case DT_UINT: number = truncateToInt(payload.u); break;
        case DT_LLONG:
        case DT_ULLONG: number = static_cast<int>(static_cast<uint32_t>(payload.ull)); break;
        case DT_FLOAT: number = truncateToInt(payload.f); break;
        case DT_DOUBLE:
        case DT_LDOUBLE: number = truncateToInt(payload.d); break;
        case DT_COMPLEX:
        case DT_DUAL: number = truncatePair(payload.pair[0], payload.pair[1]); break;
        case DT_DCOMPLEX:
        case DT_DDUAL: number = truncatePair(payload.d, constant->payload2.d); break;
        default: return false;
    }
    return true;
}

}  // namespace zy
