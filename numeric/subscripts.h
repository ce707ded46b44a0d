// record header: subscripts, and the elements that they lead to. A subscript of an array is guarded
// by the limits of its dimension and clamped to them after a warning; one of a pointer isn't.
//
// Subscripts lie on the value stack, the first on top, the array itself, if it is no variable,
// above them. Constants and plain int variables are read where they stand in the tree instead:
// threading and readSubscript() agree on which by standsAsSubscript().
#pragma once

#include "expr/scope.h"
#include "numeric/shape.h"

namespace zy {

// A variable whose cell can only hold an int, and whose reading has no side effect.
inline bool isPlainIndex(const ExprNode *item) {
    if (item->kind != NODE_VALUE || item->type != DT_NAME)
        return false;
    const TypeInfo *symbol = item->payload.symbol;
    return symbol->kind == KIND_SIMPLE && symbol->dataType == DT_INT &&
           symbol->level != SYSTEM_LEVEL && !(symbol->qualifiers & QUALIFIER_BUILTIN);
}

inline bool standsAsSubscript(const ExprNode *item) {
    return item->kind == NODE_VALUE && (item->type == DT_INT || isPlainIndex(item));
}

int popSubscript(ExprNode *item);  // from the stack, or of a constant of another type

// One subscript, as an int.
inline int readSubscript(ExprNode *item) {
    if (item->kind == NODE_VALUE && item->type == DT_INT)
        return item->payload.i;
    if (isPlainIndex(item)) {
        const VarCell *cell = findVarCell(item->payload.symbol);
        if (cell->type == DT_INT)
            return cell->data.i;
    }
    return popSubscript(item);
}

// ---- Positions ----------------------------------------------------------------------------------

// The last subscript of `&a[n]` may be one past the end.
int64_t clampSubscript(const ExtentRec &extent, int subscript, bool isFirst, bool mayBeEnd);

inline int64_t subscriptPosition(const ExtentRec &extent, int subscript, bool isFirst,
                                 bool mayBeEnd) {
    uint32_t position = static_cast<uint32_t>(subscript) - static_cast<uint32_t>(extent.lower);
    uint32_t count = static_cast<uint32_t>(extent.limit) - static_cast<uint32_t>(extent.lower);
    if (position < count && extent.limit > extent.lower) [[likely]]
        return position;
    return clampSubscript(extent, subscript, isFirst, mayBeEnd);
}

// The offset in elements that the subscripts of a list select in all but the last `unsubscripted`
// dimensions. `list` moves on to what is left of it.
int64_t subscriptOffset(const ShapeNode *shape, int unsubscripted, ExprNode *&list, bool mayBeEnd);

// ---- Elements -----------------------------------------------------------------------------------

enum class ElementUse { READ, WRITE, ADDRESS };

// What a subscript node selects.
struct Element {
    void *address;
    int type;          // of an element, or DT_CARRAY for a part of an array
    int elementType;   // of such a part
    ShapeNode *shape;  // of such a part: the tail of the array's; not owned
    uint32_t count;
    Value *array;  // popped: to be released when the element has been dealt with; NULL for none
};

// False, after a message, if there is nothing there. Takes the subscripts from the stack, and the
// array, if it is no variable.
bool findElement(ExprNode *node, ElementUse use, Element &element);
inline void releaseElement(const Element &element) {
    if (element.array)
        deleteValue(element.array);
}

// The element as a Value: a copy of a number or text, a view of an object or a part. NULL after a
// message for a type that can't be read.
Value *readElement(const ExprNode *node, const Element &element);
// Stores a value, converted. After a message nothing is stored.
void storeInElement(const ExprNode *node, const Element &element, const Value *value);
// What `&` gives.
Value *addressOfElement(const ExprNode *node, const Element &element);

}  // namespace zy
