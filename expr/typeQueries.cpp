// The static types of trees. A code tells its result type by its range; what is left, and the
// larger part of this file, are the structural operators and arrays. The shape of a C array is
// followed as the number of dimensions not subscripted yet: each stands for a level of pointer.
//
// No query may ask the same question of an operand twice: in a deep tree the cost would double with
// each level.

#include "expr/typeQueries.h"

#include <algorithm>

#include "decl/arrayInfo.h"
#include "decl/funcInfo.h"
#include "decl/structInfo.h"
#include "expr/nodeClasses.h"
#include "expr/operators.h"
#include "front/names.h"

namespace zy {

namespace {

int listLength(const ExprNode *list) {
    if (!list || list->kind != NODE_LIST)
        return list ? 1 : 0;
    int length = 0;
    for (; list; list = list->next)
        length++;
    return length;
}

// Levels beyond the third have no code: the third stands for them.
DataType raised(int type, int levels) {
    while (levels-- > 0 && bandAbove(type) != DT_UNDEFINED)
        type = bandAbove(type);
    return static_cast<DataType>(type);
}

DataType lowered(int type, int levels) {
    while (levels-- > 0)
        type = bandBelow(type);
    return static_cast<DataType>(type);
}

const ExprNode *pointerOperand(const ExprNode *sum) {
    return isPointer(treeDataType(sum->left)) ? sum->left : sum->right;
}

bool isNullPointer(const ExprNode *tree) {
    return treeType(tree) == DT_NULL || isZeroConstant(tree);
}

// The operand from which a tree has its declaration, aggregate and dimensions; NULL if there is
// none.
const ExprNode *carrierOf(const ExprNode *node) {
    int op = node->op;
    if (isPointerSum(op))
        return pointerOperand(node);
    if (op == OP_COMMA)
        return node->right;
    if (op == OP_CONDITIONAL)
        return isNullPointer(node->right) ? node->third : node->right;
    bool byLeft = isSubscript(op) || isAssigning(op) || op == OP_INDIRECTION || op == OP_ADDRESS ||
                  op == OP_CAST || op == OP_NEW;
    return byLeft ? node->left : nullptr;
}

// ---- Calls ------------------------------------------------------------------------------------

DataType callType(const ExprNode *call) {
    const FuncInfo *function = calledFunction(call);
    if (!function)
        return DT_VOID;
    switch (function->returnKind) {
        case KIND_P_C_ARRAY: return DT_P_CARRAY;
        case KIND_ARRAY:
        case KIND_ASSUMED_ARRAY: return DT_ARRAY;
        case KIND_P_ARRAY: return DT_P_ARRAY;
        default: return static_cast<DataType>(function->returnType);
    }
}

// ---- C arrays ---------------------------------------------------------------------------------

int declaredDimensions(const TypeInfo *info) {
    if (info->kind < KIND_C_ARRAY || info->kind > KIND_P_C_ARRAY)
        return 0;
    return info->arrayLink ? std::max<int>(1, static_cast<int>(info->arrayLink->rank)) : 1;
}

// Dimensions of a C array, or pointer to one, not subscripted yet; 0 for what is none.
int dimensionsOf(const ExprNode *tree) {
    if (const TypeInfo *variable = variableOf(tree))
        return declaredDimensions(variable);
    if (!isOperator(tree))
        return 0;
    if (isMember(tree->op)) {
        const TypeInfo *member = memberOf(tree);
        return member ? declaredDimensions(member) : 0;
    }
    const ExprNode *carrier = carrierOf(tree);
    int dimensions = carrier ? dimensionsOf(carrier) : 0;
    if (dimensions == 0)
        return 0;
    if (tree->op == OP_ADDRESS)
        return dimensions + 1;
    int used = tree->op == OP_INDIRECTION ? 1 : isSubscript(tree->op) ? listLength(tree->right) : 0;
    return std::max(0, dimensions - used);
}

// ---- Computational arrays ---------------------------------------------------------------------

// The type of a part of an element: float but for the wide types.
DataType partOf(int type) {
    bool isWide = type == DT_DOUBLE || type == DT_DCOMPLEX || type == DT_DDUAL;
    return isWide ? DT_DOUBLE : DT_FLOAT;
}

DataType conjugateOf(DataType type) {
    if (type >= DT_COMPLEX)
        return type;
    return type == DT_DOUBLE ? DT_DCOMPLEX : DT_COMPLEX;
}

// The element type of what an array operator gives.
DataType arrayResultElement(const ExprNode *node) {
    int op = node->op;
    bool isTest = inRange(op, OP_ARRAY_OR_SCALAR, OP_ARRAY_NOT_EQUAL_SCALAR) ||
                  inRange(op, OP_SCALAR_OR_ARRAY, OP_SCALAR_NOT_EQUAL_ARRAY) ||
                  inRange(op, OP_ARRAYS_OR, OP_ARRAYS_NOT_EQUAL);
    if (isTest || op == OP_NOT_ARRAY || op == OP_SHAPE)
        return DT_INT;
    DataType operand = treeDataType(node->left);
    if (op == OP_REAL_ARRAY || op == OP_IMAG_ARRAY)
        return partOf(operand);
    if (op == OP_ABS_ARRAY)
        return operand >= DT_COMPLEX ? partOf(operand) : operand;
    if (op == OP_CONJ_ARRAY)
        return conjugateOf(operand);
    if (op == OP_NEGATE_ARRAY || op == OP_TRANSPOSE || op == OP_INVERSE)
        return operand;
    if (inRange(op, OP_SIN_ARRAY, OP_EXP_ARRAY))
        return std::max(operand, DT_FLOAT);
    return std::max({operand, treeDataType(node->right), DT_INT});
}

constexpr bool isArrayOperator(int op) {
    return inRange(op, OP_NEGATE_ARRAY, OP_MATRIX_PRODUCT) && op != OP_DOT_PRODUCT;
}

// ---- Structural operators -----------------------------------------------------------------------

// A tree of that type in the sense of treeDataType.
DataType asElement(DataType type, const ExprNode *tree) {
    if (isComputational(type))
        return elementTypeOf(tree);
    if (isCArray(type) || type == DT_PP_CARRAY)
        return raised(elementTypeOf(tree), std::max(1, dimensionsOf(tree)));
    return type;
}

DataType subscriptType(const ExprNode *node) {
    if (node->op >= OP_SUBSCRIPT_PART1)
        return DT_CARRAY;
    int pointerLevels = node->op == OP_SUBSCRIPT ? 0 : node->op - OP_SUBSCRIPT_POINTER + 1;
    const TypeInfo *array =
        isOperator(node->left) && !isMember(node->left->op) ? nullptr : declarationOf(node->left);
    if (array && isArray(dataTypeOf(array)))
        return lowered(array->dataType, pointerLevels);
    DataType type = treeType(node->left);
    DataType element = asElement(type, node->left);
    return lowered(element,
                   isComputational(type) ? pointerLevels : std::max(1, listLength(node->right)));
}

DataType indirectionType(const ExprNode *node) {
    if (dimensionsOf(node) > 0)
        return DT_CARRAY;
    return bandBelow(treeDataType(node->left));
}

// A pointer beside a null pointer, the larger code otherwise.
DataType conditionalType(const ExprNode *node) {
    DataType first = treeType(node->right), second = treeType(node->third);
    if (isPointer(first) && (second == DT_NULL || isZeroConstant(node->third)))
        return first;
    if (isPointer(second) && (first == DT_NULL || isZeroConstant(node->right)))
        return second;
    if (first != second && isCArray(first))
        first = asElement(first, node->right);
    else if (first != second && isCArray(second))
        second = asElement(second, node->third);
    return std::max(first, second);
}

DataType pointerSumType(const ExprNode *node) {
    DataType left = treeDataType(node->left);
    return isPointer(left) ? left : treeDataType(node->right);
}

DataType newType(const ExprNode *node) {
    DataType type = treeType(node->left);
    if (isArray(type))
        return type;
    return type == DT_VOID ? DT_P_STRUCT : bandAbove(type);
}

DataType memberType(const ExprNode *node) {
    const TypeInfo *member = memberOf(node);
    return member ? dataTypeOf(member) : DT_UNDEFINED;
}

DataType operatorType(const ExprNode *node) {
    int op = node->op;
    if (isPointerSum(op))
        return pointerSumType(node);
    if (isSubscript(op))
        return subscriptType(node);
    if (isAssigning(op) || op == OP_CAST)
        return treeType(node->left);
    if (isMember(op))
        return memberType(node);
    if (isArrayOperator(op))
        return DT_ARRAY;
    if (inRange(op, OP_MOTION_ELEMENT1, OP_MOTION_ELEMENT7))
        return DT_FLOAT;
    switch (op) {
        case OP_INDIRECTION: return indirectionType(node);
        case OP_DOT_PRODUCT: return arrayResultElement(node);
        case OP_NEW: return newType(node);
        case OP_COMMA: return treeType(node->right);
        case OP_CONDITIONAL: return conditionalType(node);
        case OP_ADDRESS: return bandAbove(treeType(node->left));
        case OP_CALL: return callType(node);
        default: return resultTypeOf(op);
    }
}

DataType variableType(const TypeInfo *variable) {
    if (variable->dataType == DT_CONSTANT && variable->constant)
        return static_cast<DataType>(variable->constant->type);
    return dataTypeOf(variable);
}

// The header of the time functions declares it; a variable of the same name hides it.
StructInfo *structOfTime() {
    for (const char *name : {"tm", "_zy_tm"}) {
        const NameEntry *entry = lookupName(name);
        if (entry && entry->symbol && entry->symbol->dataType == DT_TAG)
            return entry->symbol->structLink;
    }
    return nullptr;
}

}  // namespace

DataType treeType(const ExprNode *tree) {
    if (!tree)
        return DT_VOID;
    if (tree->kind == NODE_OPERATOR)
        return operatorType(tree);
    if (tree->kind != NODE_VALUE)
        return DT_VOID;
    if (const TypeInfo *variable = variableOf(tree))
        return variableType(variable);
    return static_cast<DataType>(tree->type == DT_CONSTANT ? tree->payload.value->type
                                                           : tree->type);
}

DataType treeDataType(const ExprNode *tree) { return asElement(treeType(tree), tree); }

DataType elementTypeOf(const ExprNode *tree) {
    if (isOperator(tree)) {
        if (isArrayOperator(tree->op))
            return arrayResultElement(tree);
        if (tree->op == OP_CONDITIONAL)
            return std::max(treeDataType(tree->right), treeDataType(tree->third));
        if (tree->op == OP_COMMA)
            return elementTypeOf(tree->right);
        if (tree->op == OP_CALL)
            return static_cast<DataType>(calledFunction(tree)->returnType);
    }
    if (const TypeInfo *declaration = declarationOf(tree))
        return static_cast<DataType>(declaration->dataType);
    return tree->kind == NODE_VALUE ? static_cast<DataType>(tree->payload2.elementType) : DT_VOID;
}

DataType arrayElementTypeOf(const ExprNode *tree) {
    DataType type = treeType(tree);
    return isComputational(type) ? type : asElement(type, tree);
}

TypeInfo *declarationOf(const ExprNode *tree) {
    if (!isOperator(tree))
        return variableOf(tree);
    if (isMember(tree->op))
        return memberOf(tree);
    const ExprNode *carrier = tree->op == OP_CALL ? tree->left : carrierOf(tree);
    return carrier ? declarationOf(carrier) : nullptr;
}

const FuncInfo *calledFunction(const ExprNode *call) {
    const TypeInfo *callee = declarationOf(call->left);
    if (!callee || callee->dataType == DT_CONSTANT)
        return nullptr;
    bool callsResult = isOperator(call->left) && call->left->op == OP_CALL;
    return callsResult ? callee->pointerFunction : callee->functionLink;
}

StructInfo *structInfoOf(const ExprNode *tree) {
    if (!tree)
        return nullptr;
    if (isOperator(tree) && (tree->op == OP_LOCALTIME || tree->op == OP_GMTIME))
        return structOfTime();
    if (tree->kind == NODE_VALUE && tree->type == DT_TAG)
        return tree->payload2.structInfo;
    if (const TypeInfo *declaration = declarationOf(tree))
        return declaration->structLink;
    const Value *constant = constantOf(tree);
    bool isAggregate = constant && (constant->type == DT_STRUCT || constant->type == DT_P_STRUCT);
    return isAggregate ? constant->payload2.structInfo : nullptr;
}

TypeInfo *memberOf(const ExprNode *node) {
    const StructInfo *info = structInfoOf(node->left);
    const Value *index = constantOf(node->right);
    if (!info || !index)
        return nullptr;
    TypeInfo *member = info->members;
    for (int i = index->payload.i; i > 0 && member; i--)
        member = member->next;
    return member;
}

const Value *constantOf(const ExprNode *tree) {
    if (!tree || tree->kind != NODE_VALUE)
        return nullptr;
    if (const TypeInfo *variable = variableOf(tree))
        return variable->dataType == DT_CONSTANT ? variable->constant : nullptr;
    if (tree->type == DT_TAG)
        return nullptr;
    return tree->type == DT_CONSTANT ? tree->payload.value : tree;
}

bool isZeroConstant(const ExprNode *tree) {
    const Value *constant = constantOf(tree);
    return constant && constant->type == DT_INT && constant->payload.i == 0;
}

}  // namespace zy
