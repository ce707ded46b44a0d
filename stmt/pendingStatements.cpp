// A stand-in for what comes later: commands.

#include "instance/report.h"
#include "stmt/arms.h"

namespace zy {

void runCommandStatement(ExecContext *context, StmtNode *statement) {
    runError("undefined operation");
    moveTo(context, statement->next);
}

}  // namespace zy
