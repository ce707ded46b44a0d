// The lexer: lines, tokens, constants, look ahead. Source comes from a temporary file or from
// lines in memory, and the tokens are compared as text.

#include "front/lexer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "expr/scope.h"
#include "expr/value.h"
#include "instance.h"

namespace zy {

namespace {

const std::string POSITION = "       at line 1 in file 'a.zy'\n";
const std::string WARNING_POSITION = "         at line 1 in file 'a.zy'\n";

std::string number(const char *format, auto value) {
    char text[64];
    snprintf(text, sizeof text, format, value);
    return text;
}

std::string constantText(const Value *value) {
    const Payload &payload = value->payload;
    switch (value->type) {
        case DT_CHAR: return number("char %d", payload.c);
        case DT_USHORT: return number("ushort %d", payload.us);
        case DT_INT: return number("int %d", payload.i);
        case DT_UINT: return number("uint %u", payload.u);
        case DT_LLONG: return number("llong %lld", payload.ll);
        case DT_ULLONG: return number("ullong %llu", payload.ull);
        case DT_FLOAT: return number("float %a", static_cast<double>(payload.f));
        case DT_DOUBLE: return number("double %a", payload.d);
        case DT_STRING: return '"' + std::string(payload.text, value->count - 1) + '"';
        case DT_P_USHORT: {
            std::string text = "wide";
            for (uint32_t i = 0; i < value->count; i++)
                text += number(" %x", static_cast<uint16_t *>(payload.p)[i]);
            return text;
        }
        default: return number("type %u", value->type);
    }
}

// The current token; a constant is released.
std::string takeToken() {
    switch (tokenClass) {
        case TK_KEYWORD: return '<' + std::string(currentKeyword.name) + '>';
        case TK_IDENTIFIER: return tokenValue.name->text;
        case TK_CHAR: return std::string(1, static_cast<char>(tokenValue.character));
        case TK_CONSTANT: break;
    }
    std::string text = constantText(tokenValue.constant);
    deleteValue(tokenValue.constant);
    return text;
}

std::string next() {
    nextToken();
    return takeToken();
}

using Tokens = std::vector<std::string>;

class LexerTest : public InstanceTest {
protected:
    void SetUp() override {
        InstanceTest::SetUp();
        builtinValues = liveValueCount();
    }

    static void openFile(const std::string &source) {
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

    static void typeLine(const char *text) {
        resetLexerState();
        strcpy(lineBuffer, text);
        lineLength = static_cast<int16_t>(strlen(text));
    }

    // All tokens up to the end of input.
    static Tokens tokens() {
        Tokens found;
        for (nextToken(); !endOfInput; nextToken())
            found.push_back(takeToken());
        return found;
    }

    static Tokens tokensOf(const std::string &source) {
        openFile(source);
        Tokens found = tokens();
        closeFiles();
        return found;
    }

    // The first token, and what was printed about it.
    static std::string firstOf(const std::string &source, std::string &errors) {
        std::string token;
        openFile(source);
        errors = errorsOf([&] { token = next(); });
        closeFiles();
        return token;
    }

    static void closeFiles() {
        for (FILE *&file : sourceFiles)
            if (file) {
                fclose(file);
                file = nullptr;
            }
    }

    void TearDown() override {
        closeFiles();
        EXPECT_EQ(liveValueCount(), builtinValues) << "a constant of the lexer has leaked";
        InstanceTest::TearDown();
    }

    int builtinValues = 0;
};

}  // namespace

// ---- Numbers ----------------------------------------------------------------------------------

TEST_F(LexerTest, EveryFormOfANumberHasItsTypeAndExactValue) {
    const double inf = std::numeric_limits<double>::infinity();
    auto d = [](double value) { return number("double %a", value); };
    auto f = [](float value) { return number("float %a", static_cast<double>(value)); };
    const struct {
        const char *source;
        std::string token;
    } rows[] = {{"1.5f", f(1.5f)},
                {"0.1F", f(0.1f)},
                {"1e39f", f(std::numeric_limits<float>::infinity())},
                {"1.5d", d(1.5)},
                {"2.5D", d(2.5)},
                {"1.5l", d(1.5)},
                {"1e2L", d(100)},
                {"1.5", d(1.5)},
                {"7f", f(7)},
                {"7F", f(7)},
                {"7d", d(7)},
                {"7D", d(7)},
                {"017f", f(15)},
                {"99999999999999999999F", f(99999999999999999999.0f)},
                {"1ull", "ullong 1"},
                {"1LLu", "ullong 1"},
                {"1uLl", "ullong 1"},
                {"1ul", "uint 1"},
                {"4294967296LU", "ullong 4294967296"},
                {"1ll", "llong 1"},
                {"9223372036854775807LL", "llong 9223372036854775807"},
                {"9223372036854775808ll", "llong -9223372036854775808"},
                {"2147483647l", "int 2147483647"},
                {"2147483648L", "llong 2147483648"},
                {"4294967295u", "uint 4294967295"},
                {"4294967296U", "ullong 4294967296"},
                {"0x10", "uint 16"},
                {"0XfFfFfFfF", "uint 4294967295"},
                {"0x100000000", "ullong 4294967296"},
                {"0b101", "uint 5"},
                {"0B1", "uint 1"},
                {"2147483648", "uint 2147483648"},
                {"020000000000", "uint 2147483648"},
                {"4294967296", "ullong 4294967296"},
                {"18446744073709551615", "ullong 18446744073709551615"},
                {"18446744073709551616", "ullong 0"},
                {"16", "int 16"},
                {"2147483647", "int 2147483647"},
                {"017", "int 15"},
                {"0", "int 0"},
                {"0.1", d(0.1)},
                {"1e23", d(1e23)},
                {"9007199254740993.0", d(9007199254740992.0)},
                {"123456789012345678901234567890.5", d(123456789012345678901234567890.5)},
                {"0.3e-5", d(0.3e-5)},
                {".5", d(.5)},
                {"5.", d(5)},
                {"1.e+2", d(100)},
                {"010.5", d(10.5)},
                {"1e400", d(inf)},
                {"1e-400", d(0)},
                {"0e400", d(0)},
                {"1e99999999999999999999", d(inf)},
                {"1e-99999999999999999999", d(0)},
                {"4.9406564584124654e-324", d(4.9406564584124654e-324)},
                {"2.2250738585072011e-308", d(2.2250738585072011e-308)},
                {"1.7976931348623159e308", d(inf)},
                {"0x1.8p3", d(12)},
                {"0x1p-2", d(.25)},
                {"0x.8p1", d(1)},
                {"0x1.921fb54442d18p+1", d(0x1.921fb54442d18p+1)},
                {"0x1.00000000000008000001p0", d(0x1.0000000000001p0)},
                {"0x1p1024", d(inf)},
                {"0x1p-1080", d(0)},
                {"0x1p-1074", d(0x1p-1074)},
                {"0x1p1f", f(2)},
                {"0b11.5", d(3.5)},
                {"0b1e2", d(100)}};
    for (const auto &row : rows) {
        std::string errors;
        EXPECT_EQ(firstOf(row.source, errors), row.token) << row.source;
        EXPECT_EQ(errors, "") << row.source;
    }
    EXPECT_EQ(tokensOf(std::string(400, '9') + " 0." + std::string(400, '0') + "1 " + "0." +
                       std::string(300, '0') + "1"),
              (Tokens{"ullong 18446744073709551615", d(0), d(1e-301)}))
        << "long constants";
}

TEST_F(LexerTest, AFloatingConstantIsFloatOnceTheSwitchIsOn) {
    openFile("1.5 2 1.5d 0x1p1");
    floatConstant = 1;
    EXPECT_EQ(tokens(), (Tokens{"float 0x1.8p+0", "int 2", "double 0x1.8p+0", "float 0x1p+1"}));
}

TEST_F(LexerTest, ABadNumberIsReportedAndScannedToItsEnd) {
    const struct {
        const char *source;
        std::string token, error;
    } rows[] = {
        {"0x1.8;", "double 0x1.8p+0", "a hexadecimal floating constant requires an exponent"},
        {"0x1p+;", "double 0x1p+0",
         "the exponent of a hexadecimal floating constant has no decimal digit"},
        {"0b12;", "uint 4", "badly formed binary or octal integer"},
        {"08;", "int 8", "badly formed binary or octal integer"},
        {"1e;", "double 0x1p+0", "badly formed floating-point constant"},
        {"1.5E-;", "double 0x1.8p+0", "badly formed floating-point constant"},
    };
    for (const auto &row : rows) {
        errorFlag = 0;
        std::string errors;
        openFile(row.source);
        EXPECT_EQ(errorsOf([&] { EXPECT_EQ(next(), row.token) << row.source; }),
                  "ERROR: " + row.error + '\n' + POSITION);
        EXPECT_EQ(errorFlag, 1) << row.source;
        EXPECT_EQ(next(), ";") << row.source;
        closeFiles();
    }
}

// ---- Characters and strings -------------------------------------------------------------------

TEST_F(LexerTest, CharacterConstants) {
    EXPECT_EQ(tokensOf(R"('a' '?' '\\' '\'' '\"' '\?' '\a' '\b' '\f' '\n' '\r' '\t' '\v')"),
              (Tokens{"char 97", "char 63", "char 92", "char 39", "char 34", "char 63", "char 7",
                      "char 8", "char 12", "char 10", "char 13", "char 9", "char 11"}));
    EXPECT_EQ(tokensOf(R"('\x41' '\x12341' '\0' '\101' '\400' '\377' L'a' L'\x20ac')"),
              (Tokens{"char 65", "char 65", "char 0", "char 65", "char 0", "char -1", "ushort 97",
                      "ushort 8364"}));
    EXPECT_EQ(tokensOf(R"('??!' '??'' '??(' '??)' '??-' '??/n' '??<' '??=' '??>')"),
              (Tokens{"char 124", "char 94", "char 91", "char 93", "char 126", "char 10",
                      "char 123", "char 35", "char 125"}));
    EXPECT_EQ(errorFlag, 0);
}

TEST_F(LexerTest, BadCharacterConstants) {
    const std::string missing = "ERROR: missing '''\n" + POSITION;
    const std::string octal = "ERROR: badly formed octal numeric escape character\n" + POSITION;
    auto warning = [](const char *text) {
        return "WARNING: " + std::string(text) + "\n" + WARNING_POSITION;
    };
    const struct {
        const char *source, *token;
        std::string errors;
        int flag;
    } rows[] = {{"'ab'", "char 97", missing, 1},
                {"'", "char 0", missing, 1},
                {"'\\", "char 92", missing, 1},
                {R"('\18')", "char 1", octal, 1},
                {R"('\1a')", "char 1", octal + missing, 1},
                {R"('\8')", "char 56", warning(R"(dubious escape '\8')"), 0},
                {R"('\q')", "char 113", warning(R"(dubious escape '\q')"), 0},
                {R"('??x')", "char 63", warning(R"(too many characters'??x')"), 0},
                {R"('??)", "char 63", missing, 1}};
    for (const auto &row : rows) {
        errorFlag = 0;
        std::string errors;
        EXPECT_EQ(firstOf(row.source, errors), row.token) << row.source;
        EXPECT_EQ(errors, row.errors) << row.source;
        EXPECT_EQ(errorFlag, row.flag) << row.source;
    }
}

TEST_F(LexerTest, Strings) {
    const struct {
        std::string source, token;
    } rows[] = {{R"("")", R"("")"},
                {R"("a\tb\n\"\\")", "\"a\tb\n\"\\\""},
                {R"("\x41\102\1234")", "\"AB\1234\""},
                {R"("a\0b")", std::string("\"a\0b\"", 5)},
                {R"("??=??(??x???!")", R"("#[??x?|")"},
                {R"("??/n")", "\"\n\""},
                {"\"caf\xc3\xa9\" ", "\"caf\xc3\xa9\""},
                {"\"\xe2\x82\xac\\n\\\"\"", "\"\xe2\x82\xac\n\"\""},
                {"\"\x83\x5c\"", "\"\x83\x5c\""},  // a backslash as the second byte of a character
                {"\"abc\\\ndef\"", R"("abcdef")"},
                {"\"abc\\\n#def\"", R"("abc#def")"},
                {"\"abc\\\\\\\ndef\"", R"("abc\def")"},
                {"\"a\"\n\n  /* c */ \"b\" // d\n\"c\"\n", R"("abc")"},
                {R"("\x4" "1")", "\"\0041\""},
                {R"(L"aA")", "wide 61 41 0"},
                {R"(L"a" "b")", "wide 61 0"}};
    for (const auto &row : rows) {
        std::string errors;
        EXPECT_EQ(firstOf(row.source, errors), row.token) << row.source;
        EXPECT_EQ(errors, "") << row.source;
    }
}

TEST_F(LexerTest, TrigraphsCanBeSwitchedOff) {
    errorsOf([] { initExecution(); });
    errorFlag = 0;
    slotOf(baseFrame, e_lang->ignoretrigraph->index)->data.i = 1;
    builtinValues = liveValueCount();
    EXPECT_EQ(tokensOf(R"("??=")"), Tokens{R"("??=")"});
}

TEST_F(LexerTest, AnOpenStringIsReportedAndDelivered) {
    for (const char *source : {"\"abc", "\"abc\\\\", "\"abc\nx\""}) {
        std::string errors;
        EXPECT_EQ(firstOf(source, errors).substr(0, 4), "\"abc") << source;
        EXPECT_EQ(errors, "ERROR: missing '\"'\n" + POSITION) << source;
    }
    typeLine("\"abc");
    EXPECT_EQ(errorsOf([] { EXPECT_EQ(next(), "\"abc\""); }), "ERROR: missing '\"'\n");
    EXPECT_TRUE(endOfInput);
}

TEST_F(LexerTest, ADubiousEscapeInAStringWarnsOnlyWhileMacrosAreExpanded) {
    std::string errors;
    EXPECT_EQ(firstOf(R"("\q\8")", errors), R"("q8")");
    EXPECT_EQ(errors, "WARNING: dubious escape '\\q'\n" + WARNING_POSITION +
                          "WARNING: dubious escape '\\8'\n" + WARNING_POSITION);
    e_lang->macroExpansionOn = 0;
    EXPECT_EQ(firstOf(R"("\q")", errors), R"("q")");
    EXPECT_EQ(errors, "");
}

// ---- Names and operators ----------------------------------------------------------------------

TEST_F(LexerTest, Operators) {
    EXPECT_EQ(tokensOf("a<<=b>>=c<<d>>e<=f>=g==h!=i^^j^=k||l|=m&&n&=o"),
              (Tokens{"a", "<<<=>", "b", "<>>=>", "c", "<<<>", "d", "<>>>", "e", "<<=>",
                      "f", "<>=>",  "g", "<==>",  "h", "<!=>", "i", "<^^>", "j", "<^=>",
                      "k", "<||>",  "l", "<|=>",  "m", "<&&>", "n", "<&=>", "o"}));
    EXPECT_EQ(tokensOf("+ += ++ - -= -- -> * *= / /= % %= = ! ~ ? ` .* ./ . :: : < >"),
              (Tokens{"<+>",  "<+=>", "<++>", "<->",  "<-=>", "<-->", "<->>", "<*>", "<*=>",
                      "</>",  "</=>", "<%>",  "<%=>", "<=>",  "<!>",  "<~>",  "<?>", "<`>",
                      "<.*>", "<./>", "<.>",  "<::>", ":",    "<<>",  "<>>"}));
    EXPECT_EQ(tokensOf("a.*b a./b a. *b (,;[]){}$@"),
              (Tokens{"a", "<.*>", "b", "a", "<./>", "b", "a",   "<.>", "<*>", "b",
                      "(", ",",    ";", "[", "]",    ")", "<{>", "<}>", "$",   "@"}));
    EXPECT_EQ(tokensOf("?\?= \x01 \xe9\\x"),
              (Tokens{"<?>", "<?>", "<=>", "\x01", "\xe9", "\\", "x"}));
}

// ---- Comments and look ahead ------------------------------------------------------------------

TEST_F(LexerTest, CommentsAndContinuationsAreNoTokens) {
    EXPECT_EQ(tokensOf("a/*/ text */b /**/c//d\ne/* 1\n#2\n*/f \\\ng h\\\n\n i"),
              (Tokens{"a", "b", "c", "e", "f", "g", "h", "i"}));
    EXPECT_EQ(tokensOf("a\n// last"), (Tokens{"a"}));
}

TEST_F(LexerTest, AnOpenCommentIsReported) {
    typeLine("a /* b");
    EXPECT_EQ(next(), "a");
    EXPECT_EQ(errorsOf([] { EXPECT_EQ(next(), "\n"); }),
              "ERROR: missing '*/' \n"
              "ERROR: syntax error before or at line 0 in file ''\n"
              "  ==>: a /* b\n");
    EXPECT_TRUE(endOfInput && errorFlag);

    typeLine("/* b");
    commandMode = true;
    EXPECT_EQ(errorsOf([] { peekNonBlank(); }), "ERROR: missing */ \n");

    openFile("a /* b\nc");
    errorFlag = 0;
    EXPECT_EQ(errorsOf([] { EXPECT_EQ(tokens(), Tokens{"a"}); }),
              "ERROR: missing '*/' \n"
              "ERROR: syntax error before or at line 3 in file 'a.zy'\n"
              "  ==>: \n");
    EXPECT_EQ(errorFlag, 1);
}

TEST_F(LexerTest, ALookAheadKeepsTheToken) {
    openFile("while sin /* c */ // d\n  \\\n\n/# e\n(x) 5 y\n;");
    EXPECT_EQ(next(), "<while>");
    EXPECT_EQ(next(), "<sin>");
    pushedBack = true;
    peekNonBlank();
    EXPECT_EQ(lineBuffer[linePos], '(');
    EXPECT_EQ(next(), "<sin>");
    EXPECT_EQ(next(), "(");
    EXPECT_EQ(next(), "x");
    EXPECT_EQ(next(), ")");
    nextToken();
    pushedBack = true;
    peekAndExpand();
    EXPECT_EQ(lineBuffer[linePos], 'y');
    EXPECT_EQ(next(), "int 5");
    EXPECT_EQ(next(), "y");
    peekNonBlank();
    EXPECT_EQ(next(), ";");
    peekNonBlank();
    EXPECT_TRUE(endOfInput);
    EXPECT_EQ(next(), "\n");
}

TEST_F(LexerTest, ARawLineEndsInASemicolon) {
    openFile("a sin // c\nb");
    EXPECT_EQ(next(), "a");
    e_lang->rawLineMode = 1;
    EXPECT_EQ(next(), "sin");
    EXPECT_EQ(next(), ";");
    EXPECT_EQ(next(), ";");
    e_lang->rawLineMode = 0;
    EXPECT_EQ(tokens(), Tokens{"b"});
}

TEST_F(LexerTest, AnExpectedCharacterIsTakenOrReported) {
    openFile("( 5 ; x while 1.5 \"t\" 'c' 7ll");
    EXPECT_TRUE(expectChar('(', true));
    auto missing = [](const char *token) {
        EXPECT_EQ(errorsOf([] { EXPECT_FALSE(expectChar(')', true)); }),
                  "ERROR: missing ')' before '" + std::string(token) + "'\n" + POSITION);
        EXPECT_TRUE(pushedBack && errorFlag);
        nextToken();
        takeToken();
    };
    for (const char *token : {"5", ";", "x", "while", "1.500000", "t", "c", "7"})
        missing(token);
    EXPECT_EQ(errorsOf([] { EXPECT_FALSE(expectChar(')', true)); }),
              "ERROR: missing ')'\n       at line 2 in file 'a.zy'\n");
    pushedBack = false;
    errorFlag = 0;
    EXPECT_EQ(errorsOf([] { EXPECT_FALSE(expectChar(')', false)); }), "");
    EXPECT_EQ(errorFlag, 0);
}

// ---- Lines ------------------------------------------------------------------------------------

TEST_F(LexerTest, TheLongestLinePassesAndAByteMoreIsReported) {
    std::string longest(5118, 'x');
    for (const char *end : {"", "\n"}) {
        openFile(longest + end);
        EXPECT_EQ(errorsOf([&] { EXPECT_EQ(tokens(), Tokens{longest}); }), "");
        closeFiles();
    }
    std::string tooLong(5119, 'x');
    errorFlag = 0;
    openFile("");
    closeFiles();
    EXPECT_EQ(errorsOf([&] {
                  openFile(tooLong);
                  EXPECT_EQ(tokens(), Tokens{tooLong});
              }),
              "ERROR: source code line exceeded the maximum length of 5120\n" + POSITION +
                  "source code: " + tooLong + "\n");
    EXPECT_EQ(errorFlag, 1);
}

TEST_F(LexerTest, LinesAreKeptForReplay) {
    tokensOf("a 'b'\n /*\n*/ c");
    resetLexerState();
    stringMode = replayParse = true;
    sourceDepth = 0;
    sourceNames[0] = "a.zy";
    readSourceLine();
    EXPECT_EQ(tokens(), (Tokens{"a", "char 98", "c"}));
    EXPECT_EQ(currentLine, 3);
    EXPECT_TRUE(endOfInput);
}

TEST_F(LexerTest, WithoutMacroExpansionOnlyStringsOfOneLineJoin) {
    openFile("\"a\" /* c */ \"b\" x\n\"c\"\n\"d\"");
    e_lang->macroExpansionOn = 0;
    EXPECT_EQ(next(), "\"ab\"");
    EXPECT_EQ(lineBuffer[linePos], ' ') << "the cursor stands behind the literal";
    EXPECT_EQ(tokens(), (Tokens{"x", "\"c\"", "\"d\""}));
}

TEST_F(LexerTest, PredefinedTextsJoinStrings) {
    Value *file = lookupName("__FILE__")->symbol->constant;
    file->payload.text = updateString(file->payload.text, copyString("a.zy"));
    EXPECT_EQ(tokensOf("__FILE__ \"x\" __FILE__\n\"y\" __FILES__ __FILE__ ;"),
              (Tokens{"\"a.zyxa.zyy\"", "__FILES__", "__FILE__", ";"}));
}

TEST_F(LexerTest, AStringAtTheEndIsDeliveredBeforeTheEndIsReported) {
    openFile("\"a\"\n\n");
    EXPECT_EQ(next(), "\"a\"");
    EXPECT_FALSE(endOfInput);
    EXPECT_STREQ(lineBuffer, "\"a\"");
    EXPECT_EQ(next(), "\n");
    EXPECT_TRUE(endOfInput);
    // A line that is typed stands alone.
    typeLine("\"a\"");
    EXPECT_EQ(next(), "\"a\"");
    EXPECT_FALSE(endOfInput);
}

TEST_F(LexerTest, NamesAreOneEntryEachAndFoldOnDemand) {
    openFile("ab ba ab ___a.zy a.b While While");
    EXPECT_EQ(next(), "ab");
    NameEntry *first = tokenValue.name;
    EXPECT_EQ(next(), "ba");
    EXPECT_EQ(next(), "ab");
    EXPECT_EQ(tokenValue.name, first);
    EXPECT_EQ(next(), "___a.zy");
    EXPECT_EQ(next(), "a");
    EXPECT_EQ(next(), "<.>");
    EXPECT_EQ(next(), "b");
    EXPECT_EQ(next(), "While");
    caseSensitive = 0;
    EXPECT_EQ(next(), "<while>");
    EXPECT_STREQ(lineBuffer, "ab ba ab ___a.zy a.b While while") << "folded where it stands";
}

TEST_F(LexerTest, LineEndsAndTheLastLine) {
    EXPECT_EQ(tokensOf("a\r\nb \r\n\r\nc"), (Tokens{"a", "b", "c"}));
    EXPECT_EQ(tokensOf(""), Tokens{});
    openFile("a\n\nb");
    EXPECT_EQ(next(), "a");
    EXPECT_EQ(currentLine, 1);
    EXPECT_EQ(next(), "b");
    EXPECT_EQ(currentLine, 3);
}

TEST_F(LexerTest, AConsoleLineStandsAlone) {
    typeLine("a sin \\");
    EXPECT_EQ(next(), "a");
    EXPECT_EQ(next(), "sin");
    EXPECT_EQ(next(), "\\");
    EXPECT_FALSE(endOfInput);
    EXPECT_EQ(next(), "\n");
    EXPECT_TRUE(endOfInput);
}

TEST_F(LexerTest, AScriptInMemoryMayHaveLineFeeds) {
    typeLine("a // b\nc \\\n; \"d\"\n\"e\" sin\n(1)");
    fileMode = true;
    sourceDepth = 0;
    sourceNames[0] = "@string: a";
    EXPECT_EQ(tokens(), (Tokens{"a", "c", ";", "\"de\"", "<sin>", "(", "int 1", ")"}));
}

}  // namespace zy
