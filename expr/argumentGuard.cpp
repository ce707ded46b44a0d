// Arguments of script functions against their prototypes.

#include "expr/guardReports.h"
#include "expr/guards.h"
#include "expr/nodeClasses.h"
#include "front/names.h"
#include "instance/report.h"

namespace zy {

namespace {

bool isAssumed(const TypeInfo *formal) {
    return formal->arrayLink && formal->arrayLink->shapeKind == SHAPE_ASSUMED;
}

int rankOf(const TypeInfo *info) {
    return info->arrayLink ? static_cast<int>(info->arrayLink->rank) : 0;
}

// ---- Arrays -------------------------------------------------------------------------------------

long long limitOf(const ExprNode *bound) {
    const Value *constant = constantOf(bound);
    return constant ? constant->payload.i : 0;
}

// The formal's first extent doesn't count where it is open.
void checkExtents(const Bounds &actual, const TypeInfo *formal) {
    const ExprNode *cell = formal->arrayLink ? formal->arrayLink->bounds : nullptr;
    for (const Dimension &dimension : actual) {
        if (!cell || !cell->next)
            return;
        long long lower = limitOf(cell->item), limit = limitOf(cell->next->item);
        bool open = cell == formal->arrayLink->bounds && (limit == OPEN_LIMIT || limit == lower);
        if (!open && limitOf(dimension.limit) - limitOf(dimension.lower) != limit - lower)
            parseWarning("dimension of actual array differs from that of formal array");
        cell = cell->next->next;
    }
}

void checkElementType(const ExprNode *actual, const TypeInfo *formal) {
    int element = elementTypeOf(actual);
    checkType(formal->dataType, element);
    if (formal->kind == KIND_P_ARRAY && !errorFlag && element != formal->dataType)
        parseWarning("expecting %s, but got %s", dataTypeText(formal->dataType),
                     dataTypeText(element));
}

// A vector takes a pointer, and warns of a number as a pointer does.
void checkNonArray(ExprNode *actual, int type, const TypeInfo *formal) {
    if (type == DT_NULL)
        return;
    if (isAssumed(formal))
        parseError("non-array is passed to pointer to assumed-shape array ");
    else if (rankOf(formal) != 1)
        parseWarning("non-array is passed to pointer to array in a function ");
    else if (isScalarNumeric(type))
        convertTree(actual, bandAbove(formal->dataType));
}

void checkArrayArgument(ExprNode *actual, const TypeInfo *formal) {
    int type = treeType(actual);
    if (!isArray(type)) {
        checkNonArray(actual, type, formal);
        return;
    }
    Bounds bounds;
    bool known = arrayShapeKind(actual) == SHAPE_KNOWN && !isAssumed(formal);
    if (!boundsOf(actual, bounds))
        return;
    int rank = static_cast<int>(bounds.size());
    if (rank != 0 && rank != rankOf(formal))
        parseWarning("rank %d of actual array argument differs from rank %d formal array argument",
                     rank, rankOf(formal));
    else if (known)
        checkExtents(bounds, formal);
    checkElementType(actual, formal);
}

void checkAssumedArgument(ExprNode *actual, const TypeInfo *formal) {
    int type = treeType(actual);
    if (type == DT_NULL)
        return;
    if (!isArray(type)) {
        parseError(
            "actual argument is not array or pointer to array for formal argument of array of "
            "reference");
        return;
    }
    Bounds bounds;
    if (!boundsOf(actual, bounds))
        return;
    int rank = static_cast<int>(bounds.size());
    if (rank != 0 && rankOf(formal) != 0 && rank != rankOf(formal))
        parseWarning("rank of actual array argument differs from formal array of reference");
    checkType(formal->dataType, elementTypeOf(actual));
}

// ---- Functions ----------------------------------------------------------------------------------

bool isFunctionLike(const ExprNode *actual) {
    DataType type = treeType(actual);
    const TypeInfo *declaration = declarationOf(actual);
    bool arrayOfThem = type == DT_CARRAY && declaration && declaration->dataType == DT_P_FUNCTION;
    return isFunctionType(type) || type == DT_P_VOID || arrayOfThem;
}

void checkFunctionArgument(ExprNode *actual, const TypeInfo *formal, int position) {
    if (treeType(actual) == DT_NULL || isZeroConstant(actual))
        return;
    TypeInfo *declaration = declarationOf(actual);
    const char *name = declaration && declaration->name ? declaration->name->text : nullptr;
    if (TypeInfo *function = functionNamedBy(actual)) {
        function->used = 1;
        if (e_lang->restricted && (function->flags & FLAG_RESTRICT))
            parseError("restricted function %s() is called ", name ? name : "");
    }
    if (isFunctionLike(actual)) {
        if (formal->kind == KIND_P_FUNCTION)
            checkSamePrototype(formal, actual);
        return;
    }
    if (name)
        parseWarning(
            "'%s' in argument %d of the function call is not function or function pointer type ",
            name, position);
    else
        parseWarning("argument %d of the function call is not function or function pointer type ",
                     position);
}

// ---- Plain arguments ----------------------------------------------------------------------------

bool areOfOneBand(int first, int second) {
    return isPointer(first) && isPointer(second) && pointerDepth(first) == pointerDepth(second) &&
           pointerDepth(first) < 3;
}

void warnPointers(int type, int expected) {
    bool fitting = type == expected || type == DT_P_VOID || expected == DT_P_VOID ||
                   type == DT_NULL || (expected == DT_P_FUNCTION && type == DT_FUNCTION);
    if (!fitting && warningsAt(3))
        parseWarning("passed %s where %s is expected", dataTypeText(type), dataTypeText(expected));
}

void checkPlainArgument(ExprNode *actual, const TypeInfo *formal) {
    int type = treeDataType(actual), expected = formal->dataType;
    if (areOfOneBand(type, expected))
        warnPointers(type, expected);
    else
        convertTree(actual, expected);
    if (isAggregateType(type) && isAggregateType(expected))
        checkSameAggregate(structInfoOf(actual), formal->structLink, type != DT_STRUCT);
}

bool endsNamed(const TypeInfo *formal) {
    return formal->dataType == DT_VOID && formal->kind < KIND_P_FUNCTION;
}

bool isHiddenThis(const TypeInfo *formal, const FuncInfo *function) {
    bool ofMember = function->owner && (function->owner->flags & FLAG_MEMBER_FUNCTION);
    return ofMember && formal == function->parameters;
}

int namedFormals(const FuncInfo *function) {
    int count = 0;
    for (const TypeInfo *formal = function->parameters; formal && !endsNamed(formal);
         formal = formal->next)
        if (!isHiddenThis(formal, function))
            count++;
    return count;
}

void refuseCount(int given, int needed) {
    if (needed == 1)
        parseError("number of argument is %d, need %d argument", given, needed);
    else
        parseError("number of argument is %d, need %d arguments", given, needed);
}

}  // namespace

void checkArgument(ExprNode *actual, TypeInfo *formal, int position) {
    if (!actual || endsNamed(formal)) {
        errorFlag |= actual == nullptr;
        return;
    }
    switch (formal->kind) {
        case KIND_ASSUMED_C_ARRAY:
        case KIND_ASSUMED_ARRAY: checkAssumedArgument(actual, formal); break;
        case KIND_P_C_ARRAY:
        case KIND_P_ARRAY: checkArrayArgument(actual, formal); break;
        case KIND_P_FUNCTION:
        case KIND_PP_FUNCTION:
        case KIND_PPP_FUNCTION: checkFunctionArgument(actual, formal, position); break;
        default: checkPlainArgument(actual, formal);
    }
}

// A function declared with empty parentheses takes whatever it is given.
void checkArgumentCount(int given, const FuncInfo *function) {
    if (!function->parameters)
        return;
    int needed = namedFormals(function);
    if (given < needed || (given > needed && !function->variadic))
        refuseCount(given, needed);
}

void checkArguments(ExprNode *list, FuncInfo *function) {
    int position = 0;
    TypeInfo *formal = function->parameters;
    if (formal && isHiddenThis(formal, function))
        formal = formal->next;
    for (const ExprNode *cell = list; cell; cell = cell->next) {
        position++;
        if (!formal || endsNamed(formal))
            continue;
        checkArgument(cell->item, formal, position);
        formal = formal->next;
    }
    int needed = namedFormals(function);
    if (position < needed)
        refuseCount(position, needed);
}

}  // namespace zy
