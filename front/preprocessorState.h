// record header: state of the preprocessor: conditional groups, macros, included files.
// front/preprocessorState.cpp defines it; each part has a function that gives it back.
#pragma once

#include <cstdint>

#include "instance/langState.h"

namespace zy {

// ---- Conditional groups -----------------------------------------------------------------------

// An open #if group. Groups may be opened in one file and closed in another.
struct ConditionGroup {
    ConditionGroup *outer;
    bool mayTake;  // a branch of it may still be compiled
};
extern ConditionGroup *conditionGroup;  // the innermost
extern int32_t condDepth;               // open groups
extern int32_t skipLevel;  // 0 while lines are compiled; else the depth at which skipping began
// An expression is parsed whose value doesn't count, in a group that is skipped.
extern bool conditionIdle;
// The word # is a token of no effect: the head of a function file is read, which is parsed later.
extern bool directivesIdle;

// ---- Macros -----------------------------------------------------------------------------------

struct MacroEntry;
constexpr int MACRO_BUCKETS = 62;
extern MacroEntry *macroTable[MACRO_BUCKETS];

// Text of lineBuffer that came of a macro, in the order of the replacements; the number of a row,
// from 1 on, is its place.
struct Expansion {
    const MacroEntry *macro;
    uint16_t parent;  // the one in which the macro's name stood; 0: in the line as it was read
};
extern Expansion *expansions;
extern int expansionCount, expansionRoom;
// The expansion of each character of lineBuffer. Means something while expansionCount isn't 0.
extern uint16_t lineOrigins[SOURCE_LINE_MAX];
// Macro calls whose arguments are being read: these may go on over several lines.
extern int openMacroCalls;
extern int nestedExpansions;  // being read

// To be called when lineBuffer gets a new line.
void forgetExpansions();

// ---- Included files ---------------------------------------------------------------------------

// A file being included; the bottom one, of which `folder` alone counts, stands for where the
// instance was started.
struct IncludeSite {
    IncludeSite *next;
    char *folder;
    char *savedLine;  // the line of the directive, NULL if nothing follows it
    int16_t savedPos, savedLength;
    int16_t depth;  // of the file in the source stack
    int savedLineOffset;
    const char *savedLineName;
};
extern bool importOpen;  // the file at depth 1 hides the static names of its importer

void resetConditions();
void releaseExpansions();

}  // namespace zy
