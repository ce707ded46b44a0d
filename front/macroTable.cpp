// The table of macros: 62 buckets by the first character, as the other tables of names.

#include <cstdlib>
#include <cstring>
#include <string>

#include "expr/value.h"
#include "front/lexerState.h"
#include "front/macros.h"
#include "front/names.h"
#include "front/vocabularySwitches.h"
#include "instance/report.h"

namespace zy {

MacroCell *newMacroCell(int paramIndex, const char *text) {
    auto *cell = static_cast<MacroCell *>(allocOrFail(sizeof(MacroCell)));
    if (cell)
        *cell = {paramIndex, copyString(text), nullptr, false};
    return cell;
}

void freeMacroCells(MacroCell *&list) {
    while (MacroCell *cell = list) {
        list = cell->next;
        free(cell->text);
        free(cell);
    }
}

void freeMacro(MacroEntry *macro) {
    freeMacroCells(macro->params);
    freeMacroCells(macro->body);
    free(macro->name);
    delete macro;
}

void linkMacro(MacroEntry *macro) {
    MacroEntry *&head = macroTable[bucketOf(*macro->name)];
    macro->next = head;
    head = macro;
}

MacroEntry *findHashedMacro(const char *name, uint16_t hash) {
    MacroEntry *macro = macroTable[bucketOf(*name)];
    while (macro && (macro->hash != hash || strcmp(macro->name, name) != 0))
        macro = macro->next;
    return macro;
}

MacroEntry *findMacro(const char *name) {
    std::string folded = name;
    foldName(folded.data());
    return findHashedMacro(folded.c_str(), nameHash(folded.c_str()));
}

bool removeMacro(const char *name) {
    MacroEntry *macro = findHashedMacro(name, nameHash(name));
    if (!macro)
        return false;
    MacroEntry **link = &macroTable[bucketOf(*name)];
    while (*link != macro)
        link = &(*link)->next;
    *link = macro->next;
    freeMacro(macro);
    return true;
}

void freeMacros() {
    for (MacroEntry *&bucket : macroTable) {
        while (MacroEntry *macro = bucket) {
            bucket = macro->next;
            freeMacro(macro);
        }
    }
}

namespace {

void warnOfPredefined(const char *name) {
    bool inSource = fileMode || stringMode;
    if (inSource)
        parseWarning("macro %s is redefined", name);
    else
        plainWarning("macro %s is redefined", name);
}

}  // namespace

int defineMacro(const char *name, const char *text, uint16_t hash) {
    MacroCell *body = newMacroCell(0, text);
    if (MacroEntry *known = findHashedMacro(name, hash)) {
        if (!body || known->functionLike || !known->body || strcmp(known->body->text, text) != 0)
            warnOfPredefined(name);
        freeMacroCells(known->params);
        freeMacroCells(known->body);
        known->functionLike = known->variadic = 0;
        known->body = body;
        return 1;
    }
    linkMacro(new MacroEntry{copyString(name), 0, 0, hash, "System predefined macro", 0, nullptr,
                             body, nullptr});
    return 0;
}

}  // namespace zy
