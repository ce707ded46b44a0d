// Stand-ins for what other issues bring: commands, longjmp, function files.

#include "instance/report.h"
#include "stmt/arms.h"
#include "stmt/resolve.h"

namespace zy {

void runCommandStatement(ExecContext *context, StmtNode *statement) {
    runError("undefined operation");
    moveTo(context, statement->next);
}

void runLongjmp(ExecContext *context, StmtNode *statement) {
    runError("undefined operation");
    moveTo(context, statement->next);
}

bool continueWithFunctionFile(TypeInfo *) { return false; }

}  // namespace zy
