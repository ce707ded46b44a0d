// Members of structs, classes and unions by their names.

#include <cstring>

#include "decl/structInfo.h"
#include "expr/parserParts.h"
#include "expr/typeQueries.h"
#include "instance/report.h"

namespace zy {

namespace {

TypeInfo *memberNamed(const StructInfo *info, const NameEntry *name) {
    TypeInfo *member = info->members;
    while (member && member->name != name)
        member = member->next;
    return member;
}

// Code of the class itself runs or is being parsed.
bool insideClass(const StructInfo *info) {
    for (const ClassContext *context = classContext; context; context = context->next)
        if (context->thisFormal && context->thisFormal->structLink == info)
            return true;
    return false;
}

const char *tagText(const StructInfo *info) {
    return info->tag && info->tag->name ? plainTag(info->tag->name->text) : "";
}

}  // namespace

bool isHiddenMember(const StructInfo *info, const TypeInfo *member) {
    return (member->flags & FLAG_PRIVATE) && member->dataType != DT_TAG && !insideClass(info);
}

const char *plainTag(const char *name) { return strncmp(name, "_zy_", 4) == 0 ? name + 4 : name; }

TypeInfo *findMember(const ExprNode *tree, NameEntry *name) {
    const StructInfo *info = structInfoOf(tree);
    TypeInfo *member = info ? memberNamed(info, name) : nullptr;
    if (!member) {
        parseError("struct/class/union member '%s' undefined", name->text);
        return nullptr;
    }
    if (member->flags & FLAG_CONSTRUCTOR) {
        parseError("explicit call of constructor %s()", name->text);
        return nullptr;
    }
    if (isHiddenMember(info, member)) {
        parseError("access private member %s::%s", tagText(info), name->text);
        return nullptr;
    }
    return member;
}

int memberIndex(const StructInfo *info, const TypeInfo *member) {
    int index = 0;
    for (const TypeInfo *each = info->members; each && each != member; each = each->next)
        index++;
    return index;
}

}  // namespace zy
