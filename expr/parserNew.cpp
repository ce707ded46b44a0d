// new: of a type, of a value that it takes, of an object whose constructor is called.

#include <cctype>

#include "decl/construction.h"
#include "decl/declaration.h"
#include "expr/guards.h"
#include "expr/typeLookahead.h"
#include "expr/typeQueries.h"
#include "instance/report.h"

namespace zy {

namespace {

// Whether the words of the type are followed by a parenthesis with a value.
bool valueFollows(const char *text) {
    while (isalnum(static_cast<unsigned char>(*text)) || *text == '_' || *text == ' ' ||
           *text == '\t')
        text++;
    const char *end = *text == '(' ? behindClosing(text) : nullptr;
    bool isEmpty = end && holdsStarsOnly(text) && *skipSpace(text + 1) == ')';
    return isConversionAt(text) || isEmpty;
}

// The type that the specifiers alone give.
TypeInfo *specifiedType() {
    Specifiers specifiers;
    if (!parseSpecifiers(specifiers, CONTEXT_PARAMETER, TYPE_ONLY_LEVEL, nullptr))
        return nullptr;
    TypeInfo model{};
    model.dataType = specifiers.dataType;
    model.kind = static_cast<int8_t>(specifiers.kind);
    if (const Symbol *symbol = specifiers.typeSymbol)
        model = *symbol;
    if (model.dataType == DT_TAG)
        model.dataType = DT_STRUCT;
    return newTypeOnly(&model);
}

// The constructor of a class object, if the type is one.
Symbol *constructorOf(const TypeInfo *type) {
    bool isObject = type->dataType == DT_STRUCT && type->kind < KIND_FUNCTION;
    return isObject && type->structLink ? type->structLink->constructor : nullptr;
}

bool constructorIsOpen(const TypeInfo *type, const Symbol *constructor) {
    if (!isHiddenMember(type->structLink, constructor))
        return true;
    parseError("access private member of constructor %s:%s()", structText(type),
               nameText(constructor));
    return false;
}

// new T(value), new T(arguments). Takes the type.
ExprNode *newWithValue(TypeInfo *type, bool runMode) {
    Symbol *constructor = constructorOf(type);
    if (constructor) {
        bool isOpen = constructorIsOpen(type, constructor);
        releaseTypeInfo(type);
        if (!isOpen)
            return nullptr;
        return parsePrimary(newOperatorNode(OP_CALL, newSymbolNode(constructor)), runMode);
    }
    SeparatorScope brackets(false, KC_OPERATOR);
    ExprNode *value = nullptr;
    bool isComplete = expectChar('(', true);
    if (isComplete && !expectChar(')', false)) {
        value = parseContents(runMode);
        isComplete = value != nullptr;
    }
    if (isComplete)
        return value ? castTo(type, value) : newSymbolNode(type);
    refuseType(type);
    return nullptr;
}

// More than one declarator: `new int, *p` where a comma can't end the expression.
bool declarationGoesOn() {
    nextToken();
    pushedBack = true;
    return atCharacter(',') && declaratorAt(lineBuffer + linePos);
}

bool newTypeFits(const TypeInfo *type) {
    if (type->name)
        parseError("with unnecessary identifier '%s' in operator new", nameText(type));
    else if (isFunctionType(type))
        parseError("cannot allocate new function type ");
    else if (declarationGoesOn())
        parseError("additional variables are defined after operator 'new'");
    else
        return true;
    return false;
}

// Objects of a class with a constructor: a call makes one, those of an array `new` itself.
ExprNode *newObjects(ExprNode *leaf, Symbol *constructor) {
    const TypeInfo *type = leaf->payload.symbol;
    const FuncInfo *function = constructor->functionLink;
    const TypeInfo *formal =
        function && function->parameters ? function->parameters->next : nullptr;
    bool isArrayType = isArray(treeType(leaf));
    if (isArrayType && formal && formal->dataType != DT_VOID) {
        parseError("missing argument for constructor %s(). cannot allocate array of %s ",
                   nameText(constructor), structText(type));
        return newOperatorNode(OP_NEW, leaf);
    }
    if (isArrayType)
        return newOperatorNode(OP_NEW, leaf);
    deleteNode(leaf);
    if (function)
        checkArgumentCount(0, function);
    return newOperatorNode(OP_NEW, newOperatorNode(OP_CALL, newSymbolNode(constructor)));
}

ExprNode *newPlain() {
    TypeInfo *type = parseTypeName();
    if (!type)
        return nullptr;
    Symbol *constructor = constructorOf(type);
    bool isRefused = constructor ? !constructorIsOpen(type, constructor)
                                 : isLivingObject(type) && !checkConstruction(type);
    if (isRefused || !newTypeFits(type)) {
        refuseType(type);
        return nullptr;
    }
    ExprNode *leaf = newSymbolNode(type);
    return constructor ? newObjects(leaf, constructor) : newOperatorNode(OP_NEW, leaf);
}

}  // namespace

ExprNode *parseNew(bool runMode) {
    const char *end;
    nextToken();
    if (!startsType(runMode, &end)) {
        parseError("missing type name after operator new");
        pushedBack = true;
        return nullptr;
    }
    if (!valueFollows(end))
        return newPlain();
    TypeInfo *type = specifiedType();
    ExprNode *object = type ? newWithValue(type, runMode) : nullptr;
    return object ? newOperatorNode(OP_NEW, object) : nullptr;
}

}  // namespace zy
