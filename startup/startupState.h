// record header: state of the room: what the start has found out about the system, the user and the arguments.
// startupState.cpp defines the cells; releaseStartup() gives each its first value.
#pragma once

#include "expr/scope.h"
#include "instance/langState.h"
#include "startup/paths.h"

namespace zy {

// The home folder of the system, with the separators it was given with; "" until it is found.
extern char homeFolder[SOURCE_LINE_MAX];

// Heap texts, set once per instance.
extern char *userName;
extern char *hostName;  // NULL: unknown
extern char *userHome;
extern char *promptText;

// The folders and extensions of the variables that hold such lists.
enum SearchTableIndex {
    TABLE_PATH,
    TABLE_FPATH,
    TABLE_LPATH,
    TABLE_PPATH,
    TABLE_IPATH,
    TABLE_FPATHEXT,
    TABLE_PATHEXT,
    SEARCH_TABLE_COUNT
};
extern SearchTable searchTables[SEARCH_TABLE_COUNT];

// What gives _prompt its text before each line of the console; NULL: the variable's text stands.
extern ExprNode *promptExpression;

// The arguments of the script, not owned. They may be given before the variables exist.
extern int scriptArgc;
extern char **scriptArgv;
// The arguments that were made from a text, owned; NULL otherwise.
extern VarCell *argumentRecord;

}  // namespace zy
