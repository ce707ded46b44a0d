// The pragmas of paths share one table: the variable, the folders of the form <name> and of a
// package, and what is said of a bad operand.

#include "front/pathPragmas.h"

#include <cstring>

#include "expr/value.h"
#include "front/macros.h"
#include "front/preprocessorParts.h"
#include "instance/report.h"
#include "platform/files.h"
#include "startup/startupState.h"
#include "startup/systemVariables.h"

namespace zy {

namespace {

// ---- Operands ---------------------------------------------------------------------------------

struct Operand {
    enum Form { NONE, TEXT, ANGLE } form = NONE;
    std::string text;
    bool failed = false;  // after a message of its own
};

void readText(Operand &operand) {
    if (tokenClass == TK_CONSTANT && tokenValue.constant->type == DT_STRING) {
        operand.text = tokenValue.constant->payload.text;
        dropToken();
    } else {
        pushedBack = true;
        operand.text = parseLineText();
    }
    operand.form = operand.text.empty() ? Operand::NONE : Operand::TEXT;
}

// A string, an expression of string type, or <name>; the current token begins it. A name that is a
// macro is replaced first.
Operand readOperandHere() {
    Operand operand;
    e_lang->macroExpansionOn = 0;
    expandOperand();
    if (isOpeningAngle()) {
        operand.failed = !readAngleName(operand.text);
        operand.form = operand.failed ? Operand::NONE : Operand::ANGLE;
    } else {
        readText(operand);
    }
    e_lang->macroExpansionOn = 1;
    return operand;
}

Operand readOperand() {
    e_lang->macroExpansionOn = 0;
    nextToken();
    return readOperandHere();
}

bool refuses(const Operand &operand) {
    if (!e_lang->restricted)
        return false;
    return operand.form == Operand::ANGLE ? refusesRestrictedName(operand.text)
                                          : refusesRestrictedPath(operand.text);
}

// ---- Paths ------------------------------------------------------------------------------------

struct PathRow {
    const char *name;
    int slot;
    const char *home;    // folder of the form <name>, under the system's home; NULL: no such form
    const char *suffix;  // folder of a package
    const char *complaint;
};

enum PathIndex { ROW_PATH, ROW_FPATH, ROW_IPATH, ROW_LPATH };

constexpr PathRow pathRows[] = {
    {"_path", SLOT_PATH, nullptr, "/bin;",
     "invalid file specification for #pragma _path \"path\" "},
    {"_fpath", SLOT_FPATH, "/toolkit/lib/", "/lib;",
     "invalid file specification for #pragma _fpath <file> or \"fpath\" "},
    {"_ipath", SLOT_IPATH, "/toolkit/include/", "/include;",
     "invalid file specification for #pragma _ipath <file> or \"ipath\" "},
    {"_lpath", SLOT_LPATH, nullptr, "/dl;",
     "invalid file specification for #pragma _lpath \"lpath\" "},
};

void pragmaOf(const PathRow &row) {
    Operand operand = readOperand();
    bool valid = operand.form == Operand::TEXT || (operand.form == Operand::ANGLE && row.home);
    if (!valid && !operand.failed)
        parseError("%s", row.complaint);
    if (!valid || refuses(operand))
        return;
    if (operand.form == Operand::ANGLE)
        operand.text = homeFolder + std::string(row.home) + operand.text + ';';
    appendToPathVariable(row.slot, operand.text.c_str());
}

// ---- Packages ---------------------------------------------------------------------------------

void refusePackage() {
    plainError("invalid package name specification for #pragma package  \"name\" or <name> ");
    fputs(
        "       or invalid package name specification for #pragma package _?path \"name\" or "
        "<name> \n",
        stderr);
    errorFlag = 1;
}

// The folder of a package that is searched for.
std::string findPackage(const std::string &name) {
    const SearchTable &table = searchTables[TABLE_PPATH];
    for (int i = 0; i < table.count; i++) {
        std::string folder = std::string(table.entries[i]) + '/' + name;
        if (platform::isDirectory(folder.c_str()))
            return folder;
    }
    return name;
}

// The one path that the form `package _fpath "name"` names; NULL in the other forms.
const PathRow *pathOfToken() {
    const char *name = tokenClass == TK_IDENTIFIER ? tokenName() : nullptr;
    for (const PathRow &row : pathRows)
        if (name && strcmp(name, row.name) == 0)
            return &row;
    return nullptr;
}

void addPackage(const std::string &folder) {
    for (const PathRow &row : pathRows)
        appendToPathVariable(row.slot, (folder + row.suffix).c_str());
}

}  // namespace

void pragmaFpath() { pragmaOf(pathRows[ROW_FPATH]); }
void pragmaIpath() { pragmaOf(pathRows[ROW_IPATH]); }
void pragmaLpath() { pragmaOf(pathRows[ROW_LPATH]); }
void pragmaPath() { pragmaOf(pathRows[ROW_PATH]); }

void pragmaPackage() {
    e_lang->macroExpansionOn = 0;
    nextToken();
    const PathRow *single = pathOfToken();
    Operand operand = single ? readOperand() : readOperandHere();
    if (operand.form == Operand::NONE || (single && operand.form == Operand::ANGLE)) {
        if (!operand.failed)
            refusePackage();
        return;
    }
    if (refuses(operand))
        return;
    if (single)
        appendToPathVariable(single->slot, (operand.text + ';').c_str());
    else
        addPackage(operand.form == Operand::ANGLE ? findPackage(operand.text) : operand.text);
}

}  // namespace zy
