// record header: making, copying and releasing of expression trees. Nodes are Values in shape and
// come from the same records; ArrayInfo, FuncInfo and StructInfo fit in such a record too and carry
// their `kind` at the same place, so that one routine releases them all.
//
// A tree owns its operands, and a leaf that names a type its record of TYPE_ONLY_LEVEL; texts of
// pointers to char are kept apart (keepText). Neither a long list nor a deep tree costs stack here.
#pragma once

#include <cstring>

#include "decl/arrayInfo.h"
#include "decl/funcInfo.h"
#include "decl/structInfo.h"

namespace zy {

// The kind of a record of the shared format, whichever view its maker has of it.
inline uint32_t recordKindOf(const void *record) {
    uint32_t kind;
    memcpy(&kind, static_cast<const char *>(record) + offsetof(ExprNode, kind), sizeof kind);
    return kind;
}

// An operator without operands.
ExprNode *newOperatorNode(int code);
ExprNode *newOperatorNode(int code, ExprNode *left, ExprNode *right = nullptr);
// The last cell of a list.
ExprNode *newListCell(ExprNode *item);
// Puts the item into a new cell at the end of the list.
void appendListCell(ExprNode *&list, ExprNode *item);
ExprNode *newIntNode(int number);
// A constant of type unsigned long long int.
ExprNode *newSizeNode(unsigned long long number);
// A leaf that names a variable, function or type. It owns the record if that has TYPE_ONLY_LEVEL.
ExprNode *newSymbolNode(TypeInfo *symbol);

// All fields zero but the kind.
ArrayInfo *newArrayInfo();
FuncInfo *newFuncInfo(TypeInfo *owner);
StructInfo *newStructInfo(TypeInfo *tag);

// A deep copy, of a list with all its cells. Copies are not threaded. A record of another kind is
// given back itself, after a message and with errorFlag set.
ExprNode *copyNode(const ExprNode *node);
ArrayInfo *copyArrayInfo(const ArrayInfo *info);
// With copies of the formals; the body stays the model's.
FuncInfo *copyFuncInfo(const FuncInfo *info, TypeInfo *owner);
// A nameless record of TYPE_ONLY_LEVEL for the type of `model`: its data type, kind and aggregate
// with copies of its ArrayInfo and FuncInfo.
TypeInfo *newTypeOnly(const TypeInfo *model);

// Releases a record of the shared format with all it owns; a list cell with the cells behind it.
// NULL is fine. Of operators all four operand fields are owned trees, with one exception: `fourth`
// of || && and ?: (7, 9, 703) is a single record for the use of the threading, which is recycled
// and not followed. A FuncInfo's body, labels and gotos must have been released before.
void deleteNode(void *record);

// Texts of literals live until the parser is reset: pointers to them may have been stored anywhere.
// Gives the text back.
char *keepText(char *text);
void releaseKeptTexts();

}  // namespace zy
