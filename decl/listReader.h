// What the readers of brace lists share. A ListReader holds the list that grows while its text is
// read, and is handed down from struct to member to element.
#pragma once

#include <cstdint>
#include <vector>

#include "decl/initialiserList.h"
#include "expr/nodes.h"

namespace zy {

// A list of cells that is built at its end.
class CellList {
public:
    CellList() = default;
    CellList(const CellList &) = delete;
    CellList &operator=(const CellList &) = delete;
    ~CellList() { deleteNode(first); }
    void append(ExprNode *item);
    ExprNode *take();  // the caller's from now on

private:
    ExprNode *first = nullptr, *last = nullptr;
};

class ListReader {
public:
    ListReader() = default;
    ListReader(const ListReader &) = delete;
    ListReader &operator=(const ListReader &) = delete;
    ~ListReader() { deleteNode(pending); }

    // The next token; what isn't taken is read again.
    bool openFollows();
    bool closeFollows();
    bool acceptOpen();
    bool acceptClose();
    bool acceptComma();
    // False at the end of a list, which a comma may stand before.
    bool anotherFollows() { return acceptComma() && !closeFollows(); }

    // The next expression, the caller's. NULL, mostly after a message, if there is none.
    ExprNode *takeTree();
    // The same, to be taken later; the reader has it until then.
    ExprNode *peekTree();

    void addValue(ExprNode *tree) { values.append(tree); }
    // The count's leaf, which can be changed until what it counts has been read.
    ExprNode *addCount(int count);

    // A struct: in braces of its own, with the { consumed if `opened`; or its members' values as
    // they stand in the list around it; or one expression that gives it whole.
    bool parseStructValues(StructInfo *info, bool opened);
    // One expression that gives a struct whole. Takes the tree.
    void addWholeStruct(StructInfo *info, ExprNode *tree);

    // Steps over what is left of a list after a message, up to its last } or the statement's end.
    void skipRest();

    // Puts what was read into the list's node, which stands in the statement.
    void finish(StmtNode *statement);

private:
    bool parseMembers(const StructInfo *info, bool braced, ExprNode *given);
    bool parseMember(const TypeInfo *member);
    bool parseScalarMember(const TypeInfo *member);
    bool endStruct(bool isFull);

    CellList values, rowCounts;
    ExprNode *pending = nullptr;
    int depth = 0;  // of open braces
};

// The elements of an array, whether variable or member: in braces, with or without braces for each
// row, or as a member's values in the list around it.
class ArrayReader {
public:
    ArrayReader(ListReader &reader, const TypeInfo *symbol, bool isMember);

    // Up to the } that belongs to the { before it.
    bool parseGroup(size_t dimension);
    // A member's elements in the list around it.
    bool parseUnbraced();
    // A text, or NULL, that stands for the list of an array of characters. Takes the tree.
    bool takeText(ExprNode *tree);
    // An open first dimension becomes as large as the list.
    bool setOpenLimit();
    // Objects that the list doesn't name must be such as can be made without arguments.
    bool checkRest() const;

private:
    enum class Rows { UNKNOWN, BRACED, FLAT };

    uint64_t groupSize(size_t dimension) const;
    bool parseItem(size_t dimension, Rows &rows);
    bool parseBracedItem(size_t dimension, Rows &rows);
    bool parseElement(bool opened);
    bool parseObject(uint64_t index);
    bool addTree(ExprNode *tree);
    bool addText(ExprNode *tree);
    void addAt(ExprNode *tree, uint64_t size);
    void fillGap();
    bool isOpen() const;
    bool isVector() const { return extents.size() == 1; }
    bool isStructArray() const { return array->dataType == DT_STRUCT; }
    bool isConstructed() const { return isStructArray() && array->structLink->constructor; }
    const struct ArrayTexts &texts() const;

    ListReader &list;
    const TypeInfo *array;
    bool isMember;
    std::vector<uint64_t> extents;
    ExprNode *count;
    uint64_t position = 0;  // where the next value belongs
    uint64_t written = 0;   // elements that the list accounts for
    bool hasGap = false;
};

}  // namespace zy
