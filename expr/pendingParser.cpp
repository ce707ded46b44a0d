// Stands in for what the expression parser calls and other rooms are to define; theirs take
// precedence.

#include "decl/declaration.h"
#include "expr/parser.h"
#include "expr/scope.h"
#include "front/lexer.h"
#include "instance/report.h"
#include "numeric/convert.h"

namespace zy {

__attribute__((weak)) TypeInfo *parseTypeName() {
    parseError("undefined operation");
    return nullptr;
}

__attribute__((weak)) bool parseSpecifiers(Specifiers &, DeclContext, int, TypeInfo *) {
    parseError("undefined operation");
    return false;
}

__attribute__((weak)) bool loadFunctionFile(NameEntry *) { return false; }

__attribute__((weak)) void makeImplicitFunction(NameEntry *name) {
    TypeInfo *symbol = newTypeInfo();
    if (!symbol)
        return;
    symbol->name = name;
    symbol->kind = KIND_FUNCTION;
    symbol->used = 1;
    symbol->functionLink = newFuncInfo(symbol);
    symbol->functionLink->returnType = DT_INT;
    symbol->functionLink->parameterLevel = FILE_LEVEL + 1;
    symbol->next = systemSymbols;
    systemSymbols = symbol;
    name->symbol = symbol;
}

__attribute__((weak)) ExprNode *parseDefined() {
    parseError("invalid operand for defined() operation ");
    return nullptr;
}

__attribute__((weak)) ExprNode *parseCommandSubstitution(bool) {
    parseError("undefined operation");
    return nullptr;
}

__attribute__((weak)) ExprNode *resolveGeneric(ExprNode *node) { return node; }

__attribute__((weak)) Symbol *lookupSymbolParse(NameEntry *name, TypeInfo *memberList,
                                                ClassContext **) {
    for (TypeInfo *member = memberList; member; member = member->next)
        if (member->name == name)
            return member;
    return name->symbol;
}

__attribute__((weak)) Symbol *lookupSymbolRun(ExecContext *, StmtNode *, NameEntry *name,
                                              ClassContext **) {
    return name->symbol;
}

}  // namespace zy
