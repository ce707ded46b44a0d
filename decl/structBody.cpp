// The body of a struct, class or union: members are read as declarations of a list of their own,
// then laid out. The cells that say in which body the parser stands are kept for the body around.

#include "decl/aggregates.h"
#include "decl/construction.h"
#include "decl/currentToken.h"
#include "decl/declState.h"
#include "decl/declaration.h"
#include "decl/layout.h"
#include "expr/constantTrees.h"
#include "expr/members.h"
#include "expr/nodes.h"
#include "expr/parser.h"
#include "expr/typeQueries.h"
#include "instance/langState.h"
#include "instance/report.h"

namespace zy {

namespace {

// The access rules of one body.
class BodyScope {
public:
    BodyScope(StructInfo *info, bool isClass)
        : access(memberAccess), isProtected(memberProtected), body{info, innermostBody} {
        innermostBody = &body;
        memberAccess = isClass ? FLAG_PRIVATE : FLAG_PUBLIC;
        memberProtected = false;
    }
    BodyScope(const BodyScope &) = delete;
    ~BodyScope() {
        memberAccess = access;
        memberProtected = isProtected;
        innermostBody = body.outer;
    }

private:
    uint32_t access;
    bool isProtected;
    OpenBody body;
};

}  // namespace

// ---- Names ------------------------------------------------------------------------------------

bool checkMemberName(TypeInfo *list, const NameEntry *name) {
    const TypeInfo *member = name ? memberNamed(list, name) : nullptr;
    if (!member || isPad(member) || member->dataType == DT_TAG)
        return true;
    parseError("identifier '%s' redeclared", name->text);
    return false;
}

bool checkMemberNames(TypeInfo *list, const StructInfo *anonymous) {
    bool isRight = true;
    for (const TypeInfo *member = anonymous->members; member; member = member->next) {
        if (member->flags & FLAG_ANONYMOUS)
            isRight &= checkMemberNames(list, member->structLink);
        else if (member->dataType != DT_TAG && !isPad(member))
            isRight &= checkMemberName(list, member->name);
    }
    return isRight;
}

// ---- Bit-fields -------------------------------------------------------------------------------

namespace {

bool parseWidth(int &width) {
    ExprNode *tree = parseAssignmentExpression(false);
    bool isWhole = tree && !errorFlag && isIntegral(treeType(tree)) && evaluateNow(tree, width);
    deleteNode(tree);
    if (!isWhole && !errorFlag)
        parseError("integral constant expression expected");
    return isWhole;
}

}  // namespace

bool parseBitField(TypeInfo *member) {
    const char *name = member->name->text;
    if (member->dataType >= DT_FLOAT || member->kind != KIND_SIMPLE) {
        parseError("invalid type for bit-field: %s", name);
        return false;
    }
    member->bitField = 1;
    int width = 0;
    if (!parseWidth(width))
        return false;
    if (width > sizeofType(member->dataType) * 8) {
        parseError("bit-field too big: %s", name);
        return false;
    }
    if (width < 0 || (width == 0 && !isPad(member))) {
        parseError("bit-field size <= 0: %s", name);
        return false;
    }
    member->bitWidth = static_cast<uint8_t>(width);
    return true;
}

// ---- The body ---------------------------------------------------------------------------------

namespace {

bool memberFollows(StructInfo *info) {
    if (startsDeclaration(info->members))
        return true;
    pushedBack = !isOperator(WORD_TILDE);
    return !pushedBack;
}

// The rest of a member with an error in it: up to its `;`, or in front of the body's `}`. Where an
// expression ends with its line, no `}` follows: the end of the line is a `;` then, for ever.
void skipMember() {
    for (int depth = 0;;) {
        nextToken();
        if (tokenClass == TK_CONSTANT)
            deleteValue(takeConstant());
        bool closes = isBodyWord(WORD_CLOSE_BRACE);
        if (endOfInput || (closes && depth == 0)) {
            pushedBack = true;
            return;
        }
        if (isBodyWord(WORD_OPEN_BRACE))
            depth++;
        else if (closes)
            depth--;
        else if (isChar(';') && (depth == 0 || e_lang->rawLineMode))
            return;
    }
}

// An error ends its member; the pass goes on, and what follows has its own messages. False after
// any error.
bool parseMembers(TagEntry **tagList, StructInfo *info, DeclContext context) {
    bool isRight = !errorFlag;
    while (!errorFlag && memberFollows(info)) {
        declare(nullptr, info->memberLevel, tagList, &info->members, nullptr, nullptr, context);
        if (pushedBack && !errorFlag)
            parseError("missing ';' after last class/struct/union member ");
        if (!errorFlag)
            continue;
        isRight = false;
        errorFlag = 0;
        skipMember();
    }
    return isRight && !errorFlag;
}

}  // namespace

bool parseStructBody(TagEntry **tagList, Symbol *tag, AggregateKind aggregateKind) {
    StructInfo *info = tag->structLink;
    BodyScope scope(info, classDeclared);
    if (classDeclared)
        tag->flags |= FLAG_IN_CLASS;
    bool isRight = parseMembers(
        tagList, info, aggregateKind == AGGREGATE_UNION ? CONTEXT_UNION_MEMBER : CONTEXT_MEMBER);
    nextToken();
    pushedBack = !isBodyWord(WORD_CLOSE_BRACE);
    if (!isRight) {
        errorFlag = 1;
        return false;
    }
    if (pushedBack) {
        parseError("missing '}' or error before closing '}' for struct definition '%s'",
                   plainTagName(tag));
        return false;
    }
    layOutMembers(info);
    currentStruct = info;
    if (info->constructor)  // nothing in it could give arguments to those of its members
        checkMemberConstruction(info, info->members);
    return !errorFlag;
}

}  // namespace zy
