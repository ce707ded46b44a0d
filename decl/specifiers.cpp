// The specifiers of a declaration: which type, storage class and qualifiers its words give, and
// which combinations of words are refused. The rules are C's, with references, computational
// arrays, complex and dual numbers beside them.

#include <cstdio>
#include <string_view>

#include "decl/aggregates.h"
#include "decl/currentToken.h"
#include "decl/declState.h"
#include "decl/declaration.h"
#include "decl/scopeLists.h"
#include "expr/value.h"
#include "instance/report.h"

namespace zy {

namespace {

void refuseCombination() { parseError("invalid type combination"); }

// A scan of the specifiers of one declaration.
class SpecifierScan {
public:
    SpecifierScan(Specifiers &specifiers, DeclContext place, int scopeLevel, TypeInfo *list)
        : result(specifiers), context(place), level(scopeLevel), symbolList(list) {}

    bool run();

private:
    enum Step { STEP_TAKEN, STEP_ENDS, STEP_FAILED };

    Step takeToken();
    Step takeKeyword();
    Step takeName(NameEntry *name);
    Step takeTypeName(Symbol *symbol);
    Step takeShadowingName(Symbol *symbol);
    Step takeTag(NameEntry *name);
    Step takeAnonymousTag();
    Step takeDestructor();
    Step takeAccess(int word);
    Step takeDeclspec();
    bool takeBaseType(int type);
    bool takeStorage(Storage storage);
    bool takeAggregate(int word);
    bool takeWord(int word);

    bool goesOn();
    bool combinationValid() const;
    bool numberValid() const;
    int numberType() const;
    bool finish();

    bool wantsTag() const { return result.aggregate != AGGREGATE_NONE && !tagSeen; }
    bool hasModifier() const {
        return isSigned || isUnsigned || isShort || isLong || isComplex || isDual;
    }
    bool inMemberList() const {
        return context == CONTEXT_MEMBER || context == CONTEXT_UNION_MEMBER;
    }
    // Sets a flag that a word may set once.
    static bool setOnce(bool &flag) {
        bool wasClear = !flag;
        flag = true;
        return wasClear;
    }

    Specifiers &result;
    DeclContext context;
    int level;
    TypeInfo *symbolList;
    bool typeSeen = false;  // a base type or typedef name
    bool tagSeen = false;
    bool isSigned = false, isUnsigned = false, isShort = false;
    bool isLong = false, isLongLong = false, isComplex = false, isDual = false;
    int lastWord = 0;
};

bool SpecifierScan::run() {
    destructorSeen = false;  // a ~ counts for its own declaration
    do {
        Step step = takeToken();
        if (step == STEP_FAILED)
            return false;
        if (step == STEP_ENDS)
            break;
    } while (goesOn());
    return finish();
}

bool SpecifierScan::goesOn() {
    nextToken();
    bool taken = false;
    if (tokenClass == TK_KEYWORD)
        taken = currentKeyword.keywordClass == KC_TYPE || isOperator(WORD_TILDE);
    else if (tokenClass == TK_IDENTIFIER)
        taken = wantsTag() || typedefNamed(tokenValue.name, symbolList);
    pushedBack = !taken;
    return taken;
}

SpecifierScan::Step SpecifierScan::takeToken() {
    lastWord = 0;
    if (tokenClass == TK_KEYWORD)
        return takeKeyword();
    if (tokenClass == TK_IDENTIFIER)
        return takeName(tokenValue.name);
    refuseCombination();
    return STEP_FAILED;
}

// ---- Names ------------------------------------------------------------------------------------

namespace {

bool pathFollows() {
    peekNonBlank();
    return lineBuffer[linePos] == ':' && lineBuffer[linePos + 1] == ':';
}

}  // namespace

SpecifierScan::Step SpecifierScan::takeName(NameEntry *name) {
    if (wantsTag()) {
        if (!pathFollows())
            return takeTag(name);
        result.aggregate = AGGREGATE_NONE;  // `struct A::B` is `A::B`
    }
    Symbol *symbol = typedefNamed(name, symbolList);
    if (!symbol) {
        pushedBack = true;
        return STEP_ENDS;
    }
    const Symbol *first = symbol;
    int type = hasModifier() ? numberType() : result.dataType;
    result.qualifiedName = parseQualifiedName(symbol, type, level, &result.member);
    if (result.qualifiedName == QUALIFIED_FAILED)
        return STEP_FAILED;
    if (result.qualifiedName != QUALIFIED_NONE) {
        result.dataType = type;
        result.memberClass = symbol->structLink;
        if (type == DT_STRUCT && !result.typeSymbol)
            result.typeSymbol = symbol;
        return STEP_ENDS;
    }
    if (!typeSeen && !tagSeen && !hasModifier())
        return takeTypeName(symbol);
    if (symbol == first)
        return takeShadowingName(symbol);
    parseError("identifier '%s' redeclared", plainTagName(symbol));  // a path that ends at a type
    return STEP_FAILED;
}

// Behind a type, the name of another type is what is being declared.
SpecifierScan::Step SpecifierScan::takeShadowingName(Symbol *symbol) {
    pushedBack = true;
    if (!isInList(symbolList, symbol))
        return STEP_ENDS;
    if (symbol->dataType == DT_TAG || symbol->dataType == DT_ENUM) {
        hideTag(symbol);
        return STEP_ENDS;
    }
    parseError("identifier '%s' redeclared", symbol->name->text);
    return STEP_FAILED;
}

SpecifierScan::Step SpecifierScan::takeTypeName(Symbol *symbol) {
    if (result.kind == KIND_ARRAY && symbol->kind != KIND_SIMPLE) {
        parseError("invalid data type for computational array");
        return STEP_FAILED;
    }
    typeSeen = true;
    result.typeSymbol = symbol;
    result.dataType = symbol->dataType;
    if (symbol->dataType == DT_TAG)
        result.dataType = DT_STRUCT;
    else if (symbol->dataType == DT_ENUM)
        result.dataType = DT_INT;
    else if (result.kind == KIND_SIMPLE)
        result.kind = static_cast<TypeKind>(symbol->kind);
    if (symbol->structLink)
        currentStruct = symbol->structLink;
    return STEP_TAKEN;
}

SpecifierScan::Step SpecifierScan::takeTag(NameEntry *name) {
    tagSeen = true;
    result.tagName = name;
    peekNonBlank();
    bool opensBody = lineBuffer[linePos] == '{';
    bool isAlone = lineBuffer[linePos] == ';' && level != TYPE_ONLY_LEVEL;
    bool declaresHere = opensBody || isAlone;
    Symbol *tag = declaresHere ? tagInList(name, symbolList) : visibleTag(name, symbolList);
    if (tag && !tagMatches(tag, result.aggregate))
        return STEP_FAILED;
    if (tag && opensBody && !tagIsOpen(tag))
        return STEP_FAILED;
    result.typeSymbol = tag;
    result.opensBody = opensBody;
    bool isEnum = result.aggregate == AGGREGATE_ENUM;
    result.dataType = isEnum ? DT_INT : DT_STRUCT;
    if (tag && !isEnum)
        currentStruct = tag->structLink;
    return STEP_TAKEN;
}

SpecifierScan::Step SpecifierScan::takeAnonymousTag() {
    char text[32];
    snprintf(text, sizeof text, "_struct%d", structCounter++);
    NameEntry *name = lookupName(text);
    if (!name)
        name = addName(text);
    result.isUntagged = true;
    return name ? takeTag(name) : STEP_FAILED;
}

// ---- Words ------------------------------------------------------------------------------------

SpecifierScan::Step SpecifierScan::takeKeyword() {
    int word = currentKeyword.code;
    if (isOperator(WORD_TILDE))
        return takeDestructor();
    if (currentKeyword.keywordClass != KC_TYPE) {
        refuseCombination();
        return STEP_FAILED;
    }
    lastWord = word;
    if (inMemberList() && (word == WORD_PUBLIC || word == WORD_PRIVATE || word == WORD_PROTECTED))
        return takeAccess(word);
    if (word == WORD_DECLSPEC)
        return takeDeclspec();
    if (!takeWord(word)) {
        refuseCombination();
        return STEP_FAILED;
    }
    if (wantsTag()) {
        peekNonBlank();
        if (lineBuffer[linePos] == '{')
            return takeAnonymousTag();
    }
    return STEP_TAKEN;
}

// One word; false if it can't stand beside those before it.
bool SpecifierScan::takeWord(int word) {
    bool taken = false;
    switch (word) {
        case WORD_SIGNED: taken = setOnce(isSigned); break;
        case WORD_UNSIGNED: taken = setOnce(isUnsigned); break;
        case WORD_SHORT: taken = setOnce(isShort); break;
        case WORD_LONG: taken = setOnce(isLong) || setOnce(isLongLong); break;
        case WORD_COMPLEX: taken = setOnce(isComplex); break;
        case WORD_DUAL: taken = setOnce(isDual); break;
        case WORD_CLASS:
        case WORD_STRUCT:
        case WORD_UNION:
        case WORD_ENUM: taken = takeAggregate(word); break;
        case WORD_AUTO: taken = takeStorage(STORAGE_AUTO); break;
        case WORD_REGISTER: taken = takeStorage(STORAGE_REGISTER); break;
        case WORD_STATIC: taken = takeStorage(STORAGE_STATIC); break;
        case WORD_EXTERN: taken = takeStorage(STORAGE_EXTERN); break;
        case WORD_TYPEDEF: taken = takeStorage(STORAGE_TYPEDEF); break;
        case WORD_LOCAL: taken = takeStorage(STORAGE_LOCAL); break;
        case WORD_GLOBAL: taken = takeStorage(STORAGE_GLOBAL); break;
        case WORD_FORTRAN: taken = setOnce(result.fortranOrder); break;
        case WORD_REF:
            taken = result.kind == KIND_SIMPLE;
            result.kind = KIND_REFERENCE;
            break;
        case WORD_ARRAY:
            taken = result.kind == KIND_SIMPLE;
            result.kind = KIND_ARRAY;
            break;
        case WORD_RESTRICT: result.isRestrict = true; break;
        case WORD_CONST: result.isConst = true; return true;
        case WORD_VOLATILE:
        case WORD_INLINE:
        case WORD_VIRTUAL:
        case WORD_IGNORED: return true;
        default: taken = takeBaseType(word); break;
    }
    return (taken || word == WORD_RESTRICT) && combinationValid();
}

bool SpecifierScan::takeBaseType(int type) {
    if (type > DT_VOID || typeSeen)
        return false;
    typeSeen = true;
    result.dataType = type;
    return true;
}

bool SpecifierScan::takeStorage(Storage storage) {
    if (result.storageGiven)
        return false;
    result.storageGiven = true;
    result.storage = storage;
    return true;
}

bool SpecifierScan::takeAggregate(int word) {
    if (result.aggregate != AGGREGATE_NONE)
        return false;
    result.aggregate = word == WORD_UNION  ? AGGREGATE_UNION
                       : word == WORD_ENUM ? AGGREGATE_ENUM
                                           : AGGREGATE_STRUCT;
    classDeclared = word == WORD_CLASS;
    return true;
}

SpecifierScan::Step SpecifierScan::takeDestructor() {
    nextToken();
    Symbol *symbol =
        tokenClass == TK_IDENTIFIER ? typedefNamed(tokenValue.name, symbolList) : nullptr;
    if (!symbol || symbol->dataType != DT_TAG) {
        parseError("~%s", tokenClass == TK_IDENTIFIER ? tokenValue.name->text : "");
        pushedBack = true;  // a constant is released by whoever skips it
        return STEP_FAILED;
    }
    if (typeSeen || tagSeen || hasModifier()) {
        const char *name = symbol->name->text;
        parseError("destructor %s::~%s() with return type", name, name);
        return STEP_FAILED;
    }
    destructorSeen = true;
    return takeTypeName(symbol);
}

SpecifierScan::Step SpecifierScan::takeAccess(int word) {
    memberAccess = word == WORD_PUBLIC ? FLAG_PUBLIC : FLAG_PRIVATE;
    memberProtected = word == WORD_PROTECTED;
    if (!expectChar(':', false)) {
        errorFlag = 1;
        return STEP_FAILED;
    }
    return STEP_TAKEN;
}

SpecifierScan::Step SpecifierScan::takeDeclspec() {
    if (!expectChar('(', true))
        return STEP_FAILED;
    nextToken();
    std::string_view argument = tokenClass == TK_IDENTIFIER ? tokenValue.name->text : "";
    if (tokenClass == TK_CONSTANT)
        deleteValue(tokenValue.constant);
    bool taken = true;
    if (argument == "zyarray")
        taken = takeWord(WORD_ARRAY);
    else if (argument == "local")
        taken = takeWord(WORD_LOCAL);
    else if (argument == "global")
        taken = takeWord(WORD_GLOBAL);
    else
        parseError("invalid argument for __declspec()");
    if (!taken)
        refuseCombination();
    return taken && !argument.empty() && expectChar(')', true) && !errorFlag ? STEP_TAKEN
                                                                             : STEP_FAILED;
}

// ---- Combinations -----------------------------------------------------------------------------

bool SpecifierScan::combinationValid() const {
    Storage storage = result.storage;
    bool storageOfParameter =
        storage == STORAGE_AUTO || storage == STORAGE_REGISTER || storage == STORAGE_TYPEDEF;
    if ((context == CONTEXT_PARAMETER || context == CONTEXT_UNION_MEMBER) && !storageOfParameter)
        return false;
    bool storageOfFile =
        storage == STORAGE_EXTERN || storage == STORAGE_LOCAL || storage == STORAGE_GLOBAL;
    if (context == CONTEXT_MEMBER && storageOfFile)
        return false;
    if ((isSigned && isUnsigned) || (isShort && isLong) || (isComplex && isDual))
        return false;
    if (result.aggregate != AGGREGATE_NONE)
        return !typeSeen && !hasModifier() && result.kind == KIND_SIMPLE;
    return numberValid();
}

bool SpecifierScan::numberValid() const {
    int type = typeSeen ? result.dataType : DT_UNDEFINED;
    bool isWide = type == DT_FLOAT || type == DT_DOUBLE;
    if (isComplex || isDual)
        if (isSigned || isUnsigned || isShort || isLongLong || (typeSeen && !isWide))
            return false;
    if (isShort && typeSeen && type != DT_INT)
        return false;
    if (isLong && typeSeen && type != DT_INT && (type != DT_DOUBLE || isLongLong))
        return false;
    return !(isSigned || isUnsigned) || !typeSeen || type <= DT_INT;
}

// The number type of the words, once they are known to go together.
int SpecifierScan::numberType() const {
    int type = result.dataType;
    if (isComplex)
        return typeSeen && type == DT_FLOAT ? DT_COMPLEX : DT_DCOMPLEX;
    if (isDual)
        return isLong || (typeSeen && type == DT_DOUBLE) ? DT_DDUAL : DT_DUAL;
    if (typeSeen && type == DT_CHAR)
        return isUnsigned ? DT_UCHAR : DT_CHAR;
    if (isShort)
        return isUnsigned ? DT_USHORT : DT_SHORT;
    if (isLongLong)
        return isUnsigned ? DT_ULLONG : DT_LLONG;
    if (typeSeen && type == DT_DOUBLE)
        return DT_DOUBLE;
    return isUnsigned ? DT_UINT : DT_INT;
}

bool SpecifierScan::finish() {
    if (result.aggregate != AGGREGATE_NONE) {
        if (tagSeen)
            return true;
        if (result.aggregate == AGGREGATE_ENUM)
            parseError("undefined enum definition");
        else
            parseError("undefined struct definition ");
        return false;
    }
    if (hasModifier()) {
        result.dataType = numberType();
        return true;
    }
    if (typeSeen || result.qualifiedName != QUALIFIED_NONE)
        return true;
    bool standsForInt = result.storage == STORAGE_EXTERN || result.storage == STORAGE_STATIC ||
                        lastWord == WORD_CONST || lastWord == WORD_VOLATILE ||
                        lastWord == WORD_REGISTER;
    if (!standsForInt) {
        parseError("missing type");
        result.dataType = DT_UNDEFINED;
        return false;
    }
    result.dataType = DT_INT;
    return true;
}

}  // namespace

bool parseSpecifiers(Specifiers &specifiers, DeclContext context, int level, TypeInfo *symbolList) {
    return SpecifierScan(specifiers, context, level, symbolList).run();
}

}  // namespace zy
