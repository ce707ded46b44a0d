// Expressions by value and type. Both are asked of the instance as a host would: the text that a
// value converts to, the size of the expression, and what comparisons tell of its sign.

#include <cmath>

#include "host.h"

namespace {

std::string textOf(void *zy, const std::string &expr) {
    char *text = nullptr;
    if (Zy_ExprCalc(zy, expr.c_str(), ZY_TYPE_STRING, &text) != 0 || !text)
        return "(none)";
    std::string copy = text;
    free(text);
    return copy.starts_with("-nan") ? copy.substr(1) : copy;  // a NaN has no sign
}

double numberOf(void *zy, const std::string &expr) {
    double number = -999;
    Zy_ExprCalc(zy, expr.c_str(), ZY_TYPE_DOUBLE, &number);
    return number;
}

// The name of an expression's type, by what operators make of it: a half survives in reals alone, a
// negative number is above zero in unsigned comparisons.
std::string typeOf(void *zy, const std::string &expr, const std::string &text) {
    int size = static_cast<int>(numberOf(zy, "sizeof(" + expr + ")"));
    bool isWide = size == 16;
    if (text.starts_with("complex"))
        return isWide ? "double complex" : "complex";
    if (text.starts_with("dual"))
        return isWide ? "double dual" : "dual";
    if (text.starts_with("'"))
        return "char";
    bool isReal = numberOf(zy, "((" + expr + ") * 0 + 1) / 2") != 0;
    if (isReal)
        return size == 4 ? "float" : "double";
    bool isUnsigned = size >= 4 && numberOf(zy, "-1 > (" + expr + ") * 0") == 1;
    const char *names[] = {"char", "short", "int", "llong"};
    std::string name = names[size >= 8 ? 3 : size / 2];
    return isUnsigned ? "u" + name : name;
}

void check(void *zy, const std::string &expr, const std::string &type, const std::string &text) {
    std::string foundText = textOf(zy, expr);
    std::string foundType = typeOf(zy, expr, foundText);
    if (foundText != text || foundType != type)
        printf("%s is %s %s, not %s %s\n", expr.c_str(), foundType.c_str(), foundText.c_str(),
               type.c_str(), text.c_str());
}

// Runs an action with an instance in a child, which prints what differs and no message.
template <class Action>
void expectNoDifference(Action action) {
    Outcome run = inChild([&] {
        void *zy = mustStart();
        action(zy);
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "");
}

// Rows of "expression -> type : text;".
void expectRows(const std::string &rows, std::string declarations = "") {
    expectNoDifference([&](void *zy) {
        if (!declarations.empty() && Zy_DeclareVar(zy, declarations.data()) != 0)
            printf("declarations\n");
        std::istringstream text(rows);
        int count = 0;
        for (std::string row; std::getline(text >> std::ws, row, ';'); count++) {
            size_t arrow = row.find(" -> "), colon = row.find(" : ", arrow);
            check(zy, row.substr(0, arrow), row.substr(arrow + 4, colon - arrow - 4),
                  row.substr(colon + 3));
        }
        if (count == 0)
            printf("no rows\n");
    });
}

// ---- Every pair of types ------------------------------------------------------------------------

struct Operand {
    const char *cast, *name;
    int order;  // of promotion
};
constexpr Operand operands[] = {
    {"(char)", "char", 0},       {"(unsigned char)", "uchar", 1},
    {"(short)", "short", 2},     {"(unsigned short)", "ushort", 3},
    {"(int)", "int", 4},         {"(unsigned)", "uint", 5},
    {"(long long)", "llong", 6}, {"(unsigned long long)", "ullong", 7},
    {"(float)", "float", 8},     {"(double)", "double", 9},
};

// All below unsigned int counts as int, and unsigned int with long long as unsigned long long.
int promoted(const Operand &a, const Operand &b) {
    bool mixed = (a.order == 5 && b.order == 6) || (a.order == 6 && b.order == 5);
    return mixed ? 7 : std::max({a.order, b.order, 4});
}

std::string text(int order, double number) {
    char buffer[64];
    snprintf(buffer, sizeof buffer, "%g%s", number,
             order == 5 || order == 7 ? "U"
             : order == 8             ? "F"
                                      : "");
    return buffer;
}

void checkPair(void *zy, const Operand &a, const Operand &b) {
    std::string left = std::string(a.cast) + "7", right = std::string(b.cast) + "2";
    auto expect = [&](const char *op, int order, double number) {
        check(zy, left + op + right, operands[order].name, text(order, number));
    };
    int order = promoted(a, b);
    bool isReal = order >= 8;
    expect(" + ", order, 9);
    expect(" * ", order, 14);
    expect(" / ", order, isReal ? 3.5 : 3);
    int difference = order == 5 ? 4 : order == 7 ? 6 : order;  // never unsigned
    check(zy, right + " - " + left, operands[difference].name, text(difference, -5));
    expect(" > ", 4, 1);
    expect(" == ", 4, 0);
    expect(" && ", 4, 1);
    if (isReal)
        return;
    expect(" % ", order, 1);
    expect(" & ", order, 2);
    expect(" | ", order, 7);
    expect(" ^ ", order, 5);
    int shifted = std::max(a.order, 4);
    expect(" << ", shifted, 28);
    expect(" >> ", shifted, 1);
}

}  // namespace

TEST(Expressions, EveryPairOfTypesPromotesByTheOrder) {
    expectNoDifference([](void *zy) {
        for (const Operand &a : operands)
            for (const Operand &b : operands)
                checkPair(zy, a, b);
    });
}

// ---- By hand ------------------------------------------------------------------------------------

TEST(Expressions, Constants) {
    expectRows(R"(
1 -> int : 1;  2147483647 -> int : 2147483647;  2147483648 -> uint : 2147483648U;
4294967295 -> uint : 4294967295U;  4294967296 -> ullong : 4294967296U;  0x10 -> uint : 16U;
0b11 -> uint : 3U;  010 -> int : 8;  0xFFFFFFFFF -> ullong : 68719476735U;  5u -> uint : 5U;
5l -> int : 5;  3000000000l -> llong : 3000000000;  5ul -> uint : 5U;  5ll -> llong : 5;
5ULL -> ullong : 5U;  5f -> float : 5F;  1.5f -> float : 1.5F;  1.5 -> double : 1.5;
1.5d -> double : 1.5;  1e3 -> double : 1000;  0x1.8p1 -> double : 3;  'a' -> char : 'a';
NaN -> float : nanF;  Inf -> float : infF;  -Inf -> float : -infF;
)");
}

TEST(Expressions, ArithmeticAtTheEdges) {
    expectRows(R"(
2147483647 + 1 -> int : -2147483648;  -2147483647 - 2 -> int : 2147483647;
65536 * 65536 -> int : 0;  4294967295u + 1u -> uint : 0U;
4294967295u * 2 -> uint : 4294967294U;  -(-2147483647 - 1) -> int : -2147483648;
(-2147483647 - 1) / -1 -> int : -2147483648;  (-2147483647 - 1) % -1 -> int : 0;
9223372036854775807LL + 1 -> llong : -9223372036854775808;
18446744073709551615ULL + 1 -> ullong : 0U;  4294967295u + 1LL -> ullong : 4294967296U;
2147483647 + 1LL -> llong : 2147483648;
(-9223372036854775807LL - 1) / -1 -> llong : -9223372036854775808;
(-9223372036854775807LL - 1) % -1 -> llong : 0;  3000000000ULL * 3 -> ullong : 9000000000U;
-1LL * 1ULL -> ullong : 18446744073709551615U;
3u - 5u -> int : -2;  3u - 5 -> int : -2;  3 - 5u -> int : -2;  0u - 4294967295u -> int : 1;
3ULL - 5ULL -> llong : -2;  3ULL - 5 -> llong : -2;  3 - 5ULL -> llong : -2;
3u - 5LL -> llong : -2;  3LL - 5u -> llong : -2;  3u - 5ULL -> llong : -2;
3u - 5.0 -> double : -2;  3u - 5.0f -> float : -2F;
-7 / 2 -> int : -3;  7 / -2 -> int : -3;  -7 % 2 -> int : -1;  7 % -2 -> int : 1;
-7LL / 2 -> llong : -3;  -7LL % 2 -> llong : -1;  (char)100 + (char)100 -> int : 200;
(unsigned char)250 + (unsigned char)10 -> int : 260;  (short)30000 * (short)2 -> int : 60000;
16777217LL + 0.0f -> float : 1.67772e+07F;  16777216.0f + 1 == 16777216.0f -> int : 1;
16777216.0 + 1 == 16777217.0 -> int : 1;  1 / 2.0f -> float : 0.5F;  1LL / 2.0 -> double : 0.5;
1.0 / 0 -> double : inf;  -1.0 / 0 -> double : -inf;  0.0 / 0 -> double : nan;
1 / 0.0f -> float : infF;  -0.0 -> double : -0;  0.0 * -1 -> double : -0;
1 / -0.0 -> double : -inf;  -NaN -> float : nanF;  NaN + 1 -> float : nanF;
NaN - NaN -> float : nanF;  Inf - Inf + 1.0 -> double : nan;  Inf * 0 -> float : nanF;
18446744073709551615ULL + 0.0 -> double : 1.84467e+19;
-(char)5 -> int : -5;  -5u -> int : -5;  -5ULL -> llong : -5;  +(short)5 -> short : 5;
- - 3 -> int : 3;  -2.5f -> float : -2.5F;
)");
}

TEST(Expressions, BitsAndShifts) {
    expectRows(R"(
1 << 31 -> int : -2147483648;  1 << 32 -> int : 1;  1 << 33 -> int : 2;  1u << 33 -> uint : 2U;
1LL << 32 -> llong : 4294967296;  1LL << 63 -> llong : -9223372036854775808;
1LL << 65 -> llong : 2;  1ULL << 64 -> ullong : 1U;  8 >> -1 -> int : 16;
8u >> -1 -> uint : 16U;  8LL >> -1 -> llong : 16;  8ULL >> -1 -> ullong : 16U;
1 << -1 -> int : 0;  16 << -2 -> int : 4;  16LL << -2 -> llong : 4;  16ULL << -2 -> ullong : 4U;
-8 >> 1 -> int : -4;  -8LL >> 1 -> llong : -4;  4294967288u >> 1 -> uint : 2147483644U;
18446744073709551608ULL >> 1 -> ullong : 9223372036854775804U;  -8 << 1 -> int : -16;
-8 >> -1 -> int : -16;  1 << 2LL -> int : 4;  (char)1 << 8 -> int : 256;
(char)-128 >> 1 -> int : -64;  1 << 2u -> int : 4;  ~0 -> int : -1;  ~0u -> uint : 4294967295U;
~0LL -> llong : -1;  ~0ULL -> ullong : 18446744073709551615U;  (int)~(char)97 -> int : -98;
~(short)5 -> short : -6;  (int)~(unsigned char)5 -> int : 250;
(int)~(unsigned short)5 -> int : 65530;  12 & 10 -> int : 8;  -1 & 255u -> uint : 255U;
-1 | 0LL -> llong : -1;  -1 ^ 0ULL -> ullong : 18446744073709551615U;  1u ^ 3LL -> ullong : 2U;
(char)-1 & (unsigned char)255 -> int : 255;  5 & 3 == 3 -> int : 1;  1 | 2 ^ 3 & 2 -> int : 1;
1 + 2 << 3 - 1 -> int : 12;
)");
}

TEST(Expressions, ComparisonsByTheWidestOperand) {
    expectRows(R"(
-1 > 1u -> int : 1;  -1 < 1u -> int : 0;  -1 > 1 -> int : 0;  -1 < 1LL -> int : 1;
-1 > 1ULL -> int : 1;  -1LL > 1u -> int : 0;  -1LL > 1ULL -> int : 1;
4294967295u > 4294967294LL -> int : 1;  4294967295u == -1 -> int : 0;
-1 == 18446744073709551615ULL -> int : 0;  (char)-1 < (char)1 -> int : 1;
(unsigned char)255 > (unsigned char)1 -> int : 1;  (unsigned char)200 > (char)1 -> int : 0;
(unsigned char)200 > (short)1 -> int : 1;  (unsigned char)200 > 1 -> int : 1;
(short)-1 < (short)1 -> int : 1;  (unsigned short)65535 > (unsigned short)1 -> int : 1;
(short)-1 > (unsigned short)1 -> int : 1;  (short)-1 > 1 -> int : 0;
(unsigned short)65535 > 1 -> int : 1;  0.1f == 0.1 -> int : 0;  0.5f == 0.5 -> int : 1;
1 == 1.0 -> int : 1;  16777217 == 16777216.0f -> int : 0;  2 < 2.5 -> int : 1;
-1 < 0.5f -> int : 1;  18446744073709551615ULL > 1.0 -> int : 1;  NaN == NaN -> int : 0;
NaN != NaN -> int : 1;  NaN < 1 -> int : 0;  NaN <= 1 -> int : 0;  NaN > 1 -> int : 0;
NaN >= 1 -> int : 0;  1 < NaN -> int : 0;  1 != NaN -> int : 1;  Inf > 1e308 -> int : 1;
-Inf < -1e308 -> int : 1;  Inf == Inf -> int : 1;  0.0 == -0.0 -> int : 1;
NULL == 0 -> int : 1;  "b" == NULL -> int : 0;  1 < 2 == 1 -> int : 1;  3 > 2 > 1 -> int : 0;
1 <= 1 -> int : 1;  2 >= 3 -> int : 0;
)");
}

TEST(Expressions, TruthAndPrecedence) {
    expectRows(R"(
!0 -> int : 1;  !5 -> int : 0;  !0.5 -> int : 0;  !0.0 -> int : 1;  !-0.0 -> int : 1;
!NULL -> int : 1;  !"a" -> int : 0;  !4294967296ULL -> int : 0;  !NaN -> int : 0;
!!NaN -> int : 1;  NaN && 1 -> int : 1;  1 && NaN -> int : 1;  NaN || 0 -> int : 1;
0 || NaN -> int : 1;  NaN ^^ 1 -> int : 0;  NaN ^^ 0 -> int : 1;  NaN ? 1 : 2 -> int : 1;
0.25 && 0.25 -> int : 1;  4294967296LL && 1 -> int : 1;  0 && 1 / 0 -> int : 0;
1 || 1 / 0 -> int : 1;  1 ^^ 1 -> int : 0;  2 ^^ 0 -> int : 1;  0 ^^ 0.0 -> int : 0;
1 ^^ 0 || 1 -> int : 1;  1 && 0 ^^ 1 -> int : 1;  1 || 0 && 0 -> int : 1;
NULL ? 1 : 2 -> int : 2;  1 ? 2 : 3 -> int : 2;  0 ? 1 : 0 ? 2 : 3 -> int : 3;
(1, 2, 3) -> int : 3;  1 + 2 * 3 -> int : 7;  (1 + 2) * 3 -> int : 9;  10 - 4 - 3 -> int : 3;
2 * 3 % 4 -> int : 2;  -2 * -3 -> int : 6;  !1 + 1 -> int : 1;
)");
}

TEST(Expressions, Conversions) {
    expectRows(R"(
(int)3.9 -> int : 3;  (int)-3.9 -> int : -3;  (char)353 -> char : 'a';
(int)(char)200 -> int : -56;  (int)(unsigned char)-1 -> int : 255;
(short)70000 -> short : 4464;  (int)(unsigned short)-1 -> int : 65535;
(unsigned)-1 -> uint : 4294967295U;  (unsigned)3e9 -> uint : 3000000000U;
(unsigned)-1.5 -> uint : 4294967295U;  (long long)3e9 -> llong : 3000000000;
(long long)(0u + -1) -> llong : 4294967295;
(unsigned long long)-1 -> ullong : 18446744073709551615U;
(unsigned long long)1e19 -> ullong : 10000000000000000000U;  (int)4294967298LL -> int : 2;
(int)1e10 -> int : -2147483648;  (int)NaN -> int : -2147483648;  (int)Inf -> int : -2147483648;
(int)-Inf -> int : -2147483648;  (float)0.1 == 0.1f -> int : 1;  (double)0.1f == 0.1 -> int : 0;
(float)1e300 -> float : infF;  (double)5 -> double : 5;
(double)18446744073709551615ULL -> double : 1.84467e+19;  (float)5LL -> float : 5F;
(complex)2 -> double complex : complex(2,0);  (float complex)2 -> complex : complex(2,0);
(double complex)2.5 -> double complex : complex(2.5,0);  (dual)2 -> dual : dual(2,0);
int(2.7) -> int : 2;  char(98.6) -> char : 'b';  short(1.5) -> short : 1;
unsigned(2.5) -> uint : 2U;  float(3) / 2 -> float : 1.5F;  double(3) / 2 -> double : 1.5;
(int)'a' -> int : 97;  'a' + 1 -> int : 98;  'a' * 2.0 -> double : 194;
sizeof(int) -> ullong : 4U;  sizeof(long) -> ullong : 4U;  sizeof(long long) -> ullong : 8U;
sizeof(double *) -> ullong : 8U;  sizeof(double complex) -> ullong : 16U;
sizeof("abc") -> ullong : 4U;  sizeof 1.5f -> ullong : 4U;
(int)(short)(char)300 + 1 -> int : 45;
)");
}

TEST(Expressions, VariablesOfEachWidth) {
    expectRows(R"(
c = 300 -> char : ',';  uc = -1, uc + 0 -> int : 255;  s = 70000 -> short : 4464;
us = -1, us + 0 -> int : 65535;  i = 3.99 -> int : 3;  u = -1 -> uint : 4294967295U;
l = 3e9 -> llong : 3000000000;  ul = -1 -> ullong : 18446744073709551615U;
f = 0.1, f == 0.1 -> int : 0;  d = 1 / 4.0 -> double : 0.25;  i = 7, i++ -> int : 7;
i -> int : 8;  ++i -> int : 9;  i = 9, i--, i -> int : 8;  i = 8, i /= 3 -> int : 2;
i = 5, i *= 2.5 -> int : 12;  i = 1, i <<= 5 -> int : 32;  i = 13, i %= 5 -> int : 3;
i = 6, i ^= 3 -> int : 5;  i = 6, i |= 1, i &= 5 -> int : 5;
c = 127, c += 1, c + 0 -> int : -128;  u = 0, u - 1 -> int : -1;
u = 0, u -= 1 -> uint : 4294967295U;  d = 1, d += 0.5f -> double : 1.5;
f = 1, f /= 3, f * 3 -> float : 1F;  i = d = 2.75 -> int : 2;  d = i = 2.75 -> double : 2;
i = 1, i += i++ * 0 + 2, i > 0 -> int : 1;  p = &i, *p = 6, i -> int : 6;
p == &i && *p == i -> int : 1;  &p == NULL -> int : 0;  pd = &d, *pd = 4, d -> double : 4;
(i = 3) + (i = 3) -> int : 6;  i ? d : l -> double : 4;
)",
               "char c; unsigned char uc; short s; unsigned short us; int i, *p; unsigned int u;"
               "long long l; unsigned long long ul; float f; double d, *pd;");
}

// ---- What isn't an expression -------------------------------------------------------------------

namespace {

// Each service refuses the text, stores nothing, and leaves nothing for the next one.
void expectRefused(void *zy, const std::string &expr) {
    const char *shown = expr.size() > 60 ? "(long text)" : expr.c_str();
    int value = 7;
    int calculated = Zy_ExprCalc(zy, expr.c_str(), ZY_TYPE_INT, &value);
    if (calculated != -1 || value != 7)
        printf("%s calculates: %d %d\n", shown, calculated, value);
    if (Zy_ExprParse(zy, expr.c_str()) != -1)
        printf("%s parses\n", shown);
    if (Zy_ExprEval(zy, expr.c_str()) != -1)
        printf("%s evaluates\n", shown);
    void *address = nullptr;
    Zy_DeleteExprValue(zy, Zy_ExprValue(zy, expr.c_str(), &address));
    if (Zy_ExprCalc(zy, "1+1", ZY_TYPE_INT, &value) != 0 || value != 2)
        printf("after %s\n", shown);
}

}  // namespace

TEST(Expressions, TextThatIsNoneIsRefusedAndTheNextCallStartsClean) {
    static const char *texts = R"(
1 +  |  +  |  (1  |  1)  |  ((1)  |  (1))  |  ()  |  1;  |  1 2  |  1 2 3  |  * /  |
1 + * / 2  |  unknown  |  unknown + 1  |  1 + unknown  |  int  |  int i  |  return 1  |
if (1) 2  |  { 1 }  |  "a  |  'a  |  1 ? 2  |  1 ? : 3  |  1 : 2  |  1 = 2  |  NaN = 1  |
&1  |  *1  |  *1.5  |  ++1  |  1--  |  1.5 % 2  |  1.5 << 1  |  1 << 1.5  |  ~1.5  |
1.5 & 1  |  complex(1,2) < 1  |  sizeof  |  sizeof(  |  (int  |  (int)  |  (double *)1.5f .  |
1.e  |  09  |  f(  |  1 ? 2 :  |  a.b  |  1 .b  |  [1]  |  1[2]  |  #  |  @  |  \  |  1,  |
,1  |  1,,2)";
    Outcome run = inChild([] {
        void *zy = mustStart();
        expectRefused(zy, "");
        expectRefused(zy, " ");
        std::istringstream list(texts);
        for (std::string expr; std::getline(list >> std::ws, expr, '|');)
            expectRefused(zy, expr);
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "");
}

TEST(Expressions, LimitsOfTextAndDepth) {
    Outcome run = inChild([] {
        void *zy = mustStart();
        std::string declaration = "int a, b, c, d, e, f, g, h, i, j, k;";
        Zy_DeclareVar(zy, declaration.data());
        expectRefused(zy, "a = b = c = d = e = f = g = h = i = j = k");
        expectRefused(zy, std::string(5120, '1'));
        expectRefused(zy, "1" + std::string(5119, ' '));
        expectRefused(zy, std::string(100000, '('));
        int value = 0;
        if (Zy_ExprCalc(zy, "a = b = c = d = (e = f = g = 5)", ZY_TYPE_INT, &value) || value != 5)
            printf("nested %d\n", value);
        std::string sum = "1";
        while (sum.size() < 5117)
            sum += "+1";
        if (Zy_ExprCalc(zy, sum.c_str(), ZY_TYPE_INT, &value) != 0 || value != 2559)
            printf("long sum %d\n", value);
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find("ERROR: expression stack overflow"), std::string::npos);
}

TEST(Expressions, MessagesNameWhatIsWrong) {
    struct Message {
        const char *expr, *text;
    };
    static const Message rows[] = {
        {"1.5 % 2", "ERROR: mod operator % is applied to nonintegral values"},
        {"1 = 2", "ERROR: invalid lvalue of assignment operation"},
        {"*1", "ERROR: operand of indirection operator * is not a pointer"},
        {"&1", "ERROR: operand of address operation & is not a valid lvalue"},
        {"()", "ERROR: no expression following ("},
        {"1 2", "ERROR: multiple operands together, maybe missing ';' in the previous statement"},
        {"complex(1,2) < 1", "ERROR: invalid operands for less than operator <"},
        {"~1.5", "ERROR: the bitwise one's complement  operator ~ is"},
        {"1.5 << 1", "ERROR: operands are non-integral type for bitwise left shift operator <<"},
        {"-\"a\"", "ERROR: invalid operand for negation operator -"},
        {"++1", "ERROR: operand is not modifiable lvalue for operator ++"},
        {"1 ? 2", "ERROR: missing ':' in ternary operation ?:"},
        {"sin()", "ERROR: number of argument is 0, need 1 argument"},
        {"09", "ERROR: "},
    };
    for (const Message &row : rows) {
        Outcome run = inChild([&] {
            void *zy = mustStart();
            int result = Zy_ExprEval(zy, row.expr);
            mustEnd(zy);
            return result == -1 ? 0 : 1;
        });
        EXPECT_EQ(run.status, 0) << row.expr;
        EXPECT_NE(run.err.find(row.text), std::string::npos) << row.expr << ": " << run.err;
    }
}

TEST(Expressions, ErrorsOfARunGiveMinusOneAndWarningsNone) {
    Outcome run = inChild([] {
        void *zy = mustStart();
        std::string declaration = "int *p;";
        Zy_DeclareVar(zy, declaration.data());
        int value = 7;
        printf("%d ", Zy_ExprCalc(zy, "1 / 0", ZY_TYPE_INT, &value));
        printf("%d ", value);
        printf("%d ", Zy_ExprCalc(zy, "*p", ZY_TYPE_INT, &value));
        printf("%d ", value);
        printf("%d ", Zy_ExprEval(zy, "printf(\"%s\\n\", 3.5)"));
        printf("%d", Zy_ExprEval(zy, "1"));
        mustEnd(zy);
        return 0;
    });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "0 2139095040 0 0 -1 0");
}
