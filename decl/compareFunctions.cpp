// Two prototypes side by side: of one function that is declared twice, and of function pointers
// that meet in an assignment or an argument. The first differs by any change, the second may differ
// where a value would be converted.

#include <cstdio>

#include "decl/arrayInfo.h"
#include "decl/functions.h"
#include "expr/guards.h"
#include "expr/value.h"
#include "instance/report.h"

namespace zy {

namespace {

// NULL without a name to tell.
const char *nameOf(const FuncInfo *function) {
    const TypeInfo *owner = function->owner;
    return owner && owner->name ? functionText(owner) : nullptr;
}

bool isArrayFormal(const TypeInfo *formal) {
    return formal->kind == KIND_ASSUMED_C_ARRAY || formal->kind == KIND_P_C_ARRAY ||
           formal->kind == KIND_ASSUMED_ARRAY || formal->kind == KIND_P_ARRAY;
}

// ---- Bounds of array formals ------------------------------------------------------------------

int boundOf(const ExprNode *cell) { return cell->item ? cell->item->payload.i : 0; }

void compareLimit(int dimension, int position, int fresh, int old) {
    if (dimension == 1)
        parseError("upper limit for array extent of dimension 1 in arg %d is changed", position);
    else
        parseError(
            "upper limit for array extent of dimension %d in arg %d is changed from %d to %d ",
            dimension, position, old - 1, fresh - 1);
}

void compareFormalBounds(const ArrayInfo *fresh, const ArrayInfo *old, int position) {
    const ExprNode *a = fresh->bounds, *b = old->bounds;
    for (int i = 0; a && b; i++, a = a->next, b = b->next) {
        int dimension = i / 2 + 1, freshBound = boundOf(a), oldBound = boundOf(b);
        if (freshBound == oldBound)
            continue;
        if (i % 2 == 0)
            parseError(
                "lower limit for array extent of dimension %d in arg %d is changed from %d to %d ",
                dimension, position, oldBound, freshBound);
        else
            compareLimit(dimension, position, freshBound, oldBound);
    }
}

void compareArrayFormals(const TypeInfo *fresh, const TypeInfo *old, int position) {
    if (!isArrayFormal(old) || !old->arrayLink)
        return;
    if (!isArrayFormal(fresh) || !fresh->arrayLink) {
        if (old->arrayLink->rank != 1)
            parseError("rank of array is changed from %d to %d ",
                       static_cast<int>(old->arrayLink->rank), 0);
        return;
    }
    if (fresh->arrayLink->rank != old->arrayLink->rank) {
        parseError("rank of array is changed from %d to %d ",
                   static_cast<int>(old->arrayLink->rank),
                   static_cast<int>(fresh->arrayLink->rank));
        return;
    }
    if (old->kind == KIND_P_C_ARRAY && fresh->kind == KIND_P_ARRAY)
        parseError("change C array to computational array");
    else if (old->kind == KIND_P_ARRAY && fresh->kind == KIND_P_C_ARRAY)
        parseError("change computational array to C array");
    else if (old->kind == fresh->kind && (old->kind == KIND_P_C_ARRAY || old->kind == KIND_P_ARRAY))
        compareFormalBounds(fresh->arrayLink, old->arrayLink, position);
}

// ---- Types of formals -------------------------------------------------------------------------

// The type that a formal is compared by. `int a[]` and `int *a` are the same.
int comparedType(const TypeInfo *formal, bool besideArray) {
    if (formal->kind == KIND_BY_REFERENCE)
        return DT_LINK;
    if (isArrayFormal(formal))
        return formal->dataType;
    return besideArray && isPointer(formal->dataType) ? dereference(formal->dataType)
                                                      : dataTypeOf(formal);
}

const char *comparedText(int type) {
    return type == DT_LINK ? "reference type" : dataTypeText(type);
}

bool isVoidPointerPair(int left, int right) {
    return isPointer(left) && isPointer(right) && (left == DT_P_VOID || right == DT_P_VOID);
}

// Pairs that a value passes between with a conversion.
bool converts(int left, int right) {
    bool areNumbers = isScalarNumeric(left) && (isScalarNumeric(right) || right == DT_NULL);
    return areNumbers || (isPointer(left) && isPointer(right)) ||
           (isStringLike(left) && isStringLike(right));
}

void refuseFormal(const char *name, int position, const char *before, const char *after) {
    if (name)
        parseError("the data type of arg %d of function %s() is changed from %s to %s", position,
                   name, before, after);
    else
        parseError("the data type of arg %d of function is changed from %s to %s", position, before,
                   after);
}

void warnOfFormal(const char *name, int position, const char *before, const char *after) {
    if (name)
        parseWarning("the data type of arg %d of function %s() is changed from %s to %s", position,
                     name, before, after);
    else
        parseWarning("the data type of arg %d of function is changed from %s to %s", position,
                     before, after);
}

enum Strictness { STRICT, CONVERTING };

void compareFormal(const FuncInfo *function, const TypeInfo *fresh, const TypeInfo *old,
                   int position, Strictness strictness) {
    compareArrayFormals(fresh, old, position);
    if (errorFlag)
        return;
    if (fresh->kind >= KIND_FUNCTION && fresh->kind <= KIND_P_FUNCTION && old->functionLink &&
        fresh->functionLink)
        comparePrototypes(old, fresh);
    int freshType = comparedType(fresh, isArrayFormal(old));
    int oldType = comparedType(old, isArrayFormal(fresh));
    if (freshType == oldType)
        return;
    if (strictness == STRICT) {
        parseError("the data type of arg %d is changed from %s to %s", position,
                   comparedText(oldType), comparedText(freshType));
        return;
    }
    if (isVoidPointerPair(oldType, freshType))
        return;
    auto report = converts(oldType, freshType) ? warnOfFormal : refuseFormal;
    report(nameOf(function), position, comparedText(oldType), comparedText(freshType));
}

// ---- Lists ------------------------------------------------------------------------------------

bool needsPrototype(const TypeInfo *formals) {
    for (; formals; formals = formals->next)
        if (formals->kind == KIND_BY_REFERENCE || formals->kind == KIND_ASSUMED_C_ARRAY ||
            formals->kind == KIND_ASSUMED_ARRAY)
            return true;
    return false;
}

// A list without formals matches any, unless a call must know how to pass them.
void compareWithEmpty(const TypeInfo *fresh, const TypeInfo *old) {
    if (needsPrototype(fresh)) {
        plainError("function with argument of reference type had been declared without argument");
        fputs("       or had been called before declaration of proper function prototype \n",
              stderr);
        errorFlag = 1;
    } else if (needsPrototype(old)) {
        parseError("function with argument of reference type declared without argument");
    }
}

void refuseCount(const char *name) {
    if (name)
        parseError("the number of arg of function %s() is changed", name);
    else
        parseError("the number of arg of function is changed");
}

void compareLists(const FuncInfo *fresh, const FuncInfo *old, Strictness strictness) {
    const TypeInfo *a = fresh->parameters, *b = old->parameters;
    if (!a || !b) {
        compareWithEmpty(a, b);
        return;
    }
    const char *name = nameOf(old);
    if (fresh->variadic != old->variadic)
        parseError("variable num of args ... for function %s() is changed", name ? name : "");
    for (int position = 1; a && b && !errorFlag; position++, a = a->next, b = b->next)
        compareFormal(old, a, b, position, strictness);
    if (!errorFlag && (a || b))
        refuseCount(name);
}

void refuseResult(const char *name, const char *before, const char *after) {
    if (name)
        parseError("the return data type of function %s() is changed from %s to %s", name, before,
                   after);
    else
        parseError("the return data type of function is changed from %s to %s", before, after);
}

void compareArrayResults(const FuncInfo *fresh, const FuncInfo *old) {
    bool areArrays = old->returnType != DT_P_FUNCTION && fresh->owner && old->owner &&
                     fresh->owner->arrayLink && old->owner->arrayLink;
    if (!areArrays)
        return;
    unsigned char earlier = errorFlag;
    errorFlag = 0;
    compareArrayTypes(fresh->owner, old->owner);
    if (errorFlag && nameOf(old))
        parseError("the array type of function %s() is changed", nameOf(old));
    else if (errorFlag)
        parseError("the array type of function is changed");
    errorFlag |= earlier;
}

void compareResults(const FuncInfo *fresh, const FuncInfo *old) {
    if (fresh->returnType != old->returnType)
        refuseResult(nameOf(old), dataTypeText(old->returnType), dataTypeText(fresh->returnType));
    else if (fresh->returnKind != old->returnKind)
        refuseResult(nameOf(old), typeKindText(old->returnKind), typeKindText(fresh->returnKind));
    else
        compareArrayResults(fresh, old);
}

void compareBoth(const FuncInfo *fresh, const FuncInfo *old, Strictness strictness) {
    if (!fresh || !old) {
        parseError("function argument do not match");
        return;
    }
    compareResults(fresh, old);
    if (!errorFlag)
        compareLists(fresh, old, strictness);
}

}  // namespace

void compareFunctions(const FuncInfo *fresh, const FuncInfo *old) {
    compareBoth(fresh, old, STRICT);
}

void comparePrototypes(const TypeInfo *left, const TypeInfo *right) {
    compareBoth(right->functionLink, left->functionLink, CONVERTING);
}

}  // namespace zy
