// Parts of the declaration parser that don't exist yet refuse their text: qualified names.

#include "decl/aggregates.h"
#include "decl/functions.h"
#include "front/lexer.h"
#include "instance/report.h"

namespace zy {

QualifiedName parseQualifiedName(Symbol *symbol, int, int) {
    peekNonBlank();
    if (lineBuffer[linePos] != ':' || lineBuffer[linePos + 1] != ':')
        return QUALIFIED_NONE;
    parseError("member of '%s' cannot be defined", symbol->name->text);
    return QUALIFIED_FAILED;
}

}  // namespace zy
