// The life of the preprocessor's state: a program starts with none of it.

#include "front/preprocessor.h"

#include "front/macros.h"
#include "front/preprocessorParts.h"

namespace zy {

void resetPreprocessor() {
    resetConditions();
    e_lang->lineOffset = 0;
    e_lang->lineFileName = nullptr;
    e_lang->packAlignment = 0;
}

void releasePreprocessor() {
    releaseIncludeSites();
    freeMacros();
    resetConditions();
    releaseExpansions();
}

}  // namespace zy
