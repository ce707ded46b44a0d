// sizeof: of a type or an expression, as a constant or, where a shape is computed, when it runs.

#include "decl/arrays.h"
#include "decl/declaration.h"
#include "expr/guards.h"
#include "expr/typeLookahead.h"
#include "expr/typeQueries.h"
#include "instance/report.h"

namespace zy {

namespace {

using Size = unsigned long long;

// A struct of size 0 may get its members later, and so has its size at run time alone.
bool sizeOfStruct(const StructInfo *info, Size &size) {
    size = info ? info->size : 0;
    return size >= 2;
}

bool sizeOfElement(int dataType, const StructInfo *aggregate, Size &size) {
    if (dataType == DT_STRUCT)
        return sizeOfStruct(aggregate, size);
    size = static_cast<Size>(sizeofType(dataType));
    return true;
}

// 0 for a bound that isn't known.
Size extentOf(const ExprNode *lower, const ExprNode *limit) {
    const Value *first = constantOf(lower), *end = constantOf(limit);
    bool known = first && end && end->payload.i != OPEN_LIMIT && end->payload.i > first->payload.i;
    return known ? static_cast<Size>(static_cast<long long>(end->payload.i) - first->payload.i) : 0;
}

Size elementCount(const ArrayInfo *info) {
    if (!info || info->shapeKind != SHAPE_FIXED || !info->bounds)
        return 0;
    Size count = 1;
    for (const ExprNode *cell = info->bounds; cell && cell->next; cell = cell->next->next)
        count *= extentOf(cell->item, cell->next->item);
    return count;
}

bool sizeOfDeclared(const TypeInfo *info, Size &size) {
    if (takesShape(info))
        return false;
    switch (info->kind) {
        case KIND_C_ARRAY:
        case KIND_ARRAY: {
            Size count = elementCount(info->arrayLink);
            bool known = count != 0 && sizeOfElement(info->dataType, info->structLink, size);
            size *= count;
            return known;
        }
        case KIND_ASSUMED_C_ARRAY:
        case KIND_ASSUMED_ARRAY: return false;
        default: return sizeOfElement(dataTypeOf(info), info->structLink, size);
    }
}

// The dimensions of a part of an array that no subscript has taken.
bool sizeOfArrayTree(const ExprNode *tree, Size &size) {
    Bounds bounds;
    const TypeInfo *array = declarationOf(tree);
    if (!array || arrayShapeKind(tree) != SHAPE_KNOWN || !boundsOf(tree, bounds))
        return false;
    bool known = sizeOfElement(array->dataType, array->structLink, size);
    for (const Dimension &dimension : bounds)
        size *= extentOf(dimension.lower, dimension.limit);
    return known && size != 0;
}

// False: it is computed when the expression runs.
bool sizeOfTree(const ExprNode *tree, Size &size) {
    if (const TypeInfo *variable = variableOf(tree))
        return sizeOfDeclared(variable, size);
    bool isLiteral = tree->kind == NODE_VALUE && tree->type == DT_P_CHAR && tree->count != 0;
    DataType type = treeType(tree);
    if (isLiteral)
        size = tree->count;
    else if (type == DT_CARRAY)
        return sizeOfArrayTree(tree, size);
    else if (type == DT_ARRAY)
        return false;
    else
        return sizeOfElement(type, structInfoOf(tree), size);
    return true;
}

// Of a type whose shape is computed, the list of its bounds is run; of an incomplete class, the
// class is asked.
ExprNode *runTimeSize(ExprNode *tree) {
    const TypeInfo *type = variableOf(tree);
    if (!type || type->level != TYPE_ONLY_LEVEL)
        return newOperatorNode(OP_SIZEOF, tree);
    ExprNode *operand, *elementSize = nullptr;
    if (type->arrayLink) {
        Size size = 0;
        sizeOfElement(type->dataType, type->structLink, size);
        operand = copyNode(type->arrayLink->bounds);
        elementSize = newSizeNode(size);
    } else {
        operand = newZeroValue(DT_TAG);
        operand->payload2.structInfo = type->structLink;
    }
    deleteNode(tree);
    return newOperatorNode(OP_SIZEOF, operand, elementSize);
}

ExprNode *sizeNode(ExprNode *tree) {
    Size size = 0;
    if (!sizeOfTree(tree, size))
        return runTimeSize(tree);
    deleteNode(tree);
    return newSizeNode(size);
}

ExprNode *sizeOfTypeName() {
    TypeInfo *type = parseTypeName();
    if (!type)
        return nullptr;
    if (type->name) {
        parseError("with unnecessary identifier '%s' in declarator of sizeof()", nameText(type));
        refuseType(type);
        return nullptr;
    }
    ExprNode *leaf = newSymbolNode(type);
    if (expectChar(')', true))
        return sizeNode(leaf);
    deleteNode(leaf);
    return nullptr;
}

ExprNode *sizeOfExpression(bool runMode, bool parenthesised) {
    Parse parse{.runMode = runMode, .unaryOnly = true, .opened = parenthesised};
    ExprNode *tree = runParse(parse);
    if (!tree) {
        parseError(
            "the argument of sizeof() is not a declaration identifier or valid ZY expression");
        return nullptr;
    }
    if (!parenthesised && tree->kind == NODE_OPERATOR)
        parseError("missing '(' and ')' in sizeof(expr) ");
    return sizeNode(tree);
}

}  // namespace

ExprNode *parseSizeof(bool runMode) {
    nextToken();
    bool parenthesised = atCharacter('(');
    if (parenthesised) {
        SeparatorScope brackets(false, KC_OPERATOR);
        nextToken();
        if (startsCast(runMode))
            return sizeOfTypeName();
    }
    pushedBack = true;
    return sizeOfExpression(runMode, parenthesised);
}

}  // namespace zy
