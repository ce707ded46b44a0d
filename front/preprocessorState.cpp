// The cells of the preprocessor.

#include "front/preprocessorState.h"

#include <cstdlib>
#include <cstring>

namespace zy {

ConditionGroup *conditionGroup;
int32_t condDepth;
int32_t skipLevel;
bool conditionIdle;
bool directivesIdle;

MacroEntry *macroTable[MACRO_BUCKETS];
Expansion *expansions;
int expansionCount, expansionRoom;
alignas(64) uint16_t lineOrigins[SOURCE_LINE_MAX];  // apart from small cells: seldom touched
int openMacroCalls;
int nestedExpansions;

bool importOpen;

void resetConditions() {
    while (ConditionGroup *group = conditionGroup) {
        conditionGroup = group->outer;
        delete group;
    }
    condDepth = skipLevel = 0;
    conditionIdle = false;
}

// Arguments that were read from earlier lines still refer to the expansions.
void forgetExpansions() {
    if (openMacroCalls == 0)
        expansionCount = 0;
    else
        memset(lineOrigins, 0, sizeof lineOrigins);
}

void releaseExpansions() {
    free(expansions);
    expansions = nullptr;
    expansionCount = expansionRoom = openMacroCalls = nestedExpansions = 0;
}

}  // namespace zy
