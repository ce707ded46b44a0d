// open header: the expression parser, an operator-precedence parser over the token stream with two
// explicit stacks. It leaves a typed tree, in which each operator has the code that says what to
// run; the caller threads it with compileChain(). Each parenthesis, argument and subscript is a
// call of its own, and so has its own nine places for operators that wait.
#pragma once

#include "expr/nodes.h"

namespace zy {

// Parses one expression. The first token is read here; the token that can't continue the expression
// is pushed back. NULL if there is no expression. runMode: names are resolved where the running
// script stands, not where the parser does. Errors set errorFlag, and whatever could be made of the
// text is given.
ExprNode *parseExpression(bool runMode);
// The same, but a comma ends the expression, as in argument lists and initialisers.
ExprNode *parseAssignmentExpression(bool runMode);
// The same in the midst of another one, whatever separates the parts of that: for directives.
ExprNode *parseSeparateExpression();
// What stands behind the `:` of a `?:`: an assignment expression in the mode of the one around it.
ExprNode *parseConditionalBranch();

// The argument list of a built-in or a call, the subscripts of an array (OP_SUBSCRIPT): `node` is
// the operator, of a call or subscript with the callee or array in `left`. The token behind the
// list is not read. Takes the node; NULL after a message if nothing could be made of it.
//
// Arguments go to left, right, third and fourth. A call and a subscript have them as a list in
// `right`. Of the functions with any number of arguments, fprintf, sprintf, fscanf and sscanf have
// their first one in `left` and a list of the others in `right`; all else has the list in `left`.
ExprNode *parsePrimary(ExprNode *node, bool runMode);

// With the ( consumed and the first token of the type current: a type name and its ). A leaf with a
// type-only record; NULL after a message.
ExprNode *parseCastType();

// A name that starts a stream form where nothing is declared under it: printf << a, fprintf << a,
// scanf >> a. The token is the current one.
bool startsStreamForm(const NameEntry *name);

// Declares the name at file scope as a function that returns int and takes anything.
void makeImplicitFunction(NameEntry *name);

// ---- What other rooms define; expr/pendingParser.cpp stands in for them.

// `defined` of an #if: its operand, as an int. front/preprocessor
ExprNode *parseDefined();
// A command between backquotes, the first of which is consumed. shell/
ExprNode *parseCommandSubstitution(bool runMode);
// Chooses the operator of a generic function by the types of its arguments.
ExprNode *resolveGeneric(ExprNode *node);

}  // namespace zy
