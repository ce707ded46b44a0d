// Cells of the declaration parser that nested declarations share; decl/declState.cpp defines them.
#pragma once

#include "decl/structInfo.h"
#include "instance/recordPool.h"

namespace zy {

extern StructInfo *currentStruct;  // of the type name in use
extern bool destructorSeen;        // a ~ was read: the function that follows is a destructor
extern bool classDeclared;         // the word was class, not struct or union
extern uint32_t memberAccess;      // FLAG_PUBLIC or FLAG_PRIVATE
extern bool memberProtected;
// A function file of the program.
struct FunctionFile {
    FunctionFile *next;
    NameEntry *function;
    const char *path;  // interned
    enum State { HEAD_READ, PARSED, REFUSED } state;
};
extern FunctionFile *functionFiles;  // in the order in which they were found
extern bool inFunctionFile;          // one is, or was, a source of the running parse

// Bodies of aggregates and parameter lists stand in each other on the host's stack.
constexpr int DECLARATION_DEPTH_MAX = 256;
extern int declarationDepth;
extern bool declaresGlobals;  // a host's declarations: all their names are global ones
extern int structCounter;  // numbers aggregates without a tag, for the life of the instance

// The bodies of aggregates in which the parser stands, innermost first: their tags and enumerators
// are seen in the rest of the body.
struct OpenBody {
    StructInfo *info;
    const OpenBody *outer;
};
extern const OpenBody *innermostBody;
extern RecordPool<TypeInfo, 192> typeRecords;  // the built-in symbols of an instance fit a block
extern TypeInfo *retiredTags;  // linked through `next`; releaseRetiredTags() releases them

void resetDeclState();

}  // namespace zy
