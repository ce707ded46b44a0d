// Tags of structs, classes, unions and enums. A tag is a declaration of its block and behaves as a
// typedef name. Where an object of the same name stands beside it the tag lives under a name of its
// own, _zy_NAME, under which a look-up by aggregate word finds it as well.
#pragma once

#include "decl/structInfo.h"
#include "front/names.h"

namespace zy {

// The tag of that name in a list; the innermost one that is visible, the list searched first.
Symbol *tagInList(const NameEntry *name, TypeInfo *list);
Symbol *visibleTag(const NameEntry *name, TypeInfo *list);
// The visible tag of that sort, NULL for none.
Symbol *findTag(const NameEntry *name, TypeInfo *list, AggregateKind aggregateKind);

// Whether a tag is of the sort that the word before it says; a message if not.
bool tagMatches(const Symbol *tag, AggregateKind aggregateKind);
// Whether a body may define it; a message if it has one.
bool tagIsOpen(const Symbol *tag);

// The tag of a forward reference in the innermost block: incomplete, until a body fills the same
// record. NULL after a message if memory is exhausted.
Symbol *newTagRecord(NameEntry *name, AggregateKind aggregateKind);
// The tag of a body: where that of a member list stands, in the list itself.
struct TagHome {
    TypeInfo **symbols;
    TagEntry **tags;
    int level;
};
Symbol *newTagIn(const TagHome &home, NameEntry *name, AggregateKind aggregateKind);
// Gives a tag its second name, so that the plain one can be an object.
void hideTag(Symbol *tag);
// The name to print: without what hideTag() put in front.
const char *plainTagName(const Symbol *tag);

void addTagToBlock(TagEntry **tagList, NameEntry *name, StructInfo *info,
                   AggregateKind aggregateKind);

// With the { consumed. False after a message.
bool parseStructBody(TagEntry **tagList, Symbol *tag, AggregateKind aggregateKind);
bool parseEnumBody(const TagHome &home, Symbol *tag, DeclContext context);
// Whether a name can be that of a member behind those of the list, those of its anonymous members
// included; a message if not. The same for all that an anonymous member brings.
bool checkMemberName(TypeInfo *list, const NameEntry *name);
bool checkMemberNames(TypeInfo *list, const StructInfo *anonymous);
// With the : behind a member consumed. False after a message.
bool parseBitField(TypeInfo *member);

// Class::member in a declarator, when the name just read is that of a class. `symbol` moves on to a
// nested type that the path ends in; `dataType` is that of the words so far, and without any gets
// that of the member. *member is what is being defined.
enum QualifiedName { QUALIFIED_NONE, QUALIFIED_FUNCTION, QUALIFIED_DATA, QUALIFIED_FAILED };
QualifiedName parseQualifiedName(Symbol *&symbol, int &dataType, int level, TypeInfo **member);

// Class::member behind the cursor, which stays where it is: the member that the path of names ends
// in, its class, and the text behind it. The member is NULL where there is none.
struct MemberPath {
    const TypeInfo *member;
    const StructInfo *owner;
    const char *behind;
};
MemberPath memberAtPath(const Symbol *type);

// A member function has the object that it is called on as its first formal.
void addThis(TypeInfo *function, StructInfo *info);
// The class of a member function.
StructInfo *classOfFunction(const TypeInfo *function);
// The head of a definition, which is taken: compares it with the declaration in the class, which
// takes over its formals. False after a message.
bool redeclareMember(TypeInfo *member, TypeInfo *fresh);
// The code of a class is entered, where its names are known, and left.
bool enterClass(TypeInfo *memberFunction);
void leaveClass();

}  // namespace zy
