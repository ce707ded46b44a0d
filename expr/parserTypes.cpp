// Types among the operands: casts, functional conversions, sizeof, elementtype, new. What follows a
// type's word in the line tells a conversion from a cast, before any of it is read.

#include <cctype>
#include <cstring>

#include "decl/aggregates.h"
#include "decl/arrays.h"
#include "decl/construction.h"
#include "decl/declaration.h"
#include "decl/typeWords.h"
#include "expr/guards.h"
#include "expr/parserParts.h"
#include "expr/select.h"
#include "expr/typeQueries.h"
#include "instance/report.h"

namespace zy {

namespace {

// ---- Looking ahead in the line ------------------------------------------------------------------

// Behind a literal that starts at `text`.
const char *skipLiteral(const char *text) {
    char quote = *text++;
    while (*text && *text != quote)
        text += *text == '\\' && text[1] ? 2 : 1;
    return *text ? text + 1 : text;
}

// Behind the parenthesis that closes the one at `open`; NULL if the line ends before it.
const char *behindClosing(const char *open) {
    int depth = 0;
    for (const char *text = open; *text;) {
        if (*text == '"' || *text == '\'') {
            text = skipLiteral(text);
            continue;
        }
        depth += (*text == '(') - (*text == ')');
        text++;
        if (depth == 0)
            return text;
    }
    return nullptr;
}

const char *skipSpace(const char *text) {
    while (isspace(static_cast<unsigned char>(*text)))
        text++;
    return text;
}

// `()`, `(*)` and their kin are part of a declarator.
bool holdsStarsOnly(const char *open) {
    const char *text = open + 1;
    while (*text == '*' || *text == '&' || isspace(static_cast<unsigned char>(*text)))
        text++;
    return *text == ')';
}

// A word of a type that isn't called: it starts a declarator.
bool declaratorAt(const char *text) {
    text = skipSpace(text);
    int length = 0;
    while (isalnum(static_cast<unsigned char>(text[length])) || text[length] == '_')
        length++;
    char word[64];
    snprintf(word, sizeof word, "%.*s", length, text);
    const KeywordEntry *row = length > 0 ? keywordNamed(word) : nullptr;
    return row && row->keywordClass == KC_TYPE && *skipSpace(text + length) != '(';
}

// Contents on several lines are taken for arguments.
bool isConversionAt(const char *open) {
    if (*open != '(' || holdsStarsOnly(open) || declaratorAt(open + 1))
        return false;
    const char *end = behindClosing(open);
    if (!end)
        return true;
    end = skipSpace(end);
    return *end != '(' && *end != '[';
}

bool atCharacter(char c) { return tokenClass == TK_CHAR && tokenValue.character == c; }

// Whether the token begins a type, whose first words end at `end`: before a path of names that
// leads to something else the name of a class begins an operand.
bool startsType(bool runMode, const char **end) {
    const Symbol *symbol = nullptr;
    if (tokenClass == TK_IDENTIFIER)
        symbol = visibleSymbol(tokenValue.name, runMode);
    bool isWord = tokenClass == TK_KEYWORD && currentKeyword.keywordClass == KC_TYPE;
    if (!isWord && !(symbol && symbol->storage == STORAGE_TYPEDEF))
        return false;
    MemberPath path = memberAtPath(symbol);
    *end = path.behind;
    return strncmp(lineBuffer + linePos, "::", 2) != 0 ||
           (path.member && path.member->storage == STORAGE_TYPEDEF);
}

const char *nameText(const TypeInfo *info) { return info->name ? info->name->text : ""; }

const char *structText(const TypeInfo *info) {
    const StructInfo *aggregate = info->structLink;
    return aggregate && aggregate->tag ? plainTag(nameText(aggregate->tag)) : "";
}

// A parameter list without a name in front of it is left unread behind the type.
bool isFunctionType(const TypeInfo *type) {
    return type->kind == KIND_FUNCTION || (pushedBack && atCharacter('('));
}

// Takes the type; NULL if it was refused.
TypeInfo *refuseType(TypeInfo *type) {
    errorFlag = 1;
    releaseTypeInfo(type);
    return nullptr;
}

}  // namespace

bool isConversionCall() {
    peekNonBlank();
    return isConversionAt(lineBuffer + linePos);
}

bool startsCast(bool runMode) {
    const char *end;
    return startsType(runMode, &end) && !isConversionAt(end);
}

// ---- Casts --------------------------------------------------------------------------------------

namespace {

bool castTypeFits(const TypeInfo *type) {
    if (type->name)
        parseError("with unnecessary identifier '%s' in casting operator", nameText(type));
    else if (type->kind == KIND_SIMPLE && type->dataType == DT_STRUCT)
        parseError("cannot cast to struct '%s' ", structText(type));
    else if (isFunctionType(type))
        parseError("cannot cast to function type ");
    else
        return true;
    return false;
}

}  // namespace

ExprNode *parseCastType() {
    TypeInfo *type = parseTypeName();
    if (!type)
        return nullptr;
    if (!castTypeFits(type) || !expectChar(')', true)) {
        refuseType(type);
        return nullptr;
    }
    return newSymbolNode(type);
}

void takeCast(Parse &parse) {
    if (ExprNode *type = parseCastType())
        pushOperator(parse, newOperatorNode(OP_CAST, type), operatorPrecedence(OP_CAST));
    else
        breakOff(parse);
}

// ---- Conversions --------------------------------------------------------------------------------

namespace {

struct Conversion {
    int type, code;
};
constexpr Conversion conversions[] = {
    {DT_CHAR, OP_TO_CHAR},     {DT_SHORT, OP_TO_SHORT},     {WORD_SHORT, OP_TO_SHORT},
    {DT_INT, OP_TO_INT},       {WORD_SIGNED, OP_TO_INT},    {WORD_LONG, OP_TO_INT},
    {DT_UINT, OP_TO_UINT},     {WORD_UNSIGNED, OP_TO_UINT}, {DT_FLOAT, OP_TO_FLOAT},
    {DT_DOUBLE, OP_TO_DOUBLE}, {DT_COMPLEX, OP_TO_COMPLEX}, {WORD_COMPLEX, OP_TO_COMPLEX},
    {DT_DUAL, OP_TO_DUAL},     {WORD_DUAL, OP_TO_DUAL},     {DT_STRING, OP_TO_STRING},
};

int conversionCode(int type) {
    for (const Conversion &row : conversions)
        if (row.type == type)
            return row.code;
    return -1;
}

// A cast, whose type the word is enough for.
ExprNode *castTo(TypeInfo *type, ExprNode *tree) {
    return bindOperator(newOperatorNode(OP_CAST, newSymbolNode(type), tree));
}

ExprNode *parseBracketed(bool runMode) {
    SeparatorScope brackets(false, KC_OPERATOR);
    return expectChar('(', true) ? parseContents(runMode) : nullptr;
}

}  // namespace

ExprNode *parseConversion(int typeCode, const char *word, const TypeInfo *type, bool runMode) {
    int code = conversionCode(typeCode);
    if (code >= 0)
        return parsePrimary(newOperatorNode(code), runMode);
    // Types that only a typedef gives one word: unsigned char, long long.
    if (type && type->kind == KIND_SIMPLE && isScalarNumeric(type->dataType)) {
        ExprNode *tree = parseBracketed(runMode);
        return tree ? castTo(newTypeOnly(type), tree) : nullptr;
    }
    parseError("unsupported constructor %s()", word);
    if (type && (type->dataType == DT_TAG || type->dataType == DT_STRUCT))
        fprintf(stderr, "       add function prototype 'return_type %s(arg_list)'\n",
                plainTag(word));
    return nullptr;
}

// ---- sizeof -------------------------------------------------------------------------------------

namespace {

using Size = unsigned long long;

// A struct of size 0 may get its members later, and so has its size at run time alone.
bool sizeOfStruct(const StructInfo *info, Size &size) {
    size = info ? info->size : 0;
    return size >= 2;
}

bool sizeOfElement(int dataType, const StructInfo *aggregate, Size &size) {
    if (dataType == DT_STRUCT)
        return sizeOfStruct(aggregate, size);
    size = static_cast<Size>(sizeofType(dataType));
    return true;
}

// 0 for a bound that isn't known.
Size extentOf(const ExprNode *lower, const ExprNode *limit) {
    const Value *first = constantOf(lower), *end = constantOf(limit);
    bool known = first && end && end->payload.i != OPEN_LIMIT && end->payload.i > first->payload.i;
    return known ? static_cast<Size>(static_cast<long long>(end->payload.i) - first->payload.i) : 0;
}

Size elementCount(const ArrayInfo *info) {
    if (!info || info->shapeKind != SHAPE_FIXED || !info->bounds)
        return 0;
    Size count = 1;
    for (const ExprNode *cell = info->bounds; cell && cell->next; cell = cell->next->next)
        count *= extentOf(cell->item, cell->next->item);
    return count;
}

bool sizeOfDeclared(const TypeInfo *info, Size &size) {
    if (takesShape(info))
        return false;
    switch (info->kind) {
        case KIND_C_ARRAY:
        case KIND_ARRAY: {
            Size count = elementCount(info->arrayLink);
            bool known = count != 0 && sizeOfElement(info->dataType, info->structLink, size);
            size *= count;
            return known;
        }
        case KIND_ASSUMED_C_ARRAY:
        case KIND_ASSUMED_ARRAY: return false;
        default: return sizeOfElement(dataTypeOf(info), info->structLink, size);
    }
}

// The dimensions of a part of an array that no subscript has taken.
bool sizeOfArrayTree(const ExprNode *tree, Size &size) {
    Bounds bounds;
    const TypeInfo *array = declarationOf(tree);
    if (!array || arrayShapeKind(tree) != SHAPE_KNOWN || !boundsOf(tree, bounds))
        return false;
    bool known = sizeOfElement(array->dataType, array->structLink, size);
    for (const Dimension &dimension : bounds)
        size *= extentOf(dimension.lower, dimension.limit);
    return known && size != 0;
}

// False: it is computed when the expression runs.
bool sizeOfTree(const ExprNode *tree, Size &size) {
    if (const TypeInfo *variable = variableOf(tree))
        return sizeOfDeclared(variable, size);
    bool isLiteral = tree->kind == NODE_VALUE && tree->type == DT_P_CHAR && tree->count != 0;
    DataType type = treeType(tree);
    if (isLiteral)
        size = tree->count;
    else if (type == DT_CARRAY)
        return sizeOfArrayTree(tree, size);
    else if (type == DT_ARRAY)
        return false;
    else
        return sizeOfElement(type, structInfoOf(tree), size);
    return true;
}

// Of a type whose shape is computed, the list of its bounds is run; of an incomplete class, the
// class is asked.
ExprNode *runTimeSize(ExprNode *tree) {
    const TypeInfo *type = variableOf(tree);
    if (!type || type->level != TYPE_ONLY_LEVEL)
        return newOperatorNode(OP_SIZEOF, tree);
    ExprNode *operand, *elementSize = nullptr;
    if (type->arrayLink) {
        Size size = 0;
        sizeOfElement(type->dataType, type->structLink, size);
        operand = copyNode(type->arrayLink->bounds);
        elementSize = newSizeNode(size);
    } else {
        operand = newZeroValue(DT_TAG);
        operand->payload2.structInfo = type->structLink;
    }
    deleteNode(tree);
    return newOperatorNode(OP_SIZEOF, operand, elementSize);
}

ExprNode *sizeNode(ExprNode *tree) {
    Size size = 0;
    if (!sizeOfTree(tree, size))
        return runTimeSize(tree);
    deleteNode(tree);
    return newSizeNode(size);
}

ExprNode *sizeOfTypeName() {
    TypeInfo *type = parseTypeName();
    if (!type)
        return nullptr;
    if (type->name) {
        parseError("with unnecessary identifier '%s' in declarator of sizeof()", nameText(type));
        refuseType(type);
        return nullptr;
    }
    ExprNode *leaf = newSymbolNode(type);
    if (expectChar(')', true))
        return sizeNode(leaf);
    deleteNode(leaf);
    return nullptr;
}

ExprNode *sizeOfExpression(bool runMode, bool parenthesised) {
    Parse parse{.runMode = runMode, .unaryOnly = true, .opened = parenthesised};
    ExprNode *tree = runParse(parse);
    if (!tree) {
        parseError(
            "the argument of sizeof() is not a declaration identifier or valid ZY expression");
        return nullptr;
    }
    if (!parenthesised && tree->kind == NODE_OPERATOR)
        parseError("missing '(' and ')' in sizeof(expr) ");
    return sizeNode(tree);
}

}  // namespace

ExprNode *parseSizeof(bool runMode) {
    nextToken();
    bool parenthesised = atCharacter('(');
    if (parenthesised) {
        SeparatorScope brackets(false, KC_OPERATOR);
        nextToken();
        if (startsCast(runMode))
            return sizeOfTypeName();
    }
    pushedBack = true;
    return sizeOfExpression(runMode, parenthesised);
}

// ---- elementtype --------------------------------------------------------------------------------

namespace {

ExprNode *elementTypeOfTypeName() {
    TypeInfo *type = parseTypeName();
    if (!type)
        return nullptr;
    if (type->name) {
        parseError("with unnecessary identifier '%s' in declarator of elementtype()",
                   nameText(type));
        refuseType(type);
        return nullptr;
    }
    ExprNode *node = newIntNode(type->dataType);
    releaseTypeInfo(type);
    return node;
}

ExprNode *elementTypeOfArray(bool runMode) {
    ExprNode *tree = parseExpression(runMode);
    if (variableOf(tree) && isArray(treeType(tree)))
        return newOperatorNode(OP_ELEMENTTYPE, tree);
    parseError("invalid argument for operator elementtype()");
    deleteNode(tree);
    return nullptr;
}

}  // namespace

ExprNode *parseElementType(bool runMode) {
    SeparatorScope brackets(false, KC_OPERATOR);
    if (!expectChar('(', true))
        return nullptr;
    nextToken();
    ExprNode *node;
    if (startsCast(runMode)) {
        node = elementTypeOfTypeName();
    } else {
        pushedBack = true;
        node = elementTypeOfArray(runMode);
    }
    if (!node || expectChar(')', true))
        return node;
    deleteNode(node);
    return nullptr;
}

// ---- new ----------------------------------------------------------------------------------------

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
