// Texts of literals, which scripts may point to for as long as the program is there.

#include <cstdlib>

#include "expr/nodes.h"
#include "expr/parserState.h"

namespace zy {

char *keepText(char *text) {
    ExprNode *cell = text ? newListCell(nullptr) : nullptr;
    if (!cell)
        return text;
    cell->payload.text = text;
    cell->next = keptTexts;
    keptTexts = cell;
    return text;
}

void releaseKeptTexts() {
    while (ExprNode *cell = keptTexts) {
        keptTexts = cell->next;
        free(cell->payload.text);
        recycleValue(cell);
    }
}

}  // namespace zy
