#include "stmt/parseStack.h"

#include "front/tokens.h"

namespace zy {

bool atDeclaration() {
    if (parseTop < 0 || !parseStack[parseTop].isCursor || !parseStack[parseTop].record)
        return false;
    return parseStack[parseTop].statement()->kind == STMT_DECLARATION;
}

}  // namespace zy
