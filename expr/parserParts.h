// What the sources of the expression parser share: the state of one call of it, and what each
// source does for the others.
#pragma once

#include "expr/members.h"
#include "expr/operators.h"
#include "expr/parser.h"
#include "expr/parserState.h"
#include "expr/scope.h"
#include "front/lexer.h"

namespace zy {

constexpr int MAX_WAITING = 9;    // operators that can wait at one level of parentheses
constexpr int MAX_NESTING = 256;  // levels of parentheses, arguments, subscripts
constexpr int ASSIGNMENT_PRECEDENCE = 2;
constexpr int POSTFIX_PRECEDENCE = 16;

// One call of the parser. Both lists are linked by `next`, top first.
struct Parse {
    bool runMode;
    bool unaryOnly = false;  // an operator that isn't prefix or postfix ends the expression
    bool opened = false;     // the first token was ( and is consumed
    ExprNode *operands = nullptr;
    ExprNode *operators = nullptr;  // those that wait for operands
    int depth = 0;                  // their number
    int16_t precedences[MAX_WAITING + 1] = {-1};
    int openConditionals = 0;  // of them, those of `?`
    bool wantOperand = true;
    bool done = false;    // the token that ended the expression is pushed back
    bool broken = false;  // by an error of syntax: there will be no tree
};

// ---- parser.cpp

// Parses with a prepared state.
ExprNode *runParse(Parse &parse);
void endExpression(Parse &parse);  // at the current token
void breakOff(Parse &parse);       // after an error; the current token is not pushed back
void pushOperand(Parse &parse, ExprNode *operand);
ExprNode *popOperand(Parse &parse);
// Refused with a message when nine operators wait already.
void pushOperator(Parse &parse, ExprNode *node, int precedence);
void reduceTop(Parse &parse);
// An operand where an operator belongs: a message.
void refuseOperand(Parse &parse);
// The operator on whose right operand the parse stands; -1 for none.
int waitingCode(const Parse &parse);

// ---- parserOperands.cpp

void takeIdentifier(Parse &parse);
// The declaration of a name where the text stands or, in run mode, the script. NULL for none.
Symbol *visibleSymbol(NameEntry *name, bool runMode);
// A name whose declaration is known; NULL: there is none.
void takeName(Parse &parse, NameEntry *name, Symbol *symbol, ClassContext *implicitObject);
// The word of a built-in function is the name of a member behind `.`, `->` and `::`.
void takeMember(Parse &parse, NameEntry *name);
void takeConstant(Parse &parse);
void takeParenthesis(Parse &parse);  // with the ( consumed
// What stands between ( and ), and the ). NULL after a message.
ExprNode *parseContents(bool runMode);
// An operand with the subscripts and argument lists behind it. NULL after a message.
ExprNode *parsePostfix(ExprNode *operand, bool runMode);

// ---- typeLookahead.cpp

// Whether the word just read, a type's, is called as a function: `int(x)`, not `(int (*)[3])`.
bool isConversionCall();
// The current token begins the type of a cast.
bool startsCast(bool runMode);

// ---- parserTypes.cpp

void takeCast(Parse &parse);  // with the ( consumed
// With the word read: the built-in that converts to a type, and its arguments. `type` is given if
// the word is a typedef name or tag. NULL after a message.
ExprNode *parseConversion(int typeCode, const char *word, const TypeInfo *type, bool runMode);
ExprNode *parseElementType(bool runMode);

// ---- parserSizes.cpp, parserNew.cpp

ExprNode *parseSizeof(bool runMode);
ExprNode *parseNew(bool runMode);

// ---- parserArguments.cpp

// With the word of a built-in function consumed: its node with the arguments.
ExprNode *parseBuiltin(int code, bool runMode);

// ---- argumentRules.cpp

// Whether the arguments of a built-in function are of its types; messages.
void checkBuiltinArguments(int code, const ExprNode *list);

// ---- hereDocument.cpp

// With `fprintf` consumed and a name behind it: fprintf fp << WORD. Takes the node.
ExprNode *parseHereDocument(ExprNode *node, bool runMode);

// How expressions are separated while something is read: whether a comma ends one, and whether the
// shifts do, as in a stream form. Those end one by the class of their rows in the keyword table.
class SeparatorScope {
public:
    SeparatorScope(bool commaEnds, KeywordClass shifts);
    ~SeparatorScope();
    SeparatorScope(const SeparatorScope &) = delete;

private:
    int savedComma;
    KeywordClass savedLeft, savedRight;
};

}  // namespace zy
