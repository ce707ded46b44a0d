// The built-in symbols and the switches of the vocabulary.

#include <cfloat>
#include <climits>
#include <cmath>
#include <map>
#include <sstream>
#include <string>

#include "expr/constants.h"
#include "front/tokens.h"
#include "front/vocabularySwitches.h"
#include "instance.h"
#include "source.h"
#include "startup/builtins.h"
#include "stmt/program.h"

namespace zy {

namespace {

const Symbol *symbolNamed(const char *text) {
    const NameEntry *name = lookupName(text);
    return name ? name->symbol : nullptr;
}

const Value *constantNamed(const char *text) {
    const Symbol *symbol = symbolNamed(text);
    return symbol && symbol->dataType == DT_CONSTANT ? symbol->constant : nullptr;
}

double realOf(const Value *value) {
    return value->type == DT_FLOAT ? static_cast<double>(value->payload.f) : value->payload.d;
}

}  // namespace

using BuiltinsTest = InstanceTest;

TEST_F(BuiltinsTest, SystemVariablesStandInTheOrderOfTheirSlots) {
    // Types by slot: f frame, i int, s string.
    std::istringstream names(R"(f __arm1 __hand1 __arm2 __hand2
        i __input0 __input1 __input2 __input3 __input4 __input5 __input6 __input7 __input8 __input9
        __input10 __input11 __input12 __input13 __input14 __input15
        __output0 __output1 __output2 __output3 __output4 __output5 __output6 __output7 __output8
        __output9 __output10 __output11 __output12 __output13 __output14 __output15
        __sinaccel __contpath __ctjt _warning s _formatf _formatd i _errno _debug
        s _home _user _shell _path _cwd _histnum _lang _lc_all _lc_collate _lc_ctype _lc_monetary
        _lc_numeric _lc_time _logname _tz _term _fpath _lpath _ppath _ipath _fpathext _pathext _host
        _cwdn _prompt i _histsize _setlocale _ignoreeof _ignoretrigraph _status _argc
        pp _argv p __func__)");
    std::map<std::string, int> types = {{"f", 19}, {"i", 4}, {"s", 25}, {"pp", 73}, {"p", 37}};
    const TypeInfo *symbol = systemSymbols;
    while (symbol && symbol->dataType == DT_CONSTANT)
        symbol = symbol->next;
    int slot = 0, type = 0;
    for (std::string name; names >> name;) {
        if (auto found = types.find(name); found != types.end()) {
            type = found->second;
            continue;
        }
        ASSERT_NE(symbol, nullptr) << name;
        EXPECT_EQ(name, symbol->name->text);
        EXPECT_EQ(symbol->index, slot++) << name;
        EXPECT_EQ(symbol->dataType, type) << name;
        EXPECT_EQ(symbol->level, 0);
        EXPECT_EQ(symbol->storage, STORAGE_GLOBAL);
        EXPECT_EQ(symbolNamed(name.c_str()), symbol);
        symbol = symbol->next;
    }
    EXPECT_EQ(slot, 77);
    EXPECT_EQ(symbol, nullptr);
    EXPECT_EQ(symbolNamed("__arm"), symbolNamed("__arm1"));
    EXPECT_EQ(symbolNamed("__hand"), symbolNamed("__hand1"));
}

TEST_F(BuiltinsTest, ConstantsHaveTheirTypesAndValues) {
    const struct {
        const char *name;
        long long value;
    } ints[] = {
        {"_SCHAR_MIN", -128},        {"_SCHAR_MAX", 127},       {"_UCHAR_MAX", 255},
        {"_SHRT_MIN", -32768},       {"_SHRT_MAX", 32767},      {"_USHRT_MAX", 65535},
        {"_INT_MIN", -2147483648LL}, {"_INT_MAX", 2147483647},  {"_LONG_MIN", -2147483648LL},
        {"_LONG_MAX", 2147483647},   {"_RAND_MAX", 32767},      {"_EOF", -1},
        {"_Zyvermajor", 8},          {"_Zyverminor", 0},        {"_Zyvermicro", 0},
        {"_Zyverbuild", 15421},      {"_FOPEN_MAX", FOPEN_MAX}, {"_BUFSIZ", BUFSIZ}};
    for (const auto &row : ints) {
        const Value *value = constantNamed(row.name);
        ASSERT_NE(value, nullptr) << row.name;
        EXPECT_EQ(value->type, 4U) << row.name;
        EXPECT_EQ(value->payload.i, row.value) << row.name;
    }
    EXPECT_EQ(constantNamed("_UINT_MAX")->payload.u, 4294967295U);
    EXPECT_EQ(constantNamed("_ULONG_MAX")->type, 5U);
    EXPECT_EQ(constantNamed("_LLONG_MIN")->payload.ll, LLONG_MIN);
    EXPECT_EQ(constantNamed("_LLONG_MAX")->payload.ll, LLONG_MAX);
    EXPECT_EQ(constantNamed("_ULLONG_MAX")->payload.ull, ULLONG_MAX);
    EXPECT_EQ(constantNamed("_FLT_MINIMUM")->payload.f, FLT_MIN / 8388608);
    EXPECT_EQ(constantNamed("_DBL_MINIMUM")->payload.d, DBL_MIN / 4503599627370496.0);
    EXPECT_EQ(constantNamed("M_PI")->payload.d, std::acos(-1.0));
    EXPECT_EQ(constantNamed("M_E")->payload.d, std::exp(1.0));

    const struct {
        const char *name, *text;
    } texts[] = {{"__FILE__", ""},
                 {"_Zyedition", "Professional"},
                 {"_Zyversion", ""},
                 {"_Zyreleasedate", "February 11, 2017"}};
    for (const auto &row : texts) {
        EXPECT_EQ(constantNamed(row.name)->type, 25U) << row.name;
        EXPECT_STREQ(constantNamed(row.name)->payload.text, row.text) << row.name;
    }
    EXPECT_EQ(strlen(constantNamed("__DATE__")->payload.text), 11U);
    EXPECT_EQ(strlen(constantNamed("__TIME__")->payload.text), 8U);
    EXPECT_EQ(constantNamed("_stderr")->type, 29U);
    EXPECT_EQ(constantNamed("_stderr")->payload.p, stderr);
    EXPECT_EQ(constantNamed("_environ")->type, 73U);
    EXPECT_EQ(constantNamed("NULL")->type, 35U);
    EXPECT_EQ(constantNamed("_Zy_wfopen")->type, 36U);
}

TEST_F(BuiltinsTest, SpecialValuesHaveTheirBits) {
    EXPECT_EQ(constantNamed("NaN")->payload.bits, 0x7FFFFFFFU);
    EXPECT_EQ(constantNamed("Inf")->payload.bits, 0x7F800000U);
    const struct {
        const char *name;
        uint32_t type;
        double first, second;
    } rows[] = {{"ComplexNaN", 12, NAN, NAN},
                {"ComplexInf", 12, INFINITY, INFINITY},
                {"I", 12, 0, 1},
                {"DualNaN", 13, NAN, NAN},
                {"DualInf", 13, INFINITY, INFINITY},
                {"DualZero", 13, 0, 0}};
    auto same = [](double a, double b) {
        return std::isnan(b) ? std::isnan(a) && !std::signbit(a) : a == b;
    };
    for (const auto &row : rows) {
        const Value *value = constantNamed(row.name);
        ASSERT_NE(value, nullptr) << row.name;
        EXPECT_EQ(value->type, row.type) << row.name;
        bool wide = row.type == 12;
        EXPECT_TRUE(same(wide ? value->payload.d : value->payload.pair[0], row.first)) << row.name;
        EXPECT_TRUE(same(wide ? value->payload2.d : value->payload.pair[1], row.second))
            << row.name;
    }
}

TEST_F(BuiltinsTest, EverySymbolIsThereAndNoOther) {
    std::istringstream names(R"(__LINE__ __FILE__ __DATE__ __TIME__ M_PI M_E _Zyedition _Zyversion
        _Zyvermajor _Zyverminor _Zyvermicro _Zyverbuild _Zyreleasedate _environ __home1 __home2
        __niltrans __xaxis __yaxis __zaxis __nilvect __niljoint _SCHAR_MIN _SCHAR_MAX _UCHAR_MAX
        _SHRT_MIN _SHRT_MAX _USHRT_MAX _INT_MIN _INT_MAX _UINT_MAX _LONG_MIN _LONG_MAX _ULONG_MAX
        _LLONG_MIN _LLONG_MAX _ULLONG_MAX _FLT_MINIMUM _DBL_MINIMUM NULL NaN DualZero ComplexNaN
        DualNaN Inf ComplexInf I DualInf _stdin _stdout _stderr _FILENAME_MAX _FOPEN_MAX _MB_CUR_MAX
        _RAND_MAX _EOF _BUFSIZ _TMP_MAX _L_tmpnam __svalue __strans __sjoint __sactuator __sencode
        __savelocity __saaccel __storque __sgtorque __sitorque _Zy_arraycopy _Zy_va_tagname
        _Zy_fgetwc _Zy_fputwc _Zy_fgetws _Zy_fputws _Zy_fwide _Zy_ungetwc _Zy_getwc _Zy_putwc
        _Zy_getwchar _Zy_putwchar _Zy_vfwprintf _Zy_vwprintf _Zy_wsprintf _Zy_wfopen)");
    int count = 0;
    for (std::string name; names >> name; count++)
        EXPECT_NE(constantNamed(name.c_str()), nullptr) << name;
    int constants = 0;
    for (const TypeInfo *symbol = systemSymbols; symbol; symbol = symbol->next)
        constants += symbol->dataType == DT_CONSTANT;
    EXPECT_EQ(constants, count);
}

TEST_F(BuiltinsTest, TheEnvironmentConstantFollowsTheProcess) {
    auto holds = [](const std::string &entry) {
        for (char **at = static_cast<char **>(constantNamed("_environ")->payload.p); *at; at++)
            if (*at == entry)
                return true;
        return false;
    };
    e_lang->putenvFn("ZY_BUILTINS_TEST=1");
    EXPECT_FALSE(holds("ZY_BUILTINS_TEST=1"));
    refreshEnvironment();
    EXPECT_TRUE(holds("ZY_BUILTINS_TEST=1"));
}

// ---- The switches -----------------------------------------------------------------------------

namespace {

class SwitchTest : public InstanceTest {
protected:
    void SetUp() override {
        InstanceTest::SetUp();
        addPredefinedConstant({"half", DT_DOUBLE, {.d = 0.5}});
        addPredefinedConstant({"one", DT_DOUBLE, {.d = 1.5}});
        addPredefinedConstant({"text", DT_STRING, {.text = nullptr}});
    }

    static std::string run(void (*form)(), const std::string &source) {
        openSource(source + ";\n");
        std::string errors = errorsOf(form);
        if (pushedBack && tokenClass == TK_CONSTANT)
            deleteValue(tokenValue.constant);
        closeSource();
        return errors;
    }
    static void casesen() {
        if (Value *operand = casesenStatement())
            deleteValue(operand);
    }
    static void floatconst() {
        if (Value *operand = floatconstStatement())
            deleteValue(operand);
    }
};

// The name as the lexer finds it.
const Symbol *seen(const char *text) {
    openSource(std::string(text) + ";\n");
    nextToken();
    const Symbol *symbol = tokenClass == TK_IDENTIFIER ? tokenValue.name->symbol : nullptr;
    closeSource();
    return symbol;
}

bool isFileType(const char *text) {
    openSource(std::string(text) + ";\n");
    nextToken();
    closeSource();
    return tokenClass == TK_KEYWORD && currentKeyword.keywordClass == KC_TYPE &&
           currentKeyword.code == 27;
}

}  // namespace

TEST_F(SwitchTest, CasesenStatementAddsTheNamesThatFoldingWouldLose) {
    int before = liveValueCount();
    EXPECT_EQ(run(casesen, "(0)"), "");
    EXPECT_EQ(caseSensitive, 0);
    ASSERT_NE(seen("NULL"), nullptr);
    EXPECT_EQ(seen("null"), seen("Null"));
    EXPECT_EQ(constantNamed("null")->type, 35U);
    EXPECT_TRUE(isFileType("FILE"));
    EXPECT_TRUE(isFileType("file"));

    EXPECT_EQ(constantNamed("eof")->payload.i, -1);
    EXPECT_TRUE(std::signbit(constantNamed("nzero")->payload.f));
    const struct {
        const char *name;
        double value;
    } reals[] = {{"zero", 0},          {"flt_minimum", FLT_MIN / 8388608},
                 {"flt_min", FLT_MIN}, {"flt_epsilon", FLT_EPSILON},
                 {"flt_max", FLT_MAX}, {"dbl_minimum", DBL_MIN / 4503599627370496.0},
                 {"dbl_min", DBL_MIN}, {"dbl_epsilon", DBL_EPSILON},
                 {"dbl_max", DBL_MAX}, {"inf", INFINITY}};
    for (const auto &row : reals)
        EXPECT_EQ(realOf(constantNamed(row.name)), row.value) << row.name;
    const struct {
        const char *name;
        int value;
    } ints[] = {{"char_min", -128}, {"char_max", 127}, {"int_min", INT_MIN}, {"int_max", INT_MAX}};
    for (const auto &row : ints)
        EXPECT_EQ(constantNamed(row.name)->payload.i, row.value) << row.name;
    for (const char *name :
         {"nan", "complexzero", "complexnan", "complexinf", "dualzero", "dualnan", "dualinf"})
        EXPECT_NE(seen(name), nullptr) << name;
    int added = liveValueCount();
    EXPECT_EQ(added - before, 24);

    run(casesen, "(0)");  // nothing new
    run(casesen, "(1)");
    EXPECT_EQ(caseSensitive, 1);
    for (const char *name : {"null", "eof", "dbl_max", "dualinf"})
        EXPECT_EQ(seen(name), nullptr) << name;
    EXPECT_FALSE(isFileType("file"));
    EXPECT_TRUE(isFileType("FILE"));
    EXPECT_EQ(constantNamed("NULL")->type, 35U);
    run(casesen, "(0)");  // the same symbols again
    EXPECT_NE(seen("NULL"), nullptr);
    EXPECT_EQ(liveValueCount(), added);
}

TEST_F(SwitchTest, CasesenPragmaAddsFewerNamesButBothFileTypes) {
    EXPECT_EQ(run(pragmaCasesen, "(0)"), "");
    for (const char *name : {"null", "nan", "inf", "complexzero", "complexnan", "complexinf",
                             "dualzero", "dualnan", "dualinf"})
        EXPECT_NE(seen(name), nullptr) << name;
    for (const char *name : {"eof", "zero", "char_min", "dbl_max"})
        EXPECT_EQ(seen(name), nullptr) << name;
    EXPECT_TRUE(isFileType("FILE"));
    EXPECT_TRUE(isFileType("_File"));
    // The end of a start-up file doesn't make the folded words lasting ones.
    saveKeywords();
    run(casesen, "1");  // whatever form has added them
    EXPECT_FALSE(isFileType("file"));
    EXPECT_FALSE(isFileType("_file"));
    EXPECT_EQ(seen("nan"), nullptr);
    restoreKeywords();
    EXPECT_FALSE(isFileType("file"));
}

TEST_F(SwitchTest, AScriptsOwnNameIsLeftToIt) {
    addPredefinedConstant({"nan", DT_INT, {.i = 7}});
    const Symbol *own = symbolNamed("nan");
    run(pragmaCasesen, "(0)");
    EXPECT_EQ(symbolNamed("nan"), own);
    resetVocabularySwitches();
    EXPECT_EQ(symbolNamed("nan"), own);
    EXPECT_EQ(symbolNamed("inf"), nullptr);
    EXPECT_EQ(caseSensitive, 1);
}

TEST_F(SwitchTest, EachProgramStartsWithTheSwitchesAtRest) {
    run(casesen, "(0)");
    run(floatconst, "(1)");
    resetRunState();
    EXPECT_EQ(caseSensitive, 1);
    EXPECT_EQ(floatConstant, 0);
    EXPECT_EQ(seen("null"), nullptr);
    EXPECT_FALSE(isFileType("file"));
}

TEST_F(SwitchTest, FloatconstAndTheFormsOfAnArgument) {
    const struct {
        const char *source;
        int flag;
    } rows[] = {{"(1)", 1},  {"(0)", 0},   {"2", 1},       {"0.9", 0},   {"(one)", 1},
                {"half", 0}, {"('a')", 1}, {"('\\0')", 0}, {"1e300", 1}, {"(0x100000000)", 0}};
    for (const auto &row : rows) {
        floatConstant = !row.flag;
        EXPECT_EQ(run(floatconst, row.source), "") << row.source;
        EXPECT_EQ(floatConstant, row.flag) << row.source;
    }
    EXPECT_EQ(run(pragmaFloatconst, "(1)"), "");
    openSource("1.5;\n");
    nextToken();
    EXPECT_EQ(tokenValue.constant->type, 8U);
    deleteValue(tokenValue.constant);
    closeSource();
    resetVocabularySwitches();
    EXPECT_EQ(floatConstant, 0);
}

TEST_F(SwitchTest, WhatIsNoScalarConstantIsRefused) {
    const std::string tail =
        " cannot be converted to an integer constant\n       at line 1 in file 'a.zy'\n";
    int values = liveValueCount();
    for (const char *source : {"(\"0\")", "(text)", "(unknown)", "(_warning)", "(-1)", "()", ";"}) {
        EXPECT_EQ(run(casesen, source), "ERROR: the argument of casesen()" + tail) << source;
        if (source[0] == '(') {
            EXPECT_EQ(run(pragmaCasesen, source), "ERROR: the argument of casesen()" + tail);
        }
        EXPECT_EQ(run(floatconst, source), "ERROR: the argument of floatconst()" + tail) << source;
    }
    EXPECT_EQ(run(pragmaCasesen, "0").substr(0, 22), "ERROR: missing '(' bef");
    EXPECT_EQ(run(casesen, "(0").substr(0, 22), "ERROR: missing ')' bef");
    EXPECT_EQ(caseSensitive, 1);
    EXPECT_EQ(liveValueCount(), values);
}

TEST_F(SwitchTest, AConstantBecomesAnIntAsItsCastDoes) {
    const struct {
        PredefinedConstant constant;
        int number;
    } rows[] = {
        {{"", DT_CHAR, {.sc = -1}}, -1},
        {{"", DT_UCHAR, {.uc = 255}}, 255},
        {{"", DT_SHORT, {.s = -2}}, -2},
        {{"", DT_USHORT, {.us = 65535}}, 65535},
        {{"", DT_UINT, {.u = 4000000000U}}, INT_MIN},
        {{"", DT_LLONG, {.ll = 0x100000007LL}}, 7},
        {{"", DT_ULLONG, {.ull = ULLONG_MAX}}, -1},
        {{"", DT_FLOAT, {.f = -1.9F}}, -1},
        {{"", DT_DOUBLE, {.d = 2147483647.5}}, INT_MAX},
        {{"", DT_DOUBLE, {.d = 2147483648.0}}, INT_MIN},
        {{"", DT_DOUBLE, {.d = -2147483648.9}}, INT_MIN},
        {{"", DT_DOUBLE, {.d = NAN}}, INT_MIN},
        {{"", DT_DOUBLE, {.d = -INFINITY}}, INT_MIN},
        {{"", DT_COMPLEX, {.pair = {3, 0}}}, 3},
        {{"", DT_DUAL, {.pair = {3, 1}}}, INT_MIN},
        {{"", DT_DCOMPLEX, {.d = 4}, {.d = 0}}, 4},
        {{"", DT_DDUAL, {.d = 4}, {.d = 1}}, INT_MIN},
    };
    for (const auto &row : rows) {
        Value value = {};
        value.kind = NODE_VALUE;
        value.type = row.constant.type;
        value.payload = row.constant.payload;
        value.payload2 = row.constant.payload2;
        int number = 0;
        EXPECT_TRUE(constantToInt(&value, number));
        EXPECT_EQ(number, row.number) << row.constant.type;
    }
    for (int type : {15, 25, 35, 37, 136}) {
        Value value = {};
        value.type = type;
        int number;
        EXPECT_FALSE(constantToInt(&value, number)) << type;
    }
}

}  // namespace zy
