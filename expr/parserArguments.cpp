// Argument lists of functions, subscripts of arrays, and the stream forms, which separate arguments
// with << and >>.

#include <cctype>

#include "decl/arrayInfo.h"
#include "decl/funcInfo.h"
#include "expr/evaluator.h"
#include "expr/guards.h"
#include "expr/nodeClasses.h"
#include "expr/parserParts.h"
#include "expr/select.h"
#include "expr/thread.h"
#include "expr/typeQueries.h"
#include "instance/report.h"
#include "numeric/convert.h"

namespace zy {

namespace {

struct Arguments {
    ExprNode *list = nullptr;
    int count = 0;
    bool isStream = false;

    void append(ExprNode *argument) {
        appendListCell(list, argument);
        count++;
    }
};

// ---- Reading ------------------------------------------------------------------------------------

bool readArgument(Arguments &arguments, bool runMode) {
    ExprNode *argument = parseExpression(runMode);
    if (!argument) {
        parseError("argument %d of the function is undefined or not a valid expression",
                   arguments.count + 1);
        return false;
    }
    arguments.append(argument);
    return true;
}

bool openList(char c) {
    if (expectChar(c, false))
        return true;
    parseError("missing '%c' when function is called", c);
    return false;
}

bool atComma() {
    nextToken();
    if (tokenClass == TK_CHAR && tokenValue.character == ',')
        return true;
    pushedBack = true;
    return false;
}

bool readParenthesised(Arguments &arguments, bool runMode) {
    SeparatorScope brackets(true, KC_OPERATOR);
    if (!openList('('))
        return false;
    if (expectChar(')', false))
        return true;
    do {
        if (!readArgument(arguments, runMode))
            return false;
    } while (atComma());
    return expectChar(')', true);
}

bool readSubscripts(Arguments &arguments, bool runMode) {
    SeparatorScope brackets(false, KC_OPERATOR);
    if (!openList('['))
        return false;
    for (;;) {
        if (!readArgument(arguments, runMode) || !expectChar(']', true))
            return false;
        peekNonBlank();
        if (lineBuffer[linePos] != '[')
            return true;
        expectChar('[', true);
    }
}

// ---- Stream forms -------------------------------------------------------------------------------

bool shiftFollows(char c) {
    peekNonBlank();
    const char *text = lineBuffer + linePos;
    return text[0] == c && text[1] == c && text[2] != '=';
}

bool streamFormFollows(int code) {
    switch (code) {
        case OP_PRINTF:
        case OP_FPRINTF: return shiftFollows('<');
        case OP_SCANF: return shiftFollows('>');
        default: return false;
    }
}

bool atShift(int code) {
    nextToken();
    if (tokenClass == TK_KEYWORD && currentKeyword.code == code)
        return true;
    pushedBack = true;
    return false;
}

// What is read into is given by its address, as an argument of scanf().
bool readTarget(Arguments &arguments, bool runMode) {
    if (!readArgument(arguments, runMode))
        return false;
    ExprNode *last = arguments.list;
    while (last->next)
        last = last->next;
    if (!isLvalue(last->item, false) && !isArray(treeType(last->item))) {
        parseError("argument %d of cin >> is not a valid lvalue", arguments.count);
        return true;
    }
    if (!isArray(treeType(last->item)))
        last->item = bindOperator(newOperatorNode(OP_ADDRESS, last->item));
    return true;
}

ExprNode *standardError() {
    const NameEntry *name = lookupName("_stderr");
    const Symbol *symbol = name ? name->symbol : nullptr;
    return symbol && symbol->dataType == DT_CONSTANT ? copyNode(symbol->constant) : nullptr;
}

bool readStream(Arguments &arguments, int code, bool runMode) {
    SeparatorScope stream(true, KC_STATEMENT);
    if (code == OP_FPRINTF) {
        ExprNode *destination = standardError();
        if (!destination) {
            parseError("missing file stream after fprintf ");
            return false;
        }
        arguments.append(destination);
    }
    bool scans = code == OP_SCANF;
    while (atShift(scans ? OP_RIGHT_SHIFT : OP_LEFT_SHIFT))
        if (!(scans ? readTarget(arguments, runMode) : readArgument(arguments, runMode)))
            return false;
    return true;
}

// ---- Calls --------------------------------------------------------------------------------------

TypeInfo *firstFormal(const FuncInfo *function) {
    bool hasThis =
        function->parameters && function->owner && (function->owner->flags & FLAG_MEMBER_FUNCTION);
    return hasThis ? function->parameters->next : function->parameters;
}

void checkCall(const FuncInfo *function, const Arguments &arguments) {
    TypeInfo *formal = firstFormal(function);
    int position = 0;
    for (const ExprNode *cell = arguments.list; cell && formal; cell = cell->next) {
        checkArgument(cell->item, formal, ++position);
        formal = formal->next;
    }
    checkArgumentCount(arguments.count, function);
}

ExprNode *finishCall(ExprNode *node, const Arguments &arguments) {
    node->right = arguments.list;
    if (TypeInfo *function = variableOf(node->left); function && function->kind == KIND_FUNCTION)
        function->used = 1;
    if (const FuncInfo *function = calledFunction(node))
        checkCall(function, arguments);
    return node;
}

// ---- Built-in functions -------------------------------------------------------------------------

// The fewest arguments of those whose number isn't fixed.
int fewestArguments(int code) {
    switch (code) {
        case OP_GENERIC_SQRT:
        case OP_GENERIC_LOG:
        case OP_GENERIC_LOG10:
        case OP_GENERIC_ASIN:
        case OP_GENERIC_ACOS:
        case OP_GENERIC_ATAN:
        case OP_GENERIC_ASINH:
        case OP_GENERIC_ACOSH:
        case OP_GENERIC_ATANH:
        case OP_GENERIC_POLAR:
        case OP_SHAPE: return 1;
        case OP_GENERIC_POW:
        case OP_GENERIC_ATAN2: return 2;
        case OP_GENERIC_ALIAS: return 0;
        default: return argumentCount(code) == ANY_ARGUMENTS ? 1 : argumentCount(code);
    }
}

void checkCount(int given, int fewest, int most) {
    if (given >= fewest && given <= most)
        return;
    if (most == ANY_ARGUMENTS)
        parseError("number of argument is %d, need more arguments", given);
    else if (most == fewest + 1)
        parseError("number of arguments is %d, need %d or %d arguments", given, fewest, most);
    else if (int needed = given < fewest ? fewest : most; needed == 1)
        parseError("number of argument is %d, need %d argument", given, needed);
    else
        parseError("number of argument is %d, need %d arguments", given, needed);
}

ExprNode *takeFirst(ExprNode *&list) {
    ExprNode *cell = list;
    if (!cell)
        return nullptr;
    list = cell->next;
    ExprNode *item = cell->item;
    recycleValue(cell);
    return item;
}

bool hasDestination(int code) {
    return code == OP_FPRINTF || code == OP_SPRINTF || code == OP_FSCANF || code == OP_SSCANF;
}

void placeArguments(ExprNode *node, ExprNode *list) {
    if (hasDestination(node->op)) {
        node->left = takeFirst(list);
        node->right = list;
    } else if (argumentCount(node->op) == ANY_ARGUMENTS) {
        node->left = list;
    } else {
        node->left = takeFirst(list);
        node->right = takeFirst(list);
        node->third = takeFirst(list);
        node->fourth = list && !list->next ? takeFirst(list) : list;
    }
}

bool isGeneric(int code) {
    return (code >= OP_GENERIC_ABS && code <= OP_GENERIC_CONJ) || code == OP_TO_COMPLEX ||
           code == OP_TO_DUAL;
}

ExprNode *finishBuiltin(ExprNode *node, const Arguments &arguments) {
    unsigned char earlier = errorFlag;
    errorFlag = 0;
    checkCount(arguments.count, fewestArguments(node->op), argumentCount(node->op));
    bool countFits = !errorFlag;
    errorFlag |= earlier;
    if (countFits && !arguments.isStream)
        checkBuiltinArguments(node->op, arguments.list);
    placeArguments(node, arguments.list);
    bool hasDimensions =
        node->op == OP_TRANSPOSE || node->op == OP_INVERSE || node->op == OP_LINEARSOLVER;
    if (hasDimensions && countFits && !errorFlag)
        checkArrayOperands(node->left, node->right, node->op);
    if (node->op == OP_SHAPE && node->right)
        node->op = OP_SHAPE_EXTENT;
    return countFits && isGeneric(node->op) ? resolveGeneric(node) : node;
}

// ---- Subscripts ---------------------------------------------------------------------------------

// How many subscripts lead to an element; 0 if only the run knows.
int rankOf(const ExprNode *tree) {
    DataType type = treeType(tree);
    if (!isArray(type))
        return 1;
    if (const TypeInfo *variable = variableOf(tree))
        return variable->arrayLink ? static_cast<int>(variable->arrayLink->rank) : 1;
    if (isOperator(tree) && tree->op == OP_INDIRECTION)
        return rankOf(tree->left) - 1;
    if (isOperator(tree) && tree->op == OP_ADDRESS)
        return rankOf(tree->left) + 1;
    const TypeInfo *array = declarationOf(tree);
    if (array && array->arrayLink && isOperator(tree) &&
        (isMember(tree->op) || tree->op == OP_CALL))
        return static_cast<int>(array->arrayLink->rank);
    Bounds bounds;
    return boundsOf(tree, bounds) ? static_cast<int>(bounds.size()) : 0;
}

// Levels of pointer that an element still has.
int pointersBehind(const ExprNode *tree) {
    if (!isArray(treeType(tree)))
        return pointerDepth(treeDataType(tree)) - 1;
    const TypeInfo *array = declarationOf(tree);
    return array ? pointerDepth(array->dataType) : 0;
}

// The code by the number of subscripts; -1 for a number that doesn't fit.
int subscriptCode(const ExprNode *array, int given) {
    int rank = rankOf(array);
    if (rank == 0 || given == rank)
        return OP_SUBSCRIPT;
    if (given > rank)
        return given - rank <= pointersBehind(array) ? OP_SUBSCRIPT_POINTER + given - rank - 1 : -1;
    bool isPart = isCArray(treeType(array)) && rank - given <= 6;
    return isPart ? OP_SUBSCRIPT_PART1 + rank - given - 1 : -1;
}

void checkSubscriptTypes(const ExprNode *list) {
    for (; list; list = list->next)
        convertTree(list->item, DT_INT);
}

ExprNode *parseSubscripts(ExprNode *node, bool runMode) {
    Arguments subscripts;
    if (!readSubscripts(subscripts, runMode)) {
        deleteNode(subscripts.list);
        deleteNode(node);
        return nullptr;
    }
    int code = subscriptCode(node->left, subscripts.count);
    if (code < 0)
        checkCount(subscripts.count, rankOf(node->left), rankOf(node->left));
    else
        node->op = code;
    checkSubscriptTypes(subscripts.list);
    node->right = subscripts.list;
    return node;
}

bool nameFollows() {
    peekNonBlank();
    char next = lineBuffer[linePos];
    return isalpha(static_cast<unsigned char>(next)) || next == '_';
}

}  // namespace

bool startsStreamForm(const NameEntry *name) {
    const KeywordEntry *row = keywordNamed(name->text);
    return row && row->keywordClass == KC_OPERATOR && streamFormFollows(row->code);
}

ExprNode *parsePrimary(ExprNode *node, bool runMode) {
    if (!node)
        return nullptr;
    if (node->op == OP_SUBSCRIPT)
        return parseSubscripts(node, runMode);
    if (node->op == OP_FPRINTF && nameFollows())
        return parseHereDocument(node, runMode);
    Arguments arguments;
    arguments.isStream = streamFormFollows(node->op);
    bool complete = arguments.isStream ? readStream(arguments, node->op, runMode)
                                       : readParenthesised(arguments, runMode);
    if (!complete) {
        deleteNode(arguments.list);
        deleteNode(node);
        return nullptr;
    }
    return node->op == OP_CALL ? finishCall(node, arguments) : finishBuiltin(node, arguments);
}

// ---- The words of built-in functions ------------------------------------------------------------

namespace {

bool takesNothing(int code) { return argumentCount(code) == 0; }

ExprNode *parseEmptyList(ExprNode *node) {
    if (expectChar('(', true) && expectChar(')', true))
        return node;
    deleteNode(node);
    return nullptr;
}

// Whether a text is a word of the language is known now, and may change before the call runs.
ExprNode *evaluateIsKey(ExprNode *node) {
    if (!node || errorFlag || !node->left)
        return node;
    const Value *text = constantOf(node->left);
    Value *result = nullptr;
    if (!text) {
        runNested(compileChain(node->left, nullptr, true));
        text = result = popValue();
    }
    bool isText =
        text && isStringLike(static_cast<int>(text->type)) && !isNullAddress(text->payload.text);
    ExprNode *answer = newIntNode(isText && keywordNamed(text->payload.text));
    if (result)
        deleteValue(result);
    deleteNode(node);
    return answer;
}

}  // namespace

ExprNode *parseBuiltin(int code, bool runMode) {
    switch (code) {
        case OP_SIZEOF: return parseSizeof(runMode);
        case OP_ELEMENTTYPE: return parseElementType(runMode);
        case OP_DEFINED: return parseDefined();
        case OP_ISKEY: return evaluateIsKey(parsePrimary(newOperatorNode(code), runMode));
        default: break;
    }
    ExprNode *node = newOperatorNode(code);
    return takesNothing(code) ? parseEmptyList(node) : parsePrimary(node, runMode);
}

}  // namespace zy
