// The declaration parser, chief header of decl/: it reads specifiers, pointers and declarators from
// the token stream and makes TypeInfo records of them. One routine, declare(), serves every place
// where a declaration can stand: file scope, blocks, members, parameters. What is declared stands
// in the list of its scope at once, with its storage, so that the rest of the text sees it.
//
// decl/declState.h has the cells that nested declarations share.
#pragma once

#include "decl/structInfo.h"
#include "decl/typeInfo.h"

namespace zy {

struct StmtNode;

// Parses one declaration up to and including its end token. The first token of its specifiers is
// the current one. `stmt` is the statement of the declaration, NULL in parameter and member lists;
// records are appended to *symbolList, tags to *tagList. `last`, if given, receives the last
// record, `count`, if given, grows by one for each declarator. True if the body of a function
// follows: the parser then stands in that body. In a parameter list the token that ended it is
// pushed back.
bool declare(StmtNode *stmt, int level, TagEntry **tagList, TypeInfo **symbolList, TypeInfo **last,
             int *count, DeclContext context);

// A declarator without a name, for casts, sizeof and new: the first token of the specifiers is the
// current one, the token behind the declarator is pushed back. A record of TYPE_ONLY_LEVEL that the
// caller owns, with neither storage nor scope; NULL after a message. A name that was written where
// none belongs is in the record; its refusal is the caller's.
TypeInfo *parseTypeName();

// Whether the next token begins a parameter or member declaration: a type word, or a typedef name
// of that list or the visible scopes. It then is the current token, otherwise it is pushed back.
bool startsDeclaration(TypeInfo *list);
// The same for casts and their kin, which admit ~. The level is that of the place.
bool startsTypeName(int level);

// The declaration that a name has as a typedef name or tag where the parser stands; NULL if it is
// none.
Symbol *typedefNamed(NameEntry *name, TypeInfo *list);

// What the specifiers of one declaration said.
struct Specifiers {
    int dataType = DT_UNDEFINED;
    TypeKind kind = KIND_SIMPLE;
    Storage storage = STORAGE_AUTO;
    AggregateKind aggregate = AGGREGATE_NONE;
    Symbol *typeSymbol = nullptr;  // the typedef name or tag in use
    NameEntry *tagName = nullptr;  // behind the word of an aggregate
    bool storageGiven = false;
    bool fortranOrder = false;
    bool isRestrict = false;
    bool isConst = false;
    bool opensBody = false;      // a { stands behind the tag
    bool isUntagged = false;     // or behind the word itself
    int qualifiedName = 0;       // what parseQualifiedName() said
    TypeInfo *member = nullptr;  // Class::member, in place of a declarator's name
    StructInfo *memberClass = nullptr;
};

// Reads the specifiers of a declaration; the first token is the current one, the token behind them
// is pushed back. False after a message.
bool parseSpecifiers(Specifiers &specifiers, DeclContext context, int level, TypeInfo *symbolList);

// Declares a function of file level whose specifiers and declarator were read, from the ( on: the
// head of a function file, whose body isn't entered. NULL after a message.
struct Declarator;
TypeInfo *declareHead(const Specifiers &specifiers, Declarator &declarator);

// Reads the stars, & and const in front of a declarator. Gives the data type, updates the kind.
int parsePointers(int dataType, TypeKind &kind, bool &constPointer);

}  // namespace zy
