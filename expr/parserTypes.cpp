// Types among the operands: casts, functional conversions, elementtype.

#include "decl/declaration.h"
#include "decl/typeWords.h"
#include "expr/typeLookahead.h"
#include "expr/typeQueries.h"
#include "instance/report.h"

namespace zy {

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

}  // namespace zy
