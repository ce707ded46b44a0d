#include "stmt/parseStack.h"

#include "decl/funcInfo.h"
#include "expr/value.h"
#include "front/lexerState.h"
#include "instance/report.h"

namespace zy {

bool atDeclaration() {
    if (parseTop < 0 || !parseStack[parseTop].isCursor || !parseStack[parseTop].record)
        return false;
    return parseStack[parseTop].statement()->kind == STMT_DECLARATION;
}

namespace {

bool pushEntry(bool isCursor, void *record) {
    if (parseTop + 1 >= PARSE_STACK_SIZE) {
        parseError("statements are nested too deeply");
        endOfInput = true;
        return false;
    }
    parseStack[++parseTop] = {isCursor, record};
    return true;
}

}  // namespace

bool pushCursor(StmtNode *statement) { return pushEntry(true, statement); }

bool pushContext(void *record) { return pushEntry(false, record); }

FuncInfo *functionAt(int index) {
    if (index < 0 || parseStack[index].isCursor)
        return nullptr;
    auto *function = static_cast<FuncInfo *>(parseStack[index].record);
    return function->kind == NODE_FUNC_INFO ? function : nullptr;
}

FuncInfo *parsedFunction() {
    for (int index = parseTop; index > FILE_LEVEL_TOP; index--)
        if (FuncInfo *function = functionAt(index))
            return function;
    return nullptr;
}

}  // namespace zy
