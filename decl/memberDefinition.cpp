// Members named from outside their class, Class::member, and the definitions of member functions.

#include <cctype>
#include <cstring>
#include <string>

#include "decl/aggregates.h"
#include "decl/currentToken.h"
#include "decl/functions.h"
#include "decl/scopeLists.h"
#include "expr/nodes.h"
#include "expr/scope.h"
#include "instance/report.h"

namespace zy {

namespace {

bool isClass(const Symbol *symbol) {
    return (symbol->dataType == DT_TAG || symbol->dataType == DT_STRUCT) && symbol->structLink;
}

const char *className(const StructInfo *info) { return plainTagName(info->tag); }

// The name behind ::, that of the destructor included. NULL for anything else.
NameEntry *readMemberName() {
    nextToken();
    bool isDestructor = isOperator(WORD_TILDE);
    if (isDestructor)
        nextToken();
    if (tokenClass != TK_IDENTIFIER) {
        pushedBack = true;
        return nullptr;
    }
    if (!isDestructor)
        return tokenValue.name;
    std::string text = std::string("~") + tokenValue.name->text;
    NameEntry *name = lookupName(text.c_str());
    return name ? name : addName(text.c_str());
}

// The members of a class whose tag lives under a second name keep the first.
TypeInfo *memberNamed(const StructInfo *info, NameEntry *name) {
    return findInList(info->members, name);
}

QualifiedName refuseMember(const StructInfo *info, const NameEntry *name) {
    const char *text = className(info);
    parseError(" %s::%s is not a member function of %s", text, name ? name->text : "", text);
    return QUALIFIED_FAILED;
}

bool isType(const TypeInfo *member) {
    return member->storage == STORAGE_TYPEDEF && member->kind != KIND_FUNCTION;
}

int typeWithoutWords(const TypeInfo *member) {
    if (member->flags & FLAG_CONSTRUCTOR)
        return DT_STRUCT;
    return member->flags & FLAG_DESTRUCTOR ? DT_VOID : DT_INT;
}

QualifiedName checkData(const StructInfo *info, const TypeInfo *member, int dataType, int level) {
    if (member->storage != STORAGE_STATIC)
        return refuseMember(info, member->name);
    if (member->level < level + 1) {
        parseError("define static member %s at local scope", member->name->text);
        return QUALIFIED_FAILED;
    }
    if (dataType != member->dataType) {
        parseError("static member %s::%s changed from %s to %s", className(info),
                   member->name->text, dataTypeText(member->dataType), dataTypeText(dataType));
        return QUALIFIED_FAILED;
    }
    return QUALIFIED_DATA;
}

QualifiedName finishPath(const StructInfo *info, TypeInfo *member, int &dataType, int level) {
    bool isFunction = member->kind == KIND_FUNCTION;
    if (dataType == DT_UNDEFINED) {
        if (!isFunction && member->storage == STORAGE_STATIC) {
            parseError("type expected for static member %s", member->name->text);
            return QUALIFIED_FAILED;
        }
        dataType = typeWithoutWords(member);
    }
    return isFunction ? QUALIFIED_FUNCTION : checkData(info, member, dataType, level);
}

}  // namespace

QualifiedName parseQualifiedName(Symbol *&symbol, int &dataType, int level, TypeInfo **found) {
    while (isClass(symbol)) {
        peekNonBlank();
        if (lineBuffer[linePos] != ':')
            return QUALIFIED_NONE;
        if (lineBuffer[linePos + 1] != ':') {
            errorFlag = 1;
            return QUALIFIED_FAILED;
        }
        linePos = static_cast<int16_t>(linePos + 2);
        const StructInfo *info = symbol->structLink;
        NameEntry *name = readMemberName();
        TypeInfo *member = name ? memberNamed(info, name) : nullptr;
        if (!member)
            return refuseMember(info, name);
        // A class whose body was refused has no layout, and its functions lack the hidden formal.
        if (!isType(member) && info->size == 0) {
            parseError("struct definition '%s' not defined", className(info));
            return QUALIFIED_FAILED;
        }
        if (!isType(member)) {
            peekNonBlank();
            if (lineBuffer[linePos] == ':' && lineBuffer[linePos + 1] == ':') {
                parseError(" %s::%s is not a type name", className(info), name->text);
                return QUALIFIED_FAILED;
            }
            *found = member;
            return finishPath(info, member, dataType, level);
        }
        symbol = member;
    }
    return QUALIFIED_NONE;
}

// ---- A look ahead -----------------------------------------------------------------------------

namespace {

const char *skipSpace(const char *text) {
    while (*text == ' ' || *text == '\t')
        text++;
    return text;
}

// The name at the text, which moves behind it; NULL for one that doesn't exist.
NameEntry *nameAt(const char *&text) {
    const char *start = text;
    while (isalnum(static_cast<unsigned char>(*text)) || *text == '_')
        text++;
    return text == start ? nullptr : lookupName(std::string(start, text).c_str());
}

}  // namespace

MemberPath memberAtPath(const Symbol *type) {
    peekNonBlank();
    MemberPath path{nullptr, nullptr, lineBuffer + linePos};
    const TypeInfo *at = type;
    while (at && isClass(at) && path.behind[0] == ':' && path.behind[1] == ':') {
        const char *text = skipSpace(path.behind + 2);
        const NameEntry *name = nameAt(text);
        path.owner = at->structLink;
        path.member = at = name ? findInList(path.owner->members, name) : nullptr;
        path.behind = skipSpace(text);
        if (!at || !isType(at))
            break;
    }
    return path;
}

// ---- The hidden formal ------------------------------------------------------------------------

namespace {

void shiftIndices(TypeInfo *list, int distance) {
    for (; list; list = list->next)
        list->index = static_cast<uint16_t>(list->index + distance);
}

TypeInfo *detachThis(FuncInfo *function) {
    TypeInfo *self = function->parameters;
    function->parameters = self->next;
    shiftIndices(function->parameters, -1);
    return self;
}

// A list of `void` alone is no list beside it.
void dropVoid(FuncInfo *function) {
    TypeInfo *first = function->parameters;
    if (!first || first->next || first->dataType != DT_VOID || first->kind >= KIND_P_FUNCTION)
        return;
    releaseTypeInfo(first);
    function->parameters = nullptr;
}

void attachThis(FuncInfo *function, TypeInfo *self) {
    dropVoid(function);
    shiftIndices(function->parameters, 1);
    self->level = function->parameterLevel;
    self->index = 0;
    self->next = function->parameters;
    function->parameters = self;
}

}  // namespace

void addThis(TypeInfo *function, StructInfo *info) {
    TypeInfo *self = newTypeInfo();
    if (!self)
        return;
    NameEntry *name = lookupName("this");
    self->name = name ? name : addName("this");
    self->dataType = DT_P_STRUCT;
    self->structLink = info;
    self->context = CONTEXT_PARAMETER;
    attachThis(function->functionLink, self);
    function->flags |= FLAG_MEMBER_FUNCTION;
}

StructInfo *classOfFunction(const TypeInfo *function) {
    bool isMember = function && (function->flags & FLAG_MEMBER_FUNCTION) && function->functionLink;
    const TypeInfo *self = isMember ? function->functionLink->parameters : nullptr;
    return self ? self->structLink : nullptr;
}

bool redeclareMember(TypeInfo *member, TypeInfo *fresh) {
    FuncInfo *function = member->functionLink;
    TypeInfo *self = detachThis(function);
    dropVoid(fresh->functionLink);
    bool done = redeclareFunction(member, fresh);
    attachThis(function, self);
    return done;
}

bool enterClass(TypeInfo *memberFunction) {
    ClassContext *record = claimClassContext();
    if (!record)
        return false;
    record->object = nullptr;
    record->thisFormal = memberFunction->functionLink->parameters;
    record->member = memberFunction;
    record->qualified = QUALIFIED_FUNCTION;
    return true;
}

void leaveClass() { popClassContext(); }

}  // namespace zy
