// record header: brace lists. A list is a node with the values (`left`) and the counts (`right`,
// called rowCounts) in operandB of an initialising statement: how many values each array, and how
// many members each struct took, in the order in which the store walks through the object.
#pragma once

#include "decl/structInfo.h"
#include "decl/typeInfo.h"

namespace zy {

struct StmtNode;

// From the { on, or, of an array of characters, at the text that stands for a list. An open first
// dimension gets its limit from the list. False after a message.
bool parseBraceList(TypeInfo *symbol, StmtNode *statement);
bool parseStructList(TypeInfo *symbol, StmtNode *statement, bool isArray);

// The same for a text that has been read. Takes the tree.
bool makeTextList(TypeInfo *symbol, StmtNode *statement, ExprNode *tree);

// Steps over a list that nothing can be made of, with what is open in it.
void skipBraceList();

// A struct that one expression gives whole has this count. Elements that a list passes over are a
// value of type void, of structs a count, and tell how many: the count as a negative number.
constexpr int WHOLE_OBJECT = 0x7fffffff;
// One that a constructor call in the list has made in its place.
constexpr int CONSTRUCTED_OBJECT = WHOLE_OBJECT - 1;

// A longer list has no chain of its own: each value is evaluated when it is stored.
constexpr int CHAINED_VALUES_MAX = 4095;

// The members that a list gives values to, in order; NULL for none (further).
const TypeInfo *firstListMember(const StructInfo *info);
const TypeInfo *nextListMember(const StructInfo *info, const TypeInfo *member);

// Whether a value of that type among the elements of an array is the text of a row.
bool isRowText(int elementType, int valueType);

}  // namespace zy
