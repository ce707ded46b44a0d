// The declaration parser: what each declaration makes, and which ones are refused. Declarations are
// read from text in a program with an empty main block, or in a block inside it; what they made is
// compared in a compact form.

#include "decl/declaration.h"

#include <cstring>
#include <string>
#include <vector>

#include "decl/arrayInfo.h"
#include "decl/funcInfo.h"
#include "declarations.h"

namespace zy {

namespace {

std::string describe(const TypeInfo *info);

std::string formals(const FuncInfo *function) {
    std::string text = "(";
    for (const TypeInfo *formal = function->parameters; formal; formal = formal->next)
        text += (formal == function->parameters ? "" : ", ") + describe(formal);
    return text + (function->variadic ? " ...)" : ")");
}

// name: type, then what isn't as in a plain variable of the scope.
std::string describe(const TypeInfo *info) {
    constexpr const char *storages[] = {"",         " extern", " register", " static",
                                        " typedef", " local",  " global"};
    std::string text = info->name ? info->name->text : "";
    text += ": " + std::string(dataTypeText(info->dataType));
    text += storages[info->storage];
    if (info->kind != KIND_SIMPLE)
        text += " kind " + std::to_string(info->kind);
    if (info->qualifiers & QUALIFIER_CONST)
        text += " const";
    if (info->qualifiers & QUALIFIER_CONST_POINTER)
        text += " constpointer";
    if (info->flags & FLAG_RESTRICT)
        text += " restrict";
    if (info->kind < KIND_FUNCTION || !info->functionLink)
        return text;
    text += ' ' + formals(info->functionLink);
    text += " -> " + std::string(dataTypeText(info->functionLink->returnType));
    if (info->functionLink->returnKind)
        text += " kind " + std::to_string(info->functionLink->returnKind);
    if (info->pointerFunction)
        text += " of " + formals(info->pointerFunction) + " -> " +
                dataTypeText(info->pointerFunction->returnType);
    return text;
}

}  // namespace

class DeclarationTest : public DeclarationFixture {
protected:
    // The records of the innermost block after a text, or what was printed.
    std::string declared(const std::string &text) {
        std::string messages = read(text);
        if (!messages.empty())
            return messages;
        std::string result;
        for (const TypeInfo *info = currentBlock->symbols(); info; info = info->next)
            result += (result.empty() ? "" : "; ") + describe(info);
        return result;
    }
    void clear() {
        while (currentBlock->symbols()) {
            TypeInfo *symbol = currentBlock->symbols();
            if (symbol->name && symbol->name->symbol == symbol)
                symbol->name->symbol = nullptr;
            currentBlock->symbols() = symbol->next;
            releaseTypeInfo(symbol);
        }
        resetContexts();
    }

    struct Row {
        const char *text, *result;
    };
    void expectRows(const std::vector<Row> &rows) {
        for (const Row &row : rows) {
            EXPECT_EQ(declared(row.text), row.result) << row.text;
            clear();
        }
    }
};

const std::string COMBINATION = "ERROR: invalid type combination\n";

TEST_F(DeclarationTest, WordsOfNumberTypes) {
    expectRows({
        {"int x;", "x: int"},
        {"signed x;", "x: int"},
        {"signed int x;", "x: int"},
        {"short x;", "x: short"},
        {"short int x;", "x: short"},
        {"signed short x;", "x: short"},
        {"unsigned short int x;", "x: unsigned short"},
        {"unsigned x;", "x: unsigned int"},
        {"unsigned int x;", "x: unsigned int"},
        {"int unsigned x;", "x: unsigned int"},
        {"long x;", "x: int"},
        {"long int x;", "x: int"},
        {"signed long x;", "x: int"},
        {"unsigned long x;", "x: unsigned int"},
        {"long long x;", "x: long long int"},
        {"long int long x;", "x: long long int"},
        {"unsigned long long int x;", "x: unsigned long long int"},
        {"char x;", "x: char"},
        {"signed char x;", "x: char"},
        {"unsigned char x;", "x: unsigned char"},
        {"float x;", "x: float"},
        {"double x;", "x: double"},
        {"long double x;", "x: double"},
        {"float complex x;", "x: complex"},
        {"complex float x;", "x: complex"},
        {"double complex x;", "x: double complex"},
        {"complex long double x;", "x: double complex"},
        {"complex x;", "x: double complex"},
        {"float dual x;", "x: dual"},
        {"double dual x;", "x: double dual"},
        {"dual x;", "x: dual"},
        {"string_t x;", "x: string"},
        {"const int x;", "x: int const"},
        {"int const volatile x;", "x: int const"},
        {"inline virtual int x;", "x: int"},
    });
}

TEST_F(DeclarationTest, WithoutATypeWord) {
    expectRows({
        {"static x;", "x: int static"},
        {"extern x;", "x: int extern"},
        {"const x;", "x: int const"},
        {"volatile x;", "x: int"},
        {"register x;", "x: int register"},
        {"auto x;", "ERROR: missing type\n"},
        {"typedef x;", "ERROR: missing type\n"},
        {"inline x;", "ERROR: missing type\n"},
        {"const auto x;", "ERROR: missing type\n"},
    });
}

TEST_F(DeclarationTest, RefusedCombinations) {
    for (const char *words :
         {"int char",         "int int",        "signed unsigned",  "signed signed",
          "short short",      "short long",     "long long long",   "complex complex",
          "dual dual",        "complex dual",   "short float",      "short double",
          "short char",       "long char",      "long float",       "long long double",
          "double long long", "unsigned float", "signed double",    "unsigned string_t",
          "complex int",      "dual char",      "unsigned complex", "short dual",
          "static extern",    "static static",  "auto register",    "typedef extern",
          "struct struct",    "__ref __ref",    "array array",      "public int",
          "int public"}) {
        EXPECT_EQ(declared(std::string(words) + " x;"), COMBINATION) << words;
        clear();
    }
}

TEST_F(DeclarationTest, Declspec) {
    expectRows({
        {"__declspec(global) int global1;", ""},
        {"__declspec(local) int x;", "ERROR: top-level variable declared as local variable\n"},
        {"__declspec(zyarray) int x;",
         "ERROR: computational array type qualifier applied to a scalar variable\n"},
        {"array int x;",
         "ERROR: computational array type qualifier applied to a scalar variable\n"},
        {"static __declspec(local) int x;", COMBINATION.c_str()},
        {"__declspec(global) __declspec(global) int x;", COMBINATION.c_str()},
        {"__declspec(zyarray) __declspec(zyarray) int x;", COMBINATION.c_str()},
        {"__declspec(align) int x;", "ERROR: invalid argument for __declspec()\n"},
        {"__declspec(8) int x;", "ERROR: invalid argument for __declspec()\n"},
        {"__declspec int x;", "ERROR: missing '(' before 'int'\n"},
        {"__declspec(global int x;", "ERROR: missing ')' before 'int'\n"},
    });
}

TEST_F(DeclarationTest, Pointers) {
    expectRows({
        {"int *p;", "p: pointer to int"},
        {"int **p, a, ***q;", "p: pointer to a pointer to int; a: int; q: tripple pointer to int"},
        {"int ****p;", "ERROR: undefined pointer data type\n"},
        {"void *p;", "p: pointer to void"},
        {"FILE *p;", "p: pointer to file"},
        {"dual *p;", "p: pointer to dual"},
        {"complex *p;", "p: pointer to double complex"},
        {"const char *p;", "p: pointer to char const"},
        {"char *const p;", "p: pointer to char constpointer"},
        {"const char *const p;", "p: pointer to char const constpointer"},
        {"char *const *p;", "p: pointer to a pointer to char"},
        {"char *restrict p;", "p: pointer to char"},
        {"array int *p;", "p: int kind 8"},
        {"int (x);", "x: int"},
        {"int *(*p);", "p: pointer to a pointer to int"},
        {"void x;", COMBINATION.c_str()},
    });
}

TEST_F(DeclarationTest, PointersToFunctions) {
    expectRows({
        {"int (*p)();", "p: int kind 12 () -> int"},
        {"int (*p)(int, double *);", "p: int kind 12 (: int, : pointer to double) -> int"},
        {"int (**p)(int a);", "p: int kind 13 (a: int) -> int"},
        {"char *(***p)(void);", "p: pointer to char kind 14 (: void) -> pointer to char"},
        {"int (****p)();", "ERROR: undefined pointer data type\n"},
        {"int (*f(int a))(double);",
         "f: pointer to function kind 11 (a: int) -> pointer to function kind 12 of (: double) -> "
         "int"},
        {"int (*p);", "p: pointer to int"},
        {"int (p;", "ERROR: missing ')'\n"},
        {"int (*p;", "ERROR: missing ')'\n"},
        {"int (3);", "ERROR: maybe missing '*' before '3'\n"},
    });
}

TEST_F(DeclarationTest, Names) {
    expectRows({
        {"int;", "ERROR: expecting a variable name in declaration\n"},
        {"int 3;", "ERROR: expecting a variable name in declaration\n"},
        {"int this;", "ERROR: expecting a variable name in declaration\n"},
        {"int for;",
         "ERROR: 'for' is a keyword\nERROR: expecting a variable name in declaration\n"},
        {"int x y;", "ERROR: maybe missing ';' before 'y'\n"},
        {"int x for;", "ERROR: maybe missing ';' before 'for'\n"},
        {"int x 3;", "ERROR: missing ';' before '3'\n"},
        {"int x, ;", "ERROR: expecting a variable name in declaration\n"},
        {"int &x;", "ERROR: reference variable x is not initialized\n"},
        {"__ref int x;", "ERROR: reference variable x is not initialized\n"},
    });
}

TEST_F(DeclarationTest, Functions) {
    expectRows({
        {"int f();", "f: int kind 11 () -> int"},
        {"int f(int a, double b);", "f: int kind 11 (a: int, b: double) -> int"},
        {"void f(void);", "f: void kind 11 (: void) -> void"},
        {"char *f(const char *s, ...);",
         "f: pointer to char kind 11 (s: pointer to char const ...) -> pointer to char"},
        {"int f(int, ...), x;", "f: int kind 11 (: int ...) -> int; x: int"},
        {"int f(int &r);", "f: int kind 11 (r: int kind 2) -> int"},
        {"int f(int g(int));", "f: int kind 11 (g: int kind 12 (: int) -> int) -> int"},
        {"int f(int (*)(int), int (*h)());",
         "f: int kind 11 (: int kind 12 (: int) -> int, h: int kind 12 () -> int) -> int"},
        {"static f(register int a);", "f: int static kind 11 (a: int register) -> int"},
    });
}

TEST_F(DeclarationTest, RefusedParameterLists) {
    auto summary = [](const char *line, const char *cut) {
        return "ERROR: syntax error at or before line 0 in file ''\n  ==>: " + std::string(line) +
               "\n  BUG: " + cut + "<== ??? bug may be here\n";
    };
    struct {
        const char *text, *message, *cut;
    } rows[] = {
        {"int f(int a, int a);", "ERROR: identifier 'a' redeclared\n", "int f(int a, int a"},
        {"int f(static int a);", "ERROR: invalid type combination\n", "int f(static"},
        {"int f(int a, ..., int b);", "ERROR: ... not followed by ')'\n", "int f(int a, ...,"},
        {"int f(int a = 3);", "ERROR: maybe missing ';' before '='\n", "int f(int a ="},
        {"int f(int a;", "ERROR: missing ')' before ';'\n", "int f(int a;"},
        {"int f(unknown x);", "ERROR: missing ')' before 'x'\n", "int f(unknown x"},
    };
    for (auto &row : rows) {
        EXPECT_EQ(declared(row.text), row.message + summary(row.text, row.cut)) << row.text;
        clear();
    }
}

TEST_F(DeclarationTest, Typedefs) {
    expectRows({
        {"typedef int T; T x, *p;", "T: int typedef; x: int; p: pointer to int"},
        {"typedef const char *S; S s; const S t;",
         "S: pointer to char typedef const; s: pointer to char const; t: pointer to char const"},
        {"typedef int F(int); F f; F *p;",
         "F: int typedef kind 11 (: int) -> int; f: int kind 11 (: int) -> int; "
         "p: int kind 12 (: int) -> int"},
        {"typedef int (*P)(int); P p, g(double);",
         "P: int typedef kind 12 (: int) -> int; p: int kind 12 (: int) -> int; "
         "g: pointer to function kind 11 (: double) -> pointer to function kind 12 of (: int) -> "
         "int"},
        {"typedef int T; int T;", "ERROR: identifier 'T' redeclared\n"},
        {"typedef int T; unsigned T;", "ERROR: identifier 'T' redeclared\n"},
        {"int x; typedef int x;", "ERROR: identifier 'x' redeclared\n"},
        {"typedef int *P; array P x;",
         "ERROR: computational array type qualifier applied to a scalar variable\n"},
        {"typedef int (*P)(int); array P x;", "ERROR: invalid data type for computational array\n"},
    });
    read("typedef int T;");
    enterInner();
    EXPECT_EQ(declared("int T, x; double y;"), "T: int; x: int; y: double");
    EXPECT_EQ(declared("T x;"), "ERROR: missing type\n");
}

TEST_F(DeclarationTest, Redeclarations) {
    expectRows({
        {"int x; int x; extern int x;", "x: int"},
        {"extern int x; int x;", "x: int"},
        {"extern int x; static int x;", "x: int static"},
        {"int x; double x;", "ERROR: variable 'x' was defined as int, redefine it as double\n"},
        {"int x, x(int);", "ERROR: identifier 'x' redeclared\n"},
        {"int f(); int f;", "ERROR: identifier 'f' has already defined as function\n"},
        {"int M_PI;", "ERROR: identifier 'M_PI' redeclared\n"},
        {"int _warning;", "ERROR: identifier '_warning' redeclared\n"},
        {"int f(); int f(int a);", "f: int kind 11 (a: int) -> int"},
        {"int f(int a); int f();", "f: int kind 11 (a: int) -> int"},
        {"int f(int a); int f(double a);",
         "ERROR: the data type of arg 1 is changed from int to double\n"},
        {"int f(int a); int f(int a, int b);",
         "ERROR: the number of arg of function f() is changed\n"},
        {"int f(int a); int f(int a, ...);",
         "ERROR: variable num of args ... for function f() is changed\n"},
        {"int f(); double f();",
         "ERROR: function f() was defined as int, redefine it as double\n"
         "ERROR: the return data type of function f() is changed from int to double\n"},
        {"static int f(); int f();", "f: int static kind 11 () -> int"},
        {"extern int f(); static int f();", "ERROR: 'f()' as static function redeclared\n"},
        {"static int f(); extern int f();", "ERROR: 'f()' as static function redeclared\n"},
        {"int f(int &a); int f();",
         "ERROR: function with argument of reference type declared without argument\n"},
        {"int f(); int f(int &a);",
         "ERROR: function with argument of reference type had been declared without argument\n"
         "       or had been called before declaration of proper function prototype \n"},
        {"restrict int f(); int f();", "ERROR: 'restrict' of function 'f()' is changed\n"},
    });
}

TEST_F(DeclarationTest, RedeclaredFunctionsWithArraysAndPointersToFunctions) {
    const Row rows[] = {
        {"array double f()[3]; array double f()[4];",
         "ERROR: array dimensions do not match\n"
         "ERROR: the array type of function f() is changed\n"},
        {"array double f()[3]; double f();",
         "ERROR: the return data type of function f() is changed from computational array to "
         "simple variable\n"},
        {"int f(int a[]); int f(int *a);", ""},
        {"int f(int a[3]); int f(int a[4]);",
         "ERROR: upper limit for array extent of dimension 1 in arg 1 is changed\n"},
        {"int f(int, int a[3][3]); int f(int, int a[3][4]);",
         "ERROR: upper limit for array extent of dimension 2 in arg 2 is changed from 2 to 3 \n"},
        {"int f(int a[3][3]); int f(int a[3]);", "ERROR: rank of array is changed from 2 to 1 \n"},
        {"int f(int a[3]); int f(array int a[3]);",
         "ERROR: change C array to computational array\n"},
        {"int f(array int a[3]); int f(int a[3]);",
         "ERROR: change computational array to C array\n"},
        {"int f(array int a[0:3]); int f(array int a[1:3]);",
         "ERROR: lower limit for array extent of dimension 1 in arg 1 is changed from 0 to 1 \n"},
        {"int f(int g(int)); int f(int (*g)(int));", ""},
        {"int f(int (*g)(int)); int f(int (*g)(int *));",
         "ERROR: the data type of arg 1 of function g() is changed from int to pointer to int\n"},
        {"int (*f(int a))(int); int (*f(int a))(double);",
         "ERROR: the data type of arg 1 is changed from int to double\n"},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(read(row.text), row.result) << row.text;
        clear();
    }
}

// A function and a pointer that is to lead to it: where an argument is converted there is a
// warning.
TEST_F(DeclarationTest, ComparedPrototypes) {
    struct {
        const char *pointer, *function, *message;
    } rows[] = {
        {"int (*p)(int);", "int f(int);", ""},
        {"int (*p)();", "int f(int);", ""},
        {"int (*p)(double);", "int f(int);",
         "WARNING: the data type of arg 1 of function p() is changed from double to int\n"},
        {"int (*p)(int, int *);", "int f(int, char *);",
         "WARNING: the data type of arg 2 of function p() is changed from pointer to int to "
         "pointer "
         "to char\n"},
        {"int (*p)(void *);", "int f(int *);", ""},
        {"int (*p)(string_t);", "int f(char *);",
         "WARNING: the data type of arg 1 of function p() is changed from string to pointer to "
         "char\n"},
        {"int (*p)(int *);", "int f(int);",
         "ERROR: the data type of arg 1 of function p() is changed from pointer to int to int\n"},
        {"int (*p)(int);", "double f(int);",
         "ERROR: the return data type of function p() is changed from int to double\n"},
        {"int (*p)(int);", "int f(int, int);",
         "ERROR: the number of arg of function p() is changed\n"},
    };
    e_lang->warningLevel = 1;
    for (auto &row : rows) {
        ASSERT_EQ(read(std::string(row.pointer) + row.function), "") << row.pointer;
        TypeInfo *pointer = main.symbols();
        EXPECT_EQ(errorsOf([=] { comparePrototypes(pointer, pointer->next); }), row.message)
            << row.pointer << row.function;
        clear();
    }
}

TEST_F(DeclarationTest, OldStyleLists) {
    e_lang->warningLevel = 0;
    expectRows({
        {"int f(a, b) double b; int *a;; int x;",
         "f: int kind 11 (a: pointer to int, b: double) -> int; x: int"},
        {"int f(a, b) int a;;",
         "ERROR: unknown identifier 'b' in declaration of function f(),\n"
         "       change undeclared identifier 'b' to 'int b' in function f(),\n"
         "       or include a proper header file for typedefed data type 'b'\n"
         "ERROR: syntax error at or before line 0 in file ''\n"
         "  ==>: int f(a, b) int a;;\n  BUG: int f(a, b) int a;;<== ??? bug may be here\n"},
        {"int f(a) int a, c;;",
         "ERROR: parameter 'c' not in identifier list\n"
         "ERROR: syntax error at or before line 0 in file ''\n"
         "  ==>: int f(a) int a, c;;\n  BUG: int f(a) int a, c;;<== ??? bug may be here\n"},
    });
    e_lang->warningLevel = 2;
    EXPECT_EQ(read("int f(a) int a;;"), "WARNING: old style definition of function f()\n");
}

TEST_F(DeclarationTest, Blocks) {
    read("int x, y;");
    enterInner();
    expectRows({
        {"int x; double y;", "x: int; y: double"},
        {"int x; int x;", "ERROR: identifier 'x' redeclared\n"},
        {"static int x; __declspec(local) int y;", "x: int static; y: int local"},
        {"extern int x;", ""},
        {"extern double y;", "ERROR: variable 'y' was defined as int, redefine it as double\n"},
        {"__declspec(local) int g(int);", "g: int local kind 11 (: int) -> int"},
        {"int h(int);", ""},
    });
    TypeInfo *h = lookupName("h")->symbol;
    ASSERT_TRUE(h);
    EXPECT_EQ(h->level, FILE_LEVEL);
    EXPECT_EQ(describe(h), "h: int kind 11 (: int) -> int");
}

TEST_F(DeclarationTest, StorageAndIndices) {
    EXPECT_EQ(read("int x; extern int e; double y; typedef int T; static int s; "
                   "__declspec(global) int g1; __global int g2;"),
              "");
    TypeInfo *x = lookupName("x")->symbol, *y = lookupName("y")->symbol;
    EXPECT_EQ(x->index, 0);
    EXPECT_EQ(y->index, 2);
    EXPECT_EQ(main.symbolCount, 5);
    EXPECT_TRUE(x->storageCell && y->storageCell && lookupName("s")->symbol->storageCell);
    EXPECT_FALSE(lookupName("e")->symbol->storageCell || lookupName("T")->symbol->storageCell);
    TypeInfo *g1 = lookupName("g1")->symbol, *g2 = lookupName("g2")->symbol;
    EXPECT_EQ(systemSymbols, g2);
    EXPECT_EQ(g2->next, g1);
    EXPECT_EQ(g1->level, SYSTEM_LEVEL);
    EXPECT_NE(g1->index, g2->index);
    EXPECT_EQ(lookupSlot(SYSTEM_LEVEL, g2->index), g2->storageCell);
    EXPECT_EQ(read("__global int g1;"), "");
    EXPECT_EQ(lookupName("g1")->symbol, g1);
    enterInner();
    EXPECT_EQ(read("int a; static int b;"), "");
    EXPECT_FALSE(inner.symbols()->storageCell);
    EXPECT_TRUE(inner.symbols()->next->storageCell);
    EXPECT_EQ(inner.symbols()->next->index, 1);
}

TEST_F(DeclarationTest, Tags) {
    expectRows({
        {"struct s; struct s *p; struct s f(struct s);",
         "s:  typedef; p: pointer to class/struct/union; "
         "f: class/struct/union kind 11 (: class/struct/union) -> class/struct/union"},
        {"struct s *p;", "s:  typedef; p: pointer to class/struct/union"},
        {"struct s; s *p;", "s:  typedef; p: pointer to class/struct/union"},
        {"struct s; int s;", "_zy_s:  typedef; s: int"},
        {"int s; struct s; struct s *p;",
         "s: int; _zy_s:  typedef; p: pointer to class/struct/union"},
        {"typedef struct s s; s *p;",
         "_zy_s:  typedef; s: class/struct/union typedef; p: pointer to class/struct/union"},
        {"struct s; struct s x;", "ERROR: struct definition 's' not defined\n"},
        {"struct s x;", "ERROR: struct definition 's' not defined\n"},
        {"struct ;", "ERROR: undefined struct definition \n"},
        {"enum ;", "ERROR: undefined enum definition\n"},
        {"enum e x;", "ERROR: enum definition 'e' not defined\n"},
        {"struct s; union s *p;", "ERROR: struct/union tag 's' redeclared\n"},
        {"struct s; enum s;", "ERROR: struct/union tag 's' redeclared\n"},
        {"enum e; struct e;", "ERROR: enum tag 'e' redeclared\n"},
        {"struct int x;", COMBINATION.c_str()},
        {"unsigned struct s *p;", COMBINATION.c_str()},
        {"~x;", "ERROR: ~x\n"},
        {"struct s; int ~s();", "ERROR: destructor s::~s() with return type\n"},
    });
}

TEST_F(DeclarationTest, TypeNames) {
    struct {
        const char *text, *result, *behind;
    } rows[] = {
        {"int) x", ": int", ")"},
        {"const char *)", ": pointer to char const", ")"},
        {"unsigned long long **)", ": pointer to a pointer to unsigned long ", ")"},
        {"int (*)(double))", ": int kind 12 (: double) -> int", ")"},
        {"int(5)", ": int", "("},
        {"int x)", "x: int", ")"},
        {"double;", ": double", ";"},
    };
    for (auto &row : rows) {
        begin(row.text);
        TypeInfo *info = parseTypeName();
        ASSERT_TRUE(info) << row.text;
        EXPECT_EQ(describe(info), row.result);
        EXPECT_EQ(info->level, TYPE_ONLY_LEVEL);
        nextToken();
        EXPECT_EQ(tokenClass, TK_CHAR);
        EXPECT_EQ(tokenValue.character, row.behind[0]) << row.text;
        releaseTypeInfo(info);
    }
    EXPECT_EQ(errorsOf([&] {
                  begin("unsigned float)");
                  EXPECT_FALSE(parseTypeName());
              }),
              COMBINATION);
}

TEST_F(DeclarationTest, WhatBeginsADeclaration) {
    read("typedef int T; int x; struct s;");
    struct {
        const char *text;
        bool declaration, typeName;
    } rows[] = {{"; int", true, true},    {"; T", true, true},    {"; s", true, true},
                {"; static", true, true}, {"; x", false, false},  {"; 3", false, false},
                {"; ~s", false, true},    {"; ~x", false, false}, {"; if", false, false}};
    for (auto &row : rows) {
        begin(row.text);
        EXPECT_EQ(startsDeclaration(nullptr), row.declaration) << row.text;
        EXPECT_EQ(pushedBack, !row.declaration) << row.text;
        begin(row.text);
        EXPECT_EQ(startsTypeName(0), row.typeName) << row.text;
        EXPECT_EQ(pushedBack, !row.typeName) << row.text;
    }
}

}  // namespace zy
