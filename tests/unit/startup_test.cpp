// The start of an instance, without the front layer: variables, their hooks, the prompt.

#include "startup/startup.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "expr/nodes.h"
#include "expr/operators.h"
#include "expr/scope.h"
#include "instance.h"
#include "startup/paths.h"
#include "startup/prompt.h"
#include "startup/startupState.h"
#include "startup/systemVariables.h"
#include "startup/userData.h"
#include "stmt/stmtNode.h"

namespace zy {

namespace {

// A variable of the process environment for the time of a test; NULL: unset.
class Variable {
public:
    Variable(const char *name, const char *value) : name(name) {
        const char *known = getenv(name);
        wasSet = known != nullptr;
        before = known ? known : "";
        set(value);
    }
    ~Variable() { set(wasSet ? before.c_str() : nullptr); }

private:
    void set(const char *value) { value ? setenv(name, value, 1) : unsetenv(name); }
    const char *name;
    bool wasSet;
    std::string before;
};

Symbol *symbolOf(int slot) { return lookupName(systemVariableName(slot))->symbol; }
const char *textOf(int slot) { return systemCell(slot)->data.text; }

// What an assignment of a script does: the new value, then the hook.
std::string assign(int slot, const char *text) {
    setSystemText(slot, text);
    return errorsOf([&] { onSystemVariableSet(slot, symbolOf(slot)); });
}
std::string assign(int slot, int number) {
    systemCell(slot)->data.i = number;
    return errorsOf([&] { onIntegerSystemVariableSet(slot, symbolOf(slot)); });
}

std::string entriesOf(SearchTableIndex index) {
    std::string result;
    for (int i = 0; i < searchTables[index].count; i++)
        result += std::string(searchTables[index].entries[i]) + "|";
    return result;
}

}  // namespace

// A stand-alone instance with a made-up home.
class StartTest : public InstanceTest {
protected:
    void SetUp() override {
        InstanceTest::SetUp();
        free(userName);
        userName = strdup("ann");
        free(userHome);
        userHome = strdup("/users/ann");
    }
    void start() {
        EXPECT_EQ(errorsOf([] { EXPECT_EQ(initExecution(), 0); }), "");
    }
    Variable home{"ZYHOME", "/zy"};
};

// ---- Start values -----------------------------------------------------------------------------

TEST_F(StartTest, TheTableAgreesWithTheBuiltInSymbols) {
    start();
    for (int slot = SLOT_WARNING; slot <= SLOT_STATUS; slot++) {
        ASSERT_NE(lookupName(systemVariableName(slot)), nullptr) << slot;
        Symbol *symbol = symbolOf(slot);
        EXPECT_EQ(symbol->index, slot);
        EXPECT_EQ(symbol->storageCell, systemCell(slot)) << systemVariableName(slot);
        EXPECT_EQ(symbol->storageCell->type, static_cast<uint32_t>(symbol->dataType));
    }
    EXPECT_EQ(e_lang->formatd, symbolOf(41));
    EXPECT_EQ(e_lang->status, symbolOf(73));
    EXPECT_STREQ(systemCell(SLOT_FUNC)->data.text, "");
}

TEST_F(StartTest, StartValuesComeFromHomeUserAndEnvironment) {
    Variable shell("SHELL", nullptr), language("LANG", "C"), zone("TZ", nullptr);
    e_lang->warningLevel = 3;  // as a front end may ask for
    start();
    EXPECT_EQ(systemCell(SLOT_WARNING)->data.i, 3);
    EXPECT_STREQ(textOf(SLOT_FORMATF), "%.2f");
    EXPECT_STREQ(textOf(SLOT_HOME), "/users/ann");
    EXPECT_STREQ(textOf(46), "/zy/zy");
    EXPECT_STREQ(textOf(SLOT_PATH),
                 "/zy/bin;/zy/sbin;/zy/toolkit/bin;/zy/toolkit/sbin;/usr/local/sbin;"
                 "/usr/local/bin;/usr/sbin;/usr/bin;/sbin;/bin;");
    EXPECT_EQ(textOf(SLOT_CWD), std::filesystem::current_path());
    EXPECT_EQ(textOf(SLOT_CWDN), std::filesystem::current_path().filename());
    EXPECT_STREQ(textOf(50), "C");
    EXPECT_EQ(textOf(58), nullptr);
    EXPECT_STREQ(textOf(SLOT_FPATH),
                 "/zy/lib/libc;/zy/lib/libzy;/zy/lib/libopt;/zy/lib/libzy/numeric;");
    EXPECT_EQ(entriesOf(TABLE_FPATH),
              "/zy/lib/libc|/zy/lib/libzy|/zy/lib/libopt|/zy/lib/libzy/numeric|");
    EXPECT_EQ(entriesOf(TABLE_LPATH), "/zy/dl|/zy/toolkit/dl|");
    EXPECT_EQ(entriesOf(TABLE_PPATH), "/zy/package|");
    EXPECT_EQ(entriesOf(TABLE_IPATH), "/zy/include|/zy/include/windows|/zy/toolkit/include|");
    EXPECT_EQ(entriesOf(TABLE_FPATHEXT), ".zyf|");
    EXPECT_EQ(entriesOf(TABLE_PATHEXT), ".com|.exe|.bat|.cmd|");
    EXPECT_EQ(systemCell(69)->data.i, 128);
    EXPECT_EQ(textOf(SLOT_PROMPT), std::filesystem::current_path().string() + "> ");
    EXPECT_STREQ(getenv("HOME"), "/users/ann");
}

TEST_F(StartTest, ARestrictedShellHasItsOwnProgramsAndNoOptionalLibraryIfAsked) {
    e_lang->restricted = e_lang->noOptionalLib = 1;
    start();
    EXPECT_EQ(entriesOf(TABLE_PATH), "/zy/sbin|/zy/toolkit/sbin|");
    EXPECT_STREQ(getenv("PATH"), "/zy/sbin:/zy/toolkit/sbin");
    EXPECT_EQ(entriesOf(TABLE_FPATH), "/zy/lib/libc|/zy/lib/libzy|/zy/lib/libzy/numeric|");
}

TEST_F(StartTest, WithoutAHomeNoFolderOfTheSystemStandsInForOne) {
    e_lang->embedded = e_lang->restricted = 1;
    e_lang->zyhome = "/nowhere";
    errorsOf([] { EXPECT_EQ(initExecution(), -1); });
    EXPECT_EQ(entriesOf(TABLE_PATH), "");
    EXPECT_STREQ(textOf(SLOT_FPATH), "");
    EXPECT_EQ(getenv("PATH"), nullptr);
    e_lang->embedded = 0;  // so that the end takes the environment back
}

TEST_F(StartTest, AHomeThatTheEnvironmentRefusesIsReported) {
    e_lang->embedded = 1;
    e_lang->zyhome = "/tmp";
    e_lang->putenvFn = [](const char *) { return -1; };
    EXPECT_EQ(errorsOf([] { EXPECT_EQ(initExecution(), -1); }),
              "ERROR: cannot set environment variable ZYHOME with '/tmp'\n");
    e_lang->embedded = 0;
}

TEST_F(StartTest, AFolderWithBlanksKeepsThem) {
    std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::path folder = std::filesystem::temp_directory_path() / "zy test folder";
    std::filesystem::create_directory(folder);
    std::filesystem::current_path(folder);
    releaseUserData();
    findUserData();
    start();
    EXPECT_EQ(textOf(SLOT_CWD), folder);
    EXPECT_STREQ(textOf(SLOT_CWDN), "zy test folder");
    EXPECT_EQ(textOf(SLOT_PROMPT), folder.string() + "> ");
    std::filesystem::current_path(before);
    std::filesystem::remove(folder);
}

TEST_F(StartTest, TheManualIsAddedOnce) {
    Variable manual("MANPATH", "/a/man:/zy/docs/man");
    start();
    EXPECT_STREQ(getenv("MANPATH"), "/a/man:/zy/docs/man");
}

TEST_F(StartTest, ErrorsCanFollowStandardOutput) {
    int before = dup(STDERR_FILENO);
    e_lang->errorsToOutput = 1;
    testing::internal::CaptureStdout();
    initExecution();
    fputs("to both\n", stderr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "to both\n");
    dup2(before, STDERR_FILENO);
    close(before);
}

// ---- The user ---------------------------------------------------------------------------------

TEST_F(StartTest, TheUsersHomeIsTheFirstThatApplies) {
    Variable path("HOMEPATH", nullptr), drive("HOMEDRIVE", "d:"), home("HOME", "\\users\\ann");
    EXPECT_EQ(chooseUserHome("/account", "/"), "/account");
    EXPECT_EQ(chooseUserHome("", "/"), "/users/ann");
    setenv("HOMEPATH", "/ann", 1);
    EXPECT_EQ(chooseUserHome("", "/"), "d:/ann");
    setenv("HOMEPATH", "e:ann", 1);
    EXPECT_EQ(chooseUserHome("", "/"), "e:ann/");
    setenv("HOMEPATH", "", 1);
    unsetenv("HOMEDRIVE");
    unsetenv("HOME");
    std::string writable = std::filesystem::temp_directory_path();
    EXPECT_EQ(chooseUserHome("", writable.c_str()), writable);
    EXPECT_EQ(chooseUserHome("", "/nowhere"), "");
}

// ---- Assignments ------------------------------------------------------------------------------

TEST_F(StartTest, AnAssignmentReachesTheEnvironmentAndTheTable) {
    start();
    std::string here = std::filesystem::current_path();
    assign(SLOT_PATH, "a; b;;\\c d\\e;.;");
    EXPECT_EQ(entriesOf(TABLE_PATH), here + "/a|" + here + "/b|/c d/e|.|");
    EXPECT_STREQ(textOf(SLOT_PATH), "a;b;;/c d/e;.;");
    EXPECT_STREQ(getenv("PATH"), "a:b:/c d/e:.");  // an empty entry would mean the current folder

    assign(SLOT_FPATH, "~/zf; \t~ann/x;~bob");
    EXPECT_EQ(entriesOf(TABLE_FPATH), "/users/ann/zf|/users/ann/x|" + here + "/~bob|");
    EXPECT_STREQ(textOf(SLOT_FPATH), "/users/ann/zf;/users/ann/x;~bob");
    assign(SLOT_FPATH, nullptr);
    EXPECT_EQ(entriesOf(TABLE_FPATH), "");

    assign(64, ".a;.b");
    EXPECT_EQ(entriesOf(TABLE_FPATHEXT), ".a|.b|");

    assign(SLOT_HOME, "/h");
    EXPECT_STREQ(getenv("HOME"), "/h");
    assign(SLOT_CWD, "/with blanks/x");
    EXPECT_STREQ(getenv("PWD"), "/with blanks/x");
    assign(50, nullptr);
    EXPECT_EQ(getenv("LANG"), nullptr);
}

TEST_F(StartTest, NumbersReachTheirCells) {
    start();
    assign(SLOT_WARNING, 4);
    EXPECT_EQ(e_lang->warningLevel, 4);
    assign(43, 2);
    EXPECT_EQ(e_lang->debugLevel, 2);
    errno = 0;
    assign(SLOT_ERRNO, EDOM);
    EXPECT_EQ(errno, EDOM);
    EXPECT_EQ(assign(69, 5), "");  // _histsize: read when it is used
}

TEST_F(StartTest, ASlotOutsideTheTableIsReported) {
    start();
    for (int slot : {38, static_cast<int>(SLOT_ARGV), static_cast<int>(SLOT_WARNING)}) {
        runStatus = RUN_CLEAN;
        EXPECT_EQ(errorsOf([&] { onSystemVariableSet(slot, symbolOf(SLOT_WARNING)); }),
                  "ERROR: not a predefined shell variable\n");
        EXPECT_EQ(runStatus, RUN_ERROR);
    }
}

TEST_F(StartTest, ATableKeepsWhatFitsAndSaysSo) {
    std::string list;
    for (int i = 0; i < SEARCH_TABLE_MAX; i++)
        list += "/f" + std::to_string(i) + ";";
    SearchTable table{};
    EXPECT_EQ(errorsOf([&] { splitPathList(list.c_str(), table); }), "");
    EXPECT_EQ(table.count, SEARCH_TABLE_MAX);
    list += "/more";
    EXPECT_EQ(errorsOf([&] { splitPathList(list.c_str(), table); }),
              "ERROR: path table overflow\n");
    EXPECT_EQ(table.count, SEARCH_TABLE_MAX);
    EXPECT_STREQ(table.entries[SEARCH_TABLE_MAX - 1], "/f5118");
    EXPECT_EQ(errorsOf([&] { splitExtensionList(list.c_str(), table); }),
              "ERROR: extension table overflow\n");
    releaseSearchTable(table);
}

// ---- The prompt -------------------------------------------------------------------------------

TEST_F(StartTest, ThePromptIsTheFolderWithAMark) {
    start();
    const ExprNode *prompt = promptExpression;
    ASSERT_NE(prompt, nullptr);
    EXPECT_EQ(prompt->kind, NODE_OPERATOR);
    EXPECT_EQ(prompt->op, OP_STRADD);
    EXPECT_EQ(prompt->left->item->payload.symbol, symbolOf(SLOT_CWD));
    EXPECT_STREQ(prompt->left->next->item->payload.text, "> ");
    assign(SLOT_CWD, "/tmp");
    evalPrompt();
    EXPECT_STREQ(textOf(SLOT_PROMPT), "/tmp> ");

    assign(SLOT_PROMPT, "mine: ");
    EXPECT_EQ(promptExpression, nullptr);
    EXPECT_STREQ(textOf(SLOT_PROMPT), "mine: ");
}

TEST_F(StartTest, AnAssignmentToThePromptIsEvaluatedAnew) {
    start();
    ExprNode *parts = nullptr;
    appendListCell(parts, newSymbolNode(symbolOf(SLOT_CWD)));
    appendListCell(parts, newSymbolNode(symbolOf(SLOT_CWD)));
    StmtNode statement{};
    statement.kind = STMT_EXPRESSION;
    statement.operandA.tree = newOperatorNode(OP_ASSIGN, newSymbolNode(symbolOf(SLOT_PROMPT)),
                                              newOperatorNode(OP_STRADD, parts));
    currentContext->statement = &statement;
    assign(SLOT_PROMPT, "once");
    currentContext->statement = nullptr;
    deleteNode(statement.operandA.tree);
    for (const char *folder : {"/tmp", "/"}) {
        assign(SLOT_CWD, folder);
        evalPrompt();
        EXPECT_EQ(textOf(SLOT_PROMPT), std::string(folder) + folder);
    }
}

TEST_F(StartTest, AnAdministratorHasAnotherMark) {
    userName = updateString(userName, strdup("Administrator"));
    start();
    EXPECT_STREQ(promptExpression->left->next->item->payload.text, "# ");
    nullPrompt();
    EXPECT_EQ(promptExpression, nullptr);
}

TEST_F(StartTest, TheRestrictedPromptIsFixed) {
    e_lang->restricted = 1;
    start();
    EXPECT_EQ(promptExpression, nullptr);
    EXPECT_STREQ(textOf(SLOT_PROMPT), "safezy> ");
}

// ---- Arguments --------------------------------------------------------------------------------

TEST_F(StartTest, ArgumentsAreStoredNotCopied) {
    char *argv[] = {strdup("a.zy"), nullptr};
    copyArgcArgv(1, argv);  // a front end may give them before the variables exist
    start();
    EXPECT_EQ(systemCell(SLOT_ARGC)->data.i, 1);
    EXPECT_EQ(systemCell(SLOT_ARGV)->data.p, argv);
    copyArgcArgv(0, nullptr);
    EXPECT_EQ(systemCell(SLOT_ARGC)->data.i, 0);
    free(argv[0]);
}

// The texts of the record, each followed by |.
std::string split(const char *text, const char *first = nullptr) {
    VarCell *record = strToArgcArgv(text, first);
    EXPECT_EQ(record->type, static_cast<uint32_t>(DT_CARRAY));
    EXPECT_EQ(record->data2.elementType, DT_STRING);
    std::string result;
    char **texts = static_cast<char **>(record->data.p);
    for (uint32_t i = 0; i + 1 < record->count; i++)
        result += std::string(texts[i]) + "|";
    EXPECT_EQ(texts[record->count - 1], nullptr);
    killEntry(record);
    return result;
}

TEST_F(StartTest, ATextSplitsIntoArguments) {
    EXPECT_EQ(split(" prog\ta  b "), "prog|a|b|");
    EXPECT_EQ(split("prog \"a b\" c"), "prog|\"a b\"|c|");
    EXPECT_EQ(split("\"my  prog\" x"), "my prog|x|");
    EXPECT_EQ(split("\"my prog\"ram x"), "my program|x|");
    EXPECT_EQ(split("\"prog\" x"), "prog|x|");
    EXPECT_EQ(split("\"\" x"), "|x|");
    EXPECT_EQ(split("p \"a b\"c d"), "p|\"a bc\"|d|");
    EXPECT_EQ(split("p \"a\" b"), "p|\"a\"|b|");
    EXPECT_EQ(split("p x\"a b"), "p|x\"a|b|");    // a quote inside a word joins nothing
    EXPECT_EQ(split("p \"\\a b"), "p|\"\\a|b|");  // nor does one before a backslash
    EXPECT_EQ(split("p \"a b"), "p|\"a b\"|");    // the end of the text closes it
    EXPECT_EQ(split("a b", "first"), "first|a|b|");
    EXPECT_EQ(split("", "first"), "first|");
    EXPECT_EQ(split(nullptr, "first"), "first|");
    EXPECT_EQ(split(nullptr), "");
}

}  // namespace zy
