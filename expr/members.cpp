// Members of structs, classes and unions by their names.

#include <cstring>

#include "decl/structInfo.h"
#include "expr/parserParts.h"
#include "expr/select.h"
#include "expr/typeQueries.h"
#include "instance/report.h"

namespace zy {

namespace {

const char *tagText(const StructInfo *info) {
    return info->tag && info->tag->name ? plainTag(info->tag->name->text) : "";
}

}  // namespace

const TypeInfo *ownMember(const StructInfo *info, const TypeInfo *member) {
    const TypeInfo *each = info->members;
    while (each && each != member &&
           !(each->flags & FLAG_ANONYMOUS && ownMember(each->structLink, member)))
        each = each->next;
    return each;
}

TypeInfo *memberNamed(TypeInfo *list, const NameEntry *name) {
    for (TypeInfo *member = list; member; member = member->next) {
        if (member->flags & FLAG_ANONYMOUS) {
            if (TypeInfo *inner = memberNamed(member->structLink->members, name))
                return inner;
        } else if (member->name == name) {
            return member;
        }
    }
    return nullptr;
}

bool insideClass(const StructInfo *info) {
    for (const ClassContext *context = classContext; context; context = context->next)
        if (context->thisFormal && context->thisFormal->structLink == info)
            return true;
    return false;
}

bool isHiddenMember(const StructInfo *info, const TypeInfo *member) {
    return (member->flags & FLAG_PRIVATE) && member->dataType != DT_TAG && !insideClass(info);
}

std::string classText(const NameEntry *name) {
    const ClassContext *context = classContext;
    bool isInside = context && context->thisFormal && context->member;
    bool isFunction = strcmp(name->text, "__class_func__") == 0;
    if (!isInside || (!isFunction && strcmp(name->text, "__class__") != 0))
        return "";
    std::string text = tagText(context->thisFormal->structLink);
    return isFunction ? text + "::" + context->member->name->text : text;
}

const char *plainTag(const char *name) { return strncmp(name, "_zy_", 4) == 0 ? name + 4 : name; }

TypeInfo *findMember(const ExprNode *tree, NameEntry *name) {
    const StructInfo *info = structInfoOf(tree);
    TypeInfo *member = info ? memberNamed(info->members, name) : nullptr;
    if (!member) {
        parseError("struct/class/union member '%s' undefined", name->text);
        return nullptr;
    }
    if (member->flags & FLAG_CONSTRUCTOR) {
        parseError("explicit call of constructor %s()", name->text);
        return nullptr;
    }
    if (isHiddenMember(info, ownMember(info, member))) {
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

ExprNode *newMemberAccess(int op, ExprNode *object, const StructInfo *info,
                          const TypeInfo *member) {
    const TypeInfo *own = nullptr;
    for (; own != member; info = own->structLink, op = OP_MEMBER) {
        own = ownMember(info, member);
        object = bindOperator(newOperatorNode(op, object, newIntNode(memberIndex(info, own))));
    }
    return object;
}

}  // namespace zy
