// What follows from the list of data types: sizes, texts, the steps from one pointer band to the
// next, and the test whether one type can stand where another is expected. One table, indexed by
// code, is computed from the list when this file is compiled.

#include "decl/dataType.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

#include "instance/report.h"

namespace zy {

namespace {

struct TypeRow {
    char text[44] = "";  // in the row: the loader has no addresses to fill in for each instance
    int16_t size = 0;
    int16_t pointer = DT_UNDEFINED;  // the code one band up
    int16_t target = DT_UNDEFINED;   // the code one band down
};
using TypeTable = std::array<TypeRow, DATA_TYPE_COUNT>;

constexpr int POINTER_SIZE = 8;

constexpr void setText(TypeRow &row, std::string_view text) {
    std::copy(text.begin(), text.end(), row.text);
}

constexpr void linkBands(TypeTable &table, int lower, int upper) {
    if (upper < 0)
        return;
    table[lower].pointer = upper;
    table[upper].target = lower;
}

constexpr void addBaseType(TypeTable &table, const std::array<int, 4> &codes, int size,
                           const std::array<const char *, 4> &texts) {
    table[codes[0]].size = size;
    for (int band = 0; band < 4; band++) {
        if (codes[band] >= 0)
            setText(table[codes[band]], texts[band]);
        if (band > 0)
            linkBands(table, codes[band - 1], codes[band]);
    }
}

// Steps that no row has: an array decays to a pointer to it, a function is its own address, and the
// type of NULL serves enum tags as their pointer.
constexpr void addIrregularSteps(TypeTable &table) {
    table[DT_ENUM].pointer = DT_NULL;
    table[DT_NULL].target = DT_VOID;
    table[DT_FUNCTION].target = DT_FUNCTION;
    table[DT_NAME].target = DT_FUNCTION;
    table[DT_CARRAY].target = DT_P_CARRAY;
}

constexpr TypeTable makeTypeTable() {
    TypeTable table{};
#define ZY_BASE_TYPE(name, base, p, pp, ppp, size, text, text1, text2, text3) \
    addBaseType(table, {base, p, pp, ppp}, size, {text, text1, text2, text3});
#define ZY_MOTION_TYPE(name, code, bytes, words) \
    setText(table[code], words);                 \
    table[code].size = bytes;
#define ZY_MARKER_TYPE(name, code, words) setText(table[code], words);
#include "decl/dataTypes.inc"
#undef ZY_BASE_TYPE
#undef ZY_MOTION_TYPE
#undef ZY_MARKER_TYPE
    for (int code = 0; code < DATA_TYPE_COUNT; code++)
        if (isPointer(code))
            table[code].size = POINTER_SIZE;
    addIrregularSteps(table);
    return table;
}

constexpr TypeTable typeTable = makeTypeTable();
constexpr TypeRow unknownRow{};

const TypeRow &rowOf(int type) {
    return type >= 0 && type < DATA_TYPE_COUNT ? typeTable[type] : unknownRow;
}

DataType checkStep(int from, DataType to) {
    if (to == DT_UNDEFINED) {
        if (isPointer(from))
            parseError("undefined pointer data type");
        else
            parseError("undefined basic data type");
    }
    return to;
}

// ---- The compatibility check ------------------------------------------------------------------

bool areCompatible(int expected, int found) {
    if (isScalarNumeric(expected) && (isScalarNumeric(found) || found == DT_NULL))
        return true;
    if (expected == DT_NULL && isScalarNumeric(found))
        return true;
    if (isPointer(expected) && (isPointer(found) || isIntegral(found)))
        return true;
    if (isIntegral(expected) && isPointer(found))
        return true;
    return (isStringLike(expected) && isStringLike(found)) ||
           (isMotionPosition(expected) && isMotionPosition(found));
}

bool isNumberForText(int expected, int found) {
    return (expected == DT_P_CHAR || expected == DT_P_UCHAR) && isReal(found);
}

void warnMismatch(int expected, int found) {
    parseWarning("found %s where %s is expected", dataTypeText(found), dataTypeText(expected));
}

// Legal, but seldom meant: pointers to different types, pointers and integers in each other's
// place.
void warnIfDubious(int expected, int found) {
    if (expected == found || expected == DT_NULL || found == DT_NULL || expected == DT_P_VOID ||
        found == DT_P_VOID || (expected == DT_P_FUNCTION && found == DT_FUNCTION))
        return;
    if (isPointer(expected) && isPointer(found)) {
        if (warningsAt(3))
            warnMismatch(expected, found);
    } else if ((isIntegral(expected) && isPointer(found)) ||
               (isPointer(expected) && isIntegral(found))) {
        warnMismatch(expected, found);
    }
}

}  // namespace

int pointerDepth(int type) {
    if (!isPointer(type))
        return 0;
    return type < 65 ? 1 : type < 98 ? 2 : 3;
}

DataType bandAbove(int type) { return static_cast<DataType>(rowOf(type).pointer); }

DataType bandBelow(int type) { return static_cast<DataType>(rowOf(type).target); }

DataType pointerTo(int type) { return checkStep(type, bandAbove(type)); }

DataType dereference(int type) { return checkStep(type, bandBelow(type)); }

int sizeofType(int type) {
    int size = rowOf(type).size;
    if (size == 0)
        parseError("unsupported data type for sizeof() operation");
    return size;
}

const char *dataTypeText(int type) { return rowOf(type).text; }

const char *typeKindText(int kind) {
    static constexpr const char *texts[] = {
        "simple variable",
        "reference type",
        "passed by reference",
        "C array",
        "assumed-type array",
        "pointer to C array",
        "computational array",
        "assumed-type computational array",
        "pointer to computational array",
        nullptr,
        nullptr,
        "function",
        "pointer to function",
        "pointer to pointer to function",
        "pointer to pointer to pointer to function",
    };
    bool known = kind >= 0 && kind < static_cast<int>(std::size(texts)) && texts[kind];
    return known ? texts[kind] : "unknown type";
}

void printDataType(int type) { fputs(dataTypeText(type), stderr); }

void printTypeKind(int kind) { fputs(typeKindText(kind), stderr); }

void checkType(int expected, int found) {
    bool compatible = expected == found || areCompatible(expected, found);
    if (found == DT_UNDEFINED || !compatible || isNumberForText(expected, found))
        parseError("found %s where %s is expected", dataTypeText(found), dataTypeText(expected));
    else
        warnIfDubious(expected, found);
}

}  // namespace zy
