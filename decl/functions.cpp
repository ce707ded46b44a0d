// Functions: parameter lists and bodies. The formals stand in a scope of their own, one level above
// the function, and the block of the body one above them.

#include "decl/functions.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "decl/arrays.h"
#include "decl/currentToken.h"
#include "decl/declState.h"
#include "decl/declaration.h"
#include "decl/structInfo.h"
#include "expr/nodes.h"
#include "expr/scope.h"
#include "instance/report.h"
#include "stmt/parser.h"

namespace zy {

namespace {

bool charFollows(const char *accepted) {
    if (pushedBack)
        return false;  // the body of an old-style function
    peekNonBlank();
    char c = lineBuffer[linePos];
    return c != '\0' && strchr(accepted, c);
}

// ---- What the function returns ----------------------------------------------------------------

// A row for each kind that the declarator has before the parameter list; all others return the
// declared type as a plain value.
struct ReturnRow {
    int8_t kind;
    int dataType;    // of the function's record; -1: as declared
    int returnType;  // -1: as declared
};

constexpr ReturnRow returnRows[] = {
    {KIND_P_FUNCTION, DT_P_FUNCTION, DT_P_FUNCTION},
    {KIND_PP_FUNCTION, DT_P_FUNCTION, DT_PP_FUNCTION},
    {KIND_PPP_FUNCTION, DT_P_FUNCTION, DT_PPP_FUNCTION},
    {KIND_P_C_ARRAY, DT_P_CARRAY, -1},
    {KIND_P_ARRAY, DT_P_ARRAY, -1},
    {KIND_ARRAY, -1, -1},
};

void setReturn(TypeInfo *info, FuncInfo *function, int declaredType) {
    function->returnType = declaredType;
    function->returnKind = KIND_SIMPLE;
    for (const ReturnRow &row : returnRows) {
        if (row.kind != info->kind)
            continue;
        function->returnKind = row.kind;
        if (row.returnType >= 0)
            function->returnType = row.returnType;
        if (row.dataType >= 0)
            info->dataType = row.dataType;
    }
}

// ---- The list ---------------------------------------------------------------------------------

// A member function named as its class, or behind ~. The class knows it when it has been read.
void markConstructor(TypeInfo *info) {
    bool inOpenClass = info->context == CONTEXT_MEMBER && currentStruct && currentStruct->size == 0;
    if (!inOpenClass)
        return;
    if (destructorSeen) {
        destructorSeen = false;
        info->flags |= FLAG_DESTRUCTOR;
        info->structLink = currentStruct;
    } else if (currentStruct->tag && currentStruct->tag->name == info->name) {
        info->flags |= FLAG_CONSTRUCTOR;
        info->structLink = currentStruct;
    }
}

int passedKind(const TypeInfo *formal) {
    bool isAssumed = isAssumedShape(formal);
    switch (formal->kind) {
        case KIND_C_ARRAY: return isAssumed ? KIND_ASSUMED_C_ARRAY : KIND_P_C_ARRAY;
        case KIND_ARRAY: return isAssumed ? KIND_ASSUMED_ARRAY : KIND_P_ARRAY;
        case KIND_FUNCTION: return KIND_P_FUNCTION;
        case KIND_REFERENCE: return KIND_BY_REFERENCE;
        case KIND_SIMPLE: {
            bool isMotion = formal->dataType >= 15 && formal->dataType <= 24;
            return isMotion ? KIND_BY_REFERENCE : KIND_SIMPLE;
        }
        default: return formal->kind;
    }
}

void adjustFormals(const TypeInfo *info, FuncInfo *function) {
    for (TypeInfo *formal = function->parameters; formal; formal = formal->next)
        formal->kind = static_cast<int8_t>(passedKind(formal));
    const TypeInfo *first = function->parameters;
    bool takesArguments = first && (first->name || first->dataType != DT_VOID);
    if ((info->flags & FLAG_DESTRUCTOR) && takesArguments) {
        const char *name = info->name->text;  // ~ and the name of the class
        parseError("destructor %s::%s() with argument", name + 1, name);
    }
}

void parseFormals(FuncInfo *function) {
    dotsSeen = false;
    while (!errorFlag && startsDeclaration(function->parameters))
        declare(nullptr, function->parameterLevel, nullptr, &function->parameters, nullptr, nullptr,
                CONTEXT_PARAMETER);
    function->variadic = dotsSeen;
    dotsSeen = false;
}

// A name that is no type begins a list of bare names: the formals are declared behind it.
bool namesFollow() {
    nextToken();
    pushedBack = true;
    return tokenClass == TK_IDENTIFIER && !typedefNamed(tokenValue.name, nullptr);
}

void refusePrototype(const TypeInfo *info) {
    parseError("unknown function prototype for `%s()`", info->name ? info->name->text : "");
}

// ---- Old-style lists --------------------------------------------------------------------------

using NameList = std::vector<NameEntry *>;

NameList parseNames() {
    NameList names;
    do {
        nextToken();
        if (tokenClass == TK_IDENTIFIER)
            names.push_back(tokenValue.name);
        else
            errorFlag = 1;
        if (tokenClass == TK_CONSTANT)
            deleteValue(takeConstant());
        nextToken();
    } while (!errorFlag && isChar(','));
    pushedBack = true;
    return names;
}

TypeInfo *takeNamed(TypeInfo **list, const NameEntry *name) {
    while (*list && (*list)->name != name)
        list = &(*list)->next;
    TypeInfo *found = *list;
    if (found)
        *list = found->next;
    return found;
}

void refuseUndeclared(const NameEntry *name, const TypeInfo *info) {
    const char *function = functionText(info), *text = name->text;
    plainError("unknown identifier '%s' in declaration of function %s(),", text, function);
    fprintf(stderr, "       change undeclared identifier '%s' to 'int %s' in function %s(),\n",
            text, text, function);
    fprintf(stderr, "       or include a proper header file for typedefed data type '%s'\n", text);
    errorFlag = 1;
}

// The declarations in the order of the names.
void orderFormals(const NameList &names, const TypeInfo *info, FuncInfo *function) {
    TypeInfo *declared = std::exchange(function->parameters, nullptr);
    TypeInfo **tail = &function->parameters;
    uint16_t index = 0;
    for (const NameEntry *name : names) {
        TypeInfo *formal = takeNamed(&declared, name);
        if (!formal) {
            refuseUndeclared(name, info);
            continue;
        }
        if (formal->storage != STORAGE_AUTO && formal->storage != STORAGE_REGISTER)
            parseError("invalid type combination");
        formal->index = index++;
        formal->next = nullptr;
        formal->context = CONTEXT_PARAMETER;
        *tail = formal;
        tail = &formal->next;
    }
    if (declared)
        parseError("parameter '%s' not in identifier list", declared->name->text);
    releaseTypeInfoList(declared);
}

void parseOldStyle(const TypeInfo *info, FuncInfo *function) {
    NameList names = parseNames();
    if (!expectChar(')', true))
        return;
    if (warningsAt(2) || commandMode)
        parseWarning("old style definition of function %s()", functionText(info));
    while (!errorFlag && startsDeclaration(function->parameters))
        declare(nullptr, function->parameterLevel, nullptr, &function->parameters, nullptr, nullptr,
                CONTEXT_PLAIN);
    if (!errorFlag)
        orderFormals(names, info, function);
}

// ---- What closes the declarator ---------------------------------------------------------------

// (*f(a))(b), from the ) of the first list on: the second list is that of the function which the
// result points to.
bool closeStars(TypeInfo *info, FuncInfo *function, int declaredType) {
    if (!expectChar(')', true) || !expectChar(')', true))
        return false;
    if (!charFollows("(") || !expectChar('(', true)) {
        refusePrototype(info);
        return false;
    }
    FuncInfo *inner = newFuncInfo(info);
    if (!inner)
        return false;
    if (info->pointerFunction)
        deleteNode(info->pointerFunction);
    info->pointerFunction = inner;
    inner->returnType = declaredType;
    inner->parameterLevel = function->parameterLevel;
    parseFormals(inner);
    adjustFormals(info, inner);
    function->returnType = DT_P_FUNCTION;
    function->returnKind = KIND_P_FUNCTION;
    return true;
}

// The shape of an array result.
void parseResultShape(TypeInfo *info, FuncInfo *function) {
    if (!charFollows("["))
        return;
    if (info->kind != KIND_ARRAY) {
        parseError("function cannot return C array, it can only return computational array");
        return;
    }
    expectChar('[', true);
    if (parseArrayDeclarator(info, false, 0, nullptr))
        function->returnKind = KIND_ARRAY;
}

void checkFirstFormal(const TypeInfo *info, const FuncInfo *function) {
    const TypeInfo *first = function->parameters;
    if (!first || first->name || first->dataType == DT_VOID)
        return;
    if (!charFollows("),;{=") && !commandMode)
        parseError(
            "missing ';' or use typedefed name as the 1st variable for argument of function %s()",
            info->name ? info->name->text : "");
}

// The error was in the middle of a list: shows the reader where.
void summariseError() {
    SourcePosition position = {currentLine, ""};
    if (commandMode)
        return;
    parsePosition(position);
    plainError("syntax error at or before line %d in file '%s'", position.line, position.file);
    fprintf(stderr, "  ==>: %s\n", lineBuffer);
    std::string cut(lineBuffer, static_cast<size_t>(linePos));
    fprintf(stderr, "  BUG: %s<== ??? bug may be here\n", cut.c_str());
}

// The list with its ) and what stands behind it.
void parseListAndTail(TypeInfo *info, FuncInfo *function, int returnType, int &starLevel) {
    bool isOldStyle = starLevel == 0 && namesFollow();
    if (isOldStyle)
        parseOldStyle(info, function);
    else
        parseFormals(function);
    if (errorFlag)
        return;
    if (starLevel == 1 && !closeStars(info, function, returnType))
        return;
    adjustFormals(info, function);
    if (!isOldStyle && !expectChar(')', true))
        return;
    parseResultShape(info, function);
    checkFirstFormal(info, function);
}

}  // namespace

void parseFunctionDeclarator(TypeInfo *info, int returnType, int level, int &starLevel) {
    markConstructor(info);
    FuncInfo *function = newFuncInfo(info);
    if (!function)
        return;
    if (info->functionLink) {
        // The result is a pointer to a function of the type that a typedef gave.
        if (info->kind > KIND_FUNCTION && !info->pointerFunction)
            info->pointerFunction = info->functionLink;
        else
            deleteNode(info->functionLink);
    }
    info->functionLink = function;
    function->parameterLevel = static_cast<uint16_t>(level + 1);
    setReturn(info, function, returnType);
    parseListAndTail(info, function, returnType, starLevel);
    starLevel = 0;
    info->kind = KIND_FUNCTION;
    if (errorFlag)
        summariseError();
}

// ---- Redeclaration ----------------------------------------------------------------------------

namespace {

void compareHeads(const TypeInfo *fresh, const TypeInfo *old) {
    const char *name = functionText(old);
    int freshType = fresh->functionLink->returnType, oldType = old->functionLink->returnType;
    if (freshType != oldType)
        parseError("function %s() was defined as %s, redefine it as %s", name,
                   dataTypeText(oldType), dataTypeText(freshType));
    bool isStatic = fresh->storage == STORAGE_STATIC, wasStatic = old->storage == STORAGE_STATIC;
    if ((wasStatic && !isStatic && fresh->storage != STORAGE_AUTO) || (isStatic && !wasStatic))
        parseError("'%s()' as static function redeclared", name);
    if ((fresh->flags ^ old->flags) & FLAG_RESTRICT)
        parseError("'restrict' of function '%s()' is changed", name);
}

// The body that follows sees the formals of its own head.
void takeFormals(TypeInfo *fresh, TypeInfo *old) {
    FuncInfo *added = fresh->functionLink, *kept = old->functionLink;
    std::swap(added->parameters, kept->parameters);
    kept->parameterLevel = added->parameterLevel;
    kept->variadic = added->variadic;
    if (old->pointerFunction && fresh->pointerFunction)
        old->pointerFunction->variadic = fresh->pointerFunction->variadic;
}

void refuseSecondBody(const TypeInfo *function) {
    if (function->functionLink->body)
        parseError("redefine the user-defined procedure body for '%s'", functionText(function));
}

}  // namespace

TypeInfo *redeclareFunction(TypeInfo *existing, TypeInfo *fresh) {
    compareHeads(fresh, existing);
    compareFunctions(fresh->functionLink, existing->functionLink);
    if (fresh->pointerFunction && existing->pointerFunction)
        compareFunctions(fresh->pointerFunction, existing->pointerFunction);
    bool isDefinition = openBraceFollows();
    if (!errorFlag && isDefinition)
        refuseSecondBody(existing);
    bool addsFormals = !existing->functionLink->parameters && fresh->functionLink->parameters;
    if (!errorFlag && (isDefinition || addsFormals))
        takeFormals(fresh, existing);
    releaseTypeInfo(fresh);
    return errorFlag ? nullptr : existing;
}

// ---- The body ---------------------------------------------------------------------------------

bool functionPrologue(TypeInfo *function, bool isTypedef) {
    nextToken();
    if (!isBodyWord(WORD_OPEN_BRACE) || errorFlag) {
        pushedBack = true;
        return false;
    }
    if (isTypedef) {
        parseError("'typedef' function definition");
        return false;
    }
    refuseSecondBody(function);  // the lexer may have stepped over dots in front of the brace
    if (errorFlag)
        return false;
    return openFunctionBody(function->functionLink) != nullptr;
}

// ---- main -------------------------------------------------------------------------------------

namespace {

constexpr const char *mainPrefix = "___";

const char *sourceBaseName() {
    const char *path = sourceDepth >= 0 ? sourceNames[sourceDepth] : nullptr;
    if (!path)
        return "";
    const char *slash = strrchr(path, '/');
    return slash ? slash + 1 : path;
}

}  // namespace

void renameMainFunction(TypeInfo *info) {
    const char *text = info->name->text;
    if (strcmp(text, "main") != 0 && strcmp(text, "WinMain") != 0)
        return;
    std::string own = std::string(mainPrefix) + sourceBaseName();
    NameEntry *name = lookupName(own.c_str());
    if (!name)
        name = addName(own.c_str());
    if (name)
        info->name = name;
}

const char *functionText(const TypeInfo *info) {
    if (!info->name)
        return "";
    return strncmp(info->name->text, mainPrefix, 3) == 0 ? "main" : info->name->text;
}

}  // namespace zy
