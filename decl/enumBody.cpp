// The body of an enum: each name becomes a constant of the scope that the enum stands in.

#include "decl/aggregates.h"
#include "decl/currentToken.h"
#include "decl/declState.h"
#include "decl/declarator.h"
#include "decl/scopeLists.h"
#include "expr/constantTrees.h"
#include "expr/nodes.h"
#include "expr/parser.h"
#include "expr/typeQueries.h"
#include "instance/report.h"

namespace zy {

namespace {

// What `= expression` gives; the value stays as it is without one.
bool parseValue(int &value) {
    nextToken();
    if (!isOperator(WORD_ASSIGN)) {
        pushedBack = true;
        return true;
    }
    ExprNode *tree = parseAssignmentExpression(false);
    bool isWhole = tree && !errorFlag && isIntegral(treeType(tree)) && evaluateNow(tree, value);
    deleteNode(tree);
    if (!isWhole && !errorFlag)
        parseError("non-integral constant expression ");
    return isWhole;
}

// What is declared already under that name: a tag moves out of the way.
bool checkName(const Declarator &declarator, TypeInfo *list) {
    Symbol *existing = findInList(list, declarator.name);
    if (!existing)
        return true;
    if (existing->dataType == DT_TAG || existing->dataType == DT_ENUM) {
        hideTag(existing);
        return true;
    }
    parseError("identifier '%s' redeclared", declarator.name->text);
    return false;
}

TypeInfo *newEnumerator(NameEntry *name, int level, StructInfo *info, int value) {
    TypeInfo *symbol = newTypeInfo();
    if (!symbol)
        return nullptr;
    symbol->name = name;
    symbol->level = level;
    symbol->qualifiers = QUALIFIER_BUILTIN;
    symbol->structLink = info;
    symbol->constant = newIntNode(value);
    return symbol;
}

bool parseEnumerator(const TagHome &home, DeclContext context, StructInfo *info, int &value) {
    Declarator declarator;
    if (parseDeclaratorName(home.level, *home.symbols, CONTEXT_PLAIN, declarator) == NAME_MISSING ||
        !checkName(declarator, *home.symbols) || !parseValue(value))
        return false;
    TypeInfo *symbol = newEnumerator(declarator.name, home.level, info, value);
    if (!symbol)
        return false;
    symbol->context = context;
    if (context != CONTEXT_PLAIN)
        symbol->flags |= memberAccess;
    appendSymbol(home.symbols, symbol);
    if (!info->members)
        info->members = symbol;
    info->size++;
    value = static_cast<int>(static_cast<unsigned>(value) + 1);
    return true;
}

bool closes() {
    nextToken();
    bool isEnd = isBodyWord(WORD_CLOSE_BRACE);
    pushedBack = !isEnd;
    return isEnd;
}

}  // namespace

bool parseEnumBody(const TagHome &home, Symbol *tag, DeclContext context) {
    int value = 0;
    bool closed = false;
    while (!closed && parseEnumerator(home, context, tag->structLink, value)) {
        nextToken();
        bool goesOn = isChar(',');
        pushedBack = !goesOn;
        closed = closes();
        if (!closed && !goesOn)
            break;
    }
    if (errorFlag)
        return false;
    if (!closed)
        parseError("missing '}' for enum definition '%s'", plainTagName(tag));
    tag->structLink->declaredSize = tag->structLink->size;
    return closed;
}

}  // namespace zy
