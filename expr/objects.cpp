#include "expr/objects.h"

#include <cstring>

#include "expr/value.h"

namespace zy {

void copyObject(void *target, const void *source, const StructInfo *info) {
    if (target && source && info)
        memmove(target, source, info->size);
}

void *newObjectCopy(const void *source, const StructInfo *info) {
    void *copy = info && source ? allocOrFail(info->size) : nullptr;
    if (!copy)
        return nullptr;
    memset(copy, 0, info->size);
    copyObject(copy, source, info);
    return copy;
}

void ownObject(Value *value) {
    value->payload.p = newObjectCopy(value->payload.p, value->payload2.structInfo);
    value->owned = value->payload.p != nullptr;
    value->noFree = 0;
}

void releaseObject(void *, const StructInfo *) {}

}  // namespace zy
