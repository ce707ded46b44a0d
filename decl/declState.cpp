#include "decl/declState.h"

namespace zy {

StructInfo *currentStruct;
bool destructorSeen;
bool classDeclared;
uint32_t memberAccess = FLAG_PUBLIC;
bool memberProtected;
FunctionFile *functionFiles;
bool inFunctionFile;
int declarationDepth;
bool declaresGlobals;
int structCounter;
const OpenBody *innermostBody;
RecordPool<TypeInfo, 192> typeRecords;
TypeInfo *retiredTags;

void resetDeclState() {
    currentStruct = nullptr;
    destructorSeen = classDeclared = memberProtected = false;
    memberAccess = FLAG_PUBLIC;
    innermostBody = nullptr;
}

}  // namespace zy
