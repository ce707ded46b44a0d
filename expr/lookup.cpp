// How a name finds its declaration. Inside a member function the members of its class stand between
// the function and what encloses it: they shadow file scope and outer blocks, and are shadowed by
// the function's own blocks and formals.

#include "decl/declState.h"
#include "decl/funcInfo.h"
#include "decl/layout.h"
#include "decl/structInfo.h"
#include "expr/members.h"
#include "expr/nodes.h"
#include "expr/scope.h"
#include "front/lexer.h"
#include "stmt/parseStack.h"

namespace zy {

namespace {

TypeInfo *findInList(TypeInfo *list, const NameEntry *name) {
    while (list && list->name != name)
        list = list->next;
    return list;
}

bool callFollows() {
    peekNonBlank();
    return lineBuffer[linePos] == '(';
}

// A member function is meant only where it is called.
TypeInfo *findMemberOf(const ClassContext *record, const NameEntry *name) {
    const StructInfo *info = record->thisFormal->structLink;
    TypeInfo *member = info ? memberNamed(info->members, name) : nullptr;
    constexpr uint32_t functionFlags = FLAG_MEMBER_FUNCTION | FLAG_CONSTRUCTOR | FLAG_DESTRUCTOR;
    if (member && (member->flags & functionFlags) && !callFollows())
        return nullptr;
    return member;
}

constexpr int OUTERMOST = -1;  // below every list: all records count

// The member that hides a list of that level: one of a class whose member function lies inside it.
TypeInfo *findHidingMember(ClassContext *record, const NameEntry *name, int listLevel,
                           ClassContext **classOut) {
    for (; record && record->thisFormal; record = record->next) {
        if (listLevel >= record->thisFormal->level)
            break;
        if (TypeInfo *member = findMemberOf(record, name)) {
            if (classOut)
                *classOut = record;
            return member;
        }
    }
    return nullptr;
}

// ---- While parsing ----------------------------------------------------------------------------

struct NameList {
    TypeInfo *first = nullptr;
    int level = OUTERMOST;
    bool isScope = false;
};

NameList listOf(const ParseEntry &entry) {
    if (!entry.record)
        return {};
    if (entry.isCursor) {
        StmtNode *statement = entry.statement();
        if (statement->kind != STMT_BLOCK)
            return {};
        return {statement->symbols(), statement->level, true};
    }
    if (recordKindOf(entry.record) != NODE_FUNC_INFO)
        return {};
    const auto *function = static_cast<const FuncInfo *>(entry.record);
    return {function->parameters, function->parameterLevel, true};
}

constexpr int FIRST_INNER_ENTRY = 2;  // below it: the root and the main block

}  // namespace

// In the body of an aggregate its types and enumerators are known.
TypeInfo *findInOpenBodies(const NameEntry *name) {
    for (const OpenBody *body = innermostBody; body; body = body->outer) {
        TypeInfo *member = findInList(body->info->members, name);
        if (member && (member->storage == STORAGE_TYPEDEF || isEnumerator(member)))
            return member;
    }
    return nullptr;
}

namespace {

TypeInfo *enumeratorInside(TypeInfo *list, const NameEntry *name) {
    for (; list; list = list->next) {
        if (list->dataType != DT_TAG || !list->structLink || list->flags & FLAG_IN_CLASS)
            continue;
        TypeInfo *member = findInList(list->structLink->members, name);
        if (member && isEnumerator(member))
            return member;
        if (TypeInfo *inner = enumeratorInside(list->structLink->members, name))
            return inner;
    }
    return nullptr;
}

// As in C, the constants of an enum in the body of a struct are known behind it; those of a class
// are not.
TypeInfo *enumeratorInStructs(const NameEntry *name) {
    for (int i = parseTop; i >= FIRST_INNER_ENTRY - 1; i--)
        if (TypeInfo *found = enumeratorInside(listOf(parseStack[i]).first, name))
            return found;
    return nullptr;
}

}  // namespace

Symbol *lookupSymbolParse(NameEntry *name, TypeInfo *memberList, ClassContext **classOut) {
    // A constructor doesn't hide its class.
    TypeInfo *member = findInList(memberList, name);
    if (member && !(member->flags & FLAG_CONSTRUCTOR))
        return member;
    if (TypeInfo *member = findInOpenBodies(name))
        return member;
    for (int i = parseTop; i >= FIRST_INNER_ENTRY; i--) {
        NameList list = listOf(parseStack[i]);
        if (!list.isScope && i != FIRST_INNER_ENTRY)
            continue;
        int level = i == FIRST_INNER_ENTRY ? OUTERMOST : list.level;
        if (TypeInfo *member = findHidingMember(classContext, name, level, classOut))
            return member;
        if (TypeInfo *found = findInList(list.first, name))
            return found;
    }
    return name->symbol ? name->symbol : enumeratorInStructs(name);
}

// ---- While a script runs ----------------------------------------------------------------------

namespace {

// The innermost block that a statement stands in, itself if it is one: the end of its list tells.
StmtNode *blockOf(StmtNode *statement) {
    while (statement && statement->kind != STMT_BLOCK) {
        bool isEnd = statement->kind == STMT_END || statement->kind == STMT_GROUP_END;
        statement = isEnd ? statement->operandB.statement : statement->next;
    }
    return statement;
}

// The member functions in progress, if this activation is that of the innermost: a plain function
// that a member function has called doesn't see the members.
ClassContext *membersSeenBy(const ExecContext *context) {
    const TypeInfo *member = classContext ? classContext->member : nullptr;
    return !member || member->functionLink == context->function ? classContext : nullptr;
}

// What the blocks and formals of one activation declare under the name.
TypeInfo *findInActivation(const ExecContext *context, StmtNode *statement, const NameEntry *name,
                           ClassContext *members, ClassContext **classOut) {
    const FuncInfo *function = context->function;
    for (StmtNode *block = blockOf(statement); block && block->level > FILE_LEVEL;
         block = block->enclosingBlock()) {
        if (TypeInfo *member = findHidingMember(members, name, block->level, classOut))
            return member;
        if (TypeInfo *found = findInList(block->symbols(), name))
            return found;
        if (function && function->body == block)
            return findInList(function->parameters, name);
    }
    return nullptr;
}

// A call sees what its caller declares only where it lies inside the caller's function.
bool liesInside(const ExecContext *context, const ExecContext *caller) {
    return caller && context->level > caller->level;
}

}  // namespace

Symbol *lookupSymbolRun(ExecContext *context, StmtNode *statement, NameEntry *name,
                        ClassContext **classOut) {
    ClassContext *members = membersSeenBy(context);
    TypeInfo *found = findInActivation(context, statement, name, members, classOut);
    while (!found && liesInside(context, context->caller)) {
        context = context->caller;
        if (!members)
            members = membersSeenBy(context);
        found = findInActivation(context, context->statement, name, members, classOut);
        if (found && found->dataType == DT_TAG)
            found = nullptr;
    }
    if (!found)
        found = findHidingMember(members, name, OUTERMOST, classOut);
    return found ? found : name->symbol;
}

}  // namespace zy
