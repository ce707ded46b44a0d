#include "decl/typeInfo.h"

#include <cstdlib>

#include "expr/nodes.h"

namespace zy {

TypeInfo *newTypeInfo() {
    auto *info = static_cast<TypeInfo *>(allocOrFail(sizeof(TypeInfo)));
    if (info) {
        *info = TypeInfo{};
        info->level = FILE_LEVEL;
        info->dataType = DT_INT;
    }
    return info;
}

void releaseTypeInfo(TypeInfo *info) {
    deleteNode(info->arrayLink);
    deleteNode(info->pointerFunction);
    deleteNode(info->functionLink);  // or the constant
    free(info);
}

DataType dataTypeOf(const TypeInfo *info) {
    if (!info)
        return DT_UNDEFINED;
    switch (info->kind) {
        case KIND_C_ARRAY:
        case KIND_ASSUMED_C_ARRAY: return DT_CARRAY;
        case KIND_ARRAY:
        case KIND_ASSUMED_ARRAY: return DT_ARRAY;
        case KIND_P_C_ARRAY: return DT_P_CARRAY;
        case KIND_P_ARRAY: return DT_P_ARRAY;
        case KIND_FUNCTION: return DT_FUNCTION;
        case KIND_P_FUNCTION: return DT_P_FUNCTION;
        case KIND_PP_FUNCTION: return DT_PP_FUNCTION;
        case KIND_PPP_FUNCTION: return DT_PPP_FUNCTION;
        default: return static_cast<DataType>(info->dataType);
    }
}

}  // namespace zy
