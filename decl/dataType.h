// record header: DataType, the numeric code of what a value is. Pointer depth is part of the code:
// one comparison tells a pointer of one level from one of three, and no pointer chain is walked
// when an operator runs. The codes, sizes and texts are those of decl/dataTypes.inc.
#pragma once

#include <cstdint>

namespace zy {

// DT_INT, DT_P_INT (pointer to it), DT_PP_INT, DT_PPP_INT and so on. Band codes of -1 don't exist.
#define ZY_BASE_TYPE(name, base, pointer, pointer2, pointer3, size, text, text1, text2, text3) \
    DT_##name = base, DT_P_##name = pointer, DT_PP_##name = pointer2, DT_PPP_##name = pointer3,
#define ZY_MOTION_TYPE(name, code, size, text) DT_##name = code,
#define ZY_MARKER_TYPE(name, code, text) DT_##name = code,
enum DataType : int32_t {
#include "decl/dataTypes.inc"
};
#undef ZY_BASE_TYPE
#undef ZY_MOTION_TYPE
#undef ZY_MARKER_TYPE

// Specifier codes of the declaration parser share the number space of DataType.
constexpr int DATA_TYPE_COUNT = 256;

constexpr bool isIntegral(int type) { return type < 8; }
constexpr bool isReal(int type) { return type < 10; }
constexpr bool isScalarNumeric(int type) { return type < 15; }
constexpr bool isPointer(int type) { return type >= 29 && type <= 128; }  // with 30 and 34
constexpr bool isStringLike(int type) {
    return type == DT_STRING || (type >= DT_NULL && type <= DT_P_UCHAR);
}
constexpr bool isArray(int type) {
    return type == DT_CARRAY || type == DT_P_CARRAY || type == DT_P_ARRAY || type == DT_ARRAY;
}
constexpr bool isMotionPosition(int type) {
    return type == DT_TRANS || type == DT_FRAME || type == DT_JOINT || type == DT_ACTUATOR;
}

// 0 for a base type, 1 to 3 for the pointer bands.
int pointerDepth(int type);

// The next and the previous band. DT_UNDEFINED after a message and with errorFlag set if there is
// none, as for a fourth level.
DataType pointerTo(int type);
DataType dereference(int type);
// The same without a message.
DataType bandAbove(int type);
DataType bandBelow(int type);

// Bytes of an object of that type; 0 after a message and with errorFlag set if it has no size.
int sizeofType(int type);

// The text for messages, "" for a code without one.
const char *dataTypeText(int type);
const char *typeKindText(int kind);
void printDataType(int type);  // on standard error
void printTypeKind(int kind);

// The common test of initialisers, assignments and arguments: reports what is wrong or dubious, and
// sets errorFlag if `found` can't stand where `expected` is.
void checkType(int expected, int found);

}  // namespace zy
