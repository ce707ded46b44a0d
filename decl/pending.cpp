// Stand-ins until functions are declared: nothing makes two prototypes to compare yet.

#include "decl/funcInfo.h"

namespace zy {

__attribute__((weak)) void comparePrototypes(const TypeInfo *, const TypeInfo *) {}

}  // namespace zy
