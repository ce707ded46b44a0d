#include "expr/value.h"
#include "instance/report.h"
#include "stmt/stmtNode.h"

namespace zy {

bool runPosition(SourcePosition &position) {
    if (!currentContext || currentContext == evalContext)
        return false;
    const StmtNode *statement = currentContext->statement;
    if (!statement || !statement->file)
        return false;
    position = {statement->line, statement->file};
    return true;
}

}  // namespace zy
