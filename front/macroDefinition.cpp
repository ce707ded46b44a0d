// #define and #undef. The text of a macro is built token by token, so that blanks, comments and
// spellings of constants don't make two definitions differ.

#include <cstdlib>
#include <cstring>

#include "expr/value.h"
#include "front/lexerParts.h"
#include "front/macros.h"
#include "front/preprocessorParts.h"
#include "instance/report.h"

namespace zy {

namespace {

constexpr char GLOBALDEF[] = "__GLOBALDEF__";

// Reads a token. Of a name the cursor is left right behind it: the look-up of a keyword may have
// stepped further, to see whether the word is called. NULL for any other token.
const char *readWord() {
    int16_t start = linePos;
    nextToken();
    const char *name = tokenName();
    if (name)
        linePos = static_cast<int16_t>(start + static_cast<int16_t>(strlen(name)));
    return name;
}

// Reads what must be the name of a macro or a parameter.
const char *readName() {
    skipLineSpace();
    const char *name = readWord();
    if (!name)
        dropToken();
    return name;
}

bool takeDots() {
    if (strncmp(lineBuffer + linePos, "...", 3) != 0)
        return false;
    linePos = static_cast<int16_t>(linePos + 3);
    return true;
}

int findParameter(const MacroEntry *macro, const char *name) {
    int index = 1;
    for (const MacroCell *param = macro->params; param; param = param->next, index++)
        if (strcmp(param->text, name) == 0)
            return index;
    return 0;
}

MacroCell *lastCell(MacroCell *list) {
    while (list && list->next)
        list = list->next;
    return list;
}

MacroCell *appendCell(MacroCell *&list, int paramIndex, const char *text) {
    MacroCell *cell = newMacroCell(paramIndex, text);
    (list ? lastCell(list)->next : list) = cell;
    return cell;
}

// ---- Parameters -------------------------------------------------------------------------------

// Reads one parameter and the token behind it. False after a message.
bool readParameter(MacroEntry *macro) {
    const char *name = readName();
    if (!name) {
        parseError("invalid token in #define macro parameters");
        return false;
    }
    if (findParameter(macro, name)) {
        parseError("duplicate formal parameter name `%s' in `#define'", name);
        return false;
    }
    appendCell(macro->params, 0, name);
    skipLineSpace();
    macro->variadic = takeDots();
    skipLineSpace();
    nextToken();
    if (isChar(')') || (isChar(',') && !macro->variadic))
        return true;
    dropToken();
    parseError("syntax error in macro parameters");
    return false;
}

// With the cursor at the `(`. False after a message.
bool readParameters(MacroEntry *macro) {
    linePos++;
    skipLineSpace();
    bool isEmpty = lineBuffer[linePos] == ')';
    linePos = static_cast<int16_t>(linePos + (isEmpty ? 1 : 0));
    for (bool open = !isEmpty; open; open = isChar(',')) {
        skipLineSpace();
        if (takeDots()) {
            macro->variadic = 1;
            if (!expectChar(')', true)) {
                pushedBack = false;  // the rest of the line isn't read
                dropToken();
                return false;
            }
            break;
        }
        if (!readParameter(macro))
            return false;
    }
    if (macro->variadic)
        appendCell(macro->params, 0, "__VA_ARGS__");
    return true;
}

// ---- The body ---------------------------------------------------------------------------------

class BodyReader {
public:
    explicit BodyReader(MacroEntry *entry) : macro(entry) {}
    // False after a message.
    bool read();

private:
    bool readPiece();
    bool readStringizing();
    void readPaste();
    void trim();
    void closeText();

    MacroEntry *macro;
    std::string pending;       // text that has no cell yet
    bool behindPaste = false;  // the piece before was ##
};

void BodyReader::trim() {
    while (!pending.empty() && pending.back() == ' ')
        pending.pop_back();
}

void BodyReader::closeText() {
    if (!pending.empty())
        appendCell(macro->body, 0, pending.c_str());
    pending.clear();
}

// ## leaves nothing between what stands on its sides.
void BodyReader::readPaste() {
    linePos++;
    skipLineSpace();
    trim();
    MacroCell *last = pending.empty() ? lastCell(macro->body) : nullptr;
    if (last)
        last->raw = true;
    if (macro->functionLike)
        closeText();
    behindPaste = true;
}

bool BodyReader::readStringizing() {
    closeText();
    appendCell(macro->body, 0, "#");
    const char *name = atLineEnd() ? nullptr : readName();
    int index = name ? findParameter(macro, name) : 0;
    if (index == 0) {
        parseError("'#' must be followed by formal identifier in #define");
        return false;
    }
    appendCell(macro->body, index, name);
    return true;
}

bool BodyReader::readPiece() {
    if (takeDots()) {
        pending += "...";
        return true;
    }
    int start = linePos;
    bool raw = behindPaste;
    behindPaste = false;
    if (const char *name = readWord()) {
        int index = findParameter(macro, name);
        if (index == 0) {
            pending += name;
            return true;
        }
        closeText();
        if (MacroCell *cell = appendCell(macro->body, index, name))
            cell->raw = raw;
        return true;
    }
    bool isHash = tokenClass == TK_KEYWORD && lineBuffer[start] == '#' && linePos == start + 1;
    if (isHash && lineBuffer[linePos] == '#') {
        readPaste();
        return true;
    }
    if (isHash && macro->functionLike)
        return readStringizing();
    appendToken(pending, start);
    return true;
}

bool BodyReader::read() {
    skipLineSpace();
    while (!atLineEnd()) {
        if (!readPiece())
            return false;
        if (skipLineSpace())
            pending += ' ';
    }
    trim();
    if (!pending.empty() || !macro->body)
        appendCell(macro->body, 0, pending.c_str());
    return true;
}

bool fitsLine(const MacroEntry *macro) {
    size_t length = 0;
    for (const MacroCell *cell = macro->body; cell; cell = cell->next)
        length += strlen(cell->text);
    if (length < SOURCE_LINE_MAX)
        return true;
    parseError("the text of macro '%s' exceeded the maximum length of %d", macro->name,
               SOURCE_LINE_MAX);
    return false;
}

// ---- The table --------------------------------------------------------------------------------

bool sameCells(const MacroCell *a, const MacroCell *b) {
    for (; a && b; a = a->next, b = b->next)
        if (a->paramIndex != b->paramIndex || a->raw != b->raw || strcmp(a->text, b->text) != 0)
            return false;
    return !a && !b;
}

bool sameMacro(const MacroEntry *a, const MacroEntry *b) {
    return a->functionLike == b->functionLike && sameCells(a->params, b->params) &&
           sameCells(a->body, b->body);
}

void warnOfRedefinition(const MacroEntry *known) {
    if (fileMode || stringMode)
        parseWarning("macro %s was defined at line %d in file %s, redefined", known->name,
                     known->line, known->file);
    else
        plainWarning("macro %s is redefined", known->name);
}

// Takes the new definition. 0: new or the same; 1: changed.
int install(MacroEntry *macro) {
    MacroEntry *known = findHashedMacro(macro->name, macro->hash);
    if (!known) {
        linkMacro(macro);
        return 0;
    }
    int changed = sameMacro(known, macro) ? 0 : 1;
    if (changed)
        warnOfRedefinition(known);
    std::swap(known->params, macro->params);
    std::swap(known->body, macro->body);
    known->functionLike = macro->functionLike;
    known->variadic = macro->variadic;
    known->line = macro->line;
    known->file = macro->file;
    freeMacro(macro);
    return changed;
}

void switchGlobalDef(const char *name, int on) {
    if (strcmp(name, GLOBALDEF) == 0)
        e_lang->globalDef = on;
}

bool readDefinition(MacroEntry *macro) {
    macro->functionLike = lineBuffer[linePos] == '(';
    return (!macro->functionLike || readParameters(macro)) && BodyReader(macro).read() &&
           fitsLine(macro);
}

}  // namespace

int defineDirective() {
    DirectiveLine line(false);
    const char *name = readName();
    if (!name) {
        parseError("invalid token for #define name macro ");
        return -1;
    }
    const char *file = sourceDepth >= 0 && sourceNames[sourceDepth] ? sourceNames[sourceDepth] : "";
    auto *macro = new MacroEntry{copyString(name), 0,       0,       nameHash(name), file,
                                 currentLine,      nullptr, nullptr, nullptr};
    if (!readDefinition(macro)) {
        freeMacro(macro);
        return -2;
    }
    switchGlobalDef(macro->name, 1);
    return install(macro);
}

int undefDirective() {
    DirectiveLine line(false);
    const char *name = readName();
    if (!name) {
        parseError("invalid token for #undef macro name");
        return -1;
    }
    switchGlobalDef(name, 0);
    return removeMacro(name) ? 0 : 1;
}

}  // namespace zy
