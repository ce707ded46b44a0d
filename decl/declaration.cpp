// Declarations: each declarator of a list becomes a record in the list of its scope, gets its
// storage and its initial value. What differs by place (file scope, block, member and parameter
// lists, types without a name) is decided here; arrays, functions, aggregates and initial values
// are read by sources of their own.

#include "decl/declaration.h"

#include <cstring>

#include "decl/aggregates.h"
#include "decl/arrayInfo.h"
#include "decl/arrays.h"
#include "decl/construction.h"
#include "decl/currentToken.h"
#include "decl/declState.h"
#include "decl/declarator.h"
#include "decl/functions.h"
#include "decl/initialiser.h"
#include "decl/scopeLists.h"
#include "expr/nodes.h"
#include "expr/scope.h"
#include "instance/report.h"
#include "stmt/parseStack.h"

namespace zy {

// ---- What begins a declaration ----------------------------------------------------------------

Symbol *typedefNamed(NameEntry *name, TypeInfo *list) {
    Symbol *symbol = lookupSymbolParse(name, list, nullptr);
    return symbol && symbol->storage == STORAGE_TYPEDEF ? symbol : nullptr;
}

bool startsDeclaration(TypeInfo *list) {
    nextToken();
    bool starts = tokenClass == TK_KEYWORD      ? currentKeyword.keywordClass == KC_TYPE
                  : tokenClass == TK_IDENTIFIER ? typedefNamed(tokenValue.name, list) != nullptr
                                                : false;
    pushedBack = !starts;
    return starts;
}

namespace {

// Whether the text at the cursor is the name of a class: behind ~ it makes a type of what would be
// an operator.
bool classNameFollows() {
    peekNonBlank();
    const char *text = lineBuffer + linePos;
    size_t length = 0;
    while (isalnum(static_cast<unsigned char>(text[length])) || text[length] == '_')
        length++;
    NameEntry *name = lookupName(std::string(text, length).c_str());
    const Symbol *symbol = name ? typedefNamed(name, nullptr) : nullptr;
    return symbol && symbol->dataType == DT_TAG;
}

}  // namespace

bool startsTypeName(int) {
    if (startsDeclaration(nullptr))
        return true;
    pushedBack = !(isOperator(WORD_TILDE) && classNameFollows());
    return !pushedBack;
}

namespace {

// Takes the next token if it is that one.
bool acceptChar(char c) {
    nextToken();
    pushedBack = !isChar(c);
    return !pushedBack;
}

bool isStructCode(int dataType) {
    return dataType == DT_STRUCT || dataType == DT_P_STRUCT || dataType == DT_PP_STRUCT ||
           dataType == DT_PPP_STRUCT;
}

int listLength(const TypeInfo *list) {
    while (list && list->next)
        list = list->next;
    return list ? list->index + 1 : 0;
}

class DeclarationParser {
public:
    DeclarationParser(int scopeLevel, TypeInfo **symbols, DeclContext place)
        : level(scopeLevel), symbolList(symbols), context(place) {}

    // True if a function's body was entered.
    bool run(TypeInfo **last);
    TypeInfo *parseNamelessType();
    TypeInfo *declareHead(const Specifiers &given, Declarator &declarator);

private:
    bool beginDeclaration();
    bool parseBody();
    bool declareTagAlone();
    void declareAnonymous();
    Symbol *tagForUse(const Declarator &declarator);

    bool declareOne(TypeInfo **last, bool &bodyFollows);
    bool checkName(Declarator &declarator);
    bool mayRedeclare(const Symbol *existing) const;
    bool completeType(const Declarator &declarator);
    TypeInfo *makeRecord(const Declarator &declarator);
    void takeTypedefParts(TypeInfo *info);

    bool parseArray(TypeInfo *info, const Declarator &declarator, TypeInfo *list);
    bool checkTypedefArray(const TypeInfo *info) const;
    bool parseArrayOfFunctions(TypeInfo *info, const Declarator &declarator);
    bool parsePointerToFunction(TypeInfo *info, const Declarator &declarator);
    bool belongsToFile(const Declarator &declarator) const;
    bool readFunctionType(TypeInfo *info, const Declarator &declarator);
    TypeInfo *installFunction(TypeInfo *info, const Declarator &declarator);
    bool entersBody(TypeInfo *function) const;
    bool declareFunction(TypeInfo *&info, Declarator &declarator, bool &bodyFollows);
    bool defineMember(const Declarator &declarator, bool &bodyFollows);
    bool defineMemberFunction(const Declarator &declarator, bool &bodyFollows);
    bool defineStaticMember(const Declarator &declarator);
    bool checkMemberShape(const Declarator &declarator);
    void constructStaticMember(const Declarator &declarator);

    bool checkPlain(const TypeInfo *info, bool isInitialised) const;
    bool declareObject(TypeInfo *&info, const Declarator &declarator);
    void install(TypeInfo *&info, Symbol *existing);
    TypeInfo **homeList(const TypeInfo *info) const;
    void remove(TypeInfo *info);
    void initialise(TypeInfo *info);
    bool isStaticNow(const TypeInfo *info) const;
    void construct(TypeInfo *info);

    bool nextDeclarator(TypeInfo *last);
    bool afterComma();
    // Among the declarations of a block; the formals of an old-style function aren't.
    bool isInBlock() const {
        return context == CONTEXT_PLAIN && currentBlock && symbolList == &currentBlock->symbols();
    }
    bool isMember() const { return context == CONTEXT_MEMBER || context == CONTEXT_UNION_MEMBER; }
    bool isAbstract() const { return level == TYPE_ONLY_LEVEL; }

    int level;
    TypeInfo **symbolList;
    DeclContext context;
    Specifiers specifiers;
    bool isFirst = true;  // of the declarators
};

// ---- The declaration as a whole ---------------------------------------------------------------

bool DeclarationParser::run(TypeInfo **last) {
    if (!beginDeclaration() || declareTagAlone())
        return false;
    bool bodyFollows = false;
    TypeInfo *latest = nullptr;
    while (declareOne(&latest, bodyFollows) && !bodyFollows && nextDeclarator(latest))
        isFirst = false;
    if (last && latest)
        *last = latest;
    return bodyFollows;
}

bool DeclarationParser::beginDeclaration() {
    if (!parseSpecifiers(specifiers, context, level, symbolList ? *symbolList : nullptr))
        return false;
    if (specifiers.storage == STORAGE_LOCAL && level <= FILE_LEVEL) {
        parseError("top-level variable declared as local variable");
        return false;
    }
    if (declaresGlobals && context == CONTEXT_PLAIN && level <= FILE_LEVEL &&
        specifiers.storage == STORAGE_AUTO)
        specifiers.storage = STORAGE_GLOBAL;
    return !specifiers.opensBody || parseBody();
}

// The body of an aggregate stands between the specifiers and the declarators.
bool DeclarationParser::parseBody() {
    StmtNode *block = currentBlock;
    TagHome home = isMember() ? TagHome{symbolList, &block->operandD.tags, level}
                              : TagHome{&block->symbols(), &block->operandD.tags, block->level};
    Symbol *&tag = specifiers.typeSymbol;
    if (!tag)
        tag = newTagIn(home, specifiers.tagName, specifiers.aggregate);
    if (!tag)
        return false;
    nextToken();
    if (specifiers.aggregate == AGGREGATE_ENUM)
        return parseEnumBody(home, tag, isMember() ? context : CONTEXT_PLAIN);
    return parseStructBody(home.tags, tag, specifiers.aggregate);
}

// struct x; and the definition of an aggregate without a variable. False: declarators follow.
bool DeclarationParser::declareTagAlone() {
    bool isMemberDefinition = specifiers.member != nullptr;
    if (specifiers.aggregate == AGGREGATE_NONE || isAbstract() || isMemberDefinition ||
        !acceptChar(';'))
        return false;
    bool isHere = context == CONTEXT_PLAIN && currentBlock && level == currentBlock->level;
    bool isAnonymous = isMember() && specifiers.isUntagged && !specifiers.storageGiven &&
                       specifiers.aggregate != AGGREGATE_ENUM;
    if (isAnonymous)
        declareAnonymous();
    if (specifiers.typeSymbol)
        return true;
    if (isHere)
        newTagRecord(specifiers.tagName, specifiers.aggregate);
    else if (specifiers.aggregate == AGGREGATE_ENUM)
        parseError("cannot prototype enum tag '%s' here", specifiers.tagName->text);
    else
        parseError("cannot prototype  struct/class/union tag '%s' here", specifiers.tagName->text);
    return true;
}

// An aggregate in a body, with neither a tag nor a name.
void DeclarationParser::declareAnonymous() {
    Declarator declarator;
    declarator.name = specifiers.typeSymbol->name;
    declarator.dataType = DT_STRUCT;
    TypeInfo *info = makeRecord(declarator);
    if (!info)
        return;
    info->flags |= FLAG_ANONYMOUS;
    checkMemberNames(*symbolList, info->structLink);
    appendSymbol(symbolList, info);
}

// ---- The type of a declarator -----------------------------------------------------------------

// Whether the type that the specifiers name can be used by this declarator. A tag that isn't
// defined yet serves pointers, functions and typedef names, and is created by such a use.
bool DeclarationParser::completeType(const Declarator &declarator) {
    Symbol *tag = specifiers.typeSymbol;
    if (isMember() && specifiers.aggregate == AGGREGATE_ENUM && specifiers.opensBody) {
        parseError("cannot define enum type inside struct");
        return false;
    }
    if (specifiers.aggregate == AGGREGATE_ENUM && !tag) {
        parseError("enum definition '%s' not defined", specifiers.tagName->text);
        return false;
    }
    bool namesStruct = specifiers.aggregate != AGGREGATE_NONE || (tag && tag->structLink);
    if (!namesStruct || specifiers.aggregate == AGGREGATE_ENUM)
        return true;
    if (!tag)
        tag = specifiers.typeSymbol = tagForUse(declarator);
    if (!tag)
        return false;
    bool isSharedMember = isMember() && specifiers.storage == STORAGE_STATIC;  // defined later
    bool isObject = declarator.dataType == DT_STRUCT && declarator.kind < KIND_FUNCTION &&
                    declarator.kind != KIND_REFERENCE && context != CONTEXT_PARAMETER &&
                    specifiers.storage != STORAGE_TYPEDEF && !isSharedMember &&
                    lineBuffer[linePos] != '(' && !(pushedBack && isChar('('));  // of a constructor
    if (!isObject || !tag->structLink || tag->structLink->size != 0)
        return true;
    const char *name = plainTagName(tag->structLink->tag ? tag->structLink->tag : tag);
    if (isMember() && symbolList == &tag->structLink->members)
        parseError("recursive struct/class/union definition for '%s'", name);
    else
        parseError("struct definition '%s' not defined", name);
    return false;
}

Symbol *DeclarationParser::tagForUse(const Declarator &declarator) {
    Symbol *tag = newTagRecord(specifiers.tagName, specifiers.aggregate);
    if (!tag)
        return nullptr;
    currentStruct = tag->structLink;
    if (tag->name == declarator.name)
        hideTag(tag);
    return tag;
}

TypeInfo *DeclarationParser::makeRecord(const Declarator &declarator) {
    TypeInfo *info = newTypeInfo();
    if (!info)
        return nullptr;
    info->name = declarator.name;
    info->level = level;
    info->storage = specifiers.storage;
    info->kind = declarator.kind;
    info->dataType = declarator.dataType;
    info->context = context;
    if (specifiers.isConst)
        info->qualifiers |= QUALIFIER_CONST;
    if (declarator.constPointer)
        info->qualifiers |= QUALIFIER_CONST_POINTER;
    if (specifiers.isRestrict)
        info->flags |= FLAG_RESTRICT;
    if (isMember()) {
        info->flags |= memberAccess;
        if (memberProtected)
            info->flags |= FLAG_PROTECTED;
    }
    takeTypedefParts(info);
    return info;
}

// What a typedef name or tag brings along beside its data type.
void DeclarationParser::takeTypedefParts(TypeInfo *info) {
    const Symbol *type = specifiers.typeSymbol;
    if (!type)
        return;
    if (isStructCode(info->dataType))
        info->structLink = type->structLink;
    if (type->dataType == DT_TAG || type->dataType == DT_ENUM)
        return;
    constexpr int inherited = QUALIFIER_CONST | QUALIFIER_CONST_POINTER;
    info->qualifiers |= type->qualifiers & inherited;
    if (type->arrayLink) {
        info->arrayLink = copyArrayInfo(type->arrayLink);
        if (info->kind != type->kind &&
            (info->kind == KIND_P_C_ARRAY || info->kind == KIND_P_ARRAY))
            addPointerDimension(info);
    }
    if (type->kind >= KIND_FUNCTION && type->functionLink)
        info->functionLink = copyFuncInfo(type->functionLink, info);
    if (type->kind >= KIND_FUNCTION && type->pointerFunction)
        info->pointerFunction = copyFuncInfo(type->pointerFunction, info);
}

// ---- Names that exist already -----------------------------------------------------------------

bool DeclarationParser::mayRedeclare(const Symbol *existing) const {
    if (existing->dataType == DT_CONSTANT || (existing->qualifiers & QUALIFIER_BUILTIN) ||
        existing->storage == STORAGE_TYPEDEF || specifiers.storage == STORAGE_TYPEDEF)
        return false;
    if (specifiers.storage == STORAGE_EXTERN)
        return true;
    // What a former program left is declared again by the next one.
    if (specifiers.storage == STORAGE_GLOBAL)
        return existing->storage == STORAGE_GLOBAL && existing->storageCell;
    return level == FILE_LEVEL && existing->level == FILE_LEVEL;
}

bool DeclarationParser::checkName(Declarator &declarator) {
    bool isExternInBlock = specifiers.storage == STORAGE_EXTERN && level > FILE_LEVEL;
    if (isExternInBlock && !declarator.existing && declarator.name) {
        declarator.existing = declarator.name->symbol;
        declarator.status = !declarator.existing                         ? NAME_NEW
                            : declarator.existing->kind == KIND_FUNCTION ? NAME_FUNCTION
                                                                         : NAME_OBJECT;
    }
    Symbol *existing = declarator.existing;
    if (declarator.status != NAME_OBJECT)
        return !isMember() || checkMemberName(*symbolList, declarator.name);
    if (existing->dataType == DT_TAG ||
        (existing->dataType == DT_ENUM && existing->storage == STORAGE_TYPEDEF)) {
        hideTag(existing);
        declarator.existing = nullptr;
        declarator.status = NAME_NEW;
        return true;
    }
    if (mayRedeclare(existing))
        return true;
    parseError("identifier '%s' redeclared", declarator.name->text);
    return false;
}

// ---- One declarator ---------------------------------------------------------------------------

bool DeclarationParser::declareOne(TypeInfo **last, bool &bodyFollows) {
    Declarator declarator;
    TypeInfo *list = symbolList ? *symbolList : nullptr;
    bool hasName = parseDeclarator(specifiers, level, list, context, declarator);
    specifiers.member = nullptr;
    if (hasName && declarator.member)
        return defineMember(declarator, bodyFollows);
    if (!hasName || !checkName(declarator))
        return false;
    peekNonBlank();
    if (!completeType(declarator))
        return false;
    TypeInfo *info = makeRecord(declarator);
    if (!info)
        return false;
    bool isFunction = declarator.kind == KIND_FUNCTION;
    bool done = true;
    nextToken();
    if (isChar('[')) {
        done = parseArray(info, declarator, list);
    } else if (isChar('(') && declarator.stars > 0 && !declarator.open) {
        done = parsePointerToFunction(info, declarator);
    } else if (isChar('(')) {
        isFunction = true;
    } else {
        pushedBack = true;
        done = checkTypedefArray(info);
    }
    if (!done) {
        releaseTypeInfo(info);
        return false;
    }
    done = isFunction ? declareFunction(info, declarator, bodyFollows)
                      : declareObject(info, declarator);
    if (done)
        *last = info;
    return done;
}

// ---- Arrays -----------------------------------------------------------------------------------

// With the [ consumed.
bool DeclarationParser::parseArray(TypeInfo *info, const Declarator &declarator, TypeInfo *list) {
    bool isInside = declarator.open;  // (*name[3])(int): the stars belong to the elements
    int prefix = isInside ? 0 : declarator.stars;
    if (!parseArrayDeclarator(info, context == CONTEXT_PARAMETER, prefix, list))
        return false;
    if (isInside && !parseArrayOfFunctions(info, declarator))
        return false;
    return applyArrayPlace(info, {context, level, prefix > 0, specifiers.fortranOrder});
}

// What a typedef brought stands by the same rules as what is written here.
bool DeclarationParser::checkTypedefArray(const TypeInfo *info) const {
    bool isPointer = info->kind == KIND_P_C_ARRAY || info->kind == KIND_P_ARRAY;
    return !info->arrayLink ||
           checkArrayPlace(info, {context, level, isPointer, specifiers.fortranOrder});
}

bool DeclarationParser::parseArrayOfFunctions(TypeInfo *info, const Declarator &declarator) {
    if (!expectChar(')', true) || !expectChar('(', true))
        return false;
    return parsePointerToFunction(info, declarator);
}

// ---- Functions --------------------------------------------------------------------------------

// int (*p)(int), with the second ( consumed: the prototype hangs on the pointer's record.
bool DeclarationParser::parsePointerToFunction(TypeInfo *info, const Declarator &declarator) {
    int noStars = 0;
    const int8_t kind = info->kind;
    const int dataType = info->dataType;
    info->kind = specifiers.kind;
    parseFunctionDeclarator(info, declarator.dataType, level, noStars);
    info->kind = kind;
    info->dataType = dataType;
    return !errorFlag;
}

// Prototypes of a block are those of the file, unless they say that the function is local to it.
bool DeclarationParser::belongsToFile(const Declarator &declarator) const {
    if (!isInBlock() || specifiers.storage == STORAGE_TYPEDEF)
        return false;
    if (level <= FILE_LEVEL || specifiers.storage == STORAGE_EXTERN)
        return true;
    return specifiers.storage != STORAGE_LOCAL && declarator.stars == 0 && !openBraceFollows();
}

bool DeclarationParser::readFunctionType(TypeInfo *info, const Declarator &declarator) {
    bool isTypedefed = pushedBack;  // the prototype came with the type name
    if (!isTypedefed) {
        bool isPublic =
            specifiers.storage == STORAGE_EXTERN || specifiers.storage == STORAGE_GLOBAL;
        int starLevel = declarator.open ? 1 : 0;
        parseFunctionDeclarator(info, declarator.dataType, isPublic ? FILE_LEVEL : level,
                                starLevel);
    }
    return !errorFlag;
}

// The record as read becomes the function, or is merged into that of an earlier declaration.
TypeInfo *DeclarationParser::installFunction(TypeInfo *info, const Declarator &declarator) {
    Symbol *existing = declarator.existing;
    TypeInfo **list = symbolList;
    if (belongsToFile(declarator)) {
        info->level = FILE_LEVEL;
        list = &globalBlock->symbols();
        if (level > FILE_LEVEL && !existing)
            existing = info->name->symbol;
    }
    if (existing && existing->kind == KIND_FUNCTION)
        return redeclareFunction(existing, info);
    if (existing) {
        parseError("identifier '%s' redeclared", info->name->text);
        releaseTypeInfo(info);
        return nullptr;
    }
    appendSymbol(list, info);
    if (info->flags & FLAG_CONSTRUCTOR)
        info->structLink->constructor = info;
    else if (info->flags & FLAG_DESTRUCTOR)
        info->structLink->destructor = info;
    if (info->level == FILE_LEVEL && context == CONTEXT_PLAIN && info->storage != STORAGE_TYPEDEF) {
        allocateStorage(info);
        shadowKeyword(info->name->text);
    }
    return info;
}

// A function that has a body is declared alone: the initial values of other declarators would be
// stored in it.
bool DeclarationParser::entersBody(TypeInfo *function) const {
    return isFirst && functionPrologue(function, specifiers.storage == STORAGE_TYPEDEF);
}

bool DeclarationParser::declareFunction(TypeInfo *&info, Declarator &declarator,
                                        bool &bodyFollows) {
    if (level <= FILE_LEVEL && context == CONTEXT_PLAIN && specifiers.storage != STORAGE_TYPEDEF) {
        renameMainFunction(info);
        declarator.existing = info->name->symbol;
    }
    if (!readFunctionType(info, declarator)) {
        releaseTypeInfo(info);
        return false;
    }
    if (isMember() && openBraceFollows()) {
        parseError("cannot define member function inside struct/class in Zy");
        releaseTypeInfo(info);
        return false;
    }
    info = installFunction(info, declarator);
    if (info && isInBlock())
        bodyFollows = entersBody(info);
    return info && !errorFlag;
}

TypeInfo *DeclarationParser::declareHead(const Specifiers &given, Declarator &declarator) {
    specifiers = given;
    TypeInfo *info = completeType(declarator) ? makeRecord(declarator) : nullptr;
    if (!info)
        return nullptr;
    nextToken();  // the (
    if (readFunctionType(info, declarator))
        return installFunction(info, declarator);
    releaseTypeInfo(info);
    return nullptr;
}

// ---- Members defined outside their class ------------------------------------------------------

bool DeclarationParser::defineMember(const Declarator &declarator, bool &bodyFollows) {
    const TypeInfo *member = declarator.member;
    bool isFunction = member->kind == KIND_FUNCTION;
    if (isFunction && member->functionLink->body) {
        parseError("two definitions of %s::%s()", plainTagName(declarator.memberClass->tag),
                   member->name->text);
        return false;
    }
    return isFunction ? defineMemberFunction(declarator, bodyFollows)
                      : defineStaticMember(declarator);
}

// The formals and the body see the names of the class.
bool DeclarationParser::defineMemberFunction(const Declarator &declarator, bool &bodyFollows) {
    TypeInfo *member = declarator.member;
    TypeInfo *fresh = expectChar('(', true) ? makeRecord(declarator) : nullptr;
    if (!fresh || !enterClass(member)) {
        releaseTypeInfoList(fresh);
        errorFlag = 1;
        return false;
    }
    fresh->flags |= member->flags & (FLAG_CONSTRUCTOR | FLAG_DESTRUCTOR);
    int noStars = 0;
    parseFunctionDeclarator(fresh, declarator.dataType, level, noStars);
    bool done = !errorFlag;
    if (!done)
        releaseTypeInfo(fresh);
    else
        done = redeclareMember(member, fresh);
    bodyFollows = done && entersBody(member);
    if (!bodyFollows)
        leaveClass();
    return done && !errorFlag;
}

// The declarator may repeat the shape of an array.
bool DeclarationParser::checkMemberShape(const Declarator &declarator) {
    TypeInfo *member = declarator.member;
    bool isArrayMember = member->kind == KIND_C_ARRAY || member->kind == KIND_ARRAY;
    if (!acceptChar('[')) {
        if (isArrayMember)
            parseError("redeclare static member of array as scalar");
        return !isArrayMember;
    }
    TypeInfo *fresh = makeRecord(declarator);
    bool done = fresh && parseArrayDeclarator(fresh, false, 0, nullptr);
    if (done && isArrayMember)
        std::swap(fresh->arrayLink, member->arrayLink);  // the definition completes it
    if (fresh)
        releaseTypeInfo(fresh);
    return done;
}

bool DeclarationParser::defineStaticMember(const Declarator &declarator) {
    TypeInfo *member = declarator.member;
    if (member->storageCell) {
        parseError("two definitions of %s::%s", plainTagName(declarator.memberClass->tag),
                   member->name->text);
        return false;
    }
    const StructInfo *type = member->dataType == DT_STRUCT ? member->structLink : nullptr;
    if (type && type->size == 0) {
        parseError("struct definition '%s' not defined", plainTagName(type->tag));
        return false;
    }
    if (!checkMemberShape(declarator))
        return false;
    allocateStaticCell(member);
    nextToken();
    bool isInitialised = isOperator(WORD_ASSIGN);
    pushedBack = !isInitialised;
    if (isInitialised && e_lang->runInitialisers)
        parseStaticInitialiser(member);
    else if (isInitialised)
        parseAutoInitialiser(member);
    else if (isLivingObject(member))
        constructStaticMember(declarator);
    return !errorFlag;
}

// A class may construct objects of its own that others may not. The constructor may be defined
// further down.
void DeclarationParser::constructStaticMember(const Declarator &declarator) {
    TypeInfo *member = declarator.member, *constructor = member->structLink->constructor;
    bool isInside = constructor && declarator.memberClass == member->structLink;
    if (isInside && !enterClass(constructor))
        return;
    bool done = checkConstruction(member);
    if (isInside)
        leaveClass();
    if (done)
        constructAtRun(member);
}

// ---- Objects ----------------------------------------------------------------------------------

// What only an array or an initial value makes right.
bool DeclarationParser::checkPlain(const TypeInfo *info, bool isInitialised) const {
    bool isVariable = context != CONTEXT_PARAMETER && info->storage != STORAGE_TYPEDEF;
    if (isVariable && info->kind == KIND_ASSUMED_ARRAY) {
        parseError("assumed-shape array not in function prototype scope");
        return false;
    }
    if (info->kind == KIND_ARRAY && !info->arrayLink) {
        parseError("computational array type qualifier applied to a scalar variable");
        return false;
    }
    if (specifiers.fortranOrder && !info->arrayLink) {
        parseError("Fortran array type qualifier applied to a scalar variable");
        return false;
    }
    if (info->kind == KIND_REFERENCE && isVariable && !isInitialised) {
        parseError("reference variable %s is not initialized", info->name->text);
        return false;
    }
    bool isObject = info->name && info->storage != STORAGE_TYPEDEF && !isAbstract();
    if (isObject && info->dataType == DT_VOID && info->kind < KIND_FUNCTION) {
        parseError("invalid type combination");
        return false;
    }
    return true;
}

bool DeclarationParser::declareObject(TypeInfo *&info, const Declarator &declarator) {
    nextToken();
    bool isInitialised = isInBlock() && isOperator(WORD_ASSIGN);  // a formal takes no value
    pushedBack = !isInitialised;
    if (declarator.status == NAME_FUNCTION) {
        parseError("identifier '%s' has already defined as function", declarator.name->text);
        releaseTypeInfo(info);
        return false;
    }
    if (!checkPlain(info, isInitialised) || !addOpenShape(info, specifiers.fortranOrder)) {
        releaseTypeInfo(info);
        return false;
    }
    install(info, declarator.existing);
    if (!errorFlag && isDeferred(info) && context == CONTEXT_PLAIN) {
        if (isInitialised)
            parseError("initialize deferred-shape array");
        else if (info->storage != STORAGE_EXTERN && info->storage != STORAGE_TYPEDEF)
            addDeferredStep(info);
    } else if (!errorFlag && isInitialised) {
        initialise(info);
    }
    if (!errorFlag && context == CONTEXT_PLAIN && !isInitialised && isLivingObject(info))
        construct(info);
    if (!errorFlag)
        return true;
    if (info != declarator.existing)
        remove(info);
    return false;
}

// Links the record and gives it its storage; one that repeats an earlier declaration is merged into
// that one.
void DeclarationParser::install(TypeInfo *&info, Symbol *existing) {
    bool isExtern = info->storage == STORAGE_EXTERN;
    bool isGlobal = info->storage == STORAGE_GLOBAL;
    if (isExtern || existing)
        info->level = FILE_LEVEL;
    if (isGlobal && !existing) {
        info->level = SYSTEM_LEVEL;
        prependGlobal(info);
    } else {
        appendSymbol(homeList(info), info);
    }
    if (context == CONTEXT_PLAIN && !isExtern && info->storage != STORAGE_TYPEDEF) {
        if (info->level <= FILE_LEVEL && !(isGlobal && existing))
            allocateStorage(info);
        else if (info->storage == STORAGE_STATIC)
            allocateStaticCell(info);
    }
    if (existing) {
        checkRedeclaration(info, existing);
        info = existing;
    }
}

TypeInfo **DeclarationParser::homeList(const TypeInfo *info) const {
    bool isMoved = context == CONTEXT_PLAIN && info->level <= FILE_LEVEL && level > FILE_LEVEL;
    return isMoved ? &globalBlock->symbols() : symbolList;
}

void DeclarationParser::remove(TypeInfo *info) {
    if (info->level == SYSTEM_LEVEL)
        removeSymbol(info, &systemSymbols);
    else
        withdrawSymbol(homeList(info), info);
}

// Whether the object's value is made while the text is parsed.
bool DeclarationParser::isStaticNow(const TypeInfo *info) const {
    Storage storage = specifiers.storage;
    bool isPublic = storage == STORAGE_EXTERN || storage == STORAGE_GLOBAL;
    bool isStatic = info->level > FILE_LEVEL ? storage == STORAGE_STATIC || isPublic
                                             : isPublic || e_lang->initGlobals;
    return isStatic && e_lang->runInitialisers;
}

// An object that is given no value is constructed by default.
void DeclarationParser::construct(TypeInfo *info) {
    if (specifiers.storage == STORAGE_TYPEDEF || specifiers.storage == STORAGE_EXTERN ||
        !checkConstruction(info))
        return;
    if (isStaticNow(info))
        constructAtParse(info);
    else
        constructAtRun(info);
}

// With the = consumed. Objects of static duration get their value now, unless nothing is to be
// evaluated while this text is parsed.
void DeclarationParser::initialise(TypeInfo *info) {
    Storage storage = specifiers.storage;
    bool isPublic = storage == STORAGE_EXTERN || storage == STORAGE_GLOBAL;
    bool isLocal = level > FILE_LEVEL;
    bool isStatic = isLocal ? storage == STORAGE_STATIC || storage == STORAGE_GLOBAL
                            : isPublic || e_lang->initGlobals;
    if (!isStatic || (isLocal && storage == STORAGE_EXTERN)) {
        parseAutoInitialiser(info);
        return;
    }
    if (storage == STORAGE_EXTERN && info->storageCell) {
        parseError("variable '%s' redefined ", info->name->text);
        return;
    }
    allocateStorage(info);
    if (e_lang->runInitialisers)
        parseStaticInitialiser(info);
    else
        parseAutoInitialiser(info);
}

// ---- Between declarators ----------------------------------------------------------------------

bool DeclarationParser::nextDeclarator(TypeInfo *last) {
    nextToken();
    bool isWord = (tokenClass == TK_KEYWORD && !isBodyWord(WORD_CLOSE_BRACE)) ||
                  (tokenClass == TK_IDENTIFIER && !typedefNamed(tokenValue.name, nullptr));
    if (isWord) {
        pushedBack = true;
        if (!commandMode)
            refuseHere("maybe missing ';'");
        return false;
    }
    if (isMember() && isChar(':')) {
        if (!parseBitField(last))
            return false;
        nextToken();
    }
    if (isChar(','))
        return afterComma();
    bool isParameter = context == CONTEXT_PARAMETER;
    if (!isParameter && (isChar(';') || (commandMode && isChar('\n'))))
        return false;
    pushedBack = true;
    bool endsList = (isParameter && (isChar(')') || isChar(';'))) || isChar('(');
    if (!endsList)
        refuseHere("missing ';'");
    return false;
}

// Each parameter has specifiers of its own, and so is a declaration of its own.
bool DeclarationParser::afterComma() {
    if (context != CONTEXT_PARAMETER)
        return true;
    nextToken();
    pushedBack = true;
    if (dotsSeen && !isChar(')'))
        parseError("... not followed by ')'");
    return false;
}

TypeInfo *DeclarationParser::parseNamelessType() {
    Declarator declarator;
    if (!beginDeclaration() || !parseDeclarator(specifiers, level, nullptr, context, declarator))
        return nullptr;
    if (!pushedBack)  // the cursor is behind what ended the name
        peekNonBlank();
    TypeInfo *info = completeType(declarator) ? makeRecord(declarator) : nullptr;
    if (!info)
        return nullptr;
    bool done = true;
    nextToken();
    if (isChar('['))
        done = parseArray(info, declarator, nullptr);
    else if (isChar('(') && declarator.stars > 0)
        done = parsePointerToFunction(info, declarator);
    else
        pushedBack = true;
    done = done && checkTypedefArray(info);
    if (done && checkPlain(info, true) && addOpenShape(info, specifiers.fortranOrder))
        return info;
    releaseTypeInfo(info);
    return nullptr;
}

}  // namespace

bool declare(StmtNode *, int level, TagEntry **, TypeInfo **symbolList, TypeInfo **last, int *count,
             DeclContext context) {
    if (declarationDepth >= DECLARATION_DEPTH_MAX) {
        parseError("declarations are nested too deeply");
        return false;
    }
    int before = listLength(*symbolList);
    declarationDepth++;
    bool bodyFollows = DeclarationParser(level, symbolList, context).run(last);
    declarationDepth--;
    if (count)
        *count += listLength(*symbolList) - before;
    return bodyFollows;
}

TypeInfo *declareHead(const Specifiers &specifiers, Declarator &declarator) {
    return DeclarationParser(FILE_LEVEL, &globalBlock->symbols(), CONTEXT_PLAIN)
        .declareHead(specifiers, declarator);
}

TypeInfo *parseTypeName() {
    return DeclarationParser(TYPE_ONLY_LEVEL, nullptr, CONTEXT_PARAMETER).parseNamelessType();
}

}  // namespace zy
