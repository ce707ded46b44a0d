// One declarator: what stands between the specifiers and the [, ( or = behind the name.
#pragma once

#include "decl/declaration.h"

namespace zy {

enum NameStatus {
    NAME_NEW = 0,
    NAME_FUNCTION = 1,  // of an existing function
    NAME_UNNAMED = 3,
    NAME_OBJECT = 4,  // of another existing declaration
    NAME_MISSING = 5,
};

struct Declarator {
    NameEntry *name = nullptr;
    NameStatus status = NAME_NEW;
    Symbol *existing = nullptr;
    int dataType = DT_UNDEFINED;
    TypeKind kind = KIND_SIMPLE;
    bool constPointer = false;
    int stars = 0;               // inside the parentheses of (*name)
    TypeInfo *member = nullptr;  // of Class::member
    StructInfo *memberClass = nullptr;
    bool open = false;  // ( or [ stands behind the name inside those parentheses
};

// Reads the name of a declarator and finds what it is bound to. With no list given the name's own
// binding decides, and from level 2 on only the list.
NameStatus parseDeclaratorName(int level, TypeInfo *list, DeclContext context,
                               Declarator &declarator);

// Reads a declarator up to the token behind it, which is left unread. False after a message.
bool parseDeclarator(const Specifiers &specifiers, int level, TypeInfo *list, DeclContext context,
                     Declarator &declarator);

// "maybe missing ..." and "missing ...", with what stands there instead.
void refuseHere(const char *text);

}  // namespace zy
