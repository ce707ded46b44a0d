// Pointers, parentheses and the name. A pointer is no record of its own: a star moves the data type
// one band up, or the kind of a function or computational array on to that of a pointer to it.

#include "decl/declarator.h"

#include <cstdio>
#include <cstring>

#include "decl/aggregates.h"
#include "decl/currentToken.h"
#include "decl/declState.h"
#include "decl/scopeLists.h"
#include "expr/scope.h"
#include "instance/report.h"

namespace zy {

void refuseHere(const char *text) {
    fprintf(stderr, "ERROR: %s", text);
    tokenContext();
    errorFlag = 1;
}

namespace {

// const, restrict and volatile may stand among the stars.
bool isQualifierWord() {
    return isTypeWord(WORD_CONST) || isTypeWord(WORD_RESTRICT) || isTypeWord(WORD_VOLATILE);
}

void addStar(int &dataType, TypeKind &kind) {
    if (dataType == DT_UNDEFINED)
        return;  // refused already
    if (kind >= KIND_PPP_FUNCTION) {
        dataType = pointerTo(DT_PPP_FUNCTION);
        return;
    }
    if (kind >= KIND_FUNCTION) {
        kind = static_cast<TypeKind>(kind + 1);
        return;
    }
    if (kind == KIND_C_ARRAY)
        kind = KIND_P_C_ARRAY;
    else if (kind == KIND_ARRAY)
        kind = KIND_P_ARRAY;
    else
        dataType = pointerTo(dataType);
}

}  // namespace

int parsePointers(int dataType, TypeKind &kind, bool &constPointer) {
    for (;;) {
        nextToken();
        if (isOperator(WORD_STAR)) {
            addStar(dataType, kind);
            constPointer = false;  // what was const is what this star points to
        } else if (isOperator(WORD_AMPERSAND)) {
            kind = kind == KIND_ARRAY ? KIND_ASSUMED_ARRAY : KIND_REFERENCE;
            return dataType;
        } else if (isQualifierWord()) {
            constPointer |= currentKeyword.code == WORD_CONST;
        } else {
            pushedBack = true;
            return dataType;
        }
    }
}

// ---- The name ---------------------------------------------------------------------------------

namespace {

NameStatus refuseName() {
    parseError("expecting a variable name in declaration");
    return NAME_MISSING;
}

// An unnamed bit-field: the colon stays to be read.
NameStatus nameBitFieldPad(Declarator &declarator) {
    NameEntry *name = lookupName("__bitfieldpad");
    declarator.name = name ? name : addName("__bitfieldpad");
    pushedBack = true;
    return declarator.name ? NAME_NEW : NAME_MISSING;
}

NameStatus statusOf(const Symbol *existing) {
    if (!existing)
        return NAME_NEW;
    return existing->kind == KIND_FUNCTION ? NAME_FUNCTION : NAME_OBJECT;
}

NameStatus bindName(int level, TypeInfo *list, Declarator &declarator) {
    declarator.name = tokenValue.name;
    if (strcmp(declarator.name->text, "this") == 0)
        return refuseName();
    bool isLocal = level > FILE_LEVEL;
    declarator.existing = isLocal ? findInList(list, declarator.name) : declarator.name->symbol;
    return statusOf(declarator.existing);
}

bool inMemberList(DeclContext context) {
    return context == CONTEXT_MEMBER || context == CONTEXT_UNION_MEMBER;
}

}  // namespace

NameStatus parseDeclaratorName(int level, TypeInfo *list, DeclContext context,
                               Declarator &declarator) {
    do
        nextToken();
    while (isQualifierWord());
    if (tokenClass == TK_IDENTIFIER)
        return bindName(level, list, declarator);
    if (context == CONTEXT_PARAMETER) {
        pushedBack = true;
        return NAME_UNNAMED;
    }
    if (inMemberList(context) && isChar(':'))
        return nameBitFieldPad(declarator);
    if (tokenClass == TK_KEYWORD)
        parseError("'%s' is a keyword", currentKeyword.name);
    pushedBack = true;
    return refuseName();
}

// ---- Parentheses ------------------------------------------------------------------------------

namespace {

// A class being defined may declare its constructor and destructor, whose name is the type's.
bool declaresConstructor(const Specifiers &specifiers, const Declarator &declarator,
                         DeclContext context) {
    return inMemberList(context) && declarator.dataType == DT_STRUCT && specifiers.typeSymbol &&
           specifiers.typeSymbol->structLink && specifiers.typeSymbol->structLink->size == 0;
}

NameStatus nameConstructor(const Specifiers &specifiers, Declarator &declarator) {
    pushedBack = true;
    declarator.name = specifiers.typeSymbol->name;
    const StructInfo *info = specifiers.typeSymbol->structLink;
    if (destructorSeen ? info->destructor : info->constructor) {
        parseError("identifier '%s' redeclared", declarator.name->text);
        return NAME_MISSING;
    }
    if (!destructorSeen)
        return NAME_NEW;
    declarator.dataType = DT_VOID;
    std::string text = std::string("~") + declarator.name->text;
    NameEntry *name = lookupName(text.c_str());
    declarator.name = name ? name : addName(text.c_str());
    return declarator.name ? NAME_NEW : NAME_MISSING;
}

// Behind a type without a name ( begins a declarator only in front of a star; otherwise it belongs
// to what follows the type.
bool opensDeclarator(int level) {
    if (!isChar('('))
        return false;
    peekNonBlank();
    return level != TYPE_ONLY_LEVEL || lineBuffer[linePos] == '*';
}

int countStars() {
    int stars = 0;
    do {
        nextToken();
        stars += isOperator(WORD_STAR);
    } while (isOperator(WORD_STAR) || isQualifierWord());
    pushedBack = true;
    return stars;
}

// The stars in the parentheses belong to the function or array behind them, otherwise to the type.
bool applyStars(Declarator &declarator, char behind) {
    for (int i = 0; i < declarator.stars; i++) {
        if (behind == '(' && i == 0)
            declarator.kind = KIND_FUNCTION;
        if (behind == '[' && i == 0)
            continue;  // the array declarator makes the pointer
        addStar(declarator.dataType, declarator.kind);
    }
    return !errorFlag;
}

// Behind the name inside the parentheses.
bool closeParentheses(Declarator &declarator) {
    nextToken();
    if (isChar(')')) {
        peekNonBlank();
        return applyStars(declarator, lineBuffer[linePos]);
    }
    pushedBack = true;
    bool isOpen = declarator.stars > 0 && (isChar('(') || isChar('['));
    if (!isOpen) {
        parseError("missing ')'");
        return false;
    }
    declarator.open = true;
    return applyStars(declarator, '(');
}

// With the ( consumed.
bool parseParenthesised(int level, TypeInfo *list, DeclContext context, Declarator &declarator) {
    declarator.stars = countStars();
    if (declarator.stars == 0) {
        nextToken();
        pushedBack = true;
        if (tokenClass != TK_IDENTIFIER) {
            refuseHere("maybe missing '*'");
            return false;
        }
    }
    declarator.status = parseDeclaratorName(level, list, context, declarator);
    return declarator.status != NAME_MISSING && closeParentheses(declarator);
}

}  // namespace

namespace {

void takeMember(TypeInfo *member, StructInfo *info, Declarator &declarator) {
    declarator.member = member;
    declarator.memberClass = info;
    declarator.name = member->name;
}

// Class::member behind the stars of the type.
bool namesMember(int level, DeclContext context) {
    if (context != CONTEXT_PLAIN || level == TYPE_ONLY_LEVEL || tokenClass != TK_IDENTIFIER)
        return false;
    peekNonBlank();
    return lineBuffer[linePos] == ':' && lineBuffer[linePos + 1] == ':' &&
           typedefNamed(tokenValue.name, nullptr);
}

}  // namespace

bool parseDeclarator(const Specifiers &specifiers, int level, TypeInfo *list, DeclContext context,
                     Declarator &declarator) {
    declarator.kind = specifiers.kind;
    if (specifiers.member) {
        takeMember(specifiers.member, specifiers.memberClass, declarator);
        declarator.dataType = specifiers.dataType;
        return true;
    }
    declarator.dataType =
        parsePointers(specifiers.dataType, declarator.kind, declarator.constPointer);
    nextToken();
    if (namesMember(level, context)) {
        Symbol *type = typedefNamed(tokenValue.name, nullptr);
        TypeInfo *member = nullptr;
        if (parseQualifiedName(type, declarator.dataType, level, &member) == QUALIFIED_FAILED)
            return false;
        if (!member) {  // the path ends at a type
            parseError("identifier '%s' redeclared", plainTagName(type));
            return false;
        }
        takeMember(member, type->structLink, declarator);
        return !errorFlag;
    }
    if (!opensDeclarator(level)) {
        pushedBack = true;
        declarator.status = parseDeclaratorName(level, list, context, declarator);
    } else if (declaresConstructor(specifiers, declarator, context)) {
        declarator.status = nameConstructor(specifiers, declarator);
    } else {
        return parseParenthesised(level, list, context, declarator);
    }
    return declarator.status != NAME_MISSING && !errorFlag;
}

}  // namespace zy
