// Lists of struct members, and the list that all readers fill.

#include "decl/construction.h"
#include "decl/currentToken.h"
#include "decl/layout.h"
#include "decl/listReader.h"
#include "expr/guards.h"
#include "expr/parser.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "stmt/stmtNode.h"

namespace zy {

// ---- The list ---------------------------------------------------------------------------------

void CellList::append(ExprNode *item) {
    ExprNode *cell = newListCell(item);
    if (!cell)
        return;
    (last ? last->next : first) = cell;
    last = cell;
}

ExprNode *CellList::take() {
    ExprNode *list = first;
    first = last = nullptr;
    return list;
}

bool ListReader::openFollows() {
    if (pending)
        return false;
    nextToken();
    pushedBack = true;
    return isBodyWord(WORD_OPEN_BRACE);
}

bool ListReader::closeFollows() {
    if (pending)
        return false;
    nextToken();
    pushedBack = true;
    return isBodyWord(WORD_CLOSE_BRACE);
}

bool ListReader::acceptOpen() {
    if (!openFollows())
        return false;
    pushedBack = false;
    depth++;
    return true;
}

bool ListReader::acceptClose() {
    if (!closeFollows())
        return false;
    pushedBack = false;
    depth--;
    return true;
}

bool ListReader::acceptComma() {
    if (pending)
        return false;
    nextToken();
    pushedBack = !isChar(',');
    return !pushedBack;
}

ExprNode *ListReader::peekTree() {
    if (!pending)
        pending = parseAssignmentExpression(false);
    return pending;
}

ExprNode *ListReader::takeTree() {
    ExprNode *tree = peekTree();
    pending = nullptr;
    return tree;
}

ExprNode *ListReader::addCount(int count) {
    ExprNode *leaf = newIntNode(count);
    rowCounts.append(leaf);
    return leaf;
}

void ListReader::skipRest() {
    while (depth > 0 && !endOfInput) {
        nextToken();
        if (tokenClass == TK_CONSTANT)
            deleteValue(takeConstant());
        depth += isBodyWord(WORD_OPEN_BRACE) - isBodyWord(WORD_CLOSE_BRACE);
        if (isChar(';')) {
            pushedBack = true;
            return;
        }
    }
}

void skipBraceList() {
    ListReader list;
    list.acceptOpen();
    list.skipRest();
}

void ListReader::finish(StmtNode *statement) {
    statement->operandB.tree->left = values.take();
    statement->operandB.tree->right = rowCounts.take();
}

// ---- Members ----------------------------------------------------------------------------------

namespace {

// Functions, names of types and what belongs to the class as a whole have no place in an object; a
// bit-field without a name has one that can't be named.
bool isListed(const TypeInfo *member) {
    return takesRoom(member, AGGREGATE_STRUCT) && !isPad(member);
}

const TypeInfo *firstListed(const TypeInfo *member) {
    while (member && !isListed(member))
        member = member->next;
    return member;
}

}  // namespace

const TypeInfo *firstListMember(const StructInfo *info) {
    return info ? firstListed(info->members) : nullptr;
}

const TypeInfo *nextListMember(const StructInfo *info, const TypeInfo *member) {
    return info->aggregateKind == AGGREGATE_UNION ? nullptr : firstListed(member->next);
}

// ---- Structs ----------------------------------------------------------------------------------

bool ListReader::parseStructValues(StructInfo *info, bool opened) {
    bool braced = opened || acceptOpen();
    if (!braced) {
        const ExprNode *tree = peekTree();
        if (!tree) {
            parseError("invalid struct initializer ");
            return false;
        }
        if (treeDataType(tree) == DT_STRUCT) {
            addWholeStruct(info, takeTree());
            return true;
        }
    }
    return parseMembers(info, braced, addCount(0));
}

void ListReader::addWholeStruct(StructInfo *info, ExprNode *tree) {
    TypeInfo *type = newTypeInfo();
    type->level = TYPE_ONLY_LEVEL;
    type->dataType = DT_STRUCT;
    type->structLink = info;
    ExprNode *target = newSymbolNode(type);
    checkInitialiser(target, tree);
    deleteNode(target);
    addCount(WHOLE_OBJECT);
    addValue(tree);
}

bool ListReader::parseMembers(const StructInfo *info, bool braced, ExprNode *given) {
    const TypeInfo *member = firstListMember(info);
    bool another = member && !(braced && closeFollows());
    while (another) {
        if (!parseMember(member))
            return false;
        given->payload.i++;
        member = nextListMember(info, member);
        another = member && anotherFollows();
    }
    return checkMemberConstruction(info, member) && (!braced || endStruct(!member));
}

bool ListReader::endStruct(bool isFull) {
    if (acceptClose())
        return true;
    if (!isFull)
        parseError("missing '}' or ',', or too many struct/class/union initializers");
    else if (!acceptComma())
        parseError("missing '}' or too many struct/class/union initializers");
    else if (closeFollows())
        parseError("extra ',' in struct/class/union initializers");
    else
        parseError("too many struct/class/union initializers");
    return false;
}

bool ListReader::parseMember(const TypeInfo *member) {
    if (member->kind == KIND_C_ARRAY || member->kind == KIND_ARRAY) {
        ArrayReader elements(*this, member, true);
        return acceptOpen() ? elements.parseGroup(0) : elements.parseUnbraced();
    }
    if (member->kind == KIND_SIMPLE && member->dataType == DT_STRUCT)
        return parseStructValues(member->structLink, false);
    return parseScalarMember(member);
}

bool ListReader::parseScalarMember(const TypeInfo *member) {
    ExprNode *tree = takeTree();
    if (!tree) {
        parseError("invalid struct initializer ");
        return false;
    }
    ExprNode *target = newSymbolNode(const_cast<TypeInfo *>(member));
    target->owned = 0;  // the level of a member is its place in the object
    checkInitialiser(target, tree);
    deleteNode(target);
    addValue(tree);
    return true;
}

}  // namespace zy
