// Inclusion: the file that a directive names is found and becomes the top of the source stack; when
// it has ended, the line that named it goes on. Beside the stack of files stands that of their
// folders, in which names in quotes are searched.

#include <cstdlib>
#include <cstring>

#include "expr/value.h"
#include "front/fileNames.h"
#include "front/lexerParts.h"
#include "front/preprocessor.h"
#include "front/preprocessorParts.h"
#include "front/preprocessorState.h"
#include "instance/report.h"
#include "platform/files.h"
#include "startup/startupState.h"

namespace zy {

// ---- The stack of folders ---------------------------------------------------------------------

namespace {

bool atBottomSite() { return !e_lang->includeSite || !e_lang->includeSite->next; }

void pushIncludeSite(const char *folder) {
    e_lang->includeSite =
        new IncludeSite{e_lang->includeSite, copyString(folder),  nullptr, 0, 0, sourceDepth,
                        e_lang->lineOffset,  e_lang->lineFileName};
}

void releaseTopSite() {
    IncludeSite *site = e_lang->includeSite;
    e_lang->includeSite = site->next;
    free(site->folder);
    free(site->savedLine);
    delete site;
}

// What stands on the line behind the directive is text when the file has ended.
void saveLine(IncludeSite *site) {
    site->savedLine = copyString(lineBuffer);
    site->savedPos = linePos;
    site->savedLength = lineLength;
}

// Whether a line was saved.
bool popIncludeSite() {
    IncludeSite *site = e_lang->includeSite;
    bool hasLine = site->savedLine != nullptr;
    if (hasLine) {
        forgetExpansions();
        memcpy(lineBuffer, site->savedLine, static_cast<size_t>(site->savedLength) + 1);
        lineLength = site->savedLength;
        linePos = site->savedPos;
    }
    e_lang->lineOffset = site->savedLineOffset;
    e_lang->lineFileName = site->savedLineName;
    releaseTopSite();
    return hasLine;
}

// A file that a script includes was put there by who keeps the system: it is trusted.
void suspendRestriction() {
    if (!e_lang->restricted || !atBottomSite())
        return;
    showRestrictedKeywords();
    e_lang->savedRestricted = e_lang->restricted;
    e_lang->restricted = 0;
    e_lang->restrictionSuspended = 1;
}

void resumeRestriction() {
    if (!e_lang->restrictionSuspended || !atBottomSite())
        return;
    e_lang->restrictionSuspended = 0;
    e_lang->restricted = e_lang->savedRestricted;
    if (e_lang->restricted == 1)
        hideRestrictedKeywords();
}

}  // namespace

// A function file stands on the source stack alone.
bool fileEnded() {
    IncludeSite *site = e_lang->includeSite;
    bool hasLine = site && site->next && site->depth == sourceDepth + 1 && popIncludeSite();
    resumeRestriction();
    if (sourceDepth == 0 && importOpen) {
        importOpen = false;
        restoreFileNames();
    }
    return hasLine;
}

void releaseIncludeSites() {
    while (e_lang->includeSite)
        releaseTopSite();
    importOpen = false;
}

void leaveIncludedFiles() {
    for (; sourceDepth > 0; fileEnded()) {
        if (sourceFiles[sourceDepth])
            fclose(sourceFiles[sourceDepth]);
        sourceFiles[sourceDepth--] = nullptr;
    }
}

void rememberStartFolder(const char *folder) {
    if (!e_lang->includeSite)
        pushIncludeSite(folder);
}

// ---- The operand ------------------------------------------------------------------------------

namespace {

struct ModeRow {
    SearchTableIndex table;
    const char *complaint;  // of a bad operand
};

constexpr ModeRow modeRows[] = {
    {TABLE_IPATH, "invalid file specification for #include "},
    {TABLE_FPATH, "invalid file specification for #pragma importf file "},
    {TABLE_PATH, "invalid file specification for #pragma import command "},
    {TABLE_PATH, "invalid file specification for . command "},
};

const ModeRow &rowOf(IncludeMode mode) { return modeRows[mode - 1]; }

struct Operand {
    std::string name;
    bool quoted = false;
    bool failed = false;  // after a message of its own
};

Operand readOperand() {
    DirectiveLine line(false);
    Operand operand;
    nextToken();
    expandOperand();
    if (isOpeningAngle()) {
        operand.failed = !readAngleName(operand.name);
    } else if (tokenClass == TK_KEYWORD) {
        pushedBack = true;
        operand.quoted = true;
        operand.name = parseLineText();
    } else if (tokenClass == TK_CONSTANT && tokenValue.constant->type == DT_STRING) {
        operand.quoted = true;
        operand.name = tokenValue.constant->payload.text;
    }
    dropToken();
    return operand;
}

// ---- The search -------------------------------------------------------------------------------

bool isAbsolute(const std::string &name) {
    return name[0] == '/' || (name.size() > 1 && name[1] == ':');
}

bool tryFolder(const char *folder, const std::string &name, std::string &found) {
    std::string path = std::string(folder) + '/' + name;
    if (platform::isDirectory(path.c_str()) || !platform::isReadable(path.c_str()))
        return false;
    found = path;
    return true;
}

bool searchSites(const std::string &name, std::string &found) {
    for (const IncludeSite *site = e_lang->includeSite; site; site = site->next)
        if (site->folder && tryFolder(site->folder, name, found))
            return true;
    return false;
}

bool searchTable(const SearchTable &table, const std::string &name, std::string &found) {
    for (int i = 0; i < table.count; i++)
        if (tryFolder(table.entries[i], name, found))
            return true;
    return false;
}

// What isn't found stays as it is written, and is tried from the current folder.
std::string findFile(const Operand &operand, const SearchTable &table) {
    std::string found = operand.name;
    if (isAbsolute(operand.name))
        return found;
    bool besideIncluders = operand.quoted && !e_lang->restricted;
    if (!besideIncluders || !searchSites(operand.name, found))
        searchTable(table, operand.name, found);
    return found;
}

// What a program is, by the headers that it asks for.
void noteAppType(const std::string &header) {
    constexpr int windows = 1, consoleLibrary = 2;
    if (header == "windows.h" || header == "GL/gl.h")
        e_lang->appType = windows;
    else if (header == "conio.h")
        e_lang->appType = consoleLibrary;
}

bool refuses(const Operand &operand, IncludeMode mode) {
    if (!e_lang->restricted)
        return false;
    return refusesRestrictedPath(operand.name) ||
           (mode != INCLUDE_HEADER && refusesRestrictedName(operand.name));
}

// The path of the file that the operand names, "" after a message; whether text follows it.
std::string findIncludeFile(IncludeMode mode, bool &textFollows) {
    Operand operand = readOperand();
    textFollows = false;
    if (operand.name.empty() && !operand.failed)
        parseError("%s", rowOf(mode).complaint);
    if (operand.name.empty() || refuses(operand, mode)) {
        DirectiveLine line(false);
        skipRestOfLine();
        return "";
    }
    if (!operand.quoted)
        noteAppType(operand.name);
    DirectiveLine line(true);
    skipLineSpace();
    textFollows = !atLineEnd();
    return findFile(operand, searchTables[rowOf(mode).table]);
}

void enterFile(FILE *file, const char *path) {
    if (sourceDepth >= 0)
        savedLines[sourceDepth] = currentLine;
    sourceDepth++;
    sourceFiles[sourceDepth] = file;
    sourceNames[sourceDepth] = internFileName(path);
}

}  // namespace

bool readAngleName(std::string &name) {
    const char *start = lineBuffer + linePos;
    const char *end = strchr(start, '>');
    if (!end) {
        parseError("missing closing '>' ");
        return false;
    }
    name.assign(start, end);
    linePos = static_cast<int16_t>(end + 1 - lineBuffer);
    return true;
}

bool refusesRestrictedPath(const std::string &path) {
    if (path[0] == '/')
        parseError("/ as the first chararater is restricted ");
    else if (path[0] == '\\')
        parseError("\\ as the first chararater is restricted ");
    else if (path.find(':') != path.npos)
        parseError(": is restricted ");
    else
        return false;
    return true;
}

bool refusesRestrictedName(const std::string &name) {
    if (name.find_first_of("/\\") == name.npos)
        return false;
    parseError("/ is restricted ");
    return true;
}

void includeFile(IncludeMode mode) {
    if (sourceDepth >= SOURCE_DEPTH_MAX - 1) {
        errorFlag = 1;
        DirectiveLine line(false);
        skipRestOfLine();
        return;
    }
    bool textFollows;
    std::string path = findIncludeFile(mode, textFollows);
    if (path.empty())
        return;
    const char *name = path.c_str();
    FILE *file = platform::openForReading(name);
    if (!file) {
        parseError("cannot find file '%s'", name);
        return;
    }
    enterFile(file, name);
    suspendRestriction();
    pushIncludeSite(path.substr(0, path.rfind('/')).c_str());
    if (textFollows)
        saveLine(e_lang->includeSite);
    currentLine = 0;
    e_lang->lineOffset = 0;
    e_lang->lineFileName = nullptr;
    fileMode = true;
    stringMode = endOfFile = false;
    readSourceLine();
}

}  // namespace zy
