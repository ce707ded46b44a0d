// delete, and the few forms of using, which do nothing.

#include <cstring>

#include "decl/aggregates.h"
#include "decl/arrays.h"
#include "decl/structInfo.h"
#include "expr/members.h"
#include "expr/nodes.h"
#include "expr/parser.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
#include "front/lexer.h"
#include "instance/report.h"
#include "stmt/statements.h"

namespace zy {

namespace {

// `[#]`, and `[]`, stand for whatever number the array has.
bool parseAnyNumber() {
    peekNonBlank();
    bool isAny = lineBuffer[linePos] == '#';
    if (isAny)
        linePos++;
    return isAny && expectChar(']', true);
}

// The dimensions of the array that is deleted, as a leaf that names a type; NULL after a message.
ExprNode *parseDimensions() {
    TypeInfo *type = newTypeInfo();
    if (!type)
        return nullptr;
    type->level = TYPE_ONLY_LEVEL;
    ExprNode *leaf = newSymbolNode(type);
    bool isRead = parseAnyNumber() || (!errorFlag && parseArrayDeclarator(type, false, 0, nullptr));
    if (isRead && !isAssumedShape(type) && !errorFlag)
        return leaf;
    parseError("invalid array argument for delete [] ");
    deleteNode(leaf);
    return nullptr;
}

// An object that others may not end isn't deleted by them either.
bool destructorIsOpen(const ExprNode *pointer) {
    const StructInfo *info = structInfoOf(pointer);
    const TypeInfo *destructor = info ? info->destructor : nullptr;
    if (!destructor || !isHiddenMember(info, destructor))
        return true;
    const char *name = plainTagName(info->tag);
    parseError("access private member of destructor %s::~%s()", name, name);
    return false;
}

}  // namespace

void parseDelete(StmtNode *statement) {
    peekNonBlank();
    if (lineBuffer[linePos] == '[') {
        nextToken();
        statement->operandB.tree = parseDimensions();
        if (!statement->operandB.tree)
            return;
    }
    ExprNode *tree = parseTree();
    statement->operandA.tree = tree;
    if (errorFlag)
        return;
    if (!isPointer(treeType(tree))) {
        parseError("The argument of delete () is not a pointer");
        return;
    }
    if (isArray(treeType(tree)) && !statement->operandB.tree) {
        parseError(" use delete [#], delete[#], delete [n], or delete[n][m] to delete an array");
        return;
    }
    if (!destructorIsOpen(tree))
        return;
    statement->chain = compileChain(tree, nullptr, false);
    expectChar(';', true);
}

namespace {

bool isName(const char *text) {
    return tokenClass == TK_IDENTIFIER && strcmp(tokenValue.name->text, text) == 0;
}

bool isScopeOperator() {
    constexpr int scopeCode = 723;
    return tokenClass == TK_KEYWORD && currentKeyword.keywordClass == KC_OPERATOR &&
           currentKeyword.code == scopeCode;
}

bool isStandardStream() {
    if (tokenClass == TK_KEYWORD)
        for (const char *word : {"cout", "cin", "cerr"})
            if (strcmp(currentKeyword.name, word) == 0)
                return true;
    for (const char *word : {"cout", "cin", "cerr", "endl"})
        if (isName(word))
            return true;
    return false;
}

void parseNamespace() {
    nextToken();
    if (!isName("std")) {
        parseError("undefined namespace afer 'using namespace'");
        return;
    }
    expectChar(';', true);
}

void parseUsedName() {
    nextToken();
    if (tokenClass != TK_IDENTIFIER) {
        parseError("identifier expected after 'using'");
        return;
    }
    if (isName("namespace")) {
        parseNamespace();
        return;
    }
    if (!isName("std")) {
        parseError("%s is not defined", tokenValue.name->text);
        return;
    }
    nextToken();
    if (!isScopeOperator()) {
        parseError(":: should follow 'using std'");
        return;
    }
    nextToken();
    if (!isStandardStream())
        parseError("undefined member following 'using std::'");
    else
        expectChar(';', true);
}

}  // namespace

// A constant where a name should be is left to the recovery, which releases it.
void parseUsing() {
    parseUsedName();
    if (errorFlag && tokenClass == TK_CONSTANT)
        pushedBack = true;
}

}  // namespace zy
