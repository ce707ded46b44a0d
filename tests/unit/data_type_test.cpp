// The type table against what the language says of it in other words: rules for the bands, groups
// of sizes, and the texts that are no rule's.

#include <map>
#include <set>
#include <string>
#include <vector>

#include "decl/typeInfo.h"
#include "expr/value.h"
#include "instance.h"

namespace zy {

using DataTypeTest = InstanceTest;

namespace {

// Base code and its three pointer codes where no rule gives them.
const std::vector<std::vector<int>> irregularChains = {
    {11, 47, 83, 114}, {12, 49, 85, 116},  {13, 48, 84, 115}, {14, 50, 86, 117}, {16, 55, 88, 119},
    {23, 62, 95, 126}, {25, 63, 96, 127},  {26, 64, 97, 128}, {27, 29, 67, 100}, {28, 36, 65, 98},
    {30, 53, 66, 99},  {136, 33, 70, 103}, {34, 51, 71},      {155, 52, 72},
};

std::vector<std::vector<int>> allChains() {
    std::vector<std::vector<int>> chains = irregularChains;
    for (int base = 0; base < 10; base++)
        chains.push_back({base, base + 37, base + 73, base + 104});
    return chains;
}

std::string replaced(std::string text, const std::string &from, const std::string &to) {
    size_t at = text.find(from);
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

// The name of a base type as pointers of the second and third level say it.
std::string nameBehindPointers(int base, const std::string &text, int depth) {
    switch (base) {
        case 6:
        case 7: return replaced(text, "long long int", depth == 2 ? "long " : "long");
        case 12: return "complex double";
        case 14: return "dual double";
        case 27: return "file";
        default: return text;
    }
}

std::string expectedText(int base, int depth) {
    const std::string text = dataTypeText(base);
    if (depth == 1)
        return base == 34   ? "pointer to array"
               : base == 27 ? "pointer to file"
                            : "pointer to " + text;
    if (base == 136)
        return (depth == 2 ? "pointer to pointer to " : "triple pointer to ") + text;
    return (depth == 2 ? "pointer to a pointer to " : "tripple pointer to ") +
           nameBehindPointers(base, text, depth);
}

}  // namespace

TEST_F(DataTypeTest, ChainsLeadUpAndDownWithTheirTexts) {
    for (const auto &chain : allChains())
        for (size_t depth = 1; depth < chain.size(); depth++) {
            SCOPED_TRACE(chain[depth]);
            EXPECT_EQ(pointerTo(chain[depth - 1]), chain[depth]);
            EXPECT_EQ(dereference(chain[depth]), chain[depth - 1]);
            EXPECT_EQ(pointerDepth(chain[depth]), static_cast<int>(depth));
            EXPECT_EQ(dataTypeText(chain[depth]), expectedText(chain[0], depth));
            EXPECT_EQ(sizeofType(chain[depth]), 8);
        }
    EXPECT_EQ(errorFlag, 0);
}

TEST_F(DataTypeTest, BaseTextsAndKinds) {
    const std::map<int, std::string> texts = {{0, "char"},          {1, "unsigned char"},
                                              {2, "short"},         {3, "unsigned short"},
                                              {4, "int"},           {5, "unsigned int"},
                                              {6, "long long int"}, {7, "unsigned long long int"},
                                              {8, "float"},         {9, "double"},
                                              {11, "complex"},      {12, "double complex"},
                                              {13, "dual"},         {14, "double dual"},
                                              {15, "vect"},         {16, "quaternion"},
                                              {18, "trans"},        {19, "frame"},
                                              {20, "joint"},        {21, "actuator"},
                                              {22, "circle"},       {23, "spline"},
                                              {24, "event"},        {25, "string"},
                                              {26, "image"},        {28, "void"},
                                              {30, "function"},     {34, "ANSI C array"},
                                              {35, "NULL pointer"}, {136, "class/struct/union"},
                                              {139, "undefined"},   {155, "computational array"}};
    std::set<int> pointers;
    for (const auto &chain : allChains())
        pointers.insert(chain.begin() + 1, chain.end());
    for (int code = -2; code < 300; code++) {
        if (pointers.count(code))
            continue;
        auto expected = texts.find(code);
        EXPECT_EQ(dataTypeText(code), expected == texts.end() ? "" : expected->second) << code;
    }
    EXPECT_STREQ(typeKindText(8), "pointer to computational array");
    EXPECT_STREQ(typeKindText(14), "pointer to pointer to pointer to function");
    for (int kind : {-1, 9, 10, 15})
        EXPECT_STREQ(typeKindText(kind), "unknown type");
    EXPECT_EQ(errorsOf([] {
                  printDataType(79);
                  printTypeKind(11);
              }),
              "pointer to a pointer to long function");
}

TEST_F(DataTypeTest, SizesByGroup) {
    const std::map<int, std::vector<int>> groups = {{1, {0, 1}},
                                                    {2, {2, 3}},
                                                    {4, {4, 5, 8}},
                                                    {8, {6, 7, 9, 11, 13, 25}},
                                                    {16, {12, 14, 15, 16}},
                                                    {28, {20, 21}},
                                                    {32, {22, 23}},
                                                    {48, {19}},
                                                    {52, {18}},
                                                    {1024, {26}}};
    std::map<int, int> sizes;
    for (int code = 29; code <= 128; code++)
        sizes[code] = 8;
    for (const auto &[size, codes] : groups)
        for (int code : codes)
            sizes[code] = size;
    for (int code = -1; code < 300; code++) {
        errorFlag = 0;
        int size = -1;
        std::string errors = errorsOf([&] { size = sizeofType(code); });
        EXPECT_EQ(size, sizes.count(code) ? sizes[code] : 0) << code;
        EXPECT_EQ(errors, size ? "" : "ERROR: unsupported data type for sizeof() operation\n");
        EXPECT_EQ(errorFlag, size ? 0 : 1);
    }
}

TEST_F(DataTypeTest, StepsOutsideTheBands) {
    EXPECT_EQ(pointerTo(137), DT_NULL);
    EXPECT_EQ(dereference(35), DT_VOID);
    EXPECT_EQ(dereference(30), DT_FUNCTION);
    EXPECT_EQ(dereference(129), DT_FUNCTION);
    EXPECT_EQ(dereference(34), 51);
    EXPECT_EQ(errorFlag, 0);
    for (int code : {98, 108, 71, 72, 35}) {
        errorFlag = 0;
        EXPECT_EQ(errorsOf([=] { EXPECT_EQ(pointerTo(code), DT_UNDEFINED); }),
                  "ERROR: undefined pointer data type\n")
            << code;
        EXPECT_EQ(errorFlag, 1);
    }
    for (int code : {10, 15, 133, 139, 1000, -1})
        EXPECT_EQ(errorsOf([=] { EXPECT_EQ(pointerTo(code), DT_UNDEFINED); }),
                  "ERROR: undefined basic data type\n")
            << code;
    for (int code : {4, 136, 139})
        EXPECT_EQ(errorsOf([=] { EXPECT_EQ(dereference(code), DT_UNDEFINED); }),
                  "ERROR: undefined basic data type\n")
            << code;
}

TEST_F(DataTypeTest, DataTypeOfAppliesTheKind) {
    TypeInfo *info = newTypeInfo();
    info->dataType = DT_DOUBLE;
    const int byKind[] = {9, 9, 9, 34, 34, 51, 155, 155, 52, 9, 9, 30, 53, 66, 99, 9};
    for (int kind = 0; kind < 16; kind++) {
        info->kind = kind;
        EXPECT_EQ(dataTypeOf(info), byKind[kind]) << kind;
    }
    EXPECT_EQ(dataTypeOf(nullptr), DT_UNDEFINED);
    releaseTypeInfo(info);
}

TEST_F(DataTypeTest, CheckTypeReportsWhatIsWrongAndWhatIsDubious) {
    enum Outcome { SILENT, WARNS, WARNS_AT_3, FAILS };
    struct Case {
        int expected, found;
        Outcome outcome;
    };
    const Case cases[] = {
        {DT_INT, DT_DCOMPLEX, SILENT},  // numbers go into each other's place
        {DT_P_CHAR, DT_INT, FAILS},     // char *s = 5
        {DT_P_CHAR, DT_DOUBLE, FAILS},       {DT_P_CHAR, DT_NULL, SILENT},
        {DT_INT, DT_NULL, SILENT},           {DT_NULL, DT_P_INT, SILENT},
        {DT_P_INT, DT_INT, WARNS},  // int *p = 5
        {DT_INT, DT_P_INT, WARNS},  // int i = p
        {DT_P_INT, DT_DOUBLE, FAILS},        {DT_DOUBLE, DT_P_INT, FAILS},
        {DT_P_INT, DT_P_DOUBLE, WARNS_AT_3}, {DT_P_INT, DT_P_VOID, SILENT},
        {DT_P_VOID, DT_INT, SILENT},         {DT_P_FUNCTION, DT_FUNCTION, SILENT},
        {DT_STRING, DT_P_CHAR, SILENT},      {DT_P_CHAR, DT_STRING, SILENT},
        {DT_STRING, DT_INT, FAILS},          {DT_STRUCT, DT_INT, FAILS},
        {DT_STRUCT, DT_STRUCT, SILENT},      {DT_TRANS, DT_FRAME, SILENT},
        {DT_JOINT, DT_ACTUATOR, SILENT},     {DT_VECT, DT_TRANS, FAILS},
        {DT_UNDEFINED, DT_UNDEFINED, FAILS}, {DT_INT, DT_UNDEFINED, FAILS},
    };
    for (const Case &c : cases)
        for (int level : {0, 1, 3}) {
            SCOPED_TRACE(testing::Message() << c.expected << " " << c.found << " at " << level);
            errorFlag = 0;
            e_lang->warningLevel = level;
            std::string said = std::string("found ") + dataTypeText(c.found) + " where " +
                               dataTypeText(c.expected) + " is expected\n";
            bool warns =
                (c.outcome == WARNS && level > 0) || (c.outcome == WARNS_AT_3 && level > 2);
            EXPECT_EQ(errorsOf([&] { checkType(c.expected, c.found); }),
                      c.outcome == FAILS ? "ERROR: " + said
                      : warns            ? "WARNING: " + said
                                         : "");
            EXPECT_EQ(errorFlag, c.outcome == FAILS);
        }
}

}  // namespace zy
