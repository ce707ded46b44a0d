// The guard of `=` and of initialisers. It goes by what the left side is: a pointer to an array, a
// computational array, a pointer to one, or anything else.

#include <string_view>

#include "decl/funcInfo.h"
#include "decl/structInfo.h"
#include "expr/guardReports.h"
#include "expr/guards.h"
#include "expr/nodeClasses.h"
#include "front/names.h"
#include "instance/report.h"

namespace zy {

namespace {

struct Side {
    ExprNode *tree;
    int arrayClass;  // treeType
    int type;        // of the elements, or the scalar
};

bool hasAssumedShape(const ExprNode *tree) { return arrayShapeKind(tree) != SHAPE_KNOWN; }

void checkPointerToArray(const Side &left, const Side &right) {
    if (hasAssumedShape(left.tree)) {
        if (isArray(right.arrayClass))
            checkSameShape(left.tree, right.tree, false);
        else if (right.arrayClass != DT_NULL)
            parseError("pointer to assumed-shape array points to non-array");
    } else if (isArray(right.arrayClass)) {
        if (warningsAt(2))
            checkSameShape(left.tree, right.tree, true);
    } else if (warningsAt(3)) {
        parseWarning("pointer to array points to non-array");
    }
}

// `&p` of a pointer to a computational array, cast or not.
const ExprNode *addressedArray(const ExprNode *tree) {
    if (isOperator(tree) && tree->op == OP_CAST)
        tree = tree->right;
    bool isAddress = isOperator(tree) && tree->op == OP_ADDRESS;
    return isAddress && treeType(tree->left) == DT_P_ARRAY ? tree->left : nullptr;
}

void checkPointerToComputational(const Side &left, const Side &right) {
    int source = right.arrayClass;
    if (hasAssumedShape(left.tree)) {
        if (isArray(source))
            checkSameShape(left.tree, right.tree, false);
        else if (source != DT_NULL && !isScalarNumeric(source))
            parseError("(pointer to) computational assumed-shape array points to non-array");
        return;
    }
    const ExprNode *addressed = addressedArray(right.tree);
    if (addressed && treeDataType(addressed) != left.type)
        parseError(
            "assign address of pointer to computational array of %s to pointer to computational "
            "array of %s",
            dataTypeText(treeDataType(addressed)), dataTypeText(left.type));
    else if (isArray(source))
        checkSameShape(left.tree, right.tree, false);
    else if (isPointer(source) && source != DT_NULL)
        parseError("invalid value for pointer to computational array ");
    else if (isScalarNumeric(source))
        parseWarning("scalar rvalue assigned to pointer to  computational array");
}

void checkComputational(const Side &left, const Side &right) {
    if (isArray(right.arrayClass))
        checkSameShape(left.tree, right.tree, false);
    else if (!isScalarNumeric(right.arrayClass))
        parseError("invalid rvalue assigned to computational array");
}

void checkByClass(const Side &left, const Side &right) {
    switch (left.arrayClass) {
        case DT_P_CARRAY: checkPointerToArray(left, right); break;
        case DT_P_ARRAY: checkPointerToComputational(left, right); break;
        case DT_ARRAY: checkComputational(left, right); break;
        default:
            if (right.arrayClass == DT_ARRAY)
                parseError("assign computational array to scalar");
    }
}

// The type that the left side is compared with. Elements of arrays compare with elements: a C
// array's counts as that of a computational one, and NULL as whatever a pointer wants.
int comparedType(const Side &left, const Side &right) {
    if (left.arrayClass == DT_P_ARRAY && right.arrayClass == DT_NULL)
        return left.type;
    if (isComputational(left.arrayClass) && isCArray(right.arrayClass))
        return elementTypeOf(right.tree);
    if (left.arrayClass == DT_P_CARRAY && isComputational(right.arrayClass))
        return bandAbove(right.type);
    return right.type;
}

// What a name, a member or the address of a function says of the parameters and the result.
const TypeInfo *prototypeOf(const ExprNode *tree) {
    if (isOperator(tree) && tree->op == OP_ADDRESS)
        tree = tree->left;
    bool isNamed = !isOperator(tree) || isMember(tree->op);
    const TypeInfo *type = isNamed ? declarationOf(tree) : nullptr;
    bool isPrototype = type && (type->kind == KIND_FUNCTION || type->kind == KIND_P_FUNCTION);
    return isPrototype && type->functionLink ? type : nullptr;
}

bool isPointerToAggregate(int type) { return isAggregateType(type) && type != DT_STRUCT; }

void check(const Side &left, const Side &right) {
    unsigned char before = errorFlag;
    errorFlag = 0;
    if (TypeInfo *function = functionNamedBy(right.tree))
        function->used = 1;
    checkByClass(left, right);
    if (!errorFlag && !(isPointer(left.type) && isZeroConstant(right.tree)))
        checkType(left.type, comparedType(left, right));
    if (!errorFlag && isAggregateType(left.type) && isAggregateType(right.type))
        checkSameAggregate(structInfoOf(left.tree), structInfoOf(right.tree),
                           isPointerToAggregate(right.type));
    if (const TypeInfo *target = prototypeOf(left.tree); target && !errorFlag)
        checkSamePrototype(target, right.tree);
    errorFlag |= before;
}

// The name of an aggregate without the prefix of names that the system makes.
const char *aggregateName(const StructInfo *info) {
    constexpr std::string_view prefix = "_zy_";
    if (!info->tag || !info->tag->name)
        return "";
    const char *text = info->tag->name->text;
    return std::string_view(text).starts_with(prefix) ? text + prefix.size() : text;
}

}  // namespace

void checkSameAggregate(const StructInfo *first, const StructInfo *second, bool throughPointer) {
    if (!first || !second || first == second)
        return;
    if (!throughPointer)
        parseError("different structs '%s' and '%s' are incompatible data types",
                   aggregateName(first), aggregateName(second));
    else if (warningsAt(2))
        parseWarning("different structs '%s' and '%s' are incompatible data types",
                     aggregateName(first), aggregateName(second));
}

void checkSamePrototype(const TypeInfo *target, const ExprNode *source) {
    const TypeInfo *given = prototypeOf(source);
    if (target->functionLink && given)
        comparePrototypes(target, given);
}

void checkAssignment(ExprNode *left, ExprNode *right) {
    check({left, treeType(left), treeDataType(left)},
          {right, treeType(right), treeDataType(right)});
}

void checkInitialiser(ExprNode *left, ExprNode *right) {
    bool isPlainPointer = isPointer(treeType(left)) && !isArray(treeType(left));
    const Value *constant = constantOf(right);
    if (isPlainPointer && constant && constant->type != DT_NULL && isScalarNumeric(constant->type))
        convertTree(right, treeType(left));
    else
        checkAssignment(left, right);
}

}  // namespace zy
