// What follows a type's word in the line tells a conversion from a cast, before any of it is read.

#include "expr/typeLookahead.h"

#include <cctype>
#include <cstring>

#include "decl/aggregates.h"
#include "expr/select.h"
#include "expr/typeQueries.h"

namespace zy {

namespace {

// Behind a literal that starts at `text`.
const char *skipLiteral(const char *text) {
    char quote = *text++;
    while (*text && *text != quote)
        text += *text == '\\' && text[1] ? 2 : 1;
    return *text ? text + 1 : text;
}

}  // namespace

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

bool holdsStarsOnly(const char *open) {
    const char *text = open + 1;
    while (*text == '*' || *text == '&' || isspace(static_cast<unsigned char>(*text)))
        text++;
    return *text == ')';
}

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

bool isConversionAt(const char *open) {
    if (*open != '(' || holdsStarsOnly(open) || declaratorAt(open + 1))
        return false;
    const char *end = behindClosing(open);
    if (!end)
        return true;
    end = skipSpace(end);
    return *end != '(' && *end != '[';
}

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

const char *structText(const TypeInfo *info) {
    const StructInfo *aggregate = info->structLink;
    return aggregate && aggregate->tag ? plainTag(nameText(aggregate->tag)) : "";
}

bool isFunctionType(const TypeInfo *type) {
    return type->kind == KIND_FUNCTION || (pushedBack && atCharacter('('));
}

TypeInfo *refuseType(TypeInfo *type) {
    errorFlag = 1;
    releaseTypeInfo(type);
    return nullptr;
}

ExprNode *castTo(TypeInfo *type, ExprNode *tree) {
    return bindOperator(newOperatorNode(OP_CAST, newSymbolNode(type), tree));
}

bool isConversionCall() {
    peekNonBlank();
    return isConversionAt(lineBuffer + linePos);
}

bool startsCast(bool runMode) {
    const char *end;
    return startsType(runMode, &end) && !isConversionAt(end);
}

}  // namespace zy
