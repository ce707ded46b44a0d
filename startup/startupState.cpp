#include "startup/startupState.h"

namespace zy {

char homeFolder[SOURCE_LINE_MAX];

char *userName;
char *hostName;
char *userHome;
char *promptText;

SearchTable searchTables[SEARCH_TABLE_COUNT];

ExprNode *promptExpression;

int scriptArgc;
char **scriptArgv;
VarCell *argumentRecord;

}  // namespace zy
