// Calls of script functions by the host, on the machinery of calls within a script. A call gets a
// context of its own to return to, so it may happen between runs and from a host function that a
// script has called: what is running is not touched.

#include <cstring>

#include "decl/functionFiles.h"
#include "embed/evalText.h"
#include "embed/hostArrays.h"
#include "embed/hostValues.h"
#include "embed/kernel.h"
#include "embed/scriptDriver.h"
#include "expr/calls.h"
#include "expr/context.h"
#include "expr/guards.h"
#include "expr/nodes.h"
#include "expr/operators.h"
#include "expr/readers.h"
#include "expr/scope.h"
#include "expr/thread.h"
#include "front/sourceKeeper.h"
#include "instance/report.h"
#include "numeric/shape.h"
#include "platform/stack.h"
#include "stmt/calls.h"
#include "stmt/execute.h"

namespace zy {

namespace {

// ---- The function -------------------------------------------------------------------------------

TypeInfo *definedFunction(const char *name) {
    NameEntry *entry = lookupName(name);
    Symbol *symbol = entry ? entry->symbol : nullptr;
    bool isDefined = symbol && symbol->kind == KIND_FUNCTION && symbol->functionLink &&
                     symbol->storage != STORAGE_TYPEDEF && symbol->functionLink->body;
    return isDefined ? symbol : nullptr;
}

enum CallService { BY_NAME, BY_NAME_WITH_LIST };

void refuseName(const char *name, CallService service) {
    if (service == BY_NAME && !name)
        plainError("invalid function name for Zy_CallFuncByName().");
    else if (service == BY_NAME)
        plainError("invalid function name '%s' for Zy_CallFuncByName().", name);
    else if (!name)
        plainError("invalid function name for Zy_CallFuncByNameVar().");
    else
        plainError("invalid function name '%s' for Zy_CallFuncByNameVar().", name);
}

// The function of a name, also from a function file. NULL, and a message unless the file has them.
TypeInfo *findFunction(const char *name, CallService service) {
    if (!name) {
        refuseName(name, service);
        return nullptr;
    }
    if (TypeInfo *function = definedFunction(name))
        return function;
    std::string path;
    if (!findFunctionFile(name, path)) {
        refuseName(name, service);
        return nullptr;
    }
    return Zy_AppendParseScriptFile_kernel(nullptr, path.data()) == 0 ? definedFunction(name)
                                                                      : nullptr;
}

// ---- Arguments by the prototype -----------------------------------------------------------------

struct FloatPair {
    float first, second;
};

Value *newPointer(int type, void *pointer) {
    Value *value = newZeroValue(type);
    value->payload.p = pointer;
    return value;
}

Value *complexFrom(int type, HostArguments &arguments) {
    Value *value = newZeroValue(type);
    if (type == DT_COMPLEX || type == DT_DUAL) {
        FloatPair pair = va_arg(arguments.list, FloatPair);
        memcpy(value->payload.pair, &pair, sizeof pair);
    } else if (const auto *pair = va_arg(arguments.list, const double *)) {
        value->payload.d = pair[0];
        value->payload2.d = pair[1];
    }
    return value;
}

Value *objectFrom(const TypeInfo *formal, HostArguments &arguments) {
    Value *value = newPointer(DT_STRUCT, va_arg(arguments.list, void *));
    value->payload2.structInfo = formal->structLink;
    value->noFree = 1;
    return value;
}

bool takesArray(const TypeInfo *formal) {
    return formal->kind == KIND_ASSUMED_C_ARRAY || formal->kind == KIND_P_C_ARRAY ||
           formal->kind == KIND_ASSUMED_ARRAY || formal->kind == KIND_P_ARRAY;
}

int limitOf(const ExprNode *cell) { return cell && cell->item ? cell->item->payload.i : 0; }

// The shape as declared, an unknown extent as one element.
void takeDeclaredShape(Value *value, const ArrayInfo *info) {
    ShapeNode **end = &value->shape;
    for (const ExprNode *lower = info->bounds; lower && lower->next; lower = lower->next->next) {
        int first = limitOf(lower), limit = limitOf(lower->next);
        bool isKnown = limit > first && limit < OPEN_LIMIT;
        *end = newShapeNode(first, isKnown ? limit : first + 1);
        end = &(*end)->next;
    }
    value->count = setRowStrides(value->shape);
}

// NULL after a message: the call can't take place with that shape.
Value *arrayFrom(const TypeInfo *formal, HostArguments &arguments) {
    bool isComputational = formal->kind == KIND_ASSUMED_ARRAY || formal->kind == KIND_P_ARRAY;
    int type = isComputational ? DT_ARRAY : DT_CARRAY;
    void *data = va_arg(arguments.list, void *);
    const ArrayInfo *info = formal->arrayLink;
    if (info && info->shapeKind == SHAPE_ASSUMED) {
        int rank = va_arg(arguments.list, int);
        if (rank < 1 || (info->rank > 0 && info->rank != rank)) {
            plainError("invalid dimension for VLA argument");
            return nullptr;
        }
        Value *value = arrayFromHost(type, formal->dataType, data, rank, arguments);
        if (!value)
            plainError("invalid dimension for VLA argument");
        return value;
    }
    Value *value = newPointer(type, data);
    value->payload2.elementType = formal->dataType;
    value->ownership = ARRAY_OWNS_SHAPE;
    if (info)
        takeDeclaredShape(value, info);
    return value;
}

Value *refuseArgument(int type) {
    runError("unknown data type for argument of C function ");
    return newZeroValue(type);
}

Value *argumentFor(const TypeInfo *formal, HostArguments &arguments) {
    if (takesArray(formal))
        return arrayFrom(formal, arguments);
    int type = dataTypeOf(formal);
    if (type == DT_FUNCTION)
        type = DT_P_FUNCTION;
    if (type >= 0 && isPointer(type))
        return newPointer(type, va_arg(arguments.list, void *));
    if (type >= DT_CHAR && type <= DT_DOUBLE)
        return numberFromHost(type, arguments);
    switch (type) {
        case DT_COMPLEX:
        case DT_DUAL:
        case DT_DCOMPLEX:
        case DT_DDUAL: return complexFrom(type, arguments);
        case DT_STRING: return newPointer(DT_P_CHAR, va_arg(arguments.list, char *));
        case DT_STRUCT: return objectFrom(formal, arguments);
        default: return refuseArgument(formal->dataType);
    }
}

// ---- Argument lists -----------------------------------------------------------------------------

// A value as it stands; all else is evaluated at the call.
bool isConstant(const ExprNode *item) {
    return item->kind == NODE_VALUE && item->type != DT_NAME && item->type != DT_TAG;
}

// Cells for the arguments of one call. Constants of the host's own list stand in both.
class CallArguments {
public:
    CallArguments() = default;
    CallArguments(const CallArguments &) = delete;
    CallArguments &operator=(const CallArguments &) = delete;
    ~CallArguments() {
        for (ExprNode *cell = borrowed; cell; cell = cell->next)
            if (isConstant(cell->item))
                cell->item = nullptr;
        deleteNode(cells);
    }

    void append(Value *value) { appendListCell(cells, value); }

    void appendList(const ExprNode *list) {
        for (; list; list = list->next) {
            hasTrees |= !isConstant(list->item);
            appendListCell(cells, isConstant(list->item) ? list->item : copyNode(list->item));
            if (!borrowed)
                borrowed = lastCell();
        }
    }

    // The constants by the formals, and behind ... a list. False after a message.
    bool take(const FuncInfo *function, HostArguments &arguments) {
        for (const TypeInfo *formal = firstFormal(function); formal; formal = formal->next) {
            Value *value = argumentFor(formal, arguments);
            if (!value)
                return false;
            append(value);
        }
        if (function->variadic)
            appendList(static_cast<const ExprNode *>(va_arg(arguments.list, void *)));
        return true;
    }

    ExprNode *cells = nullptr;
    bool hasTrees = false;  // that are to be evaluated at the call

private:
    static const TypeInfo *firstFormal(const FuncInfo *function) {
        const TypeInfo *first = function->parameters;
        if (first && function->owner->flags & FLAG_MEMBER_FUNCTION)
            first = first->next;  // the object
        bool isVoid = first && first->dataType == DT_VOID && first->kind < KIND_P_FUNCTION;
        return isVoid ? nullptr : first;
    }
    ExprNode *lastCell() const {
        ExprNode *cell = cells;
        while (cell->next)
            cell = cell->next;
        return cell;
    }

    ExprNode *borrowed = nullptr;
};

// ---- The call -----------------------------------------------------------------------------------

// The context to which a call of the host returns. It has no caller, so whatever leaves functions
// stops there.
class HostContext {
public:
    HostContext() {
        own = newContext();
        if (!own)
            return;
        own->function = interrupted->function;
        own->state = 1;
        currentContext = own;
        runStatus = RUN_CLEAN;
        e_lang->abortedRun = 0;
        runEnded = false;
        if (!running)
            abortRequest = 0;
    }
    ~HostContext() {
        currentContext = interrupted;
        if (own)
            releaseContext(own);
        forgetEnding();
        executing = running && !isUnwinding();
        if (isUnwinding())
            currentContext->chain = nullptr;
        bool failed = runEnded && runStatus == RUN_ERROR;
        runStatus = failed ? static_cast<unsigned char>(RUN_ERROR) : status;
        if (running && runEnded)
            endOuterRun();
        else if (running && e_lang->abortedRun)
            abortRequest = 1;
        runEnded = false;
        if (running)
            e_lang->abortedRun = 0;
    }
    ExecContext *own;

private:
    ExecContext *interrupted = currentContext;
    unsigned char running = executing, status = runStatus;
};

void runCall(ExprNode *call, bool hasTrees) {
    if (hasTrees)
        currentContext->chain = compileChain(call, nullptr, false);
    else
        callFunction(call);
    runStatements(true);
}

// ---- The result ---------------------------------------------------------------------------------

// The value of the call; zero for a call that was cut short.
Value *takeResult(const FuncInfo *function) {
    Value *value = currentContext->stack ? popValue() : nullptr;
    if (value && (e_lang->abortedRun || runEnded)) {
        deleteValue(value);
        value = nullptr;
    }
    return value ? value : newZeroValue(function->returnType);
}

template <class T>
void put(void *result, T item) {
    memcpy(result, &item, sizeof item);
}

void storeObject(void *result, const FuncInfo *function, const Value *value) {
    const StructInfo *info = function->owner->structLink;
    size_t size = info ? info->size : 0;
    if (value->payload.p)
        memcpy(result, value->payload.p, size);
    else
        memset(result, 0, size);
}

// The host gets the text's own block.
void storeText(void *result, Value *value) {
    bool isText = value->type == DT_STRING;
    put(result, isText ? value->payload.text : nullptr);
    if (isText)
        value->payload.text = nullptr;
}

void storeElements(void *result, int elementType, const Value *value) {
    if (value->payload.p)
        memcpy(result, value->payload.p,
               static_cast<size_t>(sizeofType(elementType)) * value->count);
}

void storeResult(void *result, const FuncInfo *function, Value *value) {
    int type = function->returnType;
    if (value->type == DT_ARRAY || value->type == DT_P_ARRAY)
        storeElements(result, type, value);
    else if (function->returnKind != KIND_SIMPLE || isPointer(type))
        put(result, value->payload.p);
    else if (type >= 0 && isScalarNumeric(type))
        storeNumber(result, type, value);
    else if (type == DT_STRING)
        storeText(result, value);
    else if (type == DT_STRUCT)
        storeObject(result, function, value);
    else if (type != DT_VOID)
        runError("unknown return data type for Zy function");
}

int callScriptFunction(TypeInfo *function, void *result, CallArguments &arguments,
                       bool argumentsFailed) {
    const FuncInfo *info = function->functionLink;
    if (platform::stackIsLow()) {
        plainError("calls by the host are nested too deeply");
        return -1;
    }
    HostContext context;
    if (!context.own)
        return -1;
    ExprNode *call = newOperatorNode(OP_CALL, newSymbolNode(function), arguments.cells);
    runCall(call, arguments.hasTrees);
    Value *value = takeResult(info);
    if (result)
        storeResult(result, info, value);
    deleteValue(value);
    call->right = nullptr;
    deleteNode(call);
    bool failed = argumentsFailed || runStatus == RUN_ERROR;
    return failed ? -1 : e_lang->abortedRun ? 1 : 0;
}

}  // namespace

void callWithoutArguments(void *function) {
    CallArguments none;
    callScriptFunction(static_cast<TypeInfo *>(function), nullptr, none, false);
}

namespace {

ExprNode *parseArgument(const char *text) {
    SourceKeeper source;
    ExprNode *tree = parseText(text);
    errorFlag = 0;
    return tree;
}

int callWithHostArguments(TypeInfo *function, void *result, va_list list) {
    HostArguments hostArguments(list);
    CallArguments arguments;
    unsigned char status = runStatus;
    runStatus = RUN_CLEAN;
    bool taken = arguments.take(function->functionLink, hostArguments);
    bool failed = !taken || runStatus == RUN_ERROR;
    runStatus = status;
    return taken ? callScriptFunction(function, result, arguments, failed) : -1;
}

}  // namespace

}  // namespace zy

using namespace zy;

int Zy_CallFuncByAddrv_kernel(void *, void *function, void *result, va_list list) {
    return callWithHostArguments(static_cast<TypeInfo *>(function), result, list);
}

int Zy_CallFuncByNamev_kernel(void *, const char *name, void *result, va_list list) {
    TypeInfo *function = findFunction(name, BY_NAME);
    return function ? callWithHostArguments(function, result, list) : -1;
}

int Zy_CallFuncByNameVar_kernel(void *, const char *name, void *result, ZyVarArgs list) {
    TypeInfo *function = findFunction(name, BY_NAME_WITH_LIST);
    if (!function)
        return -1;
    auto *cells = reinterpret_cast<ExprNode *>(list);
    errorFlag = 0;
    checkArguments(cells, function->functionLink);
    bool fits = !errorFlag;
    errorFlag = 0;
    CallArguments arguments;
    arguments.appendList(cells);
    return fits ? callScriptFunction(function, result, arguments, false) : -1;
}

ZyVarArgs Zy_VarArgsCreate_kernel(void *) { return nullptr; }

int Zy_vVarArgsAddArg(ZyVarArgs *list, int type, va_list arguments) {
    HostArguments hostArguments(arguments);
    Value *value = valueFromHost(type, hostArguments, "Zy_VarArgsAddArg");
    if (value)
        appendListCell(*reinterpret_cast<ExprNode **>(list), value);
    return value ? 0 : -1;
}

int Zy_VarArgsAddArgExpr_kernel(ZyVarArgs *list, const char *expr) {
    ExprNode *tree = expr ? parseArgument(expr) : nullptr;
    if (!tree)
        fputs("Invalid argument for Zy_VarArgsAddArgExpr()\n", stderr);
    appendListCell(*reinterpret_cast<ExprNode **>(list), tree ? tree : newIntNode(0));
    return tree ? 0 : -1;
}

void Zy_VarArgsDelete_kernel(ZyVarArgs list) { deleteNode(list); }
