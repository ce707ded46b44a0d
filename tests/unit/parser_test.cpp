// Texts of expressions: what is refused or warned of and how, the limits, and that no text leaves a
// record behind. What expressions give is told by scripts.

#include <cstring>

#include "embed/kernel.h"
#include "embed/scriptDriver.h"
#include "expr/context.h"
#include "expr/nodes.h"
#include "expr/parser.h"
#include "front/lexer.h"
#include "front/preprocessorState.h"
#include "instance.h"
#include "source.h"

namespace zy {

namespace {

constexpr char declarations[] = R"(
int a, b, c, d, e, f, g, h, i, j, k, *p, **pp, v[5], three[3], grid[2][3][4], plane[3][4];
char ch, *s; short sh; float fl; double x, *px; string_t str; complex z; dual w; FILE *fp;
void *pv, nothing(void), (*hook)(void);
int (*handler)(int), taker(int (*f)(int)), (*rows)[3], (*open)[:], callee(int n);
struct point { int first, count; } o, *op;
struct other { int n; } q, *oq;
struct box; class shape { int hidden; };
typedef long long number;
extern const int fixed = 1; const int *toConst; int *const constant = NULL;
array double m[4], m3[3], m22[2][2], m23[2][3], m32[3][2], m44[4][4], cube[2][2][2], *mp;
array double (*mf)[4], (*view)[:];
array float floats[4]; array int whole[4];
double area(double n), shaped(array double n[:]), sized(array double n[4]);
double bound(array double &n), byReference(array double n[&]), rowsOf(double n[][3]), half(double *n);
)";

class Parser : public InstanceTest {
protected:
    void SetUp() override {
        InstanceTest::SetUp();
        freshProgram();
        std::string text = declarations;
        EXPECT_EQ("", errorsOf([&] { Zy_AppendParseScript_kernel(nullptr, text.data()); }));
        releaseKeptTexts();
        before = liveValueCount();
    }
    void TearDown() override {
        e_lang->restricted = 0;
        freshProgram();
        InstanceTest::TearDown();
    }

    // The messages of an expression, and behind them a mark if it was refused.
    std::string verdict(const std::string &expr) {
        std::string text = errorsOf([&] {
            if (Zy_ExprParse_kernel(nullptr, expr.c_str()) != 0)
                fputs("refused", stderr);
        });
        expectNoLeak(expr);
        return text;
    }
    void expectNoLeak(const std::string &expr) {
        releaseKeptTexts();
        EXPECT_EQ(before, liveValueCount()) << expr;
        before = liveValueCount();
    }
    struct Row {
        const char *expr, *message;
    };
    void expectRows(std::initializer_list<Row> rows, const char *kind, const char *mark) {
        for (const Row &row : rows)
            EXPECT_EQ(std::string(kind) + row.message + "\n" + mark, verdict(row.expr)) << row.expr;
    }
    void expectRefused(std::initializer_list<Row> rows) { expectRows(rows, "ERROR: ", "refused"); }
    void expectWarned(std::initializer_list<Row> rows) { expectRows(rows, "WARNING: ", ""); }
    void expectSilent(std::initializer_list<const char *> exprs) {
        for (const char *expr : exprs)
            EXPECT_EQ("", verdict(expr)) << expr;
    }

    int before = 0;
};

TEST_F(Parser, OperatorsAndParentheses) {
    const char *together =
        "multiple operands together, maybe missing ';' in the previous statement";
    expectRefused({
        {"a * / b", "multiple operators together "},
        {"a + , b", "multiple operators together "},
        {"a 5", together},
        {"a (b)", together},
        {"a ! b", together},
        {"a sin(x)", together},
        {"()", "no expression following ("},
        {"(a", "missing ')'"},
        {"a +", "invalid operands for addition operator +"},
        {"a + !", "invalid operand for not operator !"},
        {"`ls`", "undefined operation"},
        {"((a * / b))", "multiple operators together \nERROR: syntax error before )"},
        {"(a * / b)", "multiple operators together \nERROR: syntax error before )"},
        {"a ? b;", "missing ':' in ternary operation ?:"},
        {"a ? b :;", "invalid operand for ternary operation ?:"},
        {"::5", "misplaced \"::\", identifier expected"},
        {"::nowhere", "nowhere is not defined"},
    });
}

TEST_F(Parser, SubscriptsCallsAndMembers) {
    expectRefused({
        {"a[1]", "invalid subscript for wrong data type"},
        {"v[1][2]", "number of argument is 2, need 1 argument"},
        {"m22[1]", "number of argument is 1, need 2 arguments"},
        {"v[]", "argument 1 of the function is undefined or not a valid expression"},
        {"v[1", "missing ']'"},
        {"area()", "number of argument is 0, need 1 argument"},
        {"area(1, 2)", "number of argument is 2, need 1 argument"},
        {"area(,)", "argument 1 of the function is undefined or not a valid expression"},
        {"area(1,)", "argument 2 of the function is undefined or not a valid expression"},
        {"area(1", "missing ')'"},
        {"nothing(1)", "number of argument is 1, need 0 arguments"},
        {"a.count", "left operand of '.' is not struct/class/union object"},
        {"o->count", "left operand of '->' is not pointer to struct/class/union"},
        {"a::count", "left operand of '::' is not struct/class type name"},
        {"o.missing", "struct/class/union member 'missing' undefined"},
        {"o.(count)", "'(' following . or -> operator"},
        {"o.-count", "multiple operators together "},
    });
}

TEST_F(Parser, BuiltInFunctions) {
    e_lang->warningLevel = 0;
    expectRefused({
        {"strcmp(s)", "number of argument is 1, need 2 arguments"},
        {"strlen()", "number of argument is 0, need 1 argument"},
        {"printf()", "number of argument is 0, need more arguments"},
        {"sqrt(1, 2, 3)", "number of arguments is 3, need 1 or 2 arguments"},
        {"_getpid", "missing '('"},
        {"_getpid(1)", "missing ')' before '1'"},
        {"_puts 1", "missing '(' when function is called"},
        {"scanf >> 5", "argument 1 of cin >> is not a valid lvalue"},
        {"printf << ;", "argument 1 of the function is undefined or not a valid expression"},
        {"fprintf(a, s)", "the first argument for fprintf() must be pointer to file"},
        {"fscanf(a, s)", "the first argument for fscanf() must be pointer to file"},
        {"fscanf(fp, a)", "argument 2 of fscanf() is not a single pointer or string "},
        {"fscanf(fp, s, a)", "the argument 3 of fscanf() is not a pointer"},
        {"scanf(a)", "argument 1 of scanf() is not a single pointer or string "},
        {"scanf(s, a)", "argument 2 of scanf() is not a pointer"},
        {"sscanf(s, a)", "argument 2 of sscanf() is not a single pointer or string "},
        {"sscanf(s, s, pp)", "argument 3 of sscanf() is not a single pointer"},
        {"stradd(a)", "argument 1 of stradd() is not a string "},
        {"stradd(s, a)", "argument 2 of stradd() is not a single pointer"},
        {"memcpy(a, p, 1)", "the first argument of memcpy() is not a pointer"},
        {"memcpy(p, a, 1)", "the second argument of memcpy() is not a pointer"},
        {"memset(a, 0, 1)", "the first argument of memset() is not a pointer"},
        {"_asctime(p)", "argument of asctime() is not pointer to struct tm "},
        {"_stat(s, p)", "2nd argument of stat() is not pointer to stat "},
        {"ioctl(a, b, x)", "3rd argument of ioctl() is not integral or piinter data type"},
        {"atexit(a)", "invalid argument for function atexit()"},
        {"shape(a)", "found int where array is expected"},
        {"transpose(x)", "found double where computational array is expected"},
        {"complex(1, s)", "invalid data type for constructor complex( , )"},
        {"dual(s, 1)", "invalid data type for constructor dual( , )"},
        {"int(s)", "invalid argument for type constructor int()"},
        {"string_t(p)", "the argument of string(arg) must be a string"},
        {"strcmp(x, s)", "found double where string is expected"},
        {"strcmp(5, s)", "found int where string is expected"},
    });
    expectSilent({"fprintf(NULL, \"\")", "memcpy(v, m, 3)", "scanf(s, p, v, s)", "shape(m, 1)",
                  "strtok(NULL, s)", "printf << a << b", "_iskey(\"while\")", "_iskey(s)",
                  "time(NULL)", "string_t(x)", "scanf >> a >> v"});
    e_lang->warningLevel = 1;
    expectWarned({{"gets(s)", "function gets() is dangerous and should not be used, use fgets()"}});
}

TEST_F(Parser, Conversions) {
    expectRefused({
        {"int x", "missing '(' in casting operation"},
        {"int (x)(a)", "missing '(' in casting operation"},
        {"void(x)", "unsupported constructor void()"},
        {"struct(x)", "unsupported constructor struct()"},
        {"number", "missing '(' in casting operation or use a typedef name as operator "},
        {"sizeof *p", "missing '(' and ')' in sizeof(expr) "},
        {"sizeof;",
         "the argument of sizeof() is not a declaration identifier or valid ZY expression"},
        {"sizeof(int y)", "with unnecessary identifier 'y' in declarator of sizeof()"},
        {"elementtype(int y)", "with unnecessary identifier 'y' in declarator of elementtype()"},
        {"elementtype(a)", "invalid argument for operator elementtype()"},
        {"(int y)x", "with unnecessary identifier 'y' in casting operator"},
        {"(int x", "with unnecessary identifier 'x' in casting operator"},
        {"(int", "missing ')'"},
        {"(int (int))x", "cannot cast to function type "},
        {"(struct point)a", "cannot cast to struct 'point' "},
        {"(int)o", "incompatible types for casting operation, casting class/struct/union to int"},
        {"(string_t)a", "incompatible types for casting operation, casting int to string"},
        {"(array double [:])m22",
         "array dimensions do not match in casting to pointer to computational array"},
        {"(array double (*)[4])m44",
         "not assumed-shape array for casting pointer to computational array"},
        {"(array double [:])a", "non-array casted to pointer to computational array"},
        {"new 5", "missing type name after operator new"},
        {"new int y", "with unnecessary identifier 'y' in operator new"},
        {"new int (int)", "cannot allocate new function type "},
        {"new int, int y", "additional variables are defined after operator 'new'"},
    });
    expectSilent({"(int)p", "(void)o", "(struct point *)a", "(string_t)s", "(void *)callee",
                  "(array double [:])m", "(int (*)(int))NULL", "new unsigned int(a)", "number(a)",
                  "elementtype(v)", "elementtype(double)", "sizeof(struct box *)",
                  "(int (*)[3])p"});
    expectWarned({{"(array double [:])floats",
                   "pointer to computational array of double point to array of float with less "
                   "memory space"}});
}

TEST_F(Parser, OperandsOfEachOperator) {
    expectRefused({
        {"p + p", "invalid operands for addition operator +"},
        {"o - a", "invalid operands for subtraction operator -"},
        {"p * a", "invalid operands for multiplication operator *"},
        {"a / p", "invalid operands for division operator  /"},
        {"fl % a", "mod operator % is applied to nonintegral values"},
        {"fl | a", "bitwise or operator | is applied to nonintegral values"},
        {"a ^ p", "bitwise exclusive or operator ^ is applied to nonintegral values"},
        {"a & x", "bitwise and operator & is applied to nonintegral values"},
        {"a << fl", "operands are non-integral type for bitwise left shift operator << "},
        {"fl >> a", "operands are non-integral type for bitwise left shift operator >> "},
        {"z < a", "invalid operands for less than operator <"},
        {"str <= str", "invalid operands for less than or equal operator <="},
        {"str >= s", "invalid operands for greater than or equal  operator >="},
        {"w > w", "invalid operands for greater than  operator  >"},
        {"p == a", "invalid operands for equal operator =="},
        {"p == 1", "invalid operands for equal operator =="},
        {"o != o", "invalid operands for not equal operator !="},
        {"z || a", "invalid operands for or operator ||"},
        {"o ^^ a", "invalid operands for exclusive or operator ^^"},
        {"a && nothing()", "invalid operands for and operator &&"},
        {"a += o", "invalid operands for operator += "},
        {"p -= p", "invalid operands for operator -= "},
        {"p *= a", "invalid operands for operator *= "},
        {"a /= p", "invalid operands for operator /= "},
        {"fl %= a", "operands are non-integral type for operator %= "},
        {"a &= fl", "operands are non-integral type for operator &= "},
        {"fl ^= a", "operands are non-integral type for operator ^= "},
        {"fl |= a", "operands are non-integral type for operator |= "},
        {"fl <<= a", "operands are non-integral type for operator <<= "},
        {"a >>= fl", "operands are non-integral type for operator >>= "},
        {"a .* b",
         "1st operand for array operator '.*' is not computational array\n"
         "ERROR: 2nd operand for array operator '.*' is not computational array"},
        {"p ./ a",
         "1st operand for array operator './' is not computational array or scalar value\n"
         "ERROR: 2nd operand for array operator './' is not computational array"},
        {"~fl", "the bitwise one's complement  operator ~ is applied to nonintegral values"},
        {"-str", "invalid operand for negation operator -"},
        {"!o", "invalid operand for not operator !"},
        {"*a", "operand of indirection operator * is not a pointer"},
        {"&3", "operand of address operation & is not a valid lvalue"},
        {"o ? 1 : 2", "invalid operand for ternary operation ?:"},
        {"a ? x : \"t\"", "found pointer to char where double is expected"},
        {"a ? whole : 2",
         "mix computational array with scalar in operands for ternary operation ?:"},
    });
    expectSilent({"a ? p : 0", "a ? 0 : p", "p == 0", "0 != p", "p == NULL", "p == pv"});
}

TEST_F(Parser, Assignments) {
    const char *isConst = "lvalue is a const object";
    const char *invalid = "invalid lvalue of assignment operation";
    const char *dimensions = "array dimensions do not match ";
    expectRefused({
        {"fixed = 1", isConst},
        {"fixed += 1", isConst},
        {"++fixed", isConst},
        {"toConst[0] = 1", isConst},
        {"constant = NULL", isConst},
        {"5 = a", invalid},
        {"v = 1", invalid},
        {"*plane = 1", "using array name as a pointer in lvalue of an assigment"},
        {"a =", "invalid rvalue of assignment operation"},
        {"1--", "operand is not modifiable lvalue for operator --"},
        {"++v", "invalid operand for operator ++"},
        {"pv++", "invalid operand for operator ++"},
        {"s = 5", "found int where pointer to char is expected"},
        {"p = x", "found double where pointer to int is expected"},
        {"x = str", "found string where double is expected"},
        {"o = q", "different structs 'point' and 'other' are incompatible data types"},
        {"m = three", dimensions},
        {"m = m22", dimensions},
        {"m = p", "invalid rvalue assigned to computational array"},
        {"x = m", "assign computational array to scalar"},
        {"mp = m22", dimensions},
        {"mp = p", "(pointer to) computational assumed-shape array points to non-array"},
        {"mf = p", "invalid value for pointer to computational array "},
        {"open = p", "pointer to assumed-shape array points to non-array"},
    });
    expectSilent({"&fixed", "toConst = NULL", "*constant = 1", "*v = 1", "s = 0", "m = 3",
                  "mp = NULL", "mp = m3", "open = NULL", "p = pv", "x = a", "ch = x", "oq = op"});
    expectWarned({{"p = 5", "found int where pointer to int is expected"},
                  {"a = p", "found pointer to int where int is expected"},
                  {"mf = 1", "scalar rvalue assigned to pointer to  computational array"}});
    e_lang->warningLevel = 2;
    expectWarned(
        {{"op = oq", "different structs 'point' and 'other' are incompatible data types"}});
}

TEST_F(Parser, ArrayOperands) {
    const char *mismatch = "array dimensions do not match for matrix operations ";
    expectRefused({
        {"m23 * m23", mismatch},
        {"m23 + m22", mismatch},
        {"cube * m", "array dimension is larger than 2  in array multiplication"},
        {"transpose(cube)", "the array dimension is larger than 2  in transpose()"},
        {"_inverse(m23)", "the array dimension is not NxN for an inverse() operation "},
        {"_linearsolver(m22, m3)",
         "the array dimension is not (NxN)N = N for an inverse() operation "},
        {"pow(m32, 2)", "not NxN 2-dim array for the first arg of array type of function pow()"},
    });
    expectSilent({"m23 * m32", "m23 * m3", "m3 * m32", "m * m", "m * whole", "m + floats",
                  "m22 * m23 * m32", "m23 + 1 + transpose(m32)"});
}

TEST_F(Parser, Arguments) {
    expectRefused({
        {"area(o)", "found class/struct/union where double is expected"},
        {"shaped(px)", "non-array is passed to pointer to assumed-shape array "},
        {"bound(x)",
         "actual argument is not array or pointer to array for formal argument of array of "
         "reference"},
    });
    expectWarned({
        {"sized(m3)", "dimension of actual array differs from that of formal array"},
        {"sized(m44)", "rank 2 of actual array argument differs from rank 1 formal array argument"},
        {"sized(whole)", "expecting double, but got int"},
        {"rowsOf(px)", "non-array is passed to pointer to array in a function "},
        {"taker(a)",
         "'a' in argument 1 of the function call is not function or function pointer type "},
        {"byReference(m22)",
         "rank of actual array argument differs from formal array of reference"},
        {"taker(7)", "argument 1 of the function call is not function or function pointer type "},
    });
    expectSilent({"area(a)", "shaped(m3)", "shaped(NULL)", "sized(m)", "taker(callee)", "taker(0)",
                  "bound(m)"});
    e_lang->warningLevel = 3;
    expectWarned({{"half(p)", "passed pointer to int where pointer to double is expected"}});
    expectSilent({"half(pv)"});
}

TEST_F(Parser, PointersOfTheRestrictedShell) {
    e_lang->restricted = 1;
    const char *lvalue = "lvalue of pointer type is restricted in safe shell";
    expectRefused({
        {"p = NULL", lvalue},
        {"p + 1", "pointer addition is restricted in safe shell"},
        {"p - p", "pointer subtraction is restricted in safe shell"},
        {"(int *)a", "cast non-pointer data to pointer type is restricted in safe shell"},
    });
    for (const char *op : {"+", "-"})
        EXPECT_EQ(std::string("ERROR: ") + lvalue + "\nERROR: pointer " +
                      (*op == '+' ? "addition" : "subtraction") + " " + op +
                      "= is restricted in safe shell\nrefused",
                  verdict(std::string("p ") + op + "= 1"));
}

TEST_F(Parser, Limits) {
    const std::string overflow = "ERROR: expression stack overflow\nrefused";
    std::string chain = "a = b = c = d = e = f = g = h = i = j";
    EXPECT_EQ("", verdict(chain));
    EXPECT_EQ(overflow, verdict(chain + " = k"));
    EXPECT_EQ("", verdict("a = b = c = d = (e = f = g = h = i = j = k)"));
    EXPECT_EQ("", verdict("- - - - - - - - - a"));
    EXPECT_EQ(overflow, verdict("- - - - - - - - - - a"));
    EXPECT_EQ("", verdict("a = b = c = d = e = f = g = h = i++"));
    EXPECT_EQ(overflow, verdict(std::string(2500, '(') + "a"));
    EXPECT_EQ("", verdict(std::string(200, '(') + "a" + std::string(200, ')')));
    std::string branches, sum = "a";
    for (int n = 0; n < 400; n++)
        branches += "a?b:";
    EXPECT_EQ(overflow, verdict(branches + "c"));
    for (int n = 0; n < 2000; n++)
        sum += "+1";
    EXPECT_EQ("", verdict(sum));
}

// Whatever the words, the parse ends, leaves no node and puts its cells back.
TEST_F(Parser, WordsInAnyOrderLeaveNothingBehind) {
    const char *words[] = {
        "a",      "x",       "p",       "s",      "v",    "grid",        "m",      "+",
        "-",      "*",       "&",       "=",      "+=",   "++",          "?",      ":",
        ",",      "(",       ")",       "[",      "]",    ".",           "->",     "::",
        "!",      "~",       "==",      "<<",     ">>",   "5",           "\"t\"",  "'c'",
        "sizeof", "int",     "(int)",   "double", "new",  "strcmp(",     "printf", "scanf",
        "sin(",   "fprintf", "fp",      "_puts",  "if",   ";",           "&&",     "(char *)",
        "`",      "nothing", "_iskey(", ".*",     "NULL", "elementtype("};
    unsigned state = 1;
    auto random = [&](unsigned limit) {
        state = state * 1664525 + 1013904223;
        return (state >> 16) % limit;
    };
    errorsOf([&] {
        for (int n = 0; n < 20000 && !HasFailure(); n++) {
            std::string text;
            for (unsigned length = 1 + random(12); length > 0; length--)
                text += std::string(words[random(std::size(words))]) + " ";
            Zy_ExprParse_kernel(nullptr, text.c_str());
            EXPECT_EQ(0, expressionDepth) << text;
            expectNoLeak(text);
        }
    });
}

TEST_F(Parser, HereDocuments) {
    const std::string position = "       at line 1 in file 'a.zy'\n";
    const std::string second = "       at line 2 in file 'a.zy'\n";
    const std::string stream = "the first argument for fprintf() must be pointer to file\n";
    const std::string head = "fprintf fp << END\n", end = "\nEND\n";
    const std::pair<std::string, std::string> rows[] = {
        {"fprintf fp + END\nEND\n", "missing << \n" + position},
        {"fprintf fp << 5\n", "invalid symbol in 'fprintf fp < symbol'\n" + position},
        {"fprintf a << END\nEND\n", stream + position},
        {"fprintf a << END\n$no is no code\nEND\n", stream + position},
        {"fprintf nowhere << END\n$no\nEND\n", "missing file stream after fprintf \n" + position},
        {head + "$no" + end, "variable 'no' in $no is undefined\n" + second},
        {head + "${no}" + end, "variable 'no' in ${no} is undefined\n" + second},
        {head + "${a" + end, "missing '}' in expression ${a\n" + second},
        {head + "$+" + end, "'$+' is invalid\n" + second},
        {head + "$p" + end, "invalid data type for 'p' in $p\n" + second +
                                "Note: the valid data types are arithmetic types and string\n"},
        {head + "$(m)" + end, "invalid data type for expr in $(expr)\n" + second},
        {head + "$(a" + end, "invalid expression in $(expr)\n" + second},
        {head + "text\n", "missing ending 'END' for 'fprintf fp << END' in file 'a.zy'\n"},
    };
    for (const auto &[source, message] : rows) {
        openSource(source);
        std::string errors = errorsOf([] { deleteNode(parseExpression(false)); });
        EXPECT_EQ("ERROR: " + message, errors.substr(0, message.size() + 7)) << source;
        closeSource();
        errorFlag = 0;
    }
}

}  // namespace

}  // namespace zy
