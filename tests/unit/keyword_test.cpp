// The vocabulary, its look-up, and what a script and the restricted shell do to it.

#include <sstream>
#include <string>

#include "embed/kernel.h"
#include "expr/constants.h"
#include "front/keywordStatements.h"
#include "front/tokens.h"
#include "instance.h"
#include "instance/environment.h"
#include "source.h"
#include "stmt/parseStack.h"

namespace zy {

namespace {

// What the language's manual says, in its order: word and code.
struct Group {
    KeywordClass keywordClass;
    bool soft;
    int count;
    const char *words;
};

const Group groups[] = {
    {KC_STATEMENT, false, 25, R"(
{ 1 } 3 foreach 5 for 6 if 7 while 8 do 9 switch 10 return 12 goto 14 _exit 15 _stop 16
_perror 17 _longjmp 18 _abort 19 # 25 delete 30 _clearerr 31 _using 32 _casesen 38
_floatconst 39 _srand 40 break 43 continue 44 _fbase 65)"},
    {KC_STATEMENT, true, 2, R"(
free 29 _free 29)"},
    {KC_CLAUSE, false, 7, R"(
else 1 case 3 default 4 __to 0 __step 2 __collect 5 __smoothcorner 10)"},
    {KC_TYPE, false, 36, R"(
char 0 int 4 float 8 double 9 string_t 25 FILE 27 _FILE 27 void 28 union 130 class 131
struct 132 enum 137 signed 140 unsigned 141 short 142 long 143 complex 144 dual 145 __local
146 __declspec 147 auto 148 register 149 static 150 extern 151 typedef 152 __global 153
__ref 154 array 155 const 157 public 158 private 159 protected 160 virtual 161 restrict 162
inline 163 volatile 165)"},
    {KC_OPERATOR, false, 162, R"(
+ 728 - 729 * 730 / 731 % 733 ! 732 ~ 748 < 734 <= 735 == 736 >= 737 > 738 != 739 || 740 ^^
741 && 742 | 743 ^ 744 & 745 << 746 >> 747 . 722 -> 724 :: 723 .* 669 ./ 670 = 686 += 687 -=
688 *= 689 /= 690 %= 691 &= 692 ^= 693 |= 694 <<= 695 >>= 696 ++ 701 -- 702 ? 703 ` 561
sizeof 240 new 685 _printf 181 _fprintf 186 _scanf 183 __va_start 592 __va_count 73
__va_array 74 __va_arg 593 _inverse 631 _linearsolver 674 _strftime 220 _rand 194 _mktime
108 _ctime 580 _freopen 583 _tmpfile 584 _gmtime 585 _localtime 586 _smem_get 558
_smem_create 559 _smem_remove 152 _asctime 576 _crypt 579 _malloc 587 _calloc 588 _realloc
594 _set_new_handler 589 _execv 146 _execvp 147 _fork 148 _feof 103 _ferror 104 _fclose 112
_pclose 113 _wait 114 _setjmp 115 _fflush 116 _fseek 117 _ftell 180 _fgetpos 118 _fsetpos
119 _fwrite 222 _write 135 _lockf 143 _getpid 109 _getppid 110 _getpriority 136 _setpriority
137 _listen 138 _shutdown 139 _socket 102 _dup2 140 _lseek 141 _fcntl 142 _system 120 _close
122 _fputc 126 _putc 126 _putchar 127 _fputs 128 _puts 129 _fgetc 131 _getc 131 _fileno 132
_ungetc 133 _tmpnam 570 _remenv 150 _remove 153 _rename 154 _pipe 145 _utime 155 _getrlimit
160 _accept 162 _getpeername 163 _getsockname 164 _bind 165 _connect 166 _socketpair 167
_recv 168 _send 169 _getsockopt 170 _setsockopt 171 _stat 156 _lstat 157 _fstat 158 _fopen
581 _popen 582 _setvbuf 159 _atexit 123 _dlopen 590 _dlsym 591 _dlclose 124 _dlerror 578
_isalnum 77 _isalpha 78 _iscntrl 79 _isdigit 80 _isgraph 81 _islower 82 _isprint 83 _ispunct
84 _isspace 85 _isupper 86 _isxdigit 87 _isascii 88 _toascii 89 _tolower 90 _toupper 91
_isinteger 92 _ishex 93 _isnum 94 _isvar 95 _isenv 96 _iskey 97 _gradientim 549 _gradientxim
547 _gradientyim 548 _createconstim 550 _createcircim 551 _createrectim 552)"},
    {KC_OPERATOR, true, 85, R"(
abs 750 fabs 751 min 752 max 753 sqrt 754 pow 755 log 756 log10 757 exp 758 sin 759 cos 760
tan 761 asin 762 acos 763 atan 764 atan2 765 sinh 766 cosh 767 tanh 768 asinh 769 acosh 770
atanh 771 ceil 772 floor 773 fmod 774 ldexp 775 frexp 776 modf 777 polar 778 real 780 imag
781 conj 784 alias 783 streval 697 strparse 130 elementtype 76 transpose 606 shape 608
access 100 open 101 _read 134 fread 219 ioctl 144 fgets 568 gets 569 sscanf 184 fscanf 185
scanf 183 vsprintf 176 vfprintf 174 vprintf 175 fprintf 186 printf 181 putenv 149 getenv 574
strerror 575 strlen 206 strcmp 98 strcoll 99 strxfrm 221 strcpy 564 strncpy 565 strcat 566
strncat 573 stradd 560 strtok 567 strtod 328 strtol 111 strtoul 217 time 249 clock 218
memcpy 572 memmove 572 memset 571 dlrunfun 125 dlopen 590 dlsym 591 dlerror 578 setlocale
577 umask 121 setrlimit 161 atexit 123 min 752 max 753 sprintf 182)"},
};

int rowsOf(KeywordEntry *const *table) {
    int count = 0;
    for (int bucket = 0; bucket < BUCKET_COUNT; bucket++)
        for (const KeywordEntry *row = table[bucket]; row; row = row->next)
            count++;
    return count;
}

// Looks up the word at the start of a line.
KeywordEntry *look(const std::string &word, const char *behind) {
    typeLine((word + behind).c_str());
    return findKeyword(word.c_str(), nameHash(word.c_str()), static_cast<int>(word.size()));
}

}  // namespace

class KeywordTest : public InstanceTest {
protected:
    void TearDown() override {
        closeSource();
        parseTop = -1;
        EXPECT_EQ(assignKeyword, keywordNamed("="));
        InstanceTest::TearDown();
    }

    // The parser stands in a declaration.
    void declare() {
        statement.kind = STMT_DECLARATION;
        parseTop = 0;
        parseStack[0] = {true, &statement};
    }

    // What a statement or pragma prints whose argument is the text.
    template <class Action>
    static std::string errorsAt(const std::string &text, Action action) {
        openSource(text + ";\n");
        std::string errors = errorsOf(action);
        closeSource();
        return errors;
    }

    StmtNode statement = {};
};

TEST_F(KeywordTest, TheTableHoldsTheWholeVocabularyAndNothingElse) {
    int total = 0;
    for (const Group &group : groups) {
        std::istringstream words(group.words);
        std::string word;
        int code, count = 0;
        for (; words >> word >> code; count++) {
            const KeywordEntry *row = keywordNamed(word.c_str());
            ASSERT_NE(row, nullptr) << word;
            EXPECT_EQ(row->keywordClass, group.keywordClass) << word;
            EXPECT_EQ(row->code, code) << word;
            EXPECT_EQ(row->soft != 0, group.soft) << word;
            EXPECT_EQ(look(word, "("), row) << word;
            EXPECT_EQ(linePos, static_cast<int>(word.size())) << word;
        }
        EXPECT_EQ(count, group.count);
        total += count;
    }
    EXPECT_EQ(total, 317);
    EXPECT_EQ(rowsOf(keywordTable), total);
    EXPECT_EQ(rowsOf(keywordSnapshot), total);
}

TEST_F(KeywordTest, ASoftWordIsAKeywordOnlyWhereItIsCalled) {
    const struct {
        const char *word, *behind;
        bool keyword;
    } rows[] = {
        {"sin", "(x)", true},
        {"sin", " \t (x)", true},
        {"sin", ";", false},
        {"sin", " = 1", false},
        {"sin", "", false},
        {"time", "_t", false},
        {"sin", " /* ( */ (", true},
        {"sin", " /* ( */ ;", false},
        {"fprintf", " stdout << X", true},
        {"fprintf", " _s << X", true},
        {"fprintf", " 1", false},
        {"printf", " x", false},
        {"free", " p", false},
        {"_printf", " x", true},
        {"while", " x", true},
    };
    for (const auto &row : rows)
        EXPECT_EQ(look(row.word, row.behind) != nullptr, row.keyword) << row.word << row.behind;
    e_lang->macroExpansionOn = 0;
    EXPECT_NE(look("sin", " = 1"), nullptr);
}

// The declaration parser then calls shadowKeyword(), so that later calls reach the script's
// function.
TEST_F(KeywordTest, ADeclarationOfABuiltInMakesItsNameAnIdentifier) {
    const std::string warning =
        "WARNING: built-in generic function 'max()' is used, user shall not redefine it \n"
        "         at line 1 in file 'a.zy'\n";
    const struct {
        const char *source, *name;
        std::string errors;
    } rows[] = {{"sin(x)", "sin", ""}, {"max = 1", "max", ""}, {"max(a)", "max", warning}};
    declare();
    for (const auto &row : rows) {
        openSource(row.source);
        EXPECT_EQ(errorsOf(nextToken), row.errors) << row.source;
        ASSERT_EQ(tokenClass, TK_IDENTIFIER) << row.source;
        EXPECT_STREQ(tokenValue.name->text, row.name);
        closeSource();
    }
    expressionDepth = 1;  // an initialiser calls the built-in
    EXPECT_NE(look("max", "(a)"), nullptr);
}

TEST_F(KeywordTest, AFunctionOfTheScriptTakesThePlaceOfABuiltInForOneProgram) {
    EXPECT_TRUE(shadowKeyword("max"));
    EXPECT_FALSE(shadowKeyword("max"));
    EXPECT_FALSE(shadowKeyword("while"));
    EXPECT_FALSE(shadowKeyword("_printf"));
    EXPECT_EQ(look("max", "("), nullptr);
    EXPECT_NE(look("while", "("), nullptr);
    saveKeywords();  // a start-up file ends: the next program has the built-in
    EXPECT_EQ(look("max", "("), nullptr);
    restoreKeywords();
    EXPECT_NE(look("max", "("), nullptr);
    EXPECT_EQ(rowsOf(keywordTable), 317);
}

TEST_F(KeywordTest, AddkeyGivesASecondNameAndZykeyANewOneForOneProgram) {
    auto change = [](int mode) { return [=] { changeKeywordStatement(mode); }; };
    EXPECT_EQ(errorsAt("(\"solange\", \"while\")", change(MODE_ADDKEY)), "");
    EXPECT_EQ(keywordNamed("solange")->code, 8);
    EXPECT_EQ(keywordNamed("while")->code, 8);
    EXPECT_EQ(errorsAt("(\"wenn\", \"if\")", change(MODE_ZYKEY)), "");
    EXPECT_EQ(keywordNamed("wenn")->code, 7);
    EXPECT_EQ(keywordNamed("if"), nullptr);
    // A soft word's new name is a keyword everywhere, and both rows of min go.
    EXPECT_EQ(errorsAt("(\"least\", \"min\")", change(MODE_ZYKEY)), "");
    EXPECT_NE(look("least", ";"), nullptr);
    EXPECT_EQ(look("min", "("), nullptr);
    EXPECT_EQ(errorsAt("(\"plus\", \"+\")", change(MODE_ADDKEY)),
              "WARNING: a keyword is added for symbol '+'\n"
              "         at line 1 in file 'a.zy'\n");
    EXPECT_EQ(errorsAt("(\"becomes\", \"=\")", change(MODE_ZYKEY)),
              "WARNING: The key symbol '=' is changed\n"
              "         at line 1 in file 'a.zy'\n");
    EXPECT_EQ(assignKeyword, nullptr);
    EXPECT_EQ(errorFlag, 0);

    restoreKeywords();
    EXPECT_EQ(keywordNamed("solange"), nullptr);
    EXPECT_EQ(keywordNamed("if")->code, 7);
    EXPECT_EQ(rowsOf(keywordTable), 317);

    errorsAt("(\"solange\", \"while\")", change(MODE_ADDKEY));
    saveKeywords();  // the end of a start-up file
    restoreKeywords();
    EXPECT_EQ(keywordNamed("solange")->code, 8);
}

TEST_F(KeywordTest, RemkeyRemovesAWord) {
    EXPECT_EQ(errorsAt("(\"while\")", remkeyStatement), "");
    EXPECT_EQ(keywordNamed("while"), nullptr);
    EXPECT_EQ(errorsAt("(\"min\")", remkeyStatement), "");
    EXPECT_EQ(keywordNamed("min"), nullptr);
    EXPECT_EQ(errorsAt("(\"<<\")", remkeyStatement),
              "WARNING: The key symbol '<<' is removed\n         at line 1 in file 'a.zy'\n");
    EXPECT_EQ(shiftLeftKeyword, nullptr);

    auto pragma = [] { pragmaRemkey(true); };
    auto command = [] { pragmaRemkey(false); };
    EXPECT_EQ(errorsAt("(if)", pragma), "");
    EXPECT_EQ(errorsAt("(sin)", pragma), "");  // an identifier here
    EXPECT_EQ(errorsAt(" do", command), "");
    EXPECT_EQ(errorsAt(" max", command), "");
    for (const char *word : {"if", "sin", "do", "max"})
        EXPECT_EQ(keywordNamed(word), nullptr) << word;
    EXPECT_EQ(errorFlag, 0);
}

TEST_F(KeywordTest, EveryFaultOfAKeywordChangeIsReportedAndChangesNothing) {
    int x = 0;
    addPredefinedConstant({"taken", DT_INT, {.i = x}});
    using Form = void (*)();
    Form addkey = [] { changeKeywordStatement(MODE_ADDKEY); };
    Form zykey = [] { changeKeywordStatement(MODE_ZYKEY); };
    Form pragma = [] { pragmaRemkey(true); };
    Form command = [] { pragmaRemkey(false); };
    const struct {
        Form form;
        const char *source, *message;
    } rows[] = {
        {addkey, "(\"1a\", \"if\")",
         "the new name '1a' is not a valid keyword identifier, it must start with an alphabetic "
         "letter"},
        {zykey, "(\"_a\", \"if\")",
         "the new name '_a' is not a valid keyword identifier, it must start with an alphabetic "
         "letter"},
        {zykey, "(\"\", \"if\")",
         "the new name '' is not a valid keyword identifier, it must start with an alphabetic "
         "letter"},
        {addkey, "(\"do\", \"if\")", "the name 'do' is already a keyword"},
        {addkey, "(\"min\", \"if\")", "the name 'min' is already a keyword"},
        {zykey, "(\"taken\", \"if\")", "the name 'taken' has been defined as a variable"},
        {zykey, "(\"a\", \"b\")", "the name 'b' is not a keyword"},
        {addkey, "(1, \"if\")", "the first argument of addkey() is not a string constant"},
        {zykey, "(a, \"if\")", "the first argument of zykey() is not a string constant"},
        {addkey, "(\"a\" \"b\")", "missing the comma ','  before the second argument"},
        {addkey, "(\"a\", if)", "the second argument of addkey() is not a string constant"},
        {zykey, "(\"a\", 'b')", "the second argument of zykey() is not a string constant"},
        {remkeyStatement, "(\"b\")", "the name 'b' is not a keyword"},
        {remkeyStatement, "(while)", "the argument of remkey() is not a string constant"},
        {pragma, "(b)", "the argument of remkey() is not a keyword"},
        {pragma, "(\"while\")", "the argument of remkey() is not a keyword"},
        {command, " 1", "the argument of remkey is not a keyword"},
        {addkey, " \"a\"", "missing '(' before 'a'"},
        {zykey, "(\"a\", \"if\"", "missing ')' before ';'"},
        {pragma, " while", "missing '(' before 'while'"},
        {pragma, "(while", "missing ')' before ';'"},
    };
    int values = liveValueCount();
    for (const auto &row : rows) {
        errorFlag = 0;
        std::string errors = errorsAt(row.source, row.form);
        EXPECT_EQ(errors.substr(0, errors.find('\n')), "ERROR: " + std::string(row.message));
        EXPECT_EQ(errorFlag, 1) << row.source;
        EXPECT_EQ(rowsOf(keywordTable), 317) << row.source;
        if (tokenClass == TK_CONSTANT && pushedBack)
            deleteValue(tokenValue.constant);
    }
    EXPECT_EQ(liveValueCount(), values);
    EXPECT_EQ(errorsAt("(\"a\", \"b\")", zykey),
              "ERROR: the name 'b' is not a keyword\n       at line 1 in file 'a.zy'\n");

    Value *null = newZeroValue(DT_STRING);
    EXPECT_EQ(errorsOf([&] {
                  EXPECT_EQ(changeKeyword(MODE_ZYKEY, null, null), -1);
                  EXPECT_EQ(dropKeyword(null), -1);
              }),
              "ERROR: not valid keyword\nERROR: not valid keyword\n");
    deleteValue(null);
}

TEST_F(KeywordTest, TheRestrictedShellHidesWordsAlsoFromTheNextProgram) {
    const struct {
        const char *word;
        int code;
        bool soft;
    } shown[] = {{"_execv", 146, false},      {"_execvp", 147, false}, {"_fopen", 581, false},
                 {"_fork", 148, false},       {"_fstat", 158, false},  {"_lstat", 157, false},
                 {"_pipe", 145, false},       {"_popen", 582, false},  {"_remove", 153, false},
                 {"_rename", 154, false},     {"_socket", 102, false}, {"_stat", 156, false},
                 {"_socketpair", 167, false}, {"_utime", 155, false},  {"_system", 120, false},
                 {"_setrlimit", 161, false},  {"getenv", 574, true},   {"open", 101, true},
                 {"putenv", 149, true},       {"access", 100, true}};
    for (const char *word : {"fork", "execv", "execvp"})
        addKeyword(KC_OPERATOR, word, 148);
    saveKeywords();
    hideRestrictedKeywords();
    for (const auto &row : shown)  // the last one comes with the regular shell
        EXPECT_EQ(keywordNamed(row.word), nullptr) << row.word;
    EXPECT_NE(keywordNamed("fork"), nullptr);
    EXPECT_EQ(rowsOf(keywordTable), 317 + 3 - 19);
    restoreKeywords();
    EXPECT_EQ(rowsOf(keywordTable), 317 - 19);

    showRestrictedKeywords();
    for (const auto &row : shown) {
        const KeywordEntry *entry = keywordNamed(row.word);
        ASSERT_NE(entry, nullptr) << row.word;
        EXPECT_EQ(entry->keywordClass, KC_OPERATOR) << row.word;
        EXPECT_EQ(entry->code, row.code) << row.word;
        EXPECT_EQ(entry->soft != 0, row.soft) << row.word;
    }
    showRestrictedKeywords();
    EXPECT_EQ(rowsOf(keywordTable), 317 + 1);
    hideRestrictedKeywords();
    EXPECT_EQ(rowsOf(keywordTable), 317 - 19);
}

TEST(Keyword, AnEmbeddedInstanceHasNoWordFree) {
    int handle = 0;
    void *interp = &handle;
    ZyOptions option = {ZY_REGULAR_SHELL, ZY_HOME, nullptr};
    ASSERT_EQ(Zy_Initialize2_kernel(&interp, &option, envPut, envGet), 0);
    EXPECT_EQ(keywordNamed("free"), nullptr);
    EXPECT_NE(keywordNamed("_free"), nullptr);
    restoreKeywords();
    EXPECT_EQ(keywordNamed("free"), nullptr);
    Zy_End_kernel(interp);
    envRelease();
}

}  // namespace zy
