// The main loop of the parser: tokens, operators and their precedences. Operands are the business
// of the other sources. An operator waits on its stack until one that binds less tightly arrives;
// it is then bound to its operands and becomes an operand itself.

#include "expr/parser.h"

#include <cctype>

#include "expr/nodeClasses.h"
#include "expr/parserParts.h"
#include "expr/select.h"
#include "expr/typeQueries.h"
#include "instance/report.h"

namespace zy {

namespace {

// What holds while one call of the parser is active.
class ParseScope {
public:
    explicit ParseScope(bool runMode) : savedMode(parserRunMode) {
        if (expressionDepth++ == 0)
            nestedFaultReported = false;
        parserRunMode = runMode;
    }
    ~ParseScope() {
        expressionDepth--;
        parserRunMode = savedMode;
    }
    ParseScope(const ParseScope &) = delete;

private:
    bool savedMode;
};

ExprNode *popFrom(ExprNode *&list) {
    ExprNode *node = list;
    if (node) {
        list = node->next;
        node->next = nullptr;
    }
    return node;
}

void releaseAll(ExprNode *&list) {
    while (ExprNode *node = popFrom(list))
        deleteNode(node);
}

}  // namespace

SeparatorScope::SeparatorScope(bool commaEnds, KeywordClass shifts)
    : savedComma(e_lang->commaEndsExpression),
      savedLeft(shiftLeftKeyword ? shiftLeftKeyword->keywordClass : KC_OPERATOR),
      savedRight(shiftRightKeyword ? shiftRightKeyword->keywordClass : KC_OPERATOR) {
    e_lang->commaEndsExpression = commaEnds;
    if (shiftLeftKeyword)
        shiftLeftKeyword->keywordClass = shifts;
    if (shiftRightKeyword)
        shiftRightKeyword->keywordClass = shifts;
}

SeparatorScope::~SeparatorScope() {
    e_lang->commaEndsExpression = savedComma;
    if (shiftLeftKeyword)
        shiftLeftKeyword->keywordClass = savedLeft;
    if (shiftRightKeyword)
        shiftRightKeyword->keywordClass = savedRight;
}

// ---- The two stacks -----------------------------------------------------------------------------

void pushOperand(Parse &parse, ExprNode *operand) {
    operand->next = parse.operands;
    parse.operands = operand;
    parse.wantOperand = false;
}

ExprNode *popOperand(Parse &parse) { return popFrom(parse.operands); }

void pushOperator(Parse &parse, ExprNode *node, int precedence) {
    if (!node || parse.depth == MAX_WAITING) {
        if (node)
            parseError("expression stack overflow");
        deleteNode(node);
        breakOff(parse);
        return;
    }
    node->next = parse.operators;
    parse.operators = node;
    parse.precedences[++parse.depth] = static_cast<int16_t>(precedence);
    parse.wantOperand = true;
}

void reduceTop(Parse &parse) {
    if (parse.operators->op == OP_CONDITIONAL)
        parse.openConditionals--;
    reduceOperator(parse.operands, parse.operators, parse.depth);
}

int waitingCode(const Parse &parse) { return parse.operators ? parse.operators->op : -1; }

void endExpression(Parse &parse) {
    pushedBack = true;
    parse.done = true;
}

void breakOff(Parse &parse) {
    errorFlag = 1;
    parse.broken = parse.done = true;
}

void refuseOperand(Parse &parse) {
    parseError("multiple operands together, maybe missing ';' in the previous statement");
    breakOff(parse);
}

namespace {

void takeOperand(Parse &parse, ExprNode *operand) {
    if (operand)
        pushOperand(parse, operand);
    else
        breakOff(parse);
}

// ---- Operators ----------------------------------------------------------------------------------

void refuseOperator(Parse &parse) {
    parseError("multiple operators together ");
    breakOff(parse);
}

void reduceAbove(Parse &parse, int precedence) {
    while (parse.precedences[parse.depth] > precedence)
        reduceTop(parse);
}

bool namesType(const ExprNode *tree) {
    const TypeInfo *info = declarationOf(tree);
    return info && info->storage == STORAGE_TYPEDEF;
}

// What stands in front of `.`, `->` and `::` must have members.
bool checkMemberLeft(const ExprNode *left, int code) {
    switch (code) {
        case OP_MEMBER:
            if (treeType(left) == DT_STRUCT)
                return true;
            parseError("left operand of '.' is not struct/class/union object");
            return false;
        case OP_ARROW:
            if (treeDataType(left) == DT_P_STRUCT)
                return true;
            parseError("left operand of '->' is not pointer to struct/class/union");
            return false;
        default:
            if (namesType(left))
                return true;
            parseError("left operand of '::' is not struct/class type name");
            return false;
    }
}

void takePostfixIncrement(Parse &parse, int code) {
    reduceAbove(parse, POSTFIX_PRECEDENCE - 1);
    pushOperator(parse, newOperatorNode(code), POSTFIX_PRECEDENCE);
    if (parse.done)
        return;
    reduceTop(parse);
    parse.wantOperand = false;
}

// A `?` waits with the lowest precedence, so that nothing is reduced past it before its colon.
void takeConditional(Parse &parse) {
    reduceAbove(parse, operatorPrecedence(OP_CONDITIONAL) - 1);
    pushOperator(parse, newOperatorNode(OP_CONDITIONAL), 0);
    if (!parse.done)
        parse.openConditionals++;
}

// Between operands. Operators of one precedence group from the left, assignments from the right.
void takeInfix(Parse &parse, int code) {
    int precedence = operatorPrecedence(code);
    if (parse.unaryOnly && precedence < POSTFIX_PRECEDENCE) {
        endExpression(parse);
        return;
    }
    if (code == OP_CONDITIONAL) {
        takeConditional(parse);
        return;
    }
    if (precedence == POSTFIX_PRECEDENCE) {
        takePostfixIncrement(parse, code);
        return;
    }
    reduceAbove(parse, precedence == ASSIGNMENT_PRECEDENCE ? precedence : precedence - 1);
    if (isMember(code) && !checkMemberLeft(parse.operands, code))
        breakOff(parse);
    else
        pushOperator(parse, newOperatorNode(code), precedence);
}

// The prefix operator that a source operator is in front of an operand; -1: it is none.
int prefixCode(int code) {
    switch (code) {
        case OP_STAR: return OP_INDIRECTION;
        case OP_AMPERSAND: return OP_ADDRESS;
        case OP_MINUS: return OP_UNARY_MINUS;
        case OP_POSTFIX_INCREMENT: return OP_PREFIX_INCREMENT;
        case OP_POSTFIX_DECREMENT: return OP_PREFIX_DECREMENT;
        case OP_EXCLAMATION:
        case OP_TILDE: return code;
        default: return -1;
    }
}

bool isPrefixOnly(int code) {
    return code == OP_EXCLAMATION || code == OP_TILDE || code == OP_NEW ||
           code == OP_COMMAND_SUBSTITUTION;
}

// `::name` is the name at file scope.
void takeFileScopeName(Parse &parse) {
    nextToken();
    if (tokenClass != TK_IDENTIFIER) {
        parseError("misplaced \"::\", identifier expected");
        endExpression(parse);
        breakOff(parse);
        return;
    }
    NameEntry *name = tokenValue.name;
    if (!name->symbol) {
        parseError("%s is not defined", name->text);
        breakOff(parse);
        return;
    }
    takeName(parse, name, name->symbol, nullptr);
}

void takePrefix(Parse &parse, int code) {
    if (isMember(waitingCode(parse))) {
        refuseOperator(parse);
        return;
    }
    int prefix = prefixCode(code);
    if (prefix >= 0)
        pushOperator(parse, newOperatorNode(prefix), operatorPrecedence(prefix));
    else if (code == OP_NEW)
        takeOperand(parse, parseNew(parse.runMode));
    else if (code == OP_SCOPE)
        takeFileScopeName(parse);
    else if (code == OP_COMMAND_SUBSTITUTION)
        takeOperand(parse, parseCommandSubstitution(parse.runMode));
    else if (code != OP_PLUS)
        refuseOperator(parse);
}

// ---- Keywords -----------------------------------------------------------------------------------

bool isWord(const char *text) { return isalpha(static_cast<unsigned char>(*text)) || *text == '_'; }

NameEntry *internedName(const char *text) {
    NameEntry *name = lookupName(text);
    return name ? name : addName(text);
}

void takeTypeWord(Parse &parse) {
    if (isConversionCall()) {
        ExprNode *operand =
            parseConversion(currentKeyword.code, currentKeyword.name, nullptr, parse.runMode);
        takeOperand(parse, operand ? parsePostfix(operand, parse.runMode) : nullptr);
        return;
    }
    parseError("missing '(' in casting operation");
    breakOff(parse);
}

void takeBuiltin(Parse &parse, int code) {
    if (!parse.wantOperand) {
        pushedBack = true;
        refuseOperand(parse);
        return;
    }
    ExprNode *operand = parseBuiltin(code, parse.runMode);
    takeOperand(parse, operand ? parsePostfix(operand, parse.runMode) : nullptr);
}

void takeKeyword(Parse &parse) {
    int code = currentKeyword.code;
    if (currentKeyword.keywordClass == KC_TYPE && parse.wantOperand)
        takeTypeWord(parse);
    else if (currentKeyword.keywordClass != KC_OPERATOR)
        endExpression(parse);
    else if (isMember(waitingCode(parse)) && parse.wantOperand && isWord(currentKeyword.name))
        takeMember(parse, internedName(currentKeyword.name));
    else if (operatorPrecedence(code) == 0)
        takeBuiltin(parse, code);
    else if (parse.wantOperand)
        takePrefix(parse, code);
    else if (isPrefixOnly(code))
        refuseOperand(parse);
    else
        takeInfix(parse, code);
}

// ---- Characters ---------------------------------------------------------------------------------

void takeComma(Parse &parse) {
    bool ends = e_lang->commaEndsExpression && parse.openConditionals == 0;
    if (ends || parse.unaryOnly || (parse.wantOperand && !parse.operators && !parse.operands))
        endExpression(parse);
    else if (parse.wantOperand)
        refuseOperator(parse);
    else
        takeInfix(parse, OP_COMMA);
}

// The colon belongs to the innermost `?` that waits. What binds more tightly is bound first; the
// operand behind the colon is read by the reduction.
void takeColon(Parse &parse) {
    if (parse.openConditionals == 0) {
        endExpression(parse);
        return;
    }
    if (parse.wantOperand) {
        refuseOperator(parse);
        return;
    }
    pushedBack = true;
    for (int open = parse.openConditionals; parse.openConditionals == open;)
        reduceTop(parse);
    if (!parse.operands->third)
        breakOff(parse);
}

void takeOpening(Parse &parse) {
    if (isMember(waitingCode(parse)) && parse.wantOperand) {
        parseError("'(' following . or -> operator");
        breakOff(parse);
    } else if (!parse.wantOperand) {
        refuseOperand(parse);
    } else {
        takeParenthesis(parse);
    }
}

void takeCharacter(Parse &parse) {
    switch (tokenValue.character) {
        case ',': takeComma(parse); return;
        case ':': takeColon(parse); return;
        case '(': takeOpening(parse); return;
        default: endExpression(parse); return;
    }
}

// ---- One call -----------------------------------------------------------------------------------

void takeToken(Parse &parse) {
    nextToken();
    switch (tokenClass) {
        case TK_KEYWORD: takeKeyword(parse); return;
        case TK_IDENTIFIER: takeIdentifier(parse); return;
        case TK_CONSTANT: takeConstant(parse); return;
        case TK_CHAR: takeCharacter(parse); return;
    }
}

// The operator on top has no operand behind it. It must not take one of those before it, and the
// reduction has the message, but for a member that isn't named.
void reduceIncomplete(Parse &parse) {
    int code = parse.operators->op;
    if (operandCount(code) == 2) {
        if (isMember(code))
            errorFlag = 1;
        reduceTop(parse);
        return;
    }
    ExprNode *kept = parse.operands;
    parse.operands = nullptr;
    reduceTop(parse);
    parse.operands->next = kept;
    errorFlag = 1;
}

ExprNode *finish(Parse &parse) {
    if (!parse.broken && parse.operators && parse.wantOperand)
        reduceIncomplete(parse);
    while (!parse.broken && parse.operators)
        reduceTop(parse);
    if (!parse.broken && (!parse.operands || !parse.operands->next))
        return popOperand(parse);
    errorFlag = 1;
    releaseAll(parse.operands);
    releaseAll(parse.operators);
    return nullptr;
}

}  // namespace

ExprNode *runParse(Parse &parse) {
    ParseScope scope(parse.runMode);
    if (expressionDepth > MAX_NESTING) {
        if (!nestedFaultReported)
            parseError("expression stack overflow");
        nestedFaultReported = true;
        breakOff(parse);
    }
    if (parse.opened && !parse.done)
        takeParenthesis(parse);
    while (!parse.done)
        takeToken(parse);
    return finish(parse);
}

ExprNode *parseExpression(bool runMode) {
    Parse parse{.runMode = runMode};
    return runParse(parse);
}

ExprNode *parseAssignmentExpression(bool runMode) {
    int saved = e_lang->commaEndsExpression;
    e_lang->commaEndsExpression = 1;
    ExprNode *tree = parseExpression(runMode);
    e_lang->commaEndsExpression = saved;
    return tree;
}

ExprNode *parseSeparateExpression() {
    SeparatorScope separators(false, KC_OPERATOR);
    return parseExpression(false);
}

ExprNode *parseConditionalBranch() {
    ExprNode *tree = parseAssignmentExpression(parserRunMode);
    if (!tree && !errorFlag)
        parseError("invalid operand for ternary operation ?:");
    return tree;
}

}  // namespace zy
