// __func__ is a cell of the base frame. A plain function's name lives as long as the instance, so
// the cell points to it; that of a member function is put together in a buffer.

#include "stmt/functionName.h"

#include <cstdio>
#include <cstring>

#include "decl/funcInfo.h"
#include "decl/structInfo.h"
#include "expr/members.h"
#include "expr/scope.h"
#include "front/names.h"
#include "stmt/execute.h"

namespace zy {

const char *shownName(const TypeInfo *function) {
    const char *name = function->name ? function->name->text : "";
    return strncmp(name, "___", 3) == 0 ? "main" : name;
}

namespace {

const char *className(const TypeInfo *function) {
    const TypeInfo *object = function->functionLink->parameters;
    const StructInfo *info = object ? object->structLink : nullptr;
    return info && info->tag && info->tag->name ? plainTag(info->tag->name->text) : "";
}

const char *fullName(const TypeInfo *function) {
    if (!function)
        return "";
    if (!(function->flags & FLAG_MEMBER_FUNCTION))
        return shownName(function);
    snprintf(memberFunctionName, MEMBER_NAME_SIZE, "%s::%s", className(function),
             shownName(function));
    return memberFunctionName;
}

}  // namespace

void setFunctionName(const TypeInfo *function) {
    constexpr int functionNameSlot = 76;
    if (functionNameFrame != baseFrame) {
        functionNameFrame = baseFrame;
        functionNameCell = baseFrame ? slotOf(baseFrame, functionNameSlot) : nullptr;
    }
    if (functionNameCell)
        functionNameCell->data.text = const_cast<char *>(fullName(function));
}

}  // namespace zy
