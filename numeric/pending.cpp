// A stand-in: elements are converted one at a time.

#include "instance/report.h"
#include "numeric/convert.h"
#include "numeric/shape.h"

namespace zy {

__attribute__((weak)) int convertElements(void *destination, const void *source, uint32_t count,
                                          int target, int sourceType) {
    auto *to = static_cast<char *>(destination);
    auto *from = static_cast<const char *>(source);
    int step = elementSize(target), sourceStep = elementSize(sourceType);
    for (uint32_t i = 0; i < count; i++) {
        Value element{};
        if (!loadElement(&element, from + size_t{i} * sourceStep, sourceType) ||
            !convertScalar(&element, target) || !storeElement(to + size_t{i} * step, &element))
            return -1;
    }
    return 0;
}

}  // namespace zy
