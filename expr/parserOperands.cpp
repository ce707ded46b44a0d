// Operands: names, constants, parentheses, and what stands behind them: subscripts and argument
// lists. A name is resolved here once and for all; the tree keeps its declaration.

#include "decl/aggregates.h"
#include "decl/funcInfo.h"
#include "decl/functionFiles.h"
#include "decl/layout.h"
#include "decl/structInfo.h"
#include "expr/nodeClasses.h"
#include "expr/parserParts.h"
#include "expr/select.h"
#include "expr/typeQueries.h"
#include "front/preprocessorState.h"
#include "instance/report.h"
#include "stmt/stmtNode.h"

namespace zy {

namespace {

bool textFollows(const char *text) {
    for (int i = 0; text[i]; i++)
        if (lineBuffer[linePos + i] != text[i])
            return false;
    return true;
}

bool followsAfterBlanks(const char *text) {
    peekNonBlank();
    return textFollows(text);
}

Symbol *resolveName(NameEntry *name, bool runMode, ClassContext **object) {
    if (runMode && currentContext)
        return lookupSymbolRun(currentContext, currentContext->statement, name, object);
    return lookupSymbolParse(name, nullptr, object);
}

}  // namespace

Symbol *visibleSymbol(NameEntry *name, bool runMode) {
    ClassContext *object = nullptr;
    return name ? resolveName(name, runMode, &object) : nullptr;
}

namespace {

// ---- Subscripts and calls -----------------------------------------------------------------------

bool isCallable(const ExprNode *operand) {
    DataType type = treeType(operand);
    return type == DT_FUNCTION || type == DT_P_FUNCTION;
}

bool isSubscriptable(const ExprNode *operand) {
    DataType type = treeType(operand);
    return isArray(type) || (isPointer(type) && type != DT_NULL && !isCallable(operand));
}

// (*p)(x) and (&f)(x) call what p(x) and f(x) call.
ExprNode *calleeOf(ExprNode *operand) {
    while (isOperator(operand) && operand->left &&
           (operand->op == OP_INDIRECTION || operand->op == OP_ADDRESS) &&
           isCallable(operand->left)) {
        ExprNode *inner = operand->left;
        operand->left = nullptr;
        deleteNode(operand);
        operand = inner;
    }
    return operand;
}

ExprNode *refuseSubscript(ExprNode *operand) {
    parseError("invalid subscript for wrong data type");
    deleteNode(operand);
    return nullptr;
}

// ---- Names --------------------------------------------------------------------------------------

// In a group of lines that is skipped nothing is known of the names, and nothing is to be declared.
ExprNode *idleName() {
    if (followsAfterBlanks("(")) {
        int depth = 0;
        do {
            char c = lineBuffer[linePos];
            if (!c)
                break;
            depth += c == '(' ? 1 : c == ')' ? -1 : 0;
            linePos++;
        } while (depth > 0);
    }
    return newIntNode(0);
}

// A function that is called and not declared: its file tells what it is. In run mode there will be
// no end of the parse, so all of the file is read now.
void findFunction(NameEntry *name, bool runMode) {
    std::string path;
    bool hasFile = findFunctionFile(name->text, path);
    bool isDeclared =
        hasFile && (runMode ? loadFunctionFile(name, path) : declareFromFunctionFile(name, path));
    // A wrong file is told of once: the calls of the function are read as of any other.
    if (!isDeclared && !name->symbol)
        makeImplicitFunction(name);
}

ExprNode *textNode(const std::string &text) {
    ExprNode *node = newZeroValue(DT_P_CHAR);
    if (!node)
        return nullptr;
    node->payload.text = keepText(copyString(text.c_str()));
    node->count = static_cast<uint32_t>(text.size() + 1);
    return node;
}

ExprNode *unknownName(NameEntry *name, bool runMode) {
    if (conditionIdle)
        return idleName();
    std::string ofClass = classText(name);
    if (!ofClass.empty())
        return textNode(ofClass);
    if (startsStreamForm(name))
        return parsePrimary(newOperatorNode(keywordNamed(name->text)->code), runMode);
    if (followsAfterBlanks("(")) {
        findFunction(name, runMode);
        if (name->symbol)
            return newSymbolNode(name->symbol);
    }
    pushedBack = true;
    return nullptr;
}

// A data member of the class whose function is being parsed, by its name alone.
bool isImplicitMember(const Symbol *symbol, const ClassContext *object) {
    return object && object->thisFormal && (symbol->flags & FLAG_MEMBER) &&
           !(symbol->flags & FLAG_CONSTRUCTOR) && symbol->storage != STORAGE_TYPEDEF;
}

ExprNode *implicitMember(const Symbol *symbol, const ClassContext *object) {
    return newMemberAccess(OP_ARROW, newSymbolNode(object->thisFormal),
                           object->thisFormal->structLink, symbol);
}

bool isNamedConstant(const Symbol *symbol) {
    bool isConstant = symbol->dataType == DT_CONSTANT || (symbol->qualifiers & QUALIFIER_BUILTIN);
    return isConstant && symbol->constant && symbol->constant->kind == NODE_VALUE;
}

// The text of a constant is shared: it lives as long as the constant.
ExprNode *namedConstant(const Symbol *symbol) {
    const Value *constant = symbol->constant;
    if (constant->type != DT_STRING)
        return copyNode(constant);
    ExprNode *node = newZeroValue(DT_P_CHAR);
    if (node)
        node->payload.text = constant->payload.text;
    return node;
}

ExprNode *constructorCall(Symbol *constructor, bool runMode) {
    return parsePrimary(newOperatorNode(OP_CALL, newSymbolNode(constructor)), runMode);
}

// The name of a type: of a class before ::, a constructor, a conversion.
ExprNode *typeOperand(Symbol *type, bool runMode) {
    if (followsAfterBlanks("::")) {
        MemberPath path = memberAtPath(type);
        bool isCall = path.member && path.member->storage == STORAGE_TYPEDEF && *path.behind == '(';
        if (!isCall)
            return newSymbolNode(type);
        linePos = static_cast<int16_t>(path.behind - lineBuffer);
        return typeOperand(const_cast<TypeInfo *>(path.member), runMode);
    }
    const StructInfo *aggregate = type->structLink;
    bool isClass = type->dataType == DT_TAG || type->dataType == DT_STRUCT;
    if (isClass && aggregate && aggregate->constructor && textFollows("("))
        return constructorCall(aggregate->constructor, runMode);
    if (isConversionCall())
        return parseConversion(type->dataType, type->name->text, type, runMode);
    parseError("missing '(' in casting operation or use a typedef name as operator ");
    return nullptr;
}

ExprNode *nameOperand(NameEntry *name, Symbol *symbol, const ClassContext *object, bool runMode) {
    if (!symbol)
        return unknownName(name, runMode);
    if (isNamedConstant(symbol))
        return namedConstant(symbol);
    if (isImplicitMember(symbol, object))
        return implicitMember(symbol, object);
    if (symbol->storage == STORAGE_TYPEDEF)
        return typeOperand(symbol, runMode);
    return newSymbolNode(symbol);
}

void takePostfixed(Parse &parse, ExprNode *operand) {
    if (operand)
        operand = parsePostfix(operand, parse.runMode);
    if (operand)
        pushOperand(parse, operand);
    else
        breakOff(parse);
}

}  // namespace

ExprNode *parsePostfix(ExprNode *operand, bool runMode) {
    // A list without parentheses has read the token behind it.
    while (operand && !pushedBack) {
        peekAndExpand();
        char next = lineBuffer[linePos];
        if (next == '(' && isCallable(operand))
            operand = parsePrimary(newOperatorNode(OP_CALL, calleeOf(operand)), runMode);
        else if (next == '[' && isSubscriptable(operand))
            operand = parsePrimary(newOperatorNode(OP_SUBSCRIPT, operand), runMode);
        else if (next == '[' && declarationOf(operand))
            operand = refuseSubscript(operand);
        else
            break;
    }
    return operand;
}

void takeName(Parse &parse, NameEntry *name, Symbol *symbol, ClassContext *implicitObject) {
    takePostfixed(parse, nameOperand(name, symbol, implicitObject, parse.runMode));
}

namespace {

// Class::member in the code of the class is one of the object that the code runs on.
void takeOwnObject(Parse &parse, const StructInfo *info, const TypeInfo *member) {
    const ClassContext *context = classContext;
    bool isInside = context && context->thisFormal && context->thisFormal->structLink == info;
    bool isShared = member->storage == STORAGE_STATIC || member->storage == STORAGE_TYPEDEF ||
                    isEnumerator(member);
    if (parse.operators->op != OP_SCOPE || !isInside || isShared)
        return;
    deleteNode(popOperand(parse));
    pushOperand(parse, newSymbolNode(context->thisFormal));
    parse.operators->op = OP_ARROW;
    parse.wantOperand = true;
}

}  // namespace

void takeMember(Parse &parse, NameEntry *name) {
    const ExprNode *left = parse.operands;
    const TypeInfo *member = findMember(left, name);
    if (!member) {
        breakOff(parse);
        return;
    }
    const StructInfo *info = structInfoOf(left);
    takeOwnObject(parse, info, member);
    const TypeInfo *own = ownMember(info, member);
    pushOperand(parse, newIntNode(memberIndex(info, own)));
    reduceTop(parse);
    ExprNode *access = popOperand(parse);
    if (own != member)
        access = newMemberAccess(OP_MEMBER, access, own->structLink, member);
    takePostfixed(parse, access);
}

void takeIdentifier(Parse &parse) {
    if (!parse.wantOperand) {
        endExpression(parse);
        return;
    }
    NameEntry *name = tokenValue.name;
    if (isMember(waitingCode(parse))) {
        takeMember(parse, name);
        return;
    }
    ClassContext *object = nullptr;
    Symbol *symbol = resolveName(name, parse.runMode, &object);
    takeName(parse, name, symbol, object);
}

void takeConstant(Parse &parse) {
    ExprNode *constant = tokenValue.constant;
    if (!parse.wantOperand || isMember(waitingCode(parse))) {
        deleteNode(constant);
        refuseOperand(parse);
        return;
    }
    if (constant->type == DT_STRING) {
        constant->type = DT_P_CHAR;
        keepText(constant->payload.text);
    }
    takePostfixed(parse, constant);
}

// ---- Parentheses --------------------------------------------------------------------------------

namespace {

void reportInside() {
    if (!nestedFaultReported)
        parseError("syntax error before )");
    nestedFaultReported = true;
}

}  // namespace

ExprNode *parseContents(bool runMode) {
    unsigned char earlier = errorFlag;
    errorFlag = 0;
    ExprNode *tree = parseExpression(runMode);
    bool failed = errorFlag;
    errorFlag |= earlier;
    if (failed)
        reportInside();
    else if (!tree)
        parseError("no expression following (");
    if (tree && !expectChar(')', !failed)) {
        deleteNode(tree);
        return nullptr;
    }
    return tree;
}

void takeParenthesis(Parse &parse) {
    ExprNode *contents;
    {
        SeparatorScope brackets(false, KC_OPERATOR);
        nextToken();
        if (startsCast(parse.runMode)) {
            takeCast(parse);
            return;
        }
        pushedBack = true;
        contents = parseContents(parse.runMode);
    }
    takePostfixed(parse, contents);
}

}  // namespace zy
