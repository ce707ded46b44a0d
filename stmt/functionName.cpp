// __func__ is a cell of the base frame, which points to the name in the plan of the running
// function.

#include "stmt/functionName.h"

#include <cstring>

#include "decl/funcInfo.h"
#include "decl/structInfo.h"
#include "expr/members.h"
#include "front/names.h"

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

}  // namespace

std::string fullName(const TypeInfo *function) {
    bool isMember = function->flags & FLAG_MEMBER_FUNCTION;
    return isMember ? std::string(className(function)) + "::" + shownName(function)
                    : shownName(function);
}

VarCell *findFunctionNameCell() {
    constexpr int functionNameSlot = 76;
    functionNameFrame = baseFrame;
    functionNameCell = baseFrame ? slotOf(baseFrame, functionNameSlot) : nullptr;
    return functionNameCell;
}

}  // namespace zy
