#include "front/fileNames.h"

#include <cstdlib>
#include <cstring>

#include "expr/value.h"
#include "instance/langState.h"

namespace zy {

const char *internFileName(const char *name) {
    for (const NameCell *cell = e_lang->fileNameList; cell; cell = cell->next)
        if (strcmp(cell->text, name) == 0)
            return cell->text;
    auto *cell = new NameCell{e_lang->fileNameList, copyString(name)};
    e_lang->fileNameList = cell;
    return cell->text;
}

void releaseFileNames() {
    while (NameCell *cell = e_lang->fileNameList) {
        e_lang->fileNameList = cell->next;
        free(cell->text);
        delete cell;
    }
}

}  // namespace zy
