// What may stand where a value of a certain type is wanted, and what may be cast to what.

#include "expr/guards.h"

#include "expr/guardReports.h"
#include "expr/nodeClasses.h"
#include "expr/readers.h"
#include "expr/scope.h"
#include "expr/typeQueries.h"
#include "instance/report.h"

namespace zy {

// ---- Reports ------------------------------------------------------------------------------------

void refuseType(int found, int expected) {
    parseError("found %s where %s is expected", dataTypeText(found), dataTypeText(expected));
}

void warnType(int found, int expected) {
    parseWarning("found %s where %s is expected", dataTypeText(found), dataTypeText(expected));
}

// ---- One expression against one type ------------------------------------------------------------

namespace {

bool isZero(const Value *constant) { return readDouble(constant) == 0; }

// Shown as an error, although the statement runs: the number may be an address that is meant.
void reportDubiousAddress(int found, int expected) {
    unsigned char before = errorFlag;
    refuseType(found, expected);
    errorFlag = before;
}

// A text pointer is seldom meant to be a number: refused, in the words of a warning.
void refuseNumberForText(int found, int expected) {
    warnType(found, expected);
    errorFlag = 1;
}

void checkConstant(const Value *constant, int expected) {
    int type = static_cast<int>(constant->type);
    if (type == expected || (isStringLike(type) && isStringLike(expected)))
        return;
    if ((expected == DT_P_CHAR || expected == DT_P_UCHAR) && isReal(type)) {
        if (!isZero(constant))
            refuseNumberForText(type, expected);
    } else if (!isPointer(expected)) {
        if (!isScalarNumeric(expected))
            refuseType(type, expected);
    } else if (!isIntegral(type)) {
        refuseType(type, expected);
    } else if (!isZero(constant)) {
        reportDubiousAddress(type, expected);
    }
}

// A variable of unknown type takes the one that is wanted of it first.
void adoptType(const ExprNode *tree, int expected) {
    TypeInfo *variable = variableOf(tree);
    if (!variable && isOperator(tree) && tree->left && !tree->right)
        variable = variableOf(tree->left);
    if (!variable)
        return;
    variable->dataType = expected;
    if (variable->storageCell)
        variable->storageCell->type = expected;
}

void checkComputed(const ExprNode *tree, int expected) {
    int type = treeDataType(tree);
    if (isScalarNumeric(type) && (isScalarNumeric(expected) || expected == DT_NULL))
        return;
    if (type == DT_NULL && (isScalarNumeric(expected) || isPointer(expected)))
        return;
    if ((isPointer(type) && isPointer(expected)) || (isStringLike(type) && isStringLike(expected)))
        return;
    if ((isPointer(type) && isIntegral(expected)) || (isPointer(expected) && isIntegral(type)))
        warnType(type, expected);
    else if (type == DT_UNDEFINED)
        adoptType(tree, expected);
    else if (asPosition(type) != asPosition(expected))
        refuseType(type, expected);
}

}  // namespace

ExprNode *convertTree(ExprNode *tree, int expected) {
    if (!tree) {
        errorFlag = 1;
        return zeroCell(expected);
    }
    const Value *constant = constantOf(tree);
    if (constant && constant->type != DT_NULL)
        checkConstant(constant, expected);
    else
        checkComputed(tree, expected);
    return tree;
}

// ---- Casts --------------------------------------------------------------------------------------

namespace {

bool isAddressable(int type) { return isPointer(type) || isStringLike(type); }

bool canCast(int target, int source) {
    if (target == source || target == DT_VOID)
        return true;
    bool convertible = isScalarNumeric(source) || isAddressable(source);
    if (isScalarNumeric(target) || isPointer(target))
        return convertible;
    return (isStringLike(target) && isStringLike(source)) ||
           (isMotionPosition(target) && isMotionPosition(source));
}

int rankOf(const ExprNode *tree, bool &known) {
    Bounds bounds;
    known = arrayShapeKind(tree) != SHAPE_RANK_UNKNOWN && boundsOf(tree, bounds);
    return static_cast<int>(bounds.size());
}

void checkArrayCast(const TypeInfo *target, int targetType, const ExprNode *operand, int source) {
    if (!isArray(treeType(operand))) {
        parseError("non-array casted to pointer to computational array");
        return;
    }
    const ArrayInfo *shape = target->arrayLink;
    bool known;
    int rank = rankOf(operand, known);
    if (known && shape && rank != shape->rank)
        parseError("array dimensions do not match in casting to pointer to computational array");
    if (!shape || shape->shapeKind != SHAPE_ASSUMED)
        parseError("not assumed-shape array for casting pointer to computational array");
    if (isScalarNumeric(targetType) && isScalarNumeric(source) &&
        sizeofType(targetType) > sizeofType(source))
        parseWarning(
            "pointer to computational array of %s point to array of %s with less memory space",
            dataTypeText(targetType), dataTypeText(source));
}

}  // namespace

void checkCast(const ExprNode *castNode, ExprNode *operand) {
    const TypeInfo *target = variableOf(castNode->left);
    int type = treeDataType(castNode->left), source = treeDataType(operand);
    if (e_lang->restricted && isPointer(type) && !isPointer(source))
        parseError("cast non-pointer data to pointer type is restricted in safe shell");
    if (TypeInfo *function = type == DT_P_VOID ? functionNamedBy(operand) : nullptr)
        function->used = 1;
    if (!canCast(type, source)) {
        parseError("incompatible types for casting operation, casting %s to %s",
                   dataTypeText(source), dataTypeText(type));
        return;
    }
    if (!target)
        return;
    bool assumed = target->arrayLink && target->arrayLink->shapeKind == SHAPE_ASSUMED;
    if (target->kind == KIND_P_ARRAY)
        checkArrayCast(target, type, operand, source);
    else if (target->kind == KIND_P_C_ARRAY && assumed)
        parseError(
            "assumed-shape array not casted to pointer to computational array, maybe missing "
            "'array'");
}

}  // namespace zy
