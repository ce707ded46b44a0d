// The services that evaluate texts and reach variables.

#include <cstdarg>
#include <cstdlib>
#include <cstring>

#include "embed/evalText.h"
#include "embed/hostArrays.h"
#include "embed/hostTypes.h"
#include "embed/hostValues.h"
#include "embed/kernel.h"
#include "expr/calls.h"
#include "expr/evaluator.h"
#include "expr/guards.h"
#include "expr/nodes.h"
#include "expr/operators.h"
#include "expr/parserParts.h"
#include "expr/readers.h"
#include "expr/scope.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
#include "front/sourceKeeper.h"
#include "instance/report.h"
#include "numeric/assign.h"
#include "numeric/convert.h"
#include "numeric/shape.h"
#include "rtlib/valueText.h"

namespace zy {

namespace {

// ---- Values to the host -------------------------------------------------------------------------

// Evaluates; the value, to be released, or NULL if there is none (an abort leaves none).
Value *evaluate(const char *expr, int &status) {
    e_lang->abortedRun = 0;
    status = expr ? evalText(expr, TEXT_OF_HOST) : -1;
    errorFlag = 0;
    if (!expr || e_lang->abortedRun)
        return nullptr;
    return currentContext->stack ? popValue() : nullptr;
}

// The text replaces an old one of the host.
void putText(void *result, const Value *value) {
    char *old;
    memcpy(&old, result, sizeof old);
    free(old);
    bool isText = value->type == DT_STRING || value->type == DT_P_CHAR;
    char *text = copyString(isText ? value->payload.text : valueToText(value).c_str());
    memcpy(result, &text, sizeof text);
}

void storeForHost(void *result, int type, const Value *value) {
    if (value->type == DT_ARRAY || value->type == DT_P_ARRAY) {
        copyElementsToHost(result, isPointer(type) ? bandBelow(type) : type, value);
    } else if (isPointer(type)) {
        memcpy(result, &value->payload.p, sizeof value->payload.p);
    } else if (type >= 0 && type != DT_LDOUBLE && isScalarNumeric(type)) {
        storeNumber(result, type, value);
    } else if (type == DT_STRING) {
        putText(result, value);
    } else {
        plainError("unsupported data type for Zy_ExprCalc()");
    }
}

// ---- Zy_SetVar ----------------------------------------------------------------------------------

// The variable of that name where the script stands, as the target of an assignment: a data member
// that is seen inside a member function is one of its object. NULL if there is none.
ExprNode *targetNamed(const char *name) {
    NameEntry *entry = name ? lookupName(name) : nullptr;
    ClassContext *object = nullptr;
    Symbol *symbol =
        entry ? lookupSymbolRun(currentContext, currentContext->statement, entry, &object)
              : nullptr;
    if (!symbol)
        return nullptr;
    bool isMember = object && object->thisFormal && (symbol->flags & FLAG_MEMBER) &&
                    !(symbol->flags & FLAG_CONSTRUCTOR) && symbol->storage != STORAGE_TYPEDEF &&
                    symbol->storage != STORAGE_STATIC;
    if (!isMember)
        return newSymbolNode(symbol);
    return newMemberAccess(OP_ARROW, newSymbolNode(object->thisFormal),
                           object->thisFormal->structLink, symbol);
}

// The check goes by declarations, which an array of the host has none of.
void checkValue(ExprNode *target, Value *value) {
    if (!isArrayLike(static_cast<int>(value->type))) {
        checkAssignment(target, value);
        return;
    }
    ExprNode *declared = declarationLike(value);
    checkAssignment(target, declared);
    deleteNode(declared);
}

int assignChecked(ExprNode *target, Value *value) {
    checkValue(target, value);
    bool refused = errorFlag != 0;
    errorFlag = 0;
    if (refused)
        return -1;
    ExprNode *chain = currentContext->chain;
    currentContext->chain = nullptr;
    if (ExprNode *object = threadAssignTarget(target, nullptr))
        runNested(object);
    assignValue(target, value);
    currentContext->chain = chain;
    return 0;
}

int setVariable(const char *name, int type, HostArguments &arguments) {
    ExprNode *target = targetNamed(name);
    if (!target) {
        plainError("'%s' is not a valid variable in Zy space", name ? name : "");
        return -1;
    }
    int result = -1;
    TypeInfo *variable = variableOf(target);
    bool isFunction = variable && variable->kind == KIND_FUNCTION;
    if (isFunction || isLvalue(target, false) != LVALUE_YES) {
        plainError("'%s' is invalid lvalue in Zy_SetVar()", name);
    } else if (Value *value = valueFromHost(type, arguments, "Zy_SetVar")) {
        result = assignChecked(target, value);
        deleteValue(value);
    }
    deleteNode(target);
    return result;
}

}  // namespace

}  // namespace zy

using namespace zy;

int Zy_ExprCalc_kernel(void *, const char *expr, int type, void *result) {
    int status;
    Value *value = evaluate(expr, status);
    if (status == -1 || !result) {
        if (value)
            deleteValue(value);
        return status == -1 ? -1 : 0;
    }
    if (!value)
        value = newZeroValue(fromHostType(type));
    storeForHost(result, fromHostType(type), value);
    deleteValue(value);
    return 0;
}

int Zy_ExprEval_kernel(void *, const char *expr) {
    int status;
    Value *value = evaluate(expr, status);
    if (value)
        deleteValue(value);
    return e_lang->abortedRun ? 1 : status;
}

int Zy_ExprParse_kernel(void *, const char *expr) {
    if (!expr)
        return -1;
    SourceKeeper source;
    ExprNode *tree = parseText(expr);
    bool wellFormed = tree != nullptr;
    deleteNode(tree);
    errorFlag = 0;
    return wellFormed ? 0 : -1;
}

ZyValueHandle Zy_ExprValue_kernel(void *, const char *expr, void **address) {
    int status;
    Value *value = evaluate(expr, status);
    if (!value)
        return nullptr;
    bool isData = value->type == DT_STRUCT || value->type == DT_CARRAY || value->type == DT_ARRAY ||
                  value->type == DT_FUNCTION || value->type == DT_NAME;
    if (address)
        *address = isData ? value->payload.p : &value->payload;
    return reinterpret_cast<ZyValueHandle>(value);
}

int Zy_DeleteExprValue_kernel(void *, ZyValueHandle value) {
    if (!value)
        return 0;
    deleteValue(reinterpret_cast<Value *>(value));
    return -1;
}

int Zy_vSetVar(void *, const char *name, int type, va_list list) {
    HostArguments arguments(list);
    return setVariable(name, type, arguments);
}

int Zy_DeclareVar_kernel(void *, char *declaration) {
    return declaration ? declareText(declaration, "declaration code passed is larger than %d bytes")
                       : -1;
}

int Zy_DeclareTypedef_kernel(void *, const char *name) {
    for (TypeInfo *symbol = systemSymbols; name && symbol; symbol = symbol->next)
        if (symbol->name && strcmp(symbol->name->text, name) == 0) {
            symbol->storage = STORAGE_TYPEDEF;
            return 0;
        }
    return -1;
}

int Zy_InitGlobalVar_kernel(void *, int on) {
    e_lang->initGlobals = on;
    return 0;
}
