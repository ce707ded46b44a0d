// The expression parser: texts and the trees they give, in prefix form with the names of the
// operators; messages; where an expression ends; and no node left behind, whatever the text.

#include "expr/parser.h"

#include <cstring>
#include <map>

#include "expr/context.h"
#include "expr/operators.h"
#include "expressionTrees.h"
#include "front/lexer.h"
#include "front/preprocessorState.h"
#include "stmt/parseStack.h"

namespace zy {

namespace {

const std::map<int, std::string> operatorNames = {
#define ZY_OPERATOR(name, code, ...) {code, #name},
#include "expr/operators.inc"
#undef ZY_OPERATOR
};

std::string treeText(const ExprNode *tree);

std::string leafText(const ExprNode *leaf) {
    const Payload &payload = leaf->payload;
    switch (leaf->type) {
        case DT_NAME:
            return payload.symbol->level == TYPE_ONLY_LEVEL
                       ? std::string("<") + dataTypeText(dataTypeOf(payload.symbol)) + ">"
                       : payload.symbol->name->text;
        case DT_CHAR: return std::string("'") + payload.c + "'";
        case DT_INT: return std::to_string(payload.i);
        case DT_ULLONG: return std::to_string(payload.ull) + "ull";
        case DT_DOUBLE: return std::to_string(payload.d).substr(0, 4);
        case DT_P_CHAR: return '"' + std::string(payload.text) + '"';
        default: return std::string("{") + dataTypeText(static_cast<int>(leaf->type)) + "}";
    }
}

std::string operatorText(const ExprNode *node) {
    std::string text = "(" + operatorNames.at(node->op);
    for (const ExprNode *operand : {node->left, node->right, node->third, node->fourth})
        if (operand)
            text += " " + treeText(operand);
    return text + ")";
}

std::string treeText(const ExprNode *tree) {
    if (!tree)
        return "none";
    if (tree->kind == NODE_OPERATOR)
        return operatorText(tree);
    if (tree->kind == NODE_VALUE)
        return leafText(tree);
    std::string text = "[";
    for (const ExprNode *cell = tree; cell; cell = cell->next)
        text += (cell == tree ? "" : " ") + treeText(cell->item);
    return text + "]";
}

struct Case {
    const char *text;
    const char *expected;
};

class Parser : public TreeTest {
protected:
    void SetUp() override {
        TreeTest::SetUp();
        for (const char *name : {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k"})
            declare(name, DT_INT);
        declare("p", DT_P_INT);
        declare("pp", DT_PP_INT);
        declare("x", DT_DOUBLE);
        declare("s", DT_P_CHAR);
        declare("fp", DT_P_FILE);
        bindName(variable("v", DT_INT, KIND_C_ARRAY, {5}));
        bindName(variable("grid", DT_INT, KIND_C_ARRAY, {2, 3, 4}));
        bindName(variable("rows", DT_P_INT, KIND_C_ARRAY, {3}));
        bindName(variable("m", DT_DOUBLE, KIND_ARRAY, {2, 2}));
        before = liveValueCount();
    }
    void TearDown() override {
        expectNoLeak("at the end");
        e_lang->commaEndsExpression = 0;
        for (TypeInfo *symbol : symbols)
            symbol->name->symbol = nullptr;
        TreeTest::TearDown();
    }

    static TypeInfo *bindName(TypeInfo *symbol) { return symbol->name->symbol = symbol; }
    TypeInfo *declare(const char *name, int type) { return bindName(variable(name, type)); }

    void expectNoLeak(const std::string &where) {
        releaseKeptTexts();
        EXPECT_EQ(before, liveValueCount()) << where;
        before = liveValueCount();
    }

    static void setLine(const std::string &text) {
        resetLexerState();
        strcpy(lineBuffer, text.c_str());
        lineLength = static_cast<int16_t>(text.size());
    }

    // The tree, and behind a bar what of the line is left.
    static std::string parseLine() {
        errorFlag = 0;
        ExprNode *tree = parseExpression(false);
        std::string text = treeText(tree);
        deleteNode(tree);
        nextToken();
        if (tokenClass == TK_CONSTANT)
            deleteNode(tokenValue.constant);
        else if (!endOfInput)
            text += tokenClass == TK_CHAR
                        ? std::string(" | ") + static_cast<char>(tokenValue.character)
                        : std::string(" | word");
        return text;
    }
    std::string treeOf(const std::string &text) {
        setLine(text);
        std::string result = parseLine();
        EXPECT_EQ(0, expressionDepth) << text;
        EXPECT_EQ(KC_OPERATOR, shiftLeftKeyword->keywordClass) << text;
        expectNoLeak(text);
        return result;
    }
    // The messages of a text that must be refused, or warned of.
    std::string refusalOf(const std::string &text) {
        return errorsOf([&] { treeOf(text); });
    }

    void expectTrees(std::initializer_list<Case> cases) {
        for (const Case &each : cases) {
            EXPECT_EQ(each.expected, treeOf(each.text)) << each.text;
            EXPECT_EQ(0, errorFlag) << each.text;
        }
    }
    void expectRefusals(std::initializer_list<Case> cases) {
        for (const Case &each : cases) {
            EXPECT_EQ(std::string("ERROR: ") + each.expected + "\n", refusalOf(each.text))
                << each.text;
            EXPECT_EQ(1, errorFlag) << each.text;
        }
    }

    int before = 0;
};

TEST_F(Parser, PrecedenceGroupsOperators) {
    expectTrees({
        {"a + b * c", "(ADD_INT a (MULTIPLY_INT b c))"},
        {"a * b + c", "(ADD_INT (MULTIPLY_INT a b) c)"},
        {"a << b + c", "(SHIFT_LEFT_INT a (ADD_INT b c))"},
        {"a < b << c", "(LESS_INT a (SHIFT_LEFT_INT b c))"},
        {"a == b < c", "(EQUAL_REAL a (LESS_INT b c))"},
        {"a & b == c", "(BIT_AND_INT a (EQUAL_REAL b c))"},
        {"a ^ b & c", "(BIT_XOR_INT a (BIT_AND_INT b c))"},
        {"a | b ^ c", "(BIT_OR_INT a (BIT_XOR_INT b c))"},
        {"a && b | c", "(AND a (BIT_OR_INT b c))"},
        {"a ^^ b || c", "(OR (XOR a b) c)"},
        {"a && b ^^ c", "(XOR (AND a b) c)"},
        {"a || b ^^ c && d", "(OR a (XOR b (AND c d)))"},
        {"a = b ? c : d", "(ASSIGN a (CONDITIONAL b c d))"},
        {"a, b = c, d", "(COMMA (COMMA a (ASSIGN b c)) d)"},
        {"(a + b) * c", "(MULTIPLY_INT (ADD_INT a b) c)"},
    });
}

TEST_F(Parser, AssociativityOfEqualPrecedence) {
    expectTrees({
        {"a - b - c", "(SUBTRACT_INT (SUBTRACT_INT a b) c)"},
        {"a / b * c % d", "(MODULO_INT (MULTIPLY_INT (DIVIDE_INT a b) c) d)"},
        {"a << b >> c", "(SHIFT_RIGHT_INT (SHIFT_LEFT_INT a b) c)"},
        {"a = b = c", "(ASSIGN a (ASSIGN b c))"},
        {"a = b += c", "(ASSIGN a (ASSIGN_ADD b c))"},
        {"a < b < c", "(LESS_INT (LESS_INT a b) c)"},
    });
}

TEST_F(Parser, PrefixAndPostfixOperators) {
    expectTrees({
        {"- - a", "(NEGATE_INT (NEGATE_INT a))"},
        {"! ! a", "(NOT (NOT a))"},
        {"+a", "a"},
        {"- + - a", "(NEGATE_INT (NEGATE_INT a))"},
        {"a + * p", "(ADD_INT a (INDIRECTION p))"},
        {"**pp", "(INDIRECTION (INDIRECTION pp))"},
        {"-*p", "(NEGATE_INT (INDIRECTION p))"},
        {"*&a", "(INDIRECTION (ADDRESS a))"},
        {"&*p", "(ADDRESS (INDIRECTION p))"},
        {"!-~a", "(NOT (NEGATE_INT (ONES_COMPLEMENT_INT a)))"},
        {"-a * b", "(MULTIPLY_INT (NEGATE_INT a) b)"},
        {"a - -b", "(SUBTRACT_INT a (NEGATE_INT b))"},
        {"*p++", "(INDIRECTION (POSTFIX_INCREMENT p))"},
        {"++*p", "(PREFIX_INCREMENT (INDIRECTION p))"},
        {"-a++", "(NEGATE_INT (POSTFIX_INCREMENT a))"},
        {"a++ + ++b", "(ADD_INT (POSTFIX_INCREMENT a) (PREFIX_INCREMENT b))"},
        {"a-- - --b", "(SUBTRACT_INT (POSTFIX_DECREMENT a) (PREFIX_DECREMENT b))"},
    });
}

TEST_F(Parser, ConditionalReadsOneAssignmentExpressionBehindItsColon) {
    expectTrees({
        {"a ? b : c = 1", "(CONDITIONAL a b (ASSIGN c 1))"},
        {"a ? b : c, d", "(COMMA (CONDITIONAL a b c) d)"},
        {"a ? b, c : d", "(CONDITIONAL a (COMMA b c) d)"},
        {"a ? b = 1 : c", "(CONDITIONAL a (ASSIGN b 1) c)"},
        {"a ? b : c ? d : e", "(CONDITIONAL a b (CONDITIONAL c d e))"},
        {"a ? b ? c : d : e", "(CONDITIONAL a (CONDITIONAL b c d) e)"},
        {"a || b ? c : d || e", "(CONDITIONAL (OR a b) c (OR d e))"},
        {"a = b ? c : d, e", "(COMMA (ASSIGN a (CONDITIONAL b c d)) e)"},
        {"(a ? b : c) : d", "(CONDITIONAL a b c) | :"},
    });
    expectRefusals({{"a ? b;", "missing ':' in ternary operation ?:"},
                    {"a ? b :;", "invalid operand for ternary operation ?:"}});
}

TEST_F(Parser, NineOperatorsCanWait) {
    std::string chain = "a = b = c = d = e = f = g = h = i = j";
    EXPECT_EQ(
        "(ASSIGN a (ASSIGN b (ASSIGN c (ASSIGN d (ASSIGN e (ASSIGN f (ASSIGN g (ASSIGN h "
        "(ASSIGN i j)))))))))",
        treeOf(chain));
    EXPECT_EQ("ERROR: expression stack overflow\n", refusalOf(chain + " = k"));
    EXPECT_EQ("", refusalOf("a = b = c = d = (e = f = g = h = i = j = k)"));
    EXPECT_EQ("", refusalOf("- - - - - - - - - a"));
    EXPECT_EQ("ERROR: expression stack overflow\n", refusalOf("- - - - - - - - - - a"));
    EXPECT_EQ("", refusalOf("a = b = c = d = e = f = g = h = i++"));
}

TEST_F(Parser, DeepNestingIsRefusedBeforeTheStackIsInDanger) {
    std::string open(5000 / 2, '(');
    EXPECT_EQ("ERROR: expression stack overflow\n", refusalOf(open + "a"));
    std::string deep(200, '('), close(200, ')');
    EXPECT_EQ("a", treeOf(deep + "a" + close));
    std::string branches;
    for (int n = 0; n < 400; n++)
        branches += "a?b:";
    EXPECT_EQ("ERROR: expression stack overflow\n", refusalOf(branches + "c"));
    std::string sum = "a";
    for (int n = 0; n < 2000; n++)
        sum += "+1";
    EXPECT_EQ("", refusalOf(sum));
}

TEST_F(Parser, ExpressionEndsAtWhatCannotContinueIt) {
    expectTrees({
        {"a; b", "a | ;"},
        {"a)", "a | )"},
        {"a b", "a | word"},
        {"a } b", "a | word"},
        {"a else b", "a | word"},
        {"; a", "none | ;"},
        {"", "none"},
    });
    e_lang->commaEndsExpression = 1;
    expectTrees({{"a, b", "a | ,"}, {"(a, b), c", "(COMMA a b) | ,"}, {", a", "none | ,"}});
}

TEST_F(Parser, Subscripts) {
    expectTrees({
        {"v[1]", "(SUBSCRIPT v [1])"},
        {"grid[1][2][3]", "(SUBSCRIPT grid [1 2 3])"},
        {"grid[1][2]", "(SUBSCRIPT_PART1 grid [1 2])"},
        {"grid[1]", "(SUBSCRIPT_PART2 grid [1])"},
        {"rows[1]", "(SUBSCRIPT rows [1])"},
        {"rows[1][2]", "(SUBSCRIPT_POINTER rows [1 2])"},
        {"m[1][2]", "(SUBSCRIPT m [1 2])"},
        {"p[1]", "(SUBSCRIPT p [1])"},
        {"pp[1][2]", "(SUBSCRIPT_POINTER pp [1 2])"},
        {"s[0] + 1", "(ADD_INT (SUBSCRIPT s [0]) 1)"},
        {"(p + 1)[2]", "(SUBSCRIPT (POINTER_ADD p 1) [2])"},
        {"*v", "(INDIRECTION v)"},
        {"v[a]++", "(POSTFIX_INCREMENT (SUBSCRIPT v [a]))"},
        {"&v[1]", "(ADDRESS (SUBSCRIPT v [1]))"},
        {"-v[1]", "(NEGATE_INT (SUBSCRIPT v [1]))"},
    });
    expectRefusals({
        {"a[1]", "invalid subscript for wrong data type"},
        {"v[1][2]", "number of argument is 2, need 1 argument"},
        {"m[1]", "number of argument is 1, need 2 arguments"},
        {"v[]", "argument 1 of the function is undefined or not a valid expression"},
        {"v[1", "missing ']'"},
    });
}

TEST_F(Parser, Calls) {
    TypeInfo *formal = variable("n", DT_DOUBLE);
    bindName(function("area", DT_DOUBLE, {formal}));
    bindName(function("any", DT_INT, {}));
    TypeInfo *pointer = function("handler", DT_P_FUNCTION, {});
    pointer->kind = KIND_P_FUNCTION;
    bindName(pointer);
    before = liveValueCount();
    expectTrees({
        {"area(1)", "(CALL area [1])"},
        {"area(a) + 1", "(ADD_DOUBLE (CALL area [a]) 1)"},
        {"area((a, b))", "(CALL area [(COMMA a b)])"},
        {"area(a ? b : c)", "(CALL area [(CONDITIONAL a b c)])"},
        {"any()", "(CALL any)"},
        {"any(1, \"text\", p)", "(CALL any [1 \"text\" p])"},
        {"handler(a)", "(CALL handler [a])"},
        {"(*handler)(a)", "(CALL handler [a])"},
        {"(handler)(a)", "(CALL handler [a])"},
    });
    expectRefusals({
        {"area()", "number of argument is 0, need 1 argument"},
        {"area(1, 2)", "number of argument is 2, need 1 argument"},
        {"area(,)", "argument 1 of the function is undefined or not a valid expression"},
        {"area(1,)", "argument 2 of the function is undefined or not a valid expression"},
        {"area(1", "missing ')'"},
    });
}

TEST_F(Parser, BuiltinFunctionsHaveArgumentsByPosition) {
    expectTrees({
        {"strcmp(s, \"b\") == 0", "(EQUAL_REAL (STRCMP s \"b\") 0)"},
        {"strncpy(s, s, 3)", "(STRNCPY s s 3)"},
        {"printf(\"%d\", a)", "(PRINTF [\"%d\" a])"},
        {"fprintf(fp, \"%d\", a)", "(FPRINTF fp [\"%d\" a])"},
        {"_getpid()", "(GETPID)"},
        {"sin(x)", "(SIN_DOUBLE x)"},
        {"max(1, 2, 3)", "(MAX_INT [1 2 3])"},
        {"_iskey(\"while\")", "1"},
        {"_iskey(\"whale\")", "0"},
        {"strlen(s) + a", "(ADD_UINT (STRLEN s) a)"},
    });
    expectRefusals({
        {"strcmp(s)", "number of argument is 1, need 2 arguments"},
        {"strlen()", "number of argument is 0, need 1 argument"},
        {"printf()", "number of argument is 0, need more arguments"},
        {"sqrt(1, 2, 3)", "number of arguments is 3, need 1 or 2 arguments"},
        {"_getpid", "missing '('"},
        {"_getpid(1)", "missing ')' before '1'"},
        {"_puts 1", "missing '(' when function is called"},
        {"a sin(x)", "multiple operands together, maybe missing ';' in the previous statement"},
    });
}

TEST_F(Parser, StreamFormsSeparateArgumentsWithShifts) {
    expectTrees({
        {"printf << a << b", "(PRINTF [a b])"},
        {"printf << a << b;", "(PRINTF [a b]) | ;"},
        {"printf << (a << b) << v[a << 1]",
         "(PRINTF [(SHIFT_LEFT_INT a b) (SUBSCRIPT v [(SHIFT_LEFT_INT a 1)])])"},
        {"printf << a + b, c", "(COMMA (PRINTF [(ADD_INT a b)]) c)"},
        {"fprintf << a", "(FPRINTF {pointer to file} [a])"},
        {"scanf >> a >> v", "(SCANF [(ADDRESS a) v])"},
        {"_printf << a << \"\\n\"", "(PRINTF [a \"\n\"])"},
    });
    expectRefusals({
        {"scanf >> 5", "argument 1 of cin >> is not a valid lvalue"},
        {"printf << ;", "argument 1 of the function is undefined or not a valid expression"},
    });
    declare("printf", DT_INT);
    expectTrees({{"printf << 2", "(SHIFT_LEFT_INT printf 2)"}});
}

TEST_F(Parser, UnknownNames) {
    EXPECT_EQ("", refusalOf("nothing + 1"));  // the statement shows the place
    EXPECT_EQ(1, errorFlag);
    setLine("nothing");
    EXPECT_EQ("none | word", parseLine());
}

TEST_F(Parser, CallOfAnUnknownNameDeclaresAFunction) {
    StmtNode block{};
    block.kind = STMT_BLOCK;
    block.level = FILE_LEVEL;
    globalBlock = &block;
    setLine("unheard(1, s)");
    EXPECT_EQ("(CALL unheard [1 s])", parseLine());
    EXPECT_EQ(0, errorFlag);
    TypeInfo *implicit = lookupName("unheard")->symbol;
    EXPECT_EQ(implicit, block.symbols());
    EXPECT_EQ(1, block.symbolCount);
    EXPECT_EQ(KIND_FUNCTION, implicit->kind);
    EXPECT_EQ(1, implicit->used);
    setLine("unheard() + unheard(x, x)");
    EXPECT_EQ("(ADD_INT (CALL unheard) (CALL unheard [x x]))", parseLine());
    EXPECT_EQ(1, block.symbolCount);
    globalBlock = nullptr;
    implicit->name->symbol = nullptr;
    releaseTypeInfo(implicit);
}

TEST_F(Parser, Members) {
    TypeInfo *tag = declare("point", DT_TAG), *member = variable("count", DT_INT);
    tag->storage = STORAGE_TYPEDEF;
    StructInfo *info = newStructInfo(tag);
    info->size = 16;
    info->members = variable("first", DT_DOUBLE);
    info->members->next = member;
    member->next = variable("open", DT_P_INT);
    tag->structLink = info;
    TypeInfo *object = declare("o", DT_STRUCT), *pointer = declare("op", DT_P_STRUCT);
    object->structLink = pointer->structLink = info;
    before = liveValueCount();
    expectTrees({
        {"o.count + 1", "(ADD_INT (MEMBER o 1) 1)"},
        {"op->first", "(ARROW op 0)"},
        {"(*op).count", "(MEMBER (INDIRECTION op) 1)"},
        {"-o.count", "(NEGATE_INT (MEMBER o 1))"},
        {"o.open[a]", "(SUBSCRIPT (MEMBER o 2) [a])"},
        {"&op->count", "(ADDRESS (ARROW op 1))"},
        {"point::count", "(SCOPE point 1)"},
        {"o.count++", "(POSTFIX_INCREMENT (MEMBER o 1))"},
        {"sizeof(o)", "16ull"},
    });
    expectRefusals({
        {"a.count", "left operand of '.' is not struct/class/union object"},
        {"o->count", "left operand of '->' is not pointer to struct/class/union"},
        {"a::count", "left operand of '::' is not struct/class type name"},
        {"o.missing", "struct/class/union member 'missing' undefined"},
        {"o.(count)", "'(' following . or -> operator"},
        {"o.-count", "multiple operators together "},
    });
    object->structLink = pointer->structLink = tag->structLink = nullptr;
    info->members = nullptr;
    before -= 1;
    deleteNode(info);
}

TEST_F(Parser, NamesOfFileScope) {
    expectTrees({{"::a + 1", "(ADD_INT a 1)"}});
    expectRefusals({
        {"::5", "misplaced \"::\", identifier expected"},
        {"::nowhere", "nowhere is not defined"},
    });
}

TEST_F(Parser, NamedConstantsAreCopies) {
    expectTrees({{"_INT_MAX", "2147483647"}, {"NULL == p", "(EQUAL_POINTER {NULL pointer} p)"}});
}

TEST_F(Parser, FunctionalConversions) {
    expectTrees({
        {"int(x)", "(TO_INT x)"},
        {"double(a) * 2", "(MULTIPLY_DOUBLE (TO_DOUBLE a) 2)"},
        {"unsigned(a)", "(TO_UINT a)"},
        {"(int(x) + 1)", "(ADD_INT (TO_INT x) 1)"},
        {"complex(1, 2)", "(TO_COMPLEX 1 2)"},
    });
    expectRefusals({
        {"int x", "missing '(' in casting operation"},
        {"int (x)(a)", "missing '(' in casting operation"},
        {"void(x)", "unsupported constructor void()"},
        {"struct(x)", "unsupported constructor struct()"},
    });
    TypeInfo *type = declare("number", DT_LLONG);
    type->storage = STORAGE_TYPEDEF;
    expectTrees({{"number(a)", "(CAST <long long int> a)"}});
    expectRefusals(
        {{"number", "missing '(' in casting operation or use a typedef name as operator "}});
    TypeInfo *tag = declare("box", DT_TAG);
    tag->storage = STORAGE_TYPEDEF;
    EXPECT_EQ(
        "ERROR: unsupported constructor box()\n"
        "       add function prototype 'return_type box(arg_list)'\n",
        refusalOf("box(a)"));
}

TEST_F(Parser, SizeIsAConstantWhereItIsKnown) {
    expectTrees({
        {"sizeof a", "4ull"},
        {"sizeof(a)", "4ull"},
        {"sizeof a + 1", "(ADD_ULLONG 4ull 1)"},
        {"sizeof(x) * 2", "(MULTIPLY_ULLONG 8ull 2)"},
        {"sizeof v", "20ull"},
        {"sizeof(grid[1])", "48ull"},
        {"sizeof(grid[1][2][3])", "4ull"},
        {"sizeof(\"abc\")", "4ull"},
        {"sizeof(a + x)", "8ull"},
        {"sizeof(int(x))", "4ull"},
        {"sizeof(p)", "8ull"},
        {"sizeof(m)", "32ull"},
    });
    bindName(variable("late", DT_INT, KIND_C_ARRAY, {5}, SHAPE_DEFERRED));
    before = liveValueCount();
    expectTrees({{"sizeof(late)", "(SIZEOF late)"}});
    expectRefusals({
        {"sizeof *p", "missing '(' and ')' in sizeof(expr) "},
        {"sizeof;",
         "the argument of sizeof() is not a declaration identifier or valid ZY expression"},
    });
}

TEST_F(Parser, Casts) {
    expectTrees({
        {"(int)x", "(CAST <int> x)"},
        {"(int)x * 2", "(MULTIPLY_INT (CAST <int> x) 2)"},
        {"(int)*p", "(CAST <int> (INDIRECTION p))"},
        {"-(double)a", "(NEGATE_DOUBLE (CAST <double> a))"},
        {"(double)-a", "(CAST <double> (NEGATE_INT a))"},
        {"(char *)p + 1", "(POINTER_ADD (CAST <pointer to char> p) 1)"},
        {"(unsigned long long)a", "(CAST <unsigned long long int> a)"},
        {"(int)x++", "(CAST <int> (POSTFIX_INCREMENT x))"},
        {"*(double *)p", "(INDIRECTION (CAST <pointer to double> p))"},
        {"(int (*)(int))NULL", "(CAST <pointer to function> {NULL pointer})"},
        {"(int)(double)a", "(CAST <int> (CAST <double> a))"},
    });
    expectRefusals({
        {"(int y)x", "with unnecessary identifier 'y' in casting operator"},
        {"(int x", "with unnecessary identifier 'x' in casting operator"},
        {"(int", "missing ')'"},
        {"(int (int))x", "cannot cast to function type "},
    });
    TypeInfo *type = declare("number", DT_LLONG);
    type->storage = STORAGE_TYPEDEF;
    expectTrees({{"(number)x + 1", "(ADD_LLONG (CAST <long long int> x) 1)"},
                 {"(number(x))", "(CAST <long long int> x)"},
                 {"(number *)p", "(CAST <pointer to long long int> p)"},
                 {"sizeof(number)", "8ull"}});
    StructInfo info{};
    TypeInfo *record = declare("record", DT_STRUCT), *tag = variable("item", DT_TAG);
    record->storage = STORAGE_TYPEDEF;
    record->structLink = &info;
    info.tag = tag;
    info.size = 12;
    expectRefusals({{"(record)a", "cannot cast to struct 'item' "}});
    expectTrees({{"sizeof(record)", "12ull"}, {"sizeof(record *)", "8ull"}});
    info.size = 0;
    expectTrees({{"sizeof(record)", "(SIZEOF {})"}});
    record->structLink = nullptr;
}

TEST_F(Parser, SizeAndElementTypeOfTypes) {
    expectTrees({
        {"sizeof(int)", "4ull"},
        {"sizeof(char *) + 1", "(ADD_ULLONG 8ull 1)"},
        {"sizeof(double complex)", "16ull"},
        {"sizeof(int (*)(int))", "8ull"},
        {"sizeof(unsigned long)", "4ull"},
        {"elementtype(double)", "9"},
        {"elementtype(v)", "(ELEMENTTYPE v)"},
    });
    expectRefusals({
        {"sizeof(int y)", "with unnecessary identifier 'y' in declarator of sizeof()"},
        {"elementtype(int y)", "with unnecessary identifier 'y' in declarator of elementtype()"},
        {"elementtype(a)", "invalid argument for operator elementtype()"},
        {"elementtype(5)", "invalid argument for operator elementtype()"},
    });
}

TEST_F(Parser, New) {
    expectTrees({
        {"new int", "(NEW <int>)"},
        {"new int()", "(NEW <int>)"},
        {"new int(5)", "(NEW (CAST <int> 5))"},
        {"new int(a, b)", "(NEW (CAST <int> (COMMA a b)))"},
        {"new unsigned int(a)", "(NEW (CAST <unsigned int> a))"},
        {"new char *", "(NEW <pointer to char>)"},
        {"p = new int(a) + 1", "(ASSIGN p (POINTER_ADD (NEW (CAST <int> a)) 1))"},
    });
    expectRefusals({
        {"new 5", "missing type name after operator new"},
        {"new int y", "with unnecessary identifier 'y' in operator new"},
        {"new int (int)", "cannot allocate new function type "},
        {"new int, int y", "additional variables are defined after operator 'new'"},
    });
}

TEST_F(Parser, TypesOfArgumentsOfBuiltinFunctions) {
    e_lang->warningLevel = 0;
    expectTrees({
        {"fprintf(NULL, \"\")", "(FPRINTF {NULL pointer} [\"\"])"},
        {"memcpy(v, m, 3)", "(MEMCPY v m 3)"},
        {"scanf(s, p, v, s)", "(SCANF [s p v s])"},
        {"shape(m)", "(SHAPE m)"},
        {"shape(m, 1)", "(SHAPE_EXTENT m 1)"},
        {"strtok(NULL, s)", "(STRTOK {NULL pointer} s)"},
        {"time(NULL)", "(TIME {NULL pointer})"},
        {"string_t(x)", "(TO_STRING x)"},
    });
    expectRefusals({
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
    });
    e_lang->warningLevel = 1;
    EXPECT_EQ("WARNING: function gets() is dangerous and should not be used, use fgets()\n",
              refusalOf("gets(s)"));
}

TEST_F(Parser, RefusedTexts) {
    expectRefusals({
        {"a * / b", "multiple operators together "},
        {"a + , b", "multiple operators together "},
        {"a 5", "multiple operands together, maybe missing ';' in the previous statement"},
        {"a (b)", "multiple operands together, maybe missing ';' in the previous statement"},
        {"a ! b", "multiple operands together, maybe missing ';' in the previous statement"},
        {"()", "no expression following ("},
        {"(a", "missing ')'"},
        {"a +", "invalid operands for addition operator +"},
        {"a =", "invalid rvalue of assignment operation"},
        {"5 = a", "invalid lvalue of assignment operation"},
        {"a + !", "invalid operand for not operator !"},
        {"`ls`", "undefined operation"},
    });
    EXPECT_EQ("ERROR: multiple operators together \nERROR: syntax error before )\n",
              refusalOf("((a * / b))"));
    EXPECT_EQ("ERROR: multiple operators together \nERROR: syntax error before )\n",
              refusalOf("(a * / b)"));
}

TEST_F(Parser, NamesMeanNothingInSkippedConditions) {
    conditionIdle = true;
    EXPECT_EQ("(OR 0 a)", treeOf("nothing || a"));
    EXPECT_EQ("(OR 0 0)", treeOf("no(1, (2)) || 0"));
    conditionIdle = false;
    EXPECT_EQ(0, errorFlag);
    EXPECT_EQ(nullptr, lookupName("no")->symbol);
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
    resetContexts();
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
            treeOf(text);
        }
    });
}

// ---- Here-documents -----------------------------------------------------------------------------

class HereDocument : public Parser {
protected:
    void readFile(const std::string &source) {
        resetLexerState();
        FILE *file = tmpfile();
        fwrite(source.data(), 1, source.size(), file);
        rewind(file);
        sourceFiles[0] = file;
        sourceNames[0] = "a.zy";
        sourceDepth = 0;
        fileMode = true;
        readSourceLine();
    }
    std::string treeOfFile(const std::string &source) {
        readFile(source);
        std::string text = parseLine();
        if (sourceDepth == 0 && sourceFiles[0])
            fclose(sourceFiles[0]);
        resetLexerState();
        expectNoLeak(source);
        return text;
    }
    std::string refusalOfFile(const std::string &source) {
        return errorsOf([&] { treeOfFile(source); });
    }
};

TEST_F(HereDocument, TextBecomesAFormatWithItsExpressions) {
    EXPECT_EQ("(FPRINTF fp [\"one\n100%%\n#if $ $x\n\"]) | ;",
              treeOfFile("fprintf fp << END\none\n100%\n#if $ \\$x\nEND\nrest\n"));
    EXPECT_EQ("(FPRINTF fp [\"a=%d ${a} %s %.4lf %d\n\" a s x (ADD_INT a (MULTIPLY_INT b 2))]) | ;",
              treeOfFile("fprintf fp << END;\na=$a \\${a} ${s} $x $(a + (b*2))\nEND\n"));
    EXPECT_EQ("(FPRINTF fp [\"$a %%\n\"]) | ;", treeOfFile("fprintf fp << \"END\"\n$a %\nEND\n"));
    EXPECT_EQ("(FPRINTF fp [\"%p\n\" p]) | ;", treeOfFile("fprintf fp << END\n$(p)\nEND\n"));
}

TEST_F(HereDocument, Refusals) {
    const std::string position = "       at line 1 in file 'a.zy'\n";
    const std::string second = "       at line 2 in file 'a.zy'\n";
    auto inText = [&](const std::string &text) {
        return refusalOfFile("fprintf fp << END\n" + text + "\nEND\n");
    };
    EXPECT_EQ("ERROR: missing << \n" + position, refusalOfFile("fprintf fp + END\nEND\n"));
    EXPECT_EQ("ERROR: invalid symbol in 'fprintf fp < symbol'\n" + position,
              refusalOfFile("fprintf fp << 5\n"));
    EXPECT_EQ("ERROR: the first argument for fprintf() must be pointer to file\n" + position,
              refusalOfFile("fprintf a << END\nEND\n"));
    EXPECT_EQ("ERROR: the first argument for fprintf() must be pointer to file\n" + position,
              refusalOfFile("fprintf a << END\n$no is no code\nEND\n"));
    EXPECT_EQ("ERROR: missing file stream after fprintf \n" + position,
              refusalOfFile("fprintf nowhere << END\n$no is no code\nEND\n"));
    EXPECT_EQ("ERROR: variable 'no' in $no is undefined\n" + second, inText("$no"));
    EXPECT_EQ("ERROR: variable 'no' in ${no} is undefined\n" + second, inText("${no}"));
    EXPECT_EQ("ERROR: missing '}' in expression ${a\n" + second, inText("${a"));
    EXPECT_EQ("ERROR: '$+' is invalid\n" + second, inText("$+"));
    EXPECT_EQ("ERROR: invalid data type for 'p' in $p\n" + second +
                  "Note: the valid data types are arithmetic types and string\n",
              inText("$p"));
    EXPECT_EQ("ERROR: invalid data type for expr in $(expr)\n" + second, inText("$(m)"));
    EXPECT_EQ("ERROR: invalid expression in $(expr)\n" + second, inText("$(a"));
    std::string missing = refusalOfFile("fprintf fp << END\ntext\n");
    EXPECT_EQ(0u,
              missing.find("ERROR: missing ending 'END' for 'fprintf fp << END' in file 'a.zy'\n"))
        << missing;
}

}  // namespace

}  // namespace zy
