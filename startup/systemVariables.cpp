// One table says what each system variable starts with and what an assignment to it does. Start
// and assignment share the steps that build search tables and export values.

#include "startup/systemVariables.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>

#include "expr/context.h"
#include "extern/include/embedzy.h"
#include "instance/report.h"
#include "platform/files.h"
#include "platform/user.h"
#include "startup/environment.h"
#include "startup/paths.h"
#include "startup/prompt.h"
#include "startup/startupState.h"

namespace zy {

namespace {

struct SystemVariable;
using Action = void (*)(const SystemVariable &row, VarCell *cell);

struct SystemVariable {
    int slot;
    const char *name;
    Action start;      // gives the cell its start value
    Action assigned;   // follows an assignment
    const char *text;  // what the actions need: a value, folders, the name in the environment
    SearchTableIndex table = TABLE_PATH;
    Symbol *ZyLang::*link = nullptr;  // where the running value is read through the symbol
};

// ---- Start values -----------------------------------------------------------------------------

void startText(const SystemVariable &row, VarCell *cell) { setCellText(cell, row.text); }

void startFromEnvironment(const SystemVariable &row, VarCell *cell) {
    setCellText(cell, readEnvironment(row.text));
}

template <char **text>
void startUserText(const SystemVariable &, VarCell *cell) {
    setCellText(cell, *text);
}

void startShell(const SystemVariable &row, VarCell *cell) {
    const char *shell = readEnvironment(row.text);
    setCellText(cell, shell ? shell : (std::string(homeFolder) + "/zy").c_str());
}

void startFolder(const SystemVariable &, VarCell *cell) {
    setCellText(cell, workingFolder().c_str());
}

void startFolderName(const SystemVariable &, VarCell *cell) {
    std::string folder = workingFolder();
    std::string name = folder.substr(folder.rfind('/') + 1);
    setCellText(cell, name.empty() ? "/" : name.c_str());
}

template <int value>
void startNumber(const SystemVariable &, VarCell *cell) {
    cell->data.i = value;
}

// A front end may have set the level before the start.
template <int ZyLang::*field>
void startFromField(const SystemVariable &, VarCell *cell) {
    cell->data.i = e_lang->*field;
}

void startErrno(const SystemVariable &, VarCell *cell) { cell->data.i = errno; }

void startPrompt(const SystemVariable &, VarCell *cell) {
    setCellText(cell, promptText);
    makePromptExpression(cell);
}

// ---- Assignments ------------------------------------------------------------------------------

void noEffect(const SystemVariable &, VarCell *) {}

void exportText(const SystemVariable &row, VarCell *cell) {
    writeEnvironment(row.text, cell->data.text);
}

template <int ZyLang::*field>
void assignField(const SystemVariable &, VarCell *cell) {
    e_lang->*field = cell->data.i;
}

void assignErrno(const SystemVariable &, VarCell *cell) {
    e_lang->errnoMirror = cell->data.i;
    errno = cell->data.i;
}

void assignPrompt(const SystemVariable &, VarCell *) { keepPromptExpression(); }

void assignExtensions(const SystemVariable &row, VarCell *cell) {
    splitExtensionList(cell->data.text, searchTables[row.table]);
}

void startExtensions(const SystemVariable &row, VarCell *cell) {
    startText(row, cell);
    assignExtensions(row, cell);
}

// ---- Search paths -----------------------------------------------------------------------------

std::string withoutBlanksBehindSemicolons(const char *text) {
    std::string result;
    while (const char *semicolon = strchr(text, ';')) {
        result.append(text, semicolon + 1);
        text = semicolon + 1 + strspn(semicolon + 1, " \t");
    }
    return result + text;
}

void assignFolders(const SystemVariable &row, VarCell *cell) {
    if (cell->data.text) {
        std::string list = withoutBlanksBehindSemicolons(cell->data.text);
        setCellText(cell, expandTildeBare(list.c_str()).c_str());
    }
    splitPathList(cell->data.text, searchTables[row.table]);
}

// Commands are searched by the system too, through the environment.
void assignPath(const SystemVariable &row, VarCell *cell) {
    if (cell->data.text)
        platform::useNativeSeparators(cell->data.text);
    assignFolders(row, cell);
    std::string list = environmentList(cell->data.text ? cell->data.text : "");
    writeEnvironment("PATH", list.c_str());
}

// Each folder of a list, put under the home. Without a home there is none: the bare names would
// mean folders of the system.
std::string underHome(const char *folders) {
    std::string result;
    while (homeFolder[0] && *folders) {
        size_t length = strcspn(folders, ";") + 1;
        if (!e_lang->noOptionalLib || strncmp(folders, "/lib/libopt;", length) != 0)
            result += homeFolder + std::string(folders, length);
        folders += length;
    }
    return result;
}

void startFolders(const SystemVariable &row, VarCell *cell) {
    std::string list = underHome(row.text);
    setCellText(cell, list.c_str());
    splitPathList(list.c_str(), searchTables[row.table]);
}

// The restricted shell finds only what its home has been given for it.
void startPath(const SystemVariable &row, VarCell *cell) {
    std::string list = e_lang->restricted ? underHome("/sbin;/toolkit/sbin;")
                                          : underHome("/bin;/sbin;/toolkit/bin;/toolkit/sbin;") +
                                                platform::programFolders;
    setCellText(cell, list.c_str());
    assignPath(row, cell);
}

// ---- The table --------------------------------------------------------------------------------

const SystemVariable systemVariables[] = {
    {39, "_warning", startFromField<&ZyLang::warningLevel>, assignField<&ZyLang::warningLevel>, ""},
    {40, "_formatf", startText, noEffect, "%.2f", {}, &ZyLang::formatf},
    {41, "_formatd", startText, noEffect, "%.4lf", {}, &ZyLang::formatd},
    {42, "_errno", startErrno, assignErrno, ""},
    {43, "_debug", startFromField<&ZyLang::debugLevel>, assignField<&ZyLang::debugLevel>, ""},
    {44, "_home", startUserText<&userHome>, exportText, "HOME"},
    {45, "_user", startUserText<&userName>, exportText, "USER"},
    {46, "_shell", startShell, exportText, "SHELL"},
    {47, "_path", startPath, assignPath, "", TABLE_PATH},
    {48, "_cwd", startFolder, exportText, "PWD"},
    {49, "_histnum", startText, noEffect, "1", {}, &ZyLang::histnum},
    {50, "_lang", startFromEnvironment, exportText, "LANG"},
    {51, "_lc_all", startFromEnvironment, exportText, "LC_ALL"},
    {52, "_lc_collate", startFromEnvironment, exportText, "LC_COLLATE"},
    {53, "_lc_ctype", startFromEnvironment, exportText, "LC_CTYPE"},
    {54, "_lc_monetary", startFromEnvironment, exportText, "LC_MONETARY"},
    {55, "_lc_numeric", startFromEnvironment, exportText, "LC_NUMERIC"},
    {56, "_lc_time", startFromEnvironment, exportText, "LC_TIME"},
    {57, "_logname", startFromEnvironment, exportText, "LOGNAME"},
    {58, "_tz", startFromEnvironment, exportText, "TZ"},
    {59, "_term", startFromEnvironment, exportText, "TERM"},
    {60, "_fpath", startFolders, assignFolders,
     "/lib/libc;/lib/libzy;/lib/libopt;/lib/libzy/numeric;", TABLE_FPATH},
    {61, "_lpath", startFolders, assignFolders, "/dl;/toolkit/dl;", TABLE_LPATH},
    {62, "_ppath", startFolders, assignFolders, "/package;", TABLE_PPATH},
    {63, "_ipath", startFolders, assignFolders, "/include;/include/windows;/toolkit/include;",
     TABLE_IPATH},
    {64, "_fpathext", startExtensions, assignExtensions, ".zyf", TABLE_FPATHEXT},
    {65, "_pathext", startExtensions, assignExtensions, ".com;.exe;.bat;.cmd", TABLE_PATHEXT},
    {66, "_host", startUserText<&hostName>, noEffect, ""},
    {67, "_cwdn", startFolderName, noEffect, ""},
    {68, "_prompt", startPrompt, assignPrompt, ""},
    {69, "_histsize", startNumber<128>, noEffect, "", {}, &ZyLang::histsize},
    {70, "_setlocale", startNumber<0>, noEffect, "", {}, &ZyLang::setlocale},
    {71, "_ignoreeof", startNumber<0>, noEffect, "", {}, &ZyLang::ignoreeof},
    {72, "_ignoretrigraph", startNumber<0>, noEffect, "", {}, &ZyLang::ignoretrigraph},
    {73, "_status", startNumber<0>, noEffect, "", {}, &ZyLang::status},
};
static_assert(std::size(systemVariables) == SLOT_STATUS - SLOT_WARNING + 1);

const SystemVariable *findRow(int slot) {
    if (slot < SLOT_WARNING || slot > SLOT_STATUS)
        return nullptr;
    return &systemVariables[slot - SLOT_WARNING];
}

}  // namespace

const char *systemVariableName(int slot) {
    const SystemVariable *row = findRow(slot);
    return row ? row->name : nullptr;
}

void setCellText(VarCell *cell, const char *text) {
    char *copy = copyString(text);
    free(cell->data.text);
    cell->data.text = copy;
}

VarCell *systemCell(int slot) { return slotOf(baseFrame, slot); }

void setSystemText(int slot, const char *text) { setCellText(systemCell(slot), text); }

void initSystemVariable(int slot, Symbol *symbol) {
    const SystemVariable *row = findRow(slot);
    if (!row)
        return;
    if (row->link)
        e_lang->*row->link = symbol;
    row->start(*row, symbol->storageCell);
}

void onSystemVariableSet(int slot, Symbol *symbol) {
    const SystemVariable *row = findRow(slot);
    if (!row || symbol->dataType != DT_STRING) {
        runError("not a predefined shell variable");
        return;
    }
    row->assigned(*row, symbol->storageCell);
}

void onIntegerSystemVariableSet(int slot, Symbol *symbol) {
    // Motion variables and the arguments have no row and no effect.
    if (const SystemVariable *row = findRow(slot); row && symbol->dataType == DT_INT)
        row->assigned(*row, symbol->storageCell);
}

void appendToPathVariable(int slot, const char *text) {
    const SystemVariable *row = findRow(slot);
    VarCell *cell = systemCell(slot);
    std::string list = cell->data.text ? cell->data.text : "";
    if (list.find(text) != list.npos)
        return;
    setCellText(cell, (list + text).c_str());
    row->assigned(*row, cell);
}

void createSystemVariables() {
    createBaseFrame();
    for (Symbol *symbol = systemSymbols; symbol; symbol = symbol->next) {
        if (symbol->dataType == DT_CONSTANT)
            continue;
        VarCell *cell = newVarCell(symbol->dataType);
        setSlot(baseFrame, symbol->index, cell);
        symbol->storageCell = cell;
        initSystemVariable(symbol->index, symbol);
    }
}

}  // namespace zy
