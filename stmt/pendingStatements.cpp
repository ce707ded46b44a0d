// Stand-ins for what other issues bring: commands, longjmp.

#include "instance/report.h"
#include "stmt/arms.h"

namespace zy {

void runCommandStatement(ExecContext *context, StmtNode *statement) {
    runError("undefined operation");
    moveTo(context, statement->next);
}

void runLongjmp(ExecContext *context, StmtNode *statement) {
    runError("undefined operation");
    moveTo(context, statement->next);
}

}  // namespace zy
